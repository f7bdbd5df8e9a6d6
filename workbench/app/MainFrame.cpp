#include "workbench/app/MainFrame.h"

namespace qor::app {

MainFrame::MainFrame(std::function<void()> onClose)
    : QorApplicationFrame("workbench"), onClose_(std::move(onClose)) {
    AddAnalyseNotificationCB(this, this, GetWindCloseNotification(), &MainFrame::closeCB);
}

void MainFrame::closeCB(QorCommand* /*sender*/,
                        QorNotification* /*notification*/,
                        QorSubscriberData /*data*/) {
    onClose_();
}

QorImplementClass(MainFrame, QorApplicationFrame)

} // namespace qor::app
