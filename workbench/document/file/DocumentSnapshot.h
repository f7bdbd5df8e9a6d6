#pragma once

#include "workbench/document/MeshPieces.h"
#include "workbench/document/file/DocumentTables.h"
#include "workbench/document/product/Product.h"

#include <vector>

namespace qor::document {

/// All of a document that a file holds, at one moment. Cheap to take: meshes and pictures are
/// shared with the document, which goes on changing. Read on any thread.
struct DocumentSnapshot {
    /// Nodes with their present visibility, materials with their present values; the arrays of
    /// meshes and textures are empty.
    Product facts;
    std::vector<MeshPieces> meshes;        ///< of facts.meshes
    std::vector<QorPixelImage_var> images; ///< of facts.textures
    SceneRows scene;
    DocumentInfo info;
};

} // namespace qor::document
