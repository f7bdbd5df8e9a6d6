#pragma once

#include <string>

namespace qor::app {

/// Opens a document or a model in a window of the current layout. Empty on success, else why not,
/// in lower case.
[[nodiscard]] std::string openDocument(const std::string& path);

} // namespace qor::app
