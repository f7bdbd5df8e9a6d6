#pragma once

namespace qor::import {

/// How finely curved surfaces become triangles.
struct ImportSettings {
    /// Largest distance between a surface and its triangles; 0: relativeDeflection of each part's
    /// own diagonal.
    double deflectionMm = 0;
    /// Largest angle between neighbouring triangles of a curved surface.
    double angleDeg = 12;
};

/// Of a part's bounding-box diagonal: on a 2000-pixel picture that the part fills, about half a
/// pixel.
inline constexpr double relativeDeflection = 0.0003;

} // namespace qor::import
