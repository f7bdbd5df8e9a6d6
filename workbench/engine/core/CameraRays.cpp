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

void CameraRays::at(const Float8& x, const Float8& y, RayHitPacket& packet) const {
    const Vec3x8 across = Vec3x8(corner_) + Vec3x8(right_) * x + Vec3x8(down_) * y;
    const Vec3x8 forward(forward_);
    const Vec3x8 origin = parallel_ ? Vec3x8(eye_) + across : Vec3x8(eye_);
    const Vec3x8 sight = parallel_ ? forward : forward + across;
    const Float8 stretch = length(sight);
    const Vec3x8 direction = sight * (1.0F / stretch);
    RTCRay8& rays = packet.ray;
    store(rays.org_x, origin.x);
    store(rays.org_y, origin.y);
    store(rays.org_z, origin.z);
    store(rays.dir_x, direction.x);
    store(rays.dir_y, direction.y);
    store(rays.dir_z, direction.z);
    store(rays.tnear, near_ * stretch);
    store(rays.tfar, eight(std::numeric_limits<float>::infinity()));
    store(rays.time, eight(0.0F));
    for (std::size_t i = 0; i < packetWidth; ++i) {
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
