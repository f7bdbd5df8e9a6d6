#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace qor::import {

/// A text STL file in the form that Assimp wants, without blanks before its first word and with its
/// words in small letters; empty when the file is in that form already, or is a binary one. Throws
/// ImportError if it cannot be read.
[[nodiscard]] std::vector<std::uint8_t> tidyStl(const std::filesystem::path& file);

} // namespace qor::import
