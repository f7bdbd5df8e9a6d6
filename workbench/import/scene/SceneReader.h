#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/import/model/ImportReport.h"
#include "workbench/import/model/ModelFormat.h"

#include <filesystem>

namespace qor::import {

/// Reads a glTF, OBJ, STL or PLY file. Takes the stages "read", "mesh" and "textures". Throws
/// ImportError. glTF is in metres with y up; the others are taken as millimetres with z up.
[[nodiscard]] document::Product
readScene(const std::filesystem::path& file, ModelFormat format, ImportReport& report);

} // namespace qor::import
