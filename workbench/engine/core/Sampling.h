#pragma once

#include "workbench/engine/core/Vec.h"

namespace qor::engine {

/// Three orthogonal unit vectors; z is the one given.
struct Frame {
    Vec3 x;
    Vec3 y;
    Vec3 z;

    Frame() = default;

    /// Around the unit vector \p axis. Method: Duff et al., "Building an Orthonormal Basis,
    /// Revisited", JCGT 6(1), 2017.
    explicit Frame(const Vec3& axis) : z(axis) {
        const float sign = std::copysign(1.0F, axis.z);
        const float a = -1.0F / (sign + axis.z);
        const float b = axis.x * axis.y * a;
        x = {1.0F + sign * axis.x * axis.x * a, sign * b, -sign * axis.x};
        y = {b, sign + axis.y * axis.y * a, -axis.y};
    }

    Vec3 toWorld(const Vec3& v) const { return x * v.x + y * v.y + z * v.z; }

    Vec3 toLocal(const Vec3& v) const { return {dot(v, x), dot(v, y), dot(v, z)}; }
};

/// Sine and cosine of \p x within \pm π/4, of one number or of several, to single precision
/// (Taylor's series).
template <typename Number>
constexpr Number smallSine(const Number& x) {
    const Number square = x * x;
    return x * (1.0F + square * (-1.0F / 6 + square * (1.0F / 120 +
                                                       square * (-1.0F / 5040 + square / 362880))));
}

template <typename Number>
constexpr Number smallCosine(const Number& x) {
    const Number square = x * x;
    return 1.0F + square * (-0.5F + square * (1.0F / 24 +
                                              square * (-1.0F / 720 + square * (1.0F / 40320))));
}

/// The unit disc, area preserving. Method: Shirley and Chiu 1997, in the form without branches of
/// four.
inline Vec2 concentricDisc(const Vec2& u) {
    const float a = 2.0F * u.x - 1.0F;
    const float b = 2.0F * u.y - 1.0F;
    if (a == 0.0F && b == 0.0F)
        return {};
    const bool wide = std::abs(a) > std::abs(b);
    const float r = wide ? a : b;
    const float angle = (pi / 4) * (wide ? b / a : a / b); // from the nearer of the two axes
    const float along = r * smallCosine(angle);
    const float across = r * smallSine(angle);
    return wide ? Vec2{along, across} : Vec2{across, along};
}

/// Hemisphere around z, density cos θ / π.
inline Vec3 cosineHemisphere(const Vec2& u) {
    const Vec2 d = concentricDisc(u);
    return {d.x, d.y, std::sqrt(std::max(0.0F, 1.0F - d.x * d.x - d.y * d.y))};
}

/// Cone around z, uniform in solid angle; \p oneMinusCos is 1 - cos of its half angle.
inline Vec3 uniformCone(const Vec2& u, float oneMinusCos) {
    const float height = u.x * oneMinusCos;
    const float cosTheta = 1.0F - height;
    const float sinTheta = std::sqrt(std::max(0.0F, height * (2.0F - height)));
    const float phi = 2.0F * pi * u.y;
    return {sinTheta * std::cos(phi), sinTheta * std::sin(phi), cosTheta};
}

/// Triangle, uniform: weights of its second and third corner. Method: Heitz, "A Low-Distortion Map
/// Between Triangle and Square", 2019.
inline Vec2 uniformTriangle(const Vec2& u) {
    return u.y > u.x ? Vec2{u.x * 0.5F, u.y - u.x * 0.5F} : Vec2{u.x - u.y * 0.5F, u.y * 0.5F};
}

/// Weight of a sample of density \p own where \p other might have made it too (power heuristic,
/// Veach 1997).
inline float powerHeuristic(float own, float other) {
    if (!std::isfinite(own))
        return 1.0F;
    const float a = own * own;
    const float b = other * other;
    return a + b > 0.0F ? a / (a + b) : 0.0F;
}

} // namespace qor::engine
