#include "workbench/engine/core/FinalGatherer.h"

namespace qor::engine {

namespace {

/// A point's radius is at least this many pixels, so that edges do not draw ever more points.
constexpr float fewestPixels = 6.0F;
/// And at most this share of the scene's radius, unless the options say otherwise.
constexpr float defaultReach = 0.1F;
constexpr float coneSpread = 0.2F;

} // namespace

void FinalGatherer::look(int x, int y, std::vector<Surface>& spots) {
    const Ray ray = camera_.at(static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F);
    PathState state;
    state.origin = ray.origin;
    state.direction = ray.direction;
    state.tNear = ray.tNear;
    state.budget = looker_.fullBudget();
    state.cone = camera_.cone();
    Sampler sampler(pixelSeed(x, y, options_.seed ^ 0x2545f491U), 0);
    looker_.collect(state, sampler, spots);
}

GatherPoint FinalGatherer::gather(const Surface& spot, std::uint32_t number) {
    const Frame frame(spot.normal);
    const auto rays = static_cast<std::uint32_t>(options_.finalGather.rays);
    const std::uint32_t seed = hashPair(number, options_.seed ^ 0x6c8e9cf5U);
    Color sum;
    float nearness = 0.0F;
    for (std::uint32_t i = 0; i < rays; ++i) {
        Sampler sampler(hash32(seed), i);
        PathState state;
        const Vec3 direction = frame.toWorld(cosineHemisphere(scrambledPoint(i, seed)));
        const float below = dot(direction, spot.geometricNormal);
        state.direction =
            below < 0.0F ? normalize(direction - spot.geometricNormal * (2.0F * below)) : direction;
        state.origin = spot.origin(spot.normal);
        state.budget = tracer_.fullBudget();
        --state.budget.diffuse;
        --state.budget.total;
        state.cone = {spot.footprint, coneSpread};
        state.lightsCounted = true;
        state.straight = false;
        state.seesBackground = false;
        state.roughness = 1.0F;
        state.bounces = 1;
        float distance = std::numeric_limits<float>::infinity();
        sum += tracer_.trace(state, sampler, &distance).color;
        nearness += 1.0F / std::max(distance, spot.offset);
    }
    const float share = GatherCache::allowedError;
    const float limit = options_.finalGather.maxRadius > 0.0F ? options_.finalGather.maxRadius
                                                              : defaultReach * scene_.radius();
    const float mean = nearness > 0.0F ? static_cast<float>(rays) / nearness : limit / share;
    const float least = std::max(spot.footprint * fewestPixels, 1e-6F * scene_.radius());
    return {spot.position, spot.normal, sum * (pi / static_cast<float>(rays)),
            std::max(least, std::min(mean, limit / share))};
}

RayCounts FinalGatherer::takeCounts() {
    RayCounts result;
    result.gather = looker_.counts().total() + tracer_.counts().total();
    looker_.counts() = {};
    tracer_.counts() = {};
    return result;
}

} // namespace qor::engine
