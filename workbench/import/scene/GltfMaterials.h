#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/import/model/ImportReport.h"
#include "workbench/import/scene/GltfFile.h"

namespace qor::import {

/// Adds the materials of \p gltf to \p product under their own indices, and the textures that they
/// use, decoded. A texture that cannot be had is left out with a warning.
void addGltfMaterials(const GltfFile& gltf, document::Product& product, ImportReport& report);

} // namespace qor::import
