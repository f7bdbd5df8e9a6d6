#pragma once

#include "workbench/engine/core/CompiledScene.h"

#include <array>

namespace qor::engine {

/// Eight floats side by side.
using LaneFloats = std::array<float, packetWidth>;

/// What eight rays met, component by component, as shading of plain surfaces needs it.
struct PlainLanes {
    alignas(32) std::array<int, packetWidth> hit{}; ///< -1 or 0
    bool scattered = false;                         ///< they lie anywhere, not close together
    // Where rays start.
    alignas(32) LaneFloats x{};
    alignas(32) LaneFloats y{};
    alignas(32) LaneFloats z{};
    // The normal to shade with, and that of the triangle, on the side of the ray.
    alignas(32) LaneFloats nx{};
    alignas(32) LaneFloats ny{};
    alignas(32) LaneFloats nz{};
    alignas(32) LaneFloats gx{};
    alignas(32) LaneFloats gy{};
    alignas(32) LaneFloats gz{};
    alignas(32) LaneFloats red{};
    alignas(32) LaneFloats green{};
    alignas(32) LaneFloats blue{};

    /// Fills the lanes that have hit something, without materials, textures or lobes being built.
    /// False when one of them has hit a surface that is not plain; the others may be filled then.
    bool fill(const CompiledScene& scene, const RayHitPacket& packet);

    Vec3 start(std::size_t lane) const { return {x[lane], y[lane], z[lane]}; }

    Vec3 normal(std::size_t lane) const { return {nx[lane], ny[lane], nz[lane]}; }

    Vec3 flat(std::size_t lane) const { return {gx[lane], gy[lane], gz[lane]}; }
};

} // namespace qor::engine
