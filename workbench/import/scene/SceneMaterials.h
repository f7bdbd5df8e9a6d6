#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/import/model/ImportReport.h"

#include <assimp/scene.h>

#include <cstdint>
#include <filesystem>
#include <vector>

namespace qor::import {

/// Adds the materials of an OBJ, STL or PLY scene and gives the place of each: `none` for those
/// that Assimp makes up where a file says nothing. Phong's numbers become roughness; pictures are
/// decoded, those outside the model's folder left out with a warning.
[[nodiscard]] std::vector<std::int32_t> addSceneMaterials(const aiScene& scene,
                                                          const std::filesystem::path& model,
                                                          document::Product& product,
                                                          ImportReport& report);

} // namespace qor::import
