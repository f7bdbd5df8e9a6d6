#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/import/model/ImportReport.h"
#include "workbench/import/scene/GltfFile.h"
#include "workbench/import/scene/SceneMeshes.h"

#include <assimp/scene.h>

#include <vector>

namespace qor::import {

/// Adds the node tree of \p scene and its meshes, each stored once, to \p product, whose materials
/// are there already; \p materials gives their places (see joinMeshes). What has no name of its own
/// is called as the product. \p gltf, if the model is one, gives the names; then the result is each
/// glTF node's place in the tree, `none` where it has none. Takes the current stage of \p report.
/// Throws ImportError.
std::vector<std::int32_t> addSceneTree(const aiScene& scene,
                                       const MeshRules& rules,
                                       const GltfFile* gltf,
                                       std::span<const std::int32_t> materials,
                                       document::Product& product,
                                       ImportReport& report);

} // namespace qor::import
