#pragma once

#include "platform/vis/QorMesh.h"
#include "workbench/engine/core/Mesh.h"

namespace qor::adapter {

/// The engine's mesh of the same triangles. Any thread.
engine::Result<engine::MeshPtr> translateMesh(const QorMesh::Data& from);

} // namespace qor::adapter
