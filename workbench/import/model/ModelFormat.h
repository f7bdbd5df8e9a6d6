#pragma once

#include <cstdint>
#include <filesystem>

namespace qor::import {

enum class ModelFormat : std::uint8_t { Step, Iges, Brep, BrepBinary, Gltf, Glb, Obj, Stl, Ply };

/// Name of a format as people write it.
[[nodiscard]] const char* nameOf(ModelFormat format);

/// Tells the format of a file from its first bytes, and where they leave it open (OBJ, IGES, text
/// glTF, binary STL) from its suffix too. Throws ImportError for files that are missing, empty, no
/// files, of an unknown suffix, or whose content is not what the suffix says.
[[nodiscard]] ModelFormat detectFormat(const std::filesystem::path& file);

} // namespace qor::import
