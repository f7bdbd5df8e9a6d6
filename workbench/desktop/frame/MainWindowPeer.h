#pragma once

#include "platform/frame/QorApplicationFrame.h"
#include "workbench/desktop/peers/ContainerPeer.h"

#include <QMainWindow>

class QLabel;

namespace qor::desktop {

class CommandActions;

/// The main window: menus, tool bars, document area, status bar. Its close box only asks.
class MainWindowPeer : public ContainerPeer {
public:
    explicit MainWindowPeer(QorDialog& widget);
    ~MainWindowPeer() override;
    void Raise() override;

protected:
    void draw(QorAspects aspects) override;
    void drawVisibility() override;

private:
    class Window;

    [[nodiscard]] QorApplicationFrame& my() const {
        return static_cast<QorApplicationFrame&>(widget());
    }

    [[nodiscard]] QMainWindow& window() const { return *static_cast<QMainWindow*>(control()); }

    void build();
    void fillBars();

    std::unique_ptr<CommandActions> actions_;
    QLabel* status_ = nullptr; ///< belongs to the window
};

} // namespace qor::desktop
