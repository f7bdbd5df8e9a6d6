#pragma once

#include "platform/engine/QorIRdgWorld.h"
#include "workbench/engine/core/Material.h"

#include <vector>

namespace qor::adapter {

/// A light as viewers shade with it. Colours are linear; a white matt surface that faces the light
/// shows the diffuse one.
struct ViewLight {
    bool far = true; ///< parallel light
    engine::Vec3 position;
    engine::Vec3 direction; ///< the way it goes
    float coneEnd = -3.0F;  ///< cosines of the half angles where a spot has ended and begins to
    float coneStart = -2.0F;
    engine::Color diffuse;
    engine::Color specular;

    engine::Vec3 towards(const engine::Vec3& place) const;
    float conePart(const engine::Vec3& toLight) const;
};

/// Light as a viewer has it: up to two lights, ambient, and a studio that shiny things reflect.
struct ViewLighting {
    std::vector<ViewLight> lights;
    engine::Color ambient;
    float surroundings = 0.0F;
    engine::Vec3 vertical;
    engine::Vec3 ahead; ///< level, away from the eye
    engine::Vec3 aside; ///< level, to the right

    explicit ViewLighting(const QorRdgSnapshot& snapshot);

    /// More from above than from below; an upright wall gets just the ambient light.
    engine::Color fill(const engine::Vec3& normal) const;
    /// The studio in a direction, blurred as a surface of that roughness shows it.
    float studio(const engine::Vec3& direction, float roughness) const;
};

/// What of a surface matters to viewers.
struct ViewMatter {
    engine::Color base;
    float metallic = 0.0F;
    float roughness = 0.5F;
    float reflectance = 0.04F; ///< of a dielectric that is looked at straight
    float coat = 0.0F;
    float coatRoughness = 0.0F;
};

/// Light that goes from a surface to the eye: scattered, and mirrored.
struct ViewShine {
    engine::Color matt;
    engine::Color gloss;
};

/// \p normal and \p back, towards the eye, are of length 1 and on one side of the surface.
ViewShine shade(const ViewLighting& lighting,
                const ViewMatter& matter,
                const engine::Vec3& place,
                const engine::Vec3& normal,
                const engine::Vec3& back);

/// Values above 0.8 are bent, so that highlights keep their shape; below, nothing changes.
engine::Color bent(const engine::Color& linear);

} // namespace qor::adapter
