#pragma once

#include "platform/frame/QorApplicationFrame.h"

#include <functional>
#include <string>

namespace qor::app {

class Session;

/// What the commands may call on the program. Outlives them.
struct CommandContext {
    Session* session = nullptr; ///< null: there are no documents
    std::function<void()> quit = {};
    std::function<void(const std::string& theme)> chooseTheme = {}; ///< none without windows
    bool hasGallery = false; ///< the commands for developers are offered too
};

/// Makes the program's command headers, as children of \p frame. To add a command: a row in a table
/// of the body, its texts in the catalog "QorCommandHeaders", its place in Menus.cpp.
void addCommands(QorApplicationFrame& frame, const CommandContext& context);

/// Brings availability, check states and the titles of recent files in step with the program.
void refreshCommands(const CommandContext& context);

} // namespace qor::app
