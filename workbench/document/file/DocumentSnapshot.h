#pragma once

#include "workbench/document/MeshPieces.h"
#include "workbench/document/file/DocumentTables.h"
#include "workbench/document/product/Product.h"

#include <memory>
#include <vector>

namespace qor::document {

/// All of a document that a file holds, at one moment. Cheap to take, however large the product:
/// what does not change one by one is shared with the document, which goes on changing. Read on any
/// thread.
struct DocumentSnapshot {
    /// As ProductReps::facts: visibility and materials are older than those below.
    std::shared_ptr<const Product> facts;
    std::shared_ptr<const std::vector<MeshPieces>> meshes; ///< of Product::meshes
    std::vector<bool> visible;                             ///< of Product::nodes
    std::vector<Material> materials;                       ///< in place of Product::materials
    std::vector<QorPixelImage_var> images;                 ///< of Product::textures, and more
    SceneRows scene;
    DocumentInfo info;
};

} // namespace qor::document
