#pragma once

#include "platform/frame/QorApplicationFrame.h"
#include "workbench/desktop/peers/ContainerPeer.h"

#include <QMainWindow>

namespace qor::desktop {

class CommandActions;
class DocumentArea;
class StatusArea;

/// The main window: menus, tool bars, document area, status bar. Its close box only asks, and files
/// that are dropped anywhere on it are told to the frame.
class MainWindowPeer : public ContainerPeer {
public:
    explicit MainWindowPeer(QorDialog& widget);
    ~MainWindowPeer() override;
    void Raise() override;

protected:
    void draw(QorAspects aspects) override;
    void drawVisibility() override;
    void arrangeChildren() override;

private:
    class Window;

    [[nodiscard]] QorApplicationFrame& my() const {
        return static_cast<QorApplicationFrame&>(widget());
    }

    [[nodiscard]] QMainWindow& window() const { return *static_cast<QMainWindow*>(control()); }

    void build();
    void fillBars();

    std::unique_ptr<CommandActions> actions_;
    DocumentArea* documents_ = nullptr; ///< these two belong to the window
    StatusArea* status_ = nullptr;
};

} // namespace qor::desktop
