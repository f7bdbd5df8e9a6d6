#pragma once

#include "workbench/engine/core/Lanes.h"
#include "workbench/engine/core/Sampling.h"

namespace qor::engine {

/// Frame, lane by lane.
struct LaneFrames {
    Vec3x8 x;
    Vec3x8 y;
    Vec3x8 z;

    explicit LaneFrames(const Vec3x8& axis) : z(axis) {
        const Float8 sign = signOf(axis.z);
        const Float8 a = -1.0F / (sign + axis.z);
        const Float8 b = axis.x * axis.y * a;
        x = {1.0F + sign * axis.x * axis.x * a, sign * b, -sign * axis.x};
        y = {b, sign + axis.y * axis.y * a, -axis.y};
    }

    Vec3x8 toWorld(const Vec3x8& v) const { return x * v.x + y * v.y + z * v.z; }

    Vec3x8 toLocal(const Vec3x8& v) const { return {dot(v, x), dot(v, y), dot(v, z)}; }
};

/// Cosine and sine of the share \p turn, 0..1, of a full turn.
inline void turnedBy(const Float8& turn, Float8& cosine, Float8& sine) {
    const Int8 quarter = wholePart(4.0F * turn + 0.5F);
    const Float8 rest = (2.0F * pi) * (turn - 0.25F * numberOf(quarter));
    const Float8 c = smallCosine(rest);
    const Float8 s = smallSine(rest);
    const Int8 odd = (quarter & 1) != 0;
    const Float8 along = odd ? s : c;
    const Float8 across = odd ? c : s;
    cosine = ((quarter + 1) & 2) != 0 ? -along : along;
    sine = (quarter & 2) != 0 ? -across : across;
}

/// As the functions of the same names for one direction.
inline Vec3x8 cosineHemisphere(const Float8& u, const Float8& v) {
    const Float8 a = 2.0F * u - 1.0F;
    const Float8 b = 2.0F * v - 1.0F;
    const Int8 wide = magnitude(a) > magnitude(b);
    const Float8 r = wide ? a : b;
    const Float8 angle = (pi / 4) * ((wide ? b : a) / (r != 0.0F ? r : eight(1.0F)));
    const Float8 along = r * smallCosine(angle);
    const Float8 across = r * smallSine(angle);
    const Float8 x = wide ? along : across;
    const Float8 y = wide ? across : along;
    return {x, y, squareRoot(greatest(1.0F - x * x - y * y, Float8{}))};
}

inline Vec3x8 uniformCone(const Float8& u, const Float8& v, float oneMinusCos) {
    const Float8 height = u * oneMinusCos;
    const Float8 sinTheta = squareRoot(greatest(height * (2.0F - height), Float8{}));
    Float8 cosine;
    Float8 sine;
    turnedBy(v, cosine, sine);
    return {sinTheta * cosine, sinTheta * sine, 1.0F - height};
}

} // namespace qor::engine
