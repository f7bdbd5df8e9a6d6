#pragma once

#include "platform/frame/QorApplicationFrame.h"

#include <functional>
#include <vector>

namespace qor::app {

/// What a person does to the main window itself.
struct FrameActions {
    std::function<void()> close;  ///< the close box
    std::function<void()> cancel; ///< the button beside the progress
    std::function<void(const std::vector<QorUnicodeString>& files)> drop; ///< at least one
};

/// The main window. Texts are in the message catalog "MainFrame".
class MainFrame : public QorApplicationFrame {
    QorDeclareClass(MainFrame)

    explicit MainFrame(FrameActions actions);

protected:
    ~MainFrame() override = default;

private:
    void closeCB(QorCommand* sender, QorNotification* notification, QorSubscriberData data);
    void cancelCB(QorCommand* sender, QorNotification* notification, QorSubscriberData data);
    void dropCB(QorCommand* sender, QorNotification* notification, QorSubscriberData data);

    FrameActions actions_;
};

} // namespace qor::app
