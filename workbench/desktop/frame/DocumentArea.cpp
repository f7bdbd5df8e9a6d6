#include "workbench/desktop/frame/DocumentArea.h"

#include "platform/text/QorMsgCatalog.h"
#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/theme/Icon.h"
#include "workbench/desktop/theme/Theme.h"

#include <QPainter>

namespace qor::desktop {

namespace {

QString message(const char* key) {
    return toQt(QorMsgCatalog::BuildMessage("QorDesktop", key));
}

} // namespace

DocumentArea::DocumentArea(QWidget* parent) : QWidget(parent) {
    setAccessibleName(message("DocumentArea"));
}

void DocumentArea::paintEvent(QPaintEvent* /*event*/) {
    constexpr int iconSize = 56;
    constexpr int gap = 16;
    const Colors& colors = Theme::colors();
    QPainter painter(this);
    painter.fillRect(rect(), colors.dark ? colors.field : colors.window.darker(106));
    if (findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly) != nullptr)
        return;
    const QPoint middle = rect().center();
    painter.drawPixmap(
        middle.x() - iconSize / 2, middle.y() - iconSize - gap,
        iconPixmap(QStringLiteral("application"), iconSize, devicePixelRatioF(), colors.text));
    painter.setPen(colors.muted);
    painter.drawText(QRect(0, middle.y() + gap / 2, width(), height() / 2),
                     Qt::AlignHCenter | Qt::AlignTop, message("EmptyDocument"));
}

} // namespace qor::desktop
