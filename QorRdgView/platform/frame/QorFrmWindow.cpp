#include "platform/frame/QorFrmWindow.h"

#include "platform/frame/QorFrmLayout.h"

const QorEventName QorFrmWindow::WINDOW_DELETED("WINDOW_DELETED");
const QorEventName QorFrmWindow::VIEWER_ACTIVATED("VIEWER_ACTIVATED");

QorFrmWindow::QorFrmWindow(QorCommand* iFather, const QorString& iName, QorFrmEditor* iEditor)
    : QorDialog(iFather, iName), editor(iEditor) {
    if (QorFrmLayout* joined = GetFrameLayout())
        joined->Join(*this);
}

QorFrmWindow::~QorFrmWindow() {
    if (QorFrmLayout* joined = GetFrameLayout())
        joined->Leave(*this);
}

QorFrmLayout* QorFrmWindow::GetFrameLayout() const {
    return editor != nullptr ? editor->GetLayout() : nullptr;
}

void QorFrmWindow::SetViewer(QorViewer* iViewer) {
    viewer = iViewer;
    QorFrmLayout* joined = GetFrameLayout();
    if (joined != nullptr && joined->GetCurrentWindow() == this)
        joined->ActivateViewer(*this);
}

QorUserResult QorFrmWindow::UserClose() {
    if (!CanAct())
        return QorUserResult::Insensitive;
    Notify(close.Get());
    return QorUserResult::Done;
}

QorUserResult QorFrmWindow::UserActivate() {
    if (!CanAct())
        return QorUserResult::Insensitive;
    QorFrmLayout* joined = GetFrameLayout();
    if (joined == nullptr)
        return QorUserResult::Impossible;
    joined->SetCurrentWindow(this);
    return QorUserResult::Done;
}

QorFrmWindowNotification::QorFrmWindowNotification(QorFrmWindow* iWindow)
    : window(iWindow), viewer(iWindow != nullptr ? iWindow->GetViewer() : nullptr) {}

QorFrmWindowNotification::~QorFrmWindowNotification() = default;

QorImplementClass(QorFrmWindow, QorDialog)
QorImplementClass(QorFrmWindowNotification, QorNotification)
