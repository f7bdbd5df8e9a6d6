#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/import/scene/Axes.h"
#include "workbench/import/scene/GltfFile.h"

#include <assimp/scene.h>

#include <vector>

namespace qor::import {

/// Adds the node animations of a glTF scene. Cubic splines keep their keys and become linear
/// between them.
void addSceneAnimations(const aiScene& scene,
                        const GltfFile& gltf,
                        const Axes& axes,
                        const std::vector<std::int32_t>& nodeOf,
                        document::Product& product);

} // namespace qor::import
