#pragma once

#include "workbench/engine/core/PathTracer.h"

#include <array>

namespace qor::engine {

/// What a packet of camera rays is to look at: a place in the picture in pixels, and the random
/// numbers, of each lane.
struct LanePlaces {
    alignas(32) std::array<float, packetWidth> x{};
    alignas(32) std::array<float, packetWidth> y{};
    alignas(32) std::array<std::uint32_t, packetWidth> seed{};
    alignas(32) std::array<std::uint32_t, packetWidth> index{};
};

/// What it brought back.
struct LaneColors {
    alignas(32) std::array<float, packetWidth> red{};
    alignas(32) std::array<float, packetWidth> green{};
    alignas(32) std::array<float, packetWidth> blue{};
    alignas(32) std::array<float, packetWidth> alpha{};

    void set(std::size_t lane, const Color& color, float a) {
        red[lane] = color.x;
        green[lane] = color.y;
        blue[lane] = color.z;
        alpha[lane] = a;
    }
};

/// The short way for what products are mostly looked at as: matt surfaces of one colour under
/// directional lights without extent, nothing see-through, no indirect light. Eight lanes are
/// shaded side by side, without materials, textures or lobes being built, so that hardly anything
/// but ray tracing is left.
class PlainPackets {
public:
    PlainPackets(const CompiledScene& scene,
                 const RenderOptions& options,
                 const PathBudget& budget,
                 bool gathers);

    /// Whether any packet of this scene could take the short way.
    bool apply() const { return apply_; }

    /// Shades the lanes of \p packet that have hit something; the others keep their colour. False,
    /// and nothing done, when a lane sees a surface that is not plain.
    bool shade(const RayHitPacket& packet, LaneColors& colors, RayCounts& counts) const;

private:
    struct Sun {
        Vec3 towards;
        Color irradiance; ///< over π
        bool castsShadows;
    };
    /// Points of the lanes, component by component.
    struct Lanes;

    bool gather(const RayHitPacket& packet, Lanes& lanes) const;
    void addSun(const Sun& sun, const Lanes& lanes, LaneColors& light, RayCounts& counts) const;

    const CompiledScene& scene_;
    std::vector<Sun> suns_;
    bool apply_ = false;
};

} // namespace qor::engine
