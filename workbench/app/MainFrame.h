#pragma once

#include "platform/frame/QorApplicationFrame.h"

#include <functional>

namespace qor::app {

/// The main window; its close box calls \p onClose. Texts are in the message catalog "MainFrame".
class MainFrame : public QorApplicationFrame {
    QorDeclareClass(MainFrame)

    explicit MainFrame(std::function<void()> onClose);

protected:
    ~MainFrame() override = default;

private:
    void closeCB(QorCommand* sender, QorNotification* notification, QorSubscriberData data);

    std::function<void()> onClose_;
};

} // namespace qor::app
