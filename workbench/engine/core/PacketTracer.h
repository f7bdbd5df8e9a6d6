#pragma once

#include "workbench/engine/core/LaneColors.h"
#include "workbench/engine/core/LanePaths.h"

#include <array>
#include <optional>

namespace qor::engine {

/// A packet of camera rays and what became of it.
struct CameraPacket {
    LanePlaces places;
    alignas(32) RayHitPacket packet;
    LaneColors colors;
};

/// The short way for what products are mostly made of: opaque surfaces, matt or shining, without a
/// coat. Eight paths are followed side by side and shaded at once, so that little but ray tracing
/// is left; one that meets anything else goes on alone. It takes the same random numbers as
/// PathTracer and shows the same. Scenes with see-through surfaces or a ground, and gathered light,
/// go the long way altogether.
class PacketTracer {
public:
    PacketTracer(const CompiledScene& scene,
                 const RenderOptions& options,
                 const PathBudget& budget,
                 bool gathers);

    /// Whether this scene takes the short way.
    bool apply() const { return apply_; }

    /// Most packets that are traced at once.
    static constexpr int mostPackets = 2;

    /// Adds to their colours what the lanes of \p count packets see that have hit something.
    /// Returns the lanes that it leaves alone, one bit each: they see what packets do not shade.
    std::array<unsigned, mostPackets> trace(const std::array<CameraPacket*, mostPackets>& packets,
                                            int count,
                                            const RayCone& cone,
                                            PathTracer& single) const;

private:
    struct Start;

    std::array<Vec3x8, mostPackets>
    directLight(std::array<std::optional<Start>, mostPackets>& starts, RayCounts& counts) const;
    LaneVertex vertexOf(const LanePaths& paths, const SurfaceLanes& surface, const Int8& on) const;
    bool shade(LanePaths& paths,
               const SurfaceLanes& surface,
               const Int8& on,
               LaneColors& colors,
               RayCounts& counts) const;
    bool goOn(LanePaths& paths,
              const LaneVertex& vertex,
              const Vec3x8& direct,
              LaneColors& colors,
              RayCounts& counts) const;
    LaneBsdf bsdfOf(const LanePaths& paths, const SurfaceLanes& surface) const;
    void setProbabilities(const LanePaths& paths, LaneVertex& vertex) const;
    Vec3x8 bounded(const LanePaths& paths, const Vec3x8& light) const;
    Int8 scatter(LanePaths& paths, const LaneVertex& vertex, RayCounts& counts) const;
    static void countRays(const Int8& on, const Int8& diffuse, RayCounts& counts);
    Int8 query(LanePaths& paths) const;
    Int8 goAlone(LanePaths& paths, const Int8& asked, LaneColors& colors, PathTracer& single) const;
    void seeLights(const LanePaths& paths,
                   const Int8& met,
                   LaneColors& colors,
                   PathTracer& single) const;
    void
    leave(const LanePaths& paths, const Int8& left, LaneColors& colors, PathTracer& single) const;
    bool bounce(LanePaths& paths, LaneColors& colors, PathTracer& single) const;

    const CompiledScene& scene_;
    const RenderOptions& options_;
    LaneLights lights_;
    PathBudget budget_;
    bool skyOnly_ = true;   ///< what shines is infinitely far away
    bool hittable_ = false; ///< rays may run into lights of the list
    bool constantSky_ = false;
    bool apply_ = false;
};

} // namespace qor::engine
