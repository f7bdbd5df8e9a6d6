#pragma once

#include "platform/vis/QorMath.h"
#include "workbench/engine/core/Transform.h"

namespace qor::adapter {

/// The library's numbers as the engine has them.
inline engine::Vec3 vec3(const QorMathVector& from) {
    return {static_cast<float>(from.x), static_cast<float>(from.y), static_cast<float>(from.z)};
}

inline engine::Color color(const float* rgb) {
    return {rgb[0], rgb[1], rgb[2]};
}

inline engine::Transform transform(const QorMathTransformation& from) {
    return {vec3(from.axes[0]), vec3(from.axes[1]), vec3(from.axes[2]), vec3(from.origin)};
}

constexpr float radians(double degrees) {
    return static_cast<float>(degrees) * engine::pi / 180.0F;
}

} // namespace qor::adapter
