#pragma once

#include "workbench/engine/core/Lanes.h"

#include <array>
#include <limits>

namespace qor::engine {

/// A normal that the eye sees: bent to just before the horizon when interpolation has turned it
/// away. Of one surface or of eight.
template <typename Vector>
Vector facing(const Vector& normal, const Vector& toEye) {
    constexpr float farthest = 0.01F;
    const auto c = dot(normal, toEye);
    if (allOf(c >= farthest))
        return normal;
    return select(c >= farthest, normal, normalize(normal + toEye * (farthest - c)));
}

/// How far a point of a triangle lies below the surface that the unit normals of its corners
/// describe, on the side of \p flat, the triangle's own: rays start from there, so that the edges
/// of triangles throw no shadow on their neighbours. Of one triangle or of eight. Method: Hanika,
/// "Hacking the Shadow Terminator", Ray Tracing Gems II, 2021, ch. 4.
template <typename Number, typename Vector>
Vector liftOf(const Vector& position,
              const std::array<Vector, 3>& corners,
              const std::array<Vector, 3>& normals,
              const std::array<Number, 3>& weights,
              const Vector& flat) {
    // Normals that lean far off the triangle describe no surface above it.
    constexpr float none = 0.4F;
    constexpr float all = 0.7F;
    Vector lift{};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Number below = least(dot(position - corners[i], normals[i]), Number{});
        lift += normals[i] * (below * -weights[i]);
    }
    const Number square = dot(lift, lift);
    const auto usable = (square > 0.0F) & (square < std::numeric_limits<float>::infinity());
    const Number lean = dot(lift, flat) / squareRoot(square);
    const Number share = (lean - none) * (1.0F / (all - none));
    return select(usable, lift * least(greatest(share, Number{}), Number{} + 1.0F), Vector{});
}

} // namespace qor::engine
