#include "workbench/desktop/peers/WindowParts.h"

#include "platform/frame/QorApplicationFrame.h"
#include "workbench/desktop/peers/WidgetPeer.h"

#include <QRect>
#include <QWidget>

#include <algorithm>

namespace qor::desktop {

QWidget* ownerFor(const QorDialog& widget) {
    const QorDialog* father = widget.GetFatherDialog();
    if (father == nullptr)
        father = QorApplicationFrame::GetFrame();
    if (father == &widget)
        return nullptr;
    const WidgetPeer* peer = WidgetPeer::of(father);
    return peer != nullptr && peer->control() != nullptr ? peer->control()->window() : nullptr;
}

void applyWindowStyle(QWidget& window, const QorDialog& widget) {
    const QorDlgStyle style = widget.GetStyle();
    const bool tools = (style & QorDlgWndToolBar) != 0;
    Qt::WindowFlags flags = tools ? Qt::Tool : Qt::Dialog;
    flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint;
    if ((style & QorDlgWndMinimize) != 0)
        flags |= Qt::WindowMinimizeButtonHint;
    window.setWindowFlags(flags);
    if ((style & QorDlgWndModal) != 0)
        window.setWindowModality(Qt::ApplicationModal);
}

void showWindow(QWidget& window, bool visible) {
    window.setVisible(visible);
    if (!visible)
        return;
    window.raise();
    window.activateWindow();
}

QPoint placeBeside(const QRect& tools, const QSize& size, const QRect& screen) {
    constexpr int gap = 8;
    const int right = tools.right() + 1 + gap;
    const int below = tools.bottom() + 1 + gap;
    const QPoint places[] = {{tools.left() - gap - size.width(), tools.top()},
                             {tools.left(), below},
                             {right, tools.top()}};
    for (const QPoint& place : places)
        if (screen.contains(QRect(place, size)))
            return place;
    return {std::max(screen.left(), std::min(right, screen.right() + 1 - size.width())),
            std::max(screen.top(), std::min(tools.top(), screen.bottom() + 1 - size.height()))};
}

} // namespace qor::desktop
