#pragma once

#include "platform/frame/QorApplicationFrame.h"

#include <functional>

namespace qor::app {

/// What the commands may call on the program.
struct CommandContext {
    std::function<void()> quit;
    bool hasGallery = false; ///< the commands for developers are offered too
};

/// Makes the program's command headers, as children of \p frame. To add a command: a row in the
/// table of the body, its texts in the catalog "QorCommandHeaders", its place in Menus.cpp.
void addCommands(QorApplicationFrame& frame, const CommandContext& context);

} // namespace qor::app
