#pragma once

#include "workbench/engine/core/CompiledScene.h"
#include "workbench/engine/core/Lanes.h"

namespace qor::engine {

/// What eight rays met, as shading of plain surfaces needs it. Lanes that met nothing hold what
/// some other has met.
struct PlainLanes {
    Int8 hit{};             ///< -1 or 0
    bool scattered = false; ///< they lie anywhere, not close together
    Vec3x8 start;           ///< of rays that leave
    Vec3x8 normal;          ///< the one to shade with, on the side of the ray
    Vec3x8 flat;            ///< that of the triangle, on the side of the ray
    Vec3x8 albedo;

    /// Fills all lanes, without materials, textures or lobes being built. False when one of them
    /// has hit a surface that is not plain; nothing but `hit` is filled then.
    bool fill(const CompiledScene& scene, const RayHitPacket& packet);
};

} // namespace qor::engine
