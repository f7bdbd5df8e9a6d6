#pragma once

#include "platform/vis/QorMesh.h"
#include "workbench/document/product/Mesh.h"

#include <string>
#include <vector>

namespace qor::document {

/// The triangles of a part that have one material, as every instance of the part shows them.
struct MeshPiece {
    QorMesh_var mesh;
    std::int32_t material = none; ///< index into Product::materials, or `none`: see MeshGroup
};

/// A part's mesh as the viewers want it: one QorMesh a material group.
struct MeshPieces {
    std::string name;
    std::vector<MeshPiece> pieces;
};

/// Takes the arrays of \p mesh, which has passed findMeshFault. Edges of the part go to the piece
/// that has both their ends, else to the last. Any thread.
[[nodiscard]] MeshPieces piecesOf(Mesh mesh);

/// The pieces as one mesh with a group a piece, the way a document file keeps it. Any thread.
[[nodiscard]] Mesh meshOf(const MeshPieces& pieces);

} // namespace qor::document
