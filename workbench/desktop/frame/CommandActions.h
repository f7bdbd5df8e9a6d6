#pragma once

#include "platform/frame/QorCmdContainer.h"

#include <QObject>

#include <map>
#include <memory>
#include <string>

class QAction;
class QMenu;
class QMenuBar;
class QMainWindow;
class QWidget;

namespace qor::desktop {

/// The actions behind menus and tool bars, one a command, kept in step with the command headers. A
/// header may come and go while its action stays; without one the action is disabled.
class CommandActions {
public:
    /// Actions become children of \p owner, whose window their shortcuts work in.
    explicit CommandActions(QWidget& owner);
    ~CommandActions();
    CommandActions(const CommandActions&) = delete;
    CommandActions& operator=(const CommandActions&) = delete;

    /// The action that starts what \p starter starts; the same for every starter of a command.
    [[nodiscard]] QAction* actionFor(const QorCmdStarter& starter);

    /// Fills a menu or tool bar from the entries of \p container, menus within included.
    void fill(QMenuBar& bar, QorCmdContainer& container);
    void fill(QMenu& menu, QorCmdContainer& container);
    /// One tool bar for each container in \p container.
    void fill(QMainWindow& window, QorCmdContainer& container);

private:
    class Link;

    template <class Bar>
    void fillAny(Bar& bar, QorCmdContainer& container);

    QWidget& owner_;
    std::map<std::string, std::unique_ptr<Link>> links_;
};

} // namespace qor::desktop
