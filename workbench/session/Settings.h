#pragma once

#include <string>

namespace qor::session {

/// A string of the program's own settings ("WorkbenchSettings"), or \p otherwise when there is
/// none or they cannot be read.
[[nodiscard]] std::string setting(const char* key, const std::string& otherwise = {});

/// Sets it and writes the settings to disk; nothing happens when they cannot be had.
void keepSetting(const char* key, const std::string& value);

} // namespace qor::session
