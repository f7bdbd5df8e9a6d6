#pragma once

#include "workbench/engine/core/Result.h"
#include "workbench/engine/core/Vec.h"

namespace qor::engine {

enum class Projection { perspective, parallel };

/// Where the picture is taken from. Pixels are square: the horizontal field follows from the
/// picture's shape.
struct Camera {
    Vec3 eye{0.0F, 0.0F, 1.0F};
    Vec3 target;               ///< any point ahead of the eye
    Vec3 up{0.0F, 1.0F, 0.0F}; ///< not along the sight
    Projection projection = Projection::perspective;
    float fovRad = 0.7853982F; ///< full vertical angle, perspective only; 0 < fov < π
    float viewHeight = 1.0F;   ///< height of the picture in scene units, parallel only; > 0
    float nearDistance = 0.0F; ///< nothing closer is seen, measured along the sight; ≥ 0
};

/// Fails with invalidInput when no picture can be taken with \p camera.
Result<Done> validate(const Camera& camera);

} // namespace qor::engine
