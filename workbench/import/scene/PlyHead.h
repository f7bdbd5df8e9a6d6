#pragma once

#include <filesystem>

namespace qor::import {

/// Throws ImportError if the elements that a PLY file announces cannot fit its size, or its head is
/// no PLY head.
void checkPlyHead(const std::filesystem::path& file);

} // namespace qor::import
