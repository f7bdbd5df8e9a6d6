#pragma once

#include "workbench/engine/core/CompiledScene.h"
#include "workbench/engine/core/LaneBsdf.h"
#include "workbench/engine/core/Surface.h"

namespace qor::engine {

/// How wide eight rays are: RayCone, lane by lane.
struct LaneCones {
    Float8 width{};
    Float8 spread{};
};

/// What eight rays met, as shading needs it. Lanes that are not asked for hold what some other has
/// met.
struct SurfaceLanes {
    Int8 other{}; ///< met what packets do not shade: see CompiledMaterial
    Vec3x8 position;
    Vec3x8 start;  ///< of rays that leave on the side of the eye
    Vec3x8 normal; ///< the one to shade with, on the side of the ray
    Vec3x8 flat;   ///< that of the triangle, on the side of the ray
    Vec3x8 toEye;
    Float8 offset{}; ///< see Surface
    Float8 footprint{};
    LaneMaterials material;

    /// Fills all lanes; one at least is asked for, and all of those have hit something.
    SurfaceLanes(const CompiledScene& scene,
                 const RayHitPacket& packet,
                 const Int8& asked,
                 const LaneCones& cones);

private:
    void takeVaried(const CompiledScene& scene,
                    const RayHitPacket& packet,
                    unsigned lanes,
                    const LaneCones& cones);
    Surface lookedUp(const CompiledInstance& instance,
                     const CompiledMaterial& compiled,
                     const Hit& hit,
                     std::size_t lane) const;
};

} // namespace qor::engine
