#include "workbench/desktop/peers/WidgetPeer.h"

#include "workbench/desktop/peers/ContainerPeer.h"
#include "workbench/desktop/peers/Names.h"
#include "workbench/desktop/peers/Texts.h"

namespace qor::desktop {

WidgetPeer::WidgetPeer(QorDialog& widget)
    : widget_(widget), context_(std::make_unique<QObject>()) {}

WidgetPeer::~WidgetPeer() {
    context_.reset(); // before the control is hidden: that takes the focus away, which is a signal
    if (control_ == nullptr)
        return;
    control_->hide();
    control_->deleteLater();
}

WidgetPeer* WidgetPeer::of(const QorDialog* widget) {
    return widget != nullptr ? dynamic_cast<WidgetPeer*>(widget->GetPeer()) : nullptr;
}

ContainerPeer* WidgetPeer::container() const {
    if (widget_.IsWindow())
        return nullptr;
    return dynamic_cast<ContainerPeer*>(of(widget_.GetFatherDialog()));
}

void WidgetPeer::setControl(QWidget* control) {
    control_ = control;
    control->setObjectName(toQt(widget_.GetName()));
}

void WidgetPeer::TakeFocus() {
    if (control_ != nullptr)
        control_->setFocus(Qt::OtherFocusReason);
}

void WidgetPeer::Update(QorAspects iAspects) {
    if (control_ == nullptr)
        return;
    if ((iAspects & QorAspectSensitivity) != 0)
        control_->setEnabled(widget_.GetSensitivity() == QorDlgENABLE);
    if ((iAspects & (QorAspectHelp | QorAspectTitle)) != 0)
        drawHelp();
    draw(iAspects);
    if ((iAspects & (QorAspectLayout | QorAspectTitle)) != 0)
        if (ContainerPeer* around = container())
            around->layOutLater();
    if ((iAspects & QorAspectVisibility) != 0)
        drawVisibility();
}

void WidgetPeer::drawVisibility() {
    control_->setVisible(widget_.GetVisibility() == QorDlgSHOW);
}

void WidgetPeer::drawHelp() {
    const QString shortHelp = toQt(widget_.GetShortHelp());
    const QString longHelp = toQt(widget_.GetLongHelp());
    control_->setToolTip(shortHelp);
    control_->setWhatsThis(longHelp);
    neighboursChanged();
    control_->setAccessibleDescription(longHelp.isEmpty() ? shortHelp : longHelp);
}

void WidgetPeer::neighboursChanged() {
    control_->setAccessibleName(spokenName(widget_));
}

void WidgetPeer::addTabStops(std::vector<QWidget*>& stops) const {
    if (control_ != nullptr && control_->focusPolicy() != Qt::NoFocus)
        stops.push_back(control_);
}

bool WidgetPeer::report(const std::function<QorUserResult()>& up, QorAspects aspects) {
    const QPointer<QObject> alive(context());
    const QorVar<QorDialog> kept(&widget_);
    up();
    if (!alive)
        return false;
    Update(aspects);
    return true;
}

} // namespace qor::desktop
