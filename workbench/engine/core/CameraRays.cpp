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

void CameraRays::at(const std::array<float, packetWidth>& x,
                    const std::array<float, packetWidth>& y,
                    RayHitPacket& packet) const {
    RTCRay8& rays = packet.ray;
    for (std::size_t i = 0; i < packetWidth; ++i) {
        const float ax = corner_.x + right_.x * x[i] + down_.x * y[i];
        const float ay = corner_.y + right_.y * x[i] + down_.y * y[i];
        const float az = corner_.z + right_.z * x[i] + down_.z * y[i];
        const float dx = forward_.x + (parallel_ ? 0.0F : ax);
        const float dy = forward_.y + (parallel_ ? 0.0F : ay);
        const float dz = forward_.z + (parallel_ ? 0.0F : az);
        const float stretch = std::sqrt(dx * dx + dy * dy + dz * dz);
        const float scale = 1.0F / stretch;
        rays.org_x[i] = eye_.x + (parallel_ ? ax : 0.0F);
        rays.org_y[i] = eye_.y + (parallel_ ? ay : 0.0F);
        rays.org_z[i] = eye_.z + (parallel_ ? az : 0.0F);
        rays.dir_x[i] = dx * scale;
        rays.dir_y[i] = dy * scale;
        rays.dir_z[i] = dz * scale;
        rays.tnear[i] = near_ * stretch;
        rays.tfar[i] = std::numeric_limits<float>::infinity();
        rays.time[i] = 0.0F;
        rays.mask[i] = ~0U;
        rays.id[i] = 0;
        rays.flags[i] = 0;
        packet.hit.geomID[i] = Hit::none;
        packet.hit.instID[0][i] = Hit::none;
    }
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
