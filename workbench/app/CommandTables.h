#pragma once

#include "workbench/app/ActionHeader.h"

#include <span>

namespace qor::app {

/// The commands of the menus "View" and "Edit".
[[nodiscard]] std::span<const ActionRow> viewCommands();
[[nodiscard]] std::span<const ActionRow> editCommands();
/// Those of "File" and "Window".
[[nodiscard]] std::span<const ActionRow> fileCommands();
/// Those of "Render" that are done at once.
[[nodiscard]] std::span<const ActionRow> renderCommands();

} // namespace qor::app
