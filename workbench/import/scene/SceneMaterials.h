#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/import/model/ImportReport.h"

#include <assimp/scene.h>

#include <filesystem>

namespace qor::import {

/// Adds the materials of an OBJ, STL or PLY scene under their own indices. Phong's numbers become
/// roughness; pictures are decoded, those outside the model's folder left out with a warning.
void addSceneMaterials(const aiScene& scene,
                       const std::filesystem::path& model,
                       document::Product& product,
                       ImportReport& report);

} // namespace qor::import
