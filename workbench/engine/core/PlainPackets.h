#pragma once

#include "workbench/engine/core/PathTracer.h"

#include <array>

namespace qor::engine {

struct PlainLanes;

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
/// directional lights without extent and a constant sky, nothing see-through. Eight paths are
/// followed side by side, without materials, textures or lobes being built, so that hardly anything
/// but ray tracing is left. It takes the same random numbers as PathTracer.
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
    bool shade(const LanePlaces& places,
               const RayHitPacket& packet,
               LaneColors& colors,
               RayCounts& counts) const;

private:
    struct Sun {
        Vec3 towards;
        Color irradiance; ///< over π
        bool castsShadows;
    };
    struct Paths;

    void
    addSun(const Sun& sun, const PlainLanes& lanes, LaneColors& light, RayCounts& counts) const;
    void illuminate(const PlainLanes& lanes, LaneColors& light, RayCounts& counts) const;
    PacketMask scatter(Paths& paths, int bounce, RayHitPacket& packet, RayCounts& counts) const;
    void addSky(const Paths& paths,
                const PacketMask& left,
                const RayPacket& rays,
                LaneColors& colors) const;
    bool bounce(Paths& paths, int number, LaneColors& colors, RayCounts& counts) const;

    const CompiledScene& scene_;
    std::vector<Sun> suns_;
    int bounces_; ///< surfaces that are shaded behind the first one
    bool looksAround_;
    bool apply_ = false;
};

} // namespace qor::engine
