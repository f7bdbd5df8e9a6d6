#include "workbench/engine/core/RenderStats.h"

namespace qor::engine {

RayCounts& RayCounts::operator+=(const RayCounts& other) {
    camera += other.camera;
    shadow += other.shadow;
    reflection += other.reflection;
    refraction += other.refraction;
    diffuse += other.diffuse;
    gather += other.gather;
    return *this;
}

} // namespace qor::engine
