#pragma once

#include "platform/dialog/QorDialog.h"
#include "platform/dialog/QorDlgNotifications.h"

#include <vector>

/// A window with widgets and, by its style, OK, Cancel and Apply. Hidden until shown. It does not
/// close itself: OK, Cancel and the close box only notify, and whoever receives that destroys it.
class QorDlgDialog : public QorDialog {
    QorDeclareClass(QorDlgDialog)

    QorDlgDialog(QorCommand* iFather,
                 const QorString& iName,
                 QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] const char* GetKind() const override { return "dialog"; }

    [[nodiscard]] bool IsWindow() const override { return true; }

    [[nodiscard]] QorNotification* GetDiaOKNotification() const { return ok.Get(); }

    [[nodiscard]] QorNotification* GetDiaCANCELNotification() const { return cancel.Get(); }

    [[nodiscard]] QorNotification* GetDiaAPPLYNotification() const { return apply.Get(); }

    [[nodiscard]] QorNotification* GetWindCloseNotification() const { return close.Get(); }

    [[nodiscard]] QorNotification* GetWindSizeNotification() const { return size.Get(); }

    /// Showing makes the peers that are missing; showing a window that is shown raises it.
    void SetVisibility(QorDlgVisibility iVisibility) override;

    /// Whether it blocks the others until it is answered.
    [[nodiscard]] virtual bool IsBlocking() const { return false; }

    /// Width and height of the window's inside in device-independent pixels, 0 before a host or
    /// person gave one.
    void GetSize(int& oWidth, int& oHeight) const;

    /// What a person does with the window. OK and Cancel without such a button are Impossible.
    virtual QorUserResult UserOK();
    virtual QorUserResult UserCancel();
    virtual QorUserResult UserApply();
    virtual QorUserResult UserClose();
    /// Sends the size notification when the size changes; OutOfRange unless both are positive. A
    /// disabled window can be resized too. A host reports the size of its own layout this way.
    virtual QorUserResult UserResize(int iWidth, int iHeight);

    /// All dialogs alive and not dying, in the order of their making.
    [[nodiscard]] static std::vector<QorDlgDialog*> GetAll();

protected:
    ~QorDlgDialog() override;

    /// Sends \p iNotification as an action of a person on the window; Impossible without the button
    /// of style bit \p iButton.
    QorUserResult UserSend(QorNotification* iNotification,
                           QorDlgStyle iButton = QorDlgDefaultStyle);

private:
    QorOwnNotification<QorDlgDiaOKNotification> ok;
    QorOwnNotification<QorDlgDiaCANCELNotification> cancel;
    QorOwnNotification<QorDlgDiaAPPLYNotification> apply;
    QorOwnNotification<QorDlgWindCloseNotification> close;
    QorOwnNotification<QorDlgWindSizeNotification> size;
    int width = 0;
    int height = 0;
};
