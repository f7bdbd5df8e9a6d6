#include "workbench/engine/core/CameraRays.h"

#include <limits>

namespace qor::engine {

CameraRays::CameraRays(const Camera& camera, const RenderOptions& options)
    : eye_(camera.eye)
    , forward_(normalize(camera.target - camera.eye))
    , near_(camera.nearDistance)
    , perWidth_(1.0F / static_cast<float>(options.width))
    , perHeight_(1.0F / static_cast<float>(options.height))
    , parallel_(camera.projection == Projection::parallel) {
    const Vec3 right = normalize(cross(forward_, normalize(camera.up)));
    const Vec3 up = cross(right, forward_);
    const float height = parallel_ ? camera.viewHeight : 2.0F * std::tan(0.5F * camera.fovRad);
    const float pixel = height * perHeight_;
    right_ = right * pixel;
    down_ = up * -pixel;
    corner_ = right_ * (-0.5F * static_cast<float>(options.width)) +
              down_ * (-0.5F * static_cast<float>(options.height));
    if (parallel_)
        cone_ = {pixel, 0.0F};
    else
        cone_ = {0.0F, pixel};
}

Ray CameraRays::at(float x, float y) const {
    const Vec3 across = corner_ + right_ * x + down_ * y;
    const float infinity = std::numeric_limits<float>::infinity();
    if (parallel_)
        return {eye_ + across, forward_, near_, infinity};
    const Vec3 sight = forward_ + across;
    const float stretch = length(sight);
    return {eye_, sight / stretch, near_ * stretch, infinity};
}

} // namespace qor::engine
