#pragma once

#include "workbench/engine/core/Vec.h"

#include <variant>

namespace qor::engine {

/// Parallel light, as of the sun. A surface of diffuse albedo a that it meets under the angle θ
/// shows a/π·E·cos θ.
struct DirectionalLight {
    Vec3 direction{0.0F, 0.0F, -1.0F};  ///< the way the light travels; any length but zero
    Color irradiance{1.0F, 1.0F, 1.0F}; ///< on a surface that faces it
    float angleRad = 0.0F;              ///< full angle of its disc, 0 .. π; 0 gives hard shadows
    bool castsShadows = true;
};

/// Light from a point or from a small sphere.
struct PointLight {
    Vec3 position;
    Color intensity{1.0F, 1.0F,
                    1.0F}; ///< radiant intensity: irradiance at distance d is intensity/d²
    float radius = 0.0F;   ///< of the sphere; 0 gives hard shadows
    bool castsShadows = true;
};

/// A point light that is limited to a cone.
struct SpotLight {
    Vec3 position;
    Vec3 direction{0.0F, 0.0F, -1.0F}; ///< axis; any length but zero
    Color intensity{1.0F, 1.0F, 1.0F}; ///< on the axis
    float innerRad = 0.0F;             ///< half angle of full light, below outerRad
    float outerRad = 0.7853982F;       ///< half angle where it ends, at most π/2
    float radius = 0.0F;
    bool castsShadows = true;
};

/// A rectangle that shines to the side of cross(edgeU, edgeV).
struct AreaLight {
    Vec3 corner;
    Vec3 edgeU{1.0F, 0.0F, 0.0F};
    Vec3 edgeV{0.0F, 1.0F, 0.0F};
    Color radiance{1.0F, 1.0F, 1.0F};
    bool twoSided = false;
    bool visible = true; ///< seen by the camera; reflections always show it
    bool castsShadows = true;
};

using Light = std::variant<DirectionalLight, PointLight, SpotLight, AreaLight>;

} // namespace qor::engine
