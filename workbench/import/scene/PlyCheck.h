#pragma once

#include <filesystem>

namespace qor::import {

/// Walks through a PLY file, text or binary. Throws ImportError if its head is no PLY head, if
/// elements that it announces are missing, or if a face names a vertex that is not there.
void checkPly(const std::filesystem::path& file);

} // namespace qor::import
