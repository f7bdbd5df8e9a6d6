#pragma once

#include "workbench/engine/core/Render.h"

/// What the engine's benchmarks render: an assembly of turned and milled parts in rows, made by
/// formula.
namespace qor::engine::benchmarks {

/// About \p triangles triangles: some dozen different parts of smooth and flat faces, many
/// instances each. Purely diffuse.
Scene assemblyScene(std::size_t triangles);
/// The whole assembly from above a corner.
Camera assemblyCamera();
/// A closed room of 2 × 2 × 2 with coloured walls, two blocks and a lamp in the ceiling.
Scene cornellBox();
Camera cornellCamera();

} // namespace qor::engine::benchmarks
