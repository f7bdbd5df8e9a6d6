#pragma once

#include "workbench/engine/core/Camera.h"
#include "workbench/engine/core/Embree.h"
#include "workbench/engine/core/Lanes.h"
#include "workbench/engine/core/RenderOptions.h"
#include "workbench/engine/core/Surface.h"

namespace qor::engine {

/// A camera as a map from places in the picture to rays.
class CameraRays {
public:
    CameraRays(const Camera& camera, const RenderOptions& options);

    /// The ray through (\p x, \p y) in pixels from the top left corner; its direction is a unit
    /// vector.
    Ray at(float x, float y) const;

    /// The same for eight places, with what else a packet needs.
    void at(const Float8& x, const Float8& y, RayHitPacket& packet) const;

    /// How wide the rays of one pixel are.
    const RayCone& cone() const { return cone_; }

    /// Place in the picture, 0..1, of a point in pixels.
    Vec2 raster(float x, float y) const { return {x * perWidth_, y * perHeight_}; }

private:
    Vec3
        corner_; ///< from the eye to the top left corner: a direction, or for parallel rays a place
    Vec3 right_; ///< one pixel to the right
    Vec3 down_;  ///< one pixel down
    Vec3 eye_;
    Vec3 forward_;
    float near_ = 0.0F;
    float perWidth_;
    float perHeight_;
    bool parallel_;
    RayCone cone_;
};

} // namespace qor::engine
