#pragma once

#include "workbench/desktop/theme/Theme.h"

#include <functional>
#include <memory>

class QWidget;
class QorToolkit;

namespace qor::desktop {

class StandardTexts;
class ViewerPictures;

/// Everything that draws: the theme, the toolkit, the pictures of viewers and the texts of Qt's own
/// controls, which it installs for as long as it lives. The main window is the peer of the
/// library's application frame and comes and goes with that. Needs a QApplication; outlives the
/// widgets shown through it.
///
/// A program with windows does:
///
///     QApplication qt(argc, argv);
///     QtEventLoop loop;
///     QorInteractiveApplication application(loop);
///     Desktop desktop(ThemeChoice::System);
///     application.SetDisplayUpdater(Desktop::displayUpdater());
///     …makes a QorApplicationFrame, fills its menus, shows it…
///     loop.run();
class Desktop {
public:
    explicit Desktop(ThemeChoice choice = ThemeChoice::System);
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    [[nodiscard]] Theme& theme() { return theme_; }

    /// The main window, or null while the application frame is not drawn.
    [[nodiscard]] static QWidget* mainWindow();

    /// What QorInteractiveApplication::UpdateDisplay is to call: paints what waits to be painted
    /// and sends it to the screen. It takes no input and runs no posted work.
    [[nodiscard]] static std::function<void()> displayUpdater();

    /// Scale of fractions such as 1.25 is kept as it is, and the program's name and icon are told
    /// to Qt. No name to display: Qt would put it behind the title of every dialog. To be called
    /// before the QApplication is made.
    static void prepareApplication();

private:
    Theme theme_;
    std::unique_ptr<StandardTexts> texts_;
    std::unique_ptr<QorToolkit> toolkit_;
    std::unique_ptr<ViewerPictures> pictures_;
};

} // namespace qor::desktop
