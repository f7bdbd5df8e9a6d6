#include "workbench/engine/core/Transform.h"

namespace qor::engine {

Transform Transform::translation(const Vec3& offset) {
    Transform result;
    result.origin = offset;
    return result;
}

Transform Transform::scaling(const Vec3& factors) {
    Transform result;
    result.x.x = factors.x;
    result.y.y = factors.y;
    result.z.z = factors.z;
    return result;
}

Transform Transform::rotation(const Vec3& axis, float radians) {
    const Vec3 a = normalize(axis);
    const float c = std::cos(radians);
    const float s = std::sin(radians);
    const auto turned = [&](const Vec3& v) {
        return v * c + cross(a, v) * s + a * (dot(a, v) * (1.0F - c));
    };
    return {turned({1, 0, 0}), turned({0, 1, 0}), turned({0, 0, 1}), {}};
}

bool Transform::isFinite() const {
    return engine::isFinite(x) && engine::isFinite(y) && engine::isFinite(z) &&
           engine::isFinite(origin);
}

std::optional<Transform> Transform::inverse() const {
    const double det = determinant();
    if (!isFinite() || !std::isfinite(det) || det == 0.0)
        return std::nullopt;
    const auto scale = static_cast<float>(1.0 / det);
    if (!std::isfinite(scale))
        return std::nullopt;
    const Vec3 rowX = cross(y, z) * scale;
    const Vec3 rowY = cross(z, x) * scale;
    const Vec3 rowZ = cross(x, y) * scale;
    Transform result{
        {rowX.x, rowY.x, rowZ.x}, {rowX.y, rowY.y, rowZ.y}, {rowX.z, rowY.z, rowZ.z}, {}};
    result.origin = -result.vector(origin);
    return result;
}

Transform operator*(const Transform& first, const Transform& second) {
    return {first.vector(second.x), first.vector(second.y), first.vector(second.z),
            first.point(second.origin)};
}

NormalTransform::NormalTransform(const Transform& transform) {
    const float sign = transform.determinant() < 0.0F ? -1.0F : 1.0F;
    const float size = std::max({length(transform.x), length(transform.y), length(transform.z)});
    const float scale = size > 0.0F ? sign / (size * size) : sign;
    x = cross(transform.y, transform.z) * scale;
    y = cross(transform.z, transform.x) * scale;
    z = cross(transform.x, transform.y) * scale;
}

} // namespace qor::engine
