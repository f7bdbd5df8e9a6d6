#pragma once

#include "workbench/desktop/theme/Colors.h"

#include <QString>

#include <memory>
#include <optional>

namespace qor::desktop {

/// Which theme a person wants; System is what the desktop around the program shows.
enum class ThemeChoice { System, Light, Dark };

/// The theme named "system", "light" or "dark"; nothing for other names.
[[nodiscard]] std::optional<ThemeChoice> themeNamed(const QString& name);

/// The look of the program: palette, style and font, installed in the QApplication. There is one
/// while the program runs. User-interface thread only.
class Theme {
public:
    /// Needs a QApplication and remembers its palette, which tells what the system's theme is.
    explicit Theme(ThemeChoice choice = ThemeChoice::System);
    ~Theme();
    Theme(const Theme&) = delete;
    Theme& operator=(const Theme&) = delete;

    /// Takes effect at once, in all windows.
    void choose(ThemeChoice choice);

    [[nodiscard]] ThemeChoice choice() const { return choice_; }

    /// The colours in use; the light ones while there is no theme.
    [[nodiscard]] static const Colors& colors();

private:
    class SystemWatcher;

    void apply();

    ThemeChoice choice_;
    bool systemIsDark_;
    std::unique_ptr<SystemWatcher> watcher_;
};

} // namespace qor::desktop
