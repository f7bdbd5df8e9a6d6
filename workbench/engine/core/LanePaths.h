#pragma once

#include "workbench/engine/core/LaneLights.h"

namespace qor::engine {

/// Eight paths on their way: PathState, lane by lane. They have been scattered equally often.
struct LanePaths {
    LaneSampler sampler;
    alignas(32) RayHitPacket packet;
    Int8 on{};
    Vec3x8 throughput{Vec3{1.0F, 1.0F, 1.0F}};
    LaneCones cones;
    Float8 pdf = eight(std::numeric_limits<float>::infinity());
    Float8 lobePdf = eight(std::numeric_limits<float>::infinity());
    Float8 pick = eight(1.0F);
    Float8 roughness{};
    Int8 straight = Int8{} - 1;
    Int8 lightsOnly{};
    Int8 lightsCounted{};
    Int8 reflections;
    Int8 diffuse;
    Int8 total;
    int bounces = 0;

    LanePaths(const LanePlaces& places, const RayCone& cone, const PathBudget& budget)
        : sampler(places)
        , cones{eight(cone.width), eight(cone.spread)}
        , reflections(Int8{} + budget.reflections)
        , diffuse(Int8{} + budget.diffuse)
        , total(Int8{} + budget.total) {}

    /// One of them alone.
    PathState of(std::size_t lane, const PathBudget& budget) const;

    /// Goes on from \p vertex, in the lanes of \p diffuse by that lobe, in the others by the
    /// reflector, in the direction of \p sample, whose lobe was chosen with probability \p chance.
    void follow(const LaneVertex& vertex,
                const LaneBsdf::Samples& sample,
                const Int8& diffuse,
                const Float8& chance);

    /// The lanes of \p asked that chance does not end here: PathTracer::survives.
    Int8 survivors(const Int8& asked);
};

} // namespace qor::engine
