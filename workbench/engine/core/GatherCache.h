#pragma once

#include "workbench/engine/core/Vec.h"

#include <cstddef>
#include <vector>

namespace qor::engine {

/// Light gathered at one point of a surface.
struct GatherPoint {
    Vec3 position;
    Vec3 normal;
    Color irradiance;
    float radius = 0.0F; ///< how far it may be used
    Vec3 towardsMore;    ///< reserved direction of growth of the irradiance's luminance along the
                         ///< surface
};

/// Points of gathered light and what lies between them. Filled in rounds; while it is read nobody
/// writes.
class GatherCache {
public:
    /// Irradiance at \p position under \p normal, without light that is sampled. False where points
    /// are too sparse.
    bool irradiance(const Vec3& position, const Vec3& normal, Color& result) const;
};

} // namespace qor::engine
