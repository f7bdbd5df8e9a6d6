#include "platform/dialog/QorDlgSlider.h"

#include <algorithm>
#include <cmath>

QorImplementClass(QorDlgSlider, QorDialog)

QorDlgSlider::QorDlgSlider(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorDialog(iFather, iName, iStyle) {}

QorOrientation QorDlgSlider::GetOrientation() const {
    return (GetStyle() & QorDlgVertical) != 0 ? QorOrientation::Vertical
                                              : QorOrientation::Horizontal;
}

void QorDlgSlider::SetRange(double iMin, double iMax, int iSteps) {
    if (!std::isfinite(iMin) || !std::isfinite(iMax) || iMax < iMin)
        return;
    min = iMin;
    max = iMax;
    step = (max - min) / std::max(iSteps, 1);
    value = std::clamp(value, min, max);
    settled = std::clamp(settled, min, max);
    Changed(QorAspectRange | QorAspectValue);
}

bool QorDlgSlider::Move(double iValue) {
    const double wanted = std::clamp(iValue, min, max);
    if (wanted == value)
        return false;
    value = wanted;
    Changed(QorAspectValue);
    return true;
}

void QorDlgSlider::Drag(double iValue) {
    if (!Move(iValue))
        return;
    const bool outer = std::exchange(dragging, true);
    Notify(drag.Get());
    dragging = outer;
}

void QorDlgSlider::Settle() {
    if (value == settled)
        return;
    settled = value;
    Notify(modify.Get());
}

void QorDlgSlider::SetValue(double iValue, QorDlgNotifyFlag iNotify) {
    if (std::isnan(iValue))
        return;
    const QorVar<QorDialog> alive(this);
    if (iNotify == QorDlgDoNotify) {
        Drag(iValue);
        Settle();
        return;
    }
    Move(iValue);
    if (!dragging) // a value set while a person drags is still theirs to modify
        settled = value;
}

QorUserResult QorDlgSlider::UserDrag(double iValue) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    if (std::isnan(iValue))
        return QorUserResult::Impossible;
    const QorVar<QorDialog> alive(this);
    Drag(iValue);
    return QorUserResult::Done;
}

QorUserResult QorDlgSlider::UserSetValue(double iValue) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    if (std::isnan(iValue))
        return QorUserResult::Impossible;
    const QorVar<QorDialog> alive(this);
    Drag(iValue);
    Settle();
    return QorUserResult::Done;
}
