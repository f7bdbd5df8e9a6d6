#pragma once

#include "workbench/engine/core/Lanes.h"
#include "workbench/engine/core/PathTracer.h"

namespace qor::engine {

struct PlainLanes;

/// What a packet of camera rays is to look at: a place in the picture in pixels, and the random
/// numbers, of each lane.
struct LanePlaces {
    Float8 x{};
    Float8 y{};
    UInt8 seed{};
    UInt8 index{};
};

/// What it brought back.
struct LaneColors {
    Vec3x8 color;
    Float8 alpha{};

    void set(std::size_t lane, const Color& c, float a) {
        color.set(lane, c);
        alpha[lane] = a;
    }

    void add(std::size_t lane, const Color& c) {
        color.x[lane] += c.x;
        color.y[lane] += c.y;
        color.z[lane] += c.z;
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

    Float8 fromSun(const Sun& sun, const PlainLanes& lanes, RayCounts& counts) const;
    Vec3x8 illuminate(const PlainLanes& lanes, RayCounts& counts) const;
    Int8 scatter(Paths& paths, int bounce, RayHitPacket& packet, RayCounts& counts) const;
    Vec3x8 sky(const Int8& asked, const RayPacket& rays) const;
    bool bounce(Paths& paths, int number, LaneColors& colors, RayCounts& counts) const;

    const CompiledScene& scene_;
    std::vector<Sun> suns_;
    int bounces_; ///< surfaces that are shaded behind the first one
    bool looksAround_;
    bool apply_ = false;
};

} // namespace qor::engine
