#include "workbench/app/MainFrame.h"

namespace qor::app {

QorImplementClass(MainFrame, QorApplicationFrame)

MainFrame::MainFrame(FrameActions actions)
    : QorApplicationFrame("workbench"), actions_(std::move(actions)) {
    AddAnalyseNotificationCB(this, this, GetWindCloseNotification(), &MainFrame::closeCB);
    AddAnalyseNotificationCB(this, this, GetCancelProgressNotification(), &MainFrame::cancelCB);
    AddAnalyseNotificationCB(this, this, GetDropNotification(), &MainFrame::dropCB);
}

void MainFrame::closeCB(QorCommand* /*sender*/,
                        QorNotification* /*notification*/,
                        QorSubscriberData /*data*/) {
    actions_.close();
}

void MainFrame::cancelCB(QorCommand* /*sender*/,
                         QorNotification* /*notification*/,
                         QorSubscriberData /*data*/) {
    actions_.cancel();
}

void MainFrame::dropCB(QorCommand* /*sender*/,
                       QorNotification* /*notification*/,
                       QorSubscriberData /*data*/) {
    actions_.drop(GetDroppedFiles());
}

} // namespace qor::app
