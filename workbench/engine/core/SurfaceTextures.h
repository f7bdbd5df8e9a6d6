#pragma once

#include "workbench/engine/core/Surface.h"

#include <array>

namespace qor::engine {

/// The corners of one triangle and the place of a hit in it.
struct TrianglePlace {
    const MeshData& mesh;
    const std::array<std::uint32_t, 3>& corners;
    float u;
    float v;

    /// A value of the corners, between them.
    template <typename T>
    T mix(const std::vector<T>& values) const {
        const float w = 1.0F - u - v;
        const T& a = values[corners[0]];
        const T& b = values[corners[1]];
        const T& c = values[corners[2]];
        if constexpr (requires { a.z; })
            return a * w + b * u + c * v;
        else
            return {a.x * w + b.x * u + c.x * v, a.y * w + b.y * u + c.y * v};
    }
};

/// Puts what the textures of \p material hold at \p place into \p surface, whose place, normals and
/// footprint are known.
void applyTextures(const CompiledInstance& instance,
                   const TrianglePlace& place,
                   const CompiledMaterial& material,
                   Surface& surface);

/// The same for the colours of the mesh's corners.
void applyCornerColors(const TrianglePlace& place, SurfaceMaterial& material);

} // namespace qor::engine
