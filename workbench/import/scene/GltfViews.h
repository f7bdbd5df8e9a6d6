#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/import/scene/Axes.h"
#include "workbench/import/scene/GltfFile.h"

#include <vector>

namespace qor::import {

/// Adds cameras and punctual lights, each at the node of the tree that carries it, and what the
/// default scene says about its surroundings and the work that a picture is worth. \p nodeOf gives
/// a glTF node's place in the tree, `none` for nodes outside the default scene.
void addGltfViews(const GltfFile& gltf,
                  const Axes& axes,
                  const std::vector<std::int32_t>& nodeOf,
                  document::Product& product);

} // namespace qor::import
