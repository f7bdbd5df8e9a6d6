#pragma once

#include "workbench/engine/core/GatherCache.h"
#include "workbench/engine/core/Surface.h"

namespace qor::engine {

/// Rays that findBarriers takes.
constexpr int looksAround = 8;

/// Looks along the surface of \p spot, around \p point, as far as the point reaches, and gives it
/// the walls that it meets as barriers: light on this side of a wall says nothing of the other.
/// Where walls stand on more sides than a point can remember, its reach ends at the next.
/// Returns how far the nearest wall is.
float findBarriers(const CompiledScene& scene, const Surface& spot, GatherPoint& point);

} // namespace qor::engine
