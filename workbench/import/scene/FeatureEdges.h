#pragma once

#include "workbench/document/product/Mesh.h"

#include <span>

namespace qor::import {

/// Fills Mesh::edges of each mesh, which has none, with the lines that a person would draw of it:
/// where its surface ends, and where it bends sharply. Vertices at the same place count as one.
/// Normals say what is meant to be smooth: where those of both sides agree, a bend is drawn only if
/// it is a strong one. Works on several threads.
void addFeatureEdges(std::span<document::Mesh> meshes);

} // namespace qor::import
