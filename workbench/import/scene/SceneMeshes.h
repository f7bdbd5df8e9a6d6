#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/import/model/ImportReport.h"
#include "workbench/import/scene/Axes.h"

#include <assimp/scene.h>

#include <span>

namespace qor::import {

/// How Assimp's meshes become a product's.
struct MeshRules {
    Axes axes;
    /// As glTF says: triangles without normals get flat ones, and colours of vertices are linear.
    /// Elsewhere Assimp has made normals already, and colours are sRGB-coded as in a picture.
    bool gltf = false;
};

/// Joins \p parts, the primitives of one mesh, into one with a group each. Triangles with a vertex
/// that is not finite or not there are left out with a warning. \p materials: the place in the
/// product of each of Assimp's; indices beyond mean `none`.
[[nodiscard]] document::Mesh joinMeshes(std::span<const aiMesh* const> parts,
                                        const MeshRules& rules,
                                        std::span<const std::int32_t> materials,
                                        ImportReport& report);

} // namespace qor::import
