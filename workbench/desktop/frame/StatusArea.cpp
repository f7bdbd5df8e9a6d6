#include "workbench/desktop/frame/StatusArea.h"

#include "platform/text/QorMsgCatalog.h"
#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/theme/Icon.h"

#include <QLabel>
#include <QProgressBar>
#include <QToolButton>

namespace qor::desktop {

namespace {

constexpr int sideMargin = 12;
constexpr int barWidth = 160;
constexpr int steps = 1000; ///< of the bar

QLabel* plainLabel(QWidget* parent, const char* name) {
    auto* label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(sideMargin, 0, sideMargin, 0);
    return label;
}

} // namespace

StatusArea::StatusArea(QWidget* parent)
    : QStatusBar(parent)
    , status_(plainLabel(this, "status"))
    , work_(plainLabel(this, "work"))
    , bar_(new QProgressBar(this))
    , cancel_(new QToolButton(this))
    , facts_(plainLabel(this, "facts")) {
    const QString cancelText = toQt(QorMsgCatalog::BuildMessage("QorDesktop", "CancelWork"));
    setSizeGripEnabled(false);
    // A long text must not make the window wider.
    status_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    bar_->setFixedWidth(barWidth);
    bar_->setTextVisible(false);
    cancel_->setObjectName(QStringLiteral("cancelWork"));
    cancel_->setIcon(icon(QStringLiteral("close")));
    cancel_->setAutoRaise(true);
    cancel_->setToolTip(cancelText);
    cancel_->setAccessibleName(cancelText);
    QObject::connect(cancel_, &QToolButton::clicked, this, [this] {
        const auto cancel = onCancel;
        cancel();
    });
    addWidget(status_, 1);
    for (QWidget* part : {static_cast<QWidget*>(work_), static_cast<QWidget*>(bar_),
                          static_cast<QWidget*>(cancel_), static_cast<QWidget*>(facts_)})
        addPermanentWidget(part);
    show(std::nullopt);
}

void StatusArea::show(const QorApplicationFrame& frame) {
    status_->setText(toQt(frame.GetStatus()));
    status_->setToolTip(status_->text());
    facts_->setText(toQt(frame.GetFacts()));
    show(frame.GetProgress());
}

void StatusArea::show(const std::optional<QorApplicationFrame::Progress>& progress) {
    const bool working = progress.has_value();
    work_->setVisible(working && !progress->text.IsNull());
    bar_->setVisible(working);
    cancel_->setVisible(working && progress->cancellable);
    if (!working)
        return;
    work_->setText(toQt(progress->text));
    bar_->setAccessibleName(work_->text());
    bar_->setRange(0, steps);
    bar_->setValue(progress->share < 0.0 ? 0 : static_cast<int>(progress->share * steps));
}

} // namespace qor::desktop
