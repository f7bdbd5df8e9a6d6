#pragma once

#include "platform/vis/Qor3DReps.h"
#include "workbench/engine/core/Camera.h"
#include "workbench/engine/core/Light.h"
#include "workbench/engine/core/Transform.h"

#include <optional>

namespace qor::adapter {

/// Where the eye stands and how it is turned; what moves with the eye is given in these axes:
/// right, up and back.
engine::Transform eyeFrame(const engine::Camera& camera);

/// The three colours of a light, as factors.
struct LightColors {
    engine::Color ambient;
    engine::Color diffuse;
    engine::Color specular;

    explicit LightColors(const Qor3DLightSourceRep& from);
};

/// The light of a viewer for the engine, or nothing for one without colour or direction. A white
/// surface that faces a directional light of diffuse colour c shows c. Other lights do so at the
/// distance of \p middle, and fall off with the square of the distance. \p discDegrees is the full
/// angle of a directional light's disc.
std::optional<engine::Light> lightRecipe(const Qor3DLightSourceRep& from,
                                         const engine::Transform& eye,
                                         const engine::Vec3& middle,
                                         double discDegrees);

} // namespace qor::adapter
