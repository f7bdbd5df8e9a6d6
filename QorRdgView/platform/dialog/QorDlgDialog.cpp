#include "platform/dialog/QorDlgDialog.h"

#include <algorithm>

QorImplementClass(QorDlgDialog, QorDialog)

namespace {

std::vector<QorDlgDialog*>& AllDialogs() {
    static std::vector<QorDlgDialog*> dialogs;
    return dialogs;
}

} // namespace

QorDlgDialog::QorDlgDialog(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorDialog(iFather, iName, iStyle) {
    QorDialog::SetVisibility(QorDlgHIDE);
    AllDialogs().push_back(this);
}

QorDlgDialog::~QorDlgDialog() {
    std::erase(AllDialogs(), this);
}

std::vector<QorDlgDialog*> QorDlgDialog::GetAll() {
    std::vector<QorDlgDialog*> alive;
    std::copy_if(AllDialogs().begin(), AllDialogs().end(), std::back_inserter(alive),
                 [](const QorDlgDialog* iDialog) { return !iDialog->IsDying(); });
    return alive;
}

void QorDlgDialog::SetVisibility(QorDlgVisibility iVisibility) {
    if (iVisibility != QorDlgHIDE && GetPeer() == nullptr)
        Realize();
    if (iVisibility != QorDlgHIDE && GetVisibility() == QorDlgSHOW && GetPeer() != nullptr)
        GetPeer()->Raise();
    QorDialog::SetVisibility(iVisibility);
}

void QorDlgDialog::GetSize(int& oWidth, int& oHeight) const {
    oWidth = width;
    oHeight = height;
}

QorUserResult QorDlgDialog::UserSend(QorNotification* iNotification, QorDlgStyle iButton) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    if ((GetStyle() & iButton) != iButton)
        return QorUserResult::Impossible;
    const QorVar<QorDialog> alive(this);
    Notify(iNotification);
    return QorUserResult::Done;
}

QorUserResult QorDlgDialog::UserOK() {
    return UserSend(ok.Get(), QorDlgWndOK);
}

QorUserResult QorDlgDialog::UserCancel() {
    return UserSend(cancel.Get(), QorDlgWndCANCEL);
}

QorUserResult QorDlgDialog::UserApply() {
    return UserSend(apply.Get(), QorDlgWndAPPLY);
}

QorUserResult QorDlgDialog::UserClose() {
    return UserSend(close.Get());
}

QorUserResult QorDlgDialog::UserResize(int iWidth, int iHeight) {
    if (!IsShown() || IsDying())
        return QorUserResult::Insensitive;
    if (iWidth <= 0 || iHeight <= 0)
        return QorUserResult::OutOfRange;
    if (iWidth == width && iHeight == height)
        return QorUserResult::Done;
    const QorVar<QorDialog> alive(this);
    width = iWidth;
    height = iHeight;
    Notify(size.Get());
    return QorUserResult::Done;
}
