#pragma once

#include "workbench/engine/core/Bsdf.h"
#include "workbench/engine/core/CompiledScene.h"

#include <array>

namespace qor::engine {

/// How wide a ray is: what one pixel sees, followed through the scene, so that textures are looked
/// up at the right size. Method: Akenine-Möller et al., "Texture Level of Detail Strategies for
/// Real-Time Ray Tracing", 2019.
struct RayCone {
    float width = 0.0F;  ///< at its origin
    float spread = 0.0F; ///< growth with distance

    float at(float t) const { return width + spread * t; }
};

/// A point where a ray met a surface, ready for shading.
struct Surface {
    Vec3 position;
    Vec3 lifted; ///< where rays to its own side start, on the smooth surface that the triangles
                 ///< stand for
    Vec3 geometricNormal; ///< unit, towards the eye
    Vec3 normal;          ///< the one to shade with, unit, towards the eye
    Vec3 coatNormal;      ///< the same of the clear coat
    Vec3 toEye;           ///< unit
    float distance = 0.0F;
    float offset = 0.0F; ///< how far rays start from it, to miss it
    float footprint = 0.0F;
    bool frontFace = true;
    SurfaceMaterial material;
    Color sampledEmission; ///< radiance that light sampling takes it to have; black: it is not
                           ///< sampled

    /// Where a ray in unit direction \p d starts.
    Vec3 origin(const Vec3& d) const {
        return dot(d, normal) >= 0.0F ? lifted + geometricNormal * offset
                                      : position - geometricNormal * offset;
    }
};

/// A material without its textures.
SurfaceMaterial untextured(const CompiledMaterial& material);

/// The surface at \p hit of a ray in unit direction \p direction with \p cone.
Surface
surfaceAt(const CompiledScene& scene, const Hit& hit, const Vec3& direction, const RayCone& cone);

/// A point of the ground.
Surface
groundAt(const CompiledScene& scene, const Vec3& position, const Vec3& direction, float distance);

/// Distance at which a ray crosses the visible ground, from either side, before \p farthest;
/// negative if it does not.
float crossGround(const Ground& ground, const Vec3& origin, const Vec3& direction, float farthest);

/// The same from above only.
float hitGround(const Ground& ground, const Vec3& origin, const Vec3& direction, float farthest);

/// What is left of light after \p distance in what absorbs \p absorption per length.
inline Color attenuated(const Color& absorption, float distance) {
    return {std::exp(-absorption.x * distance), std::exp(-absorption.y * distance),
            std::exp(-absorption.z * distance)};
}

/// What a shadow ray meets at a surface.
struct Passage {
    float opacity = 1.0F; ///< share of the surface that is there
    Color glass;          ///< colour of what the part that is there lets through; black if opaque
    Color absorption;     ///< per length of the way to here, if that was inside
};

Passage passageAt(const CompiledScene& scene, const Hit& hit, const Vec3& direction);

} // namespace qor::engine
