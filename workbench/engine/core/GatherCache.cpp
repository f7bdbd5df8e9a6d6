#include "workbench/engine/core/GatherCache.h"

namespace qor::engine {

bool GatherCache::irradiance(const Vec3& /*position*/,
                             const Vec3& /*normal*/,
                             Color& /*result*/) const {
    return false;
}

} // namespace qor::engine
