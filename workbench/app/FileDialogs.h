#pragma once

#include "platform/system/QorCommand.h"

#include <filesystem>
#include <functional>
#include <optional>

namespace qor::app {

/// What a file dialog is for; its texts are in the catalog "FileDialogs", under the name of the
/// dialog.
enum class FileQuestion { Open, Import, Save };

/// Opens the file dialog for \p question in the folder used last, or brings the open one to the
/// front, and calls \p answer once with the file, or with nothing when the person cancels. A save
/// suggests \p suggestion, gives the name the suffix of documents when it has none, and asks before
/// another file is overwritten. Does not wait.
void askFile(QorCommand& father,
             FileQuestion question,
             const std::filesystem::path& suggestion,
             std::function<void(std::optional<std::filesystem::path>)> answer);

} // namespace qor::app
