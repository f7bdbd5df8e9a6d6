#pragma once

#include "workbench/engine/core/Vec.h"

#include <optional>

namespace qor::engine {

/// An affine map: the images of the three axes and of the origin. The default is the identity.
struct Transform {
    Vec3 x{1.0F, 0.0F, 0.0F};
    Vec3 y{0.0F, 1.0F, 0.0F};
    Vec3 z{0.0F, 0.0F, 1.0F};
    Vec3 origin;

    /// Moves by \p offset.
    static Transform translation(const Vec3& offset);
    /// Scales each axis.
    static Transform scaling(const Vec3& factors);
    /// Turns by \p radians around \p axis (any length but zero), counter-clockwise seen from its
    /// tip.
    static Transform rotation(const Vec3& axis, float radians);

    Vec3 point(const Vec3& p) const { return origin + vector(p); }

    Vec3 vector(const Vec3& v) const { return x * v.x + y * v.y + z * v.z; }

    /// Signed change of volume.
    float determinant() const { return dot(x, cross(y, z)); }

    bool isFinite() const;

    /// The inverse; nothing for a map that flattens space or holds a value that is not finite.
    std::optional<Transform> inverse() const;

    friend bool operator==(const Transform&, const Transform&) = default;
};

/// First \p second, then \p first.
Transform operator*(const Transform& first, const Transform& second);

/// Carries surface normals: the transposed inverse up to a positive factor, with the sign that
/// keeps a normal on its side of a mirrored surface. Results are not normalised.
struct NormalTransform {
    Vec3 x{1.0F, 0.0F, 0.0F};
    Vec3 y{0.0F, 1.0F, 0.0F};
    Vec3 z{0.0F, 0.0F, 1.0F};

    NormalTransform() = default;
    explicit NormalTransform(const Transform& transform);

    Vec3 operator()(const Vec3& n) const { return x * n.x + y * n.y + z * n.z; }
};

} // namespace qor::engine
