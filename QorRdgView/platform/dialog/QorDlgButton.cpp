#include "platform/dialog/QorDlgButton.h"

QorImplementClass(QorDlgPushButton, QorDialog)
QorImplementClass(QorDlgCheckButton, QorDialog)
QorImplementClass(QorDlgRadioButton, QorDialog)

QorDlgPushButton::QorDlgPushButton(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorDialog(iFather, iName, iStyle) {}

QorUserResult QorDlgPushButton::UserPress() {
    if (!CanAct())
        return QorUserResult::Insensitive;
    const QorVar<QorDialog> alive(this);
    Notify(activate.Get());
    return QorUserResult::Done;
}

QorDlgCheckButton::QorDlgCheckButton(QorCommand* iFather,
                                     const QorString& iName,
                                     QorDlgStyle iStyle)
    : QorDialog(iFather, iName, iStyle) {}

void QorDlgCheckButton::SetState(QorDlgCheckState iState, QorDlgNotifyFlag iNotify) {
    if (iState == state)
        return;
    const QorVar<QorDialog> alive(this);
    state = iState;
    Changed(QorAspectChecked);
    if (iNotify == QorDlgDoNotify)
        Notify(modify.Get());
}

QorUserResult QorDlgCheckButton::UserCheck(bool iChecked) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    SetState(iChecked ? QorDlgCheck : QorDlgUncheck, QorDlgDoNotify);
    return QorUserResult::Done;
}

QorUserResult QorDlgCheckButton::UserDoubleClick() {
    if (!CanAct())
        return QorUserResult::Insensitive;
    const QorVar<QorDialog> alive(this);
    Notify(doubleClick.Get());
    return QorUserResult::Done;
}

QorDlgRadioButton::QorDlgRadioButton(QorCommand* iFather,
                                     const QorString& iName,
                                     QorDlgStyle iStyle)
    : QorDialog(iFather, iName, iStyle) {}

QorDlgRadioButton* QorDlgRadioButton::FindChecked() const {
    if (GetFather() == nullptr)
        return nullptr;
    for (QorCommand* child : GetFather()->GetChildren())
        if (auto* radio = dynamic_cast<QorDlgRadioButton*>(child);
            radio != nullptr && radio->state == QorDlgCheck)
            return radio;
    return nullptr;
}

void QorDlgRadioButton::SetState(QorDlgCheckState iState, QorDlgNotifyFlag iNotify) {
    if (iState == state)
        return;
    const QorVar<QorDlgRadioButton> alive(this);
    const QorVar<QorDlgRadioButton> released(iState == QorDlgCheck ? FindChecked() : nullptr);
    if (released)
        released->state = QorDlgUncheck;
    state = iState;
    if (released)
        released->Changed(QorAspectChecked);
    Changed(QorAspectChecked);
    if (iNotify != QorDlgDoNotify)
        return;
    if (released)
        released->Notify(released->modify.Get());
    Notify(modify.Get());
}

QorUserResult QorDlgRadioButton::UserCheck(bool iChecked) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    if (!iChecked && state == QorDlgCheck)
        return QorUserResult::Impossible;
    if (iChecked)
        SetState(QorDlgCheck, QorDlgDoNotify);
    return QorUserResult::Done;
}
