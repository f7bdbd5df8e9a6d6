#pragma once

#include <assimp/mesh.h>

namespace qor::import {

/// Gives every corner of every face of \p mesh a vertex of its own. Assimp makes normals a vertex,
/// so only then can the sides of a crease have different ones; joining identical vertices
/// afterwards undoes what was not needed.
void unshareVertices(aiMesh& mesh);

} // namespace qor::import
