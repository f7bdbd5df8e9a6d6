#pragma once

#include "workbench/document/session/ImportTask.h"

#include <chrono>

namespace qor::document {

// What the settings repository "documents" says; see DocumentStore. User-interface thread.

[[nodiscard]] std::chrono::seconds autosaveInterval();

/// \p options with what is set put over it.
[[nodiscard]] ImportOptions importSettings(ImportOptions options);

} // namespace qor::document
