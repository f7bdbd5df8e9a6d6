#pragma once

#include "platform/dialog/QorDialog.h"
#include "platform/dialog/QorDlgNotifications.h"

/// A button that starts something.
class QorDlgPushButton : public QorDialog {
    QorDeclareClass(QorDlgPushButton)

    QorDlgPushButton(QorCommand* iFather,
                     const QorString& iName,
                     QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] const char* GetKind() const override { return "push button"; }

    [[nodiscard]] QorNotification* GetPushBActivateNotification() const { return activate.Get(); }

    /// A person's press.
    QorUserResult UserPress();

protected:
    ~QorDlgPushButton() override = default;

private:
    QorOwnNotification<QorDlgPushBActivateNotification> activate;
};

/// A button that is on or off.
class QorDlgCheckButton : public QorDialog {
    QorDeclareClass(QorDlgCheckButton)

    QorDlgCheckButton(QorCommand* iFather,
                      const QorString& iName,
                      QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] const char* GetKind() const override { return "check button"; }

    [[nodiscard]] QorNotification* GetChkBModifyNotification() const { return modify.Get(); }

    [[nodiscard]] QorNotification* GetChkBDoubleClickNotification() const {
        return doubleClick.Get();
    }

    [[nodiscard]] QorDlgCheckState GetState() const { return state; }

    /// With \p iNotify the modify notification follows when the state changes.
    void SetState(QorDlgCheckState iState, QorDlgNotifyFlag iNotify = QorDlgNoNotify);

    /// A person's click that leaves the button \p iChecked; notifies when that is a change.
    QorUserResult UserCheck(bool iChecked);
    /// The double click alone: the clicks in it are reported by UserCheck.
    QorUserResult UserDoubleClick();

protected:
    ~QorDlgCheckButton() override = default;

private:
    QorDlgCheckState state = QorDlgUncheck;
    QorOwnNotification<QorDlgChkBModifyNotification> modify;
    QorOwnNotification<QorDlgChkBDoubleClickNotification> doubleClick;
};

/// One of several choices: of the radio buttons with one father at most one is checked.
class QorDlgRadioButton : public QorDialog {
    QorDeclareClass(QorDlgRadioButton)

    QorDlgRadioButton(QorCommand* iFather,
                      const QorString& iName,
                      QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] const char* GetKind() const override { return "radio button"; }

    [[nodiscard]] QorNotification* GetRadBModifyNotification() const { return modify.Get(); }

    [[nodiscard]] QorDlgCheckState GetState() const { return state; }

    /// Checking unchecks the others of the group; unchecking may leave none. Both states change
    /// first; then, with \p iNotify, the released button notifies and after it this one.
    void SetState(QorDlgCheckState iState, QorDlgNotifyFlag iNotify = QorDlgNoNotify);

    /// A person's click. Unchecking the checked button is Impossible.
    QorUserResult UserCheck(bool iChecked);

protected:
    ~QorDlgRadioButton() override = default;

private:
    [[nodiscard]] QorDlgRadioButton* FindChecked() const;

    QorDlgCheckState state = QorDlgUncheck;
    QorOwnNotification<QorDlgRadBModifyNotification> modify;
};
