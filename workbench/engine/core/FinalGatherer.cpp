#include "workbench/engine/core/FinalGatherer.h"

#include "workbench/engine/core/GatherBarriers.h"

namespace qor::engine {

namespace {

/// Longest reach of a point, in pixels: beyond, details could hide between points.
constexpr float mostPixels = 40.0F;
/// Reach as a share of the typical distance of what lights a point.
constexpr float reachShare = 0.5F;
/// And at most this share of the scene's radius, unless the options say otherwise.
constexpr float defaultReach = 0.1F;
/// So many rays already tell where light changes far too quickly.
constexpr std::uint32_t probingRays = 16;

/// The side of the square on \p spot's surface that has the area of what a pixel sees of it.
float pixelSize(const Surface& spot) {
    constexpr float flattest = 0.05F;
    return spot.footprint / std::sqrt(std::max(dot(spot.geometricNormal, spot.toEye), flattest));
}

/// Where light is interpolated and where it is traced.
struct Care {
    int fewerSamples;   ///< for pictures of fewer samples a pixel than this
    float fewestPixels; ///< shortest reach of a point, in pixels
    float roughShare;   ///< light is traced where it changes within less than this of that
    /// Light changes little beside a wall up to this share of the distance to it: what lies at its
    /// foot is in the dark.
    float wallShare;
};

/// A picture of few samples would show the noise of tracing, one of many would show the errors of
/// interpolation.
const Care& careOf(const Samples& samples) {
    constexpr float always = std::numeric_limits<float>::infinity();
    constexpr int any = std::numeric_limits<int>::max();
    static constexpr std::array<Care, 3> cares{
        {{16, 6.0F, 0.3F, always}, {32, 6.0F, 0.6F, always}, {any, 3.0F, 0.6F, 0.8F}}};
    return *std::find_if(cares.begin(), cares.end() - 1,
                         [&](const Care& care) { return samples.maximum < care.fewerSamples; });
}

/// Walls are looked for where any ray has met something within this many reaches.
constexpr float farthestWall = 1.5F;

/// The harmonic mean of distances.
float typicalDistance(float nearness, std::uint32_t rays) {
    return nearness > 0.0F ? static_cast<float>(rays) / nearness
                           : std::numeric_limits<float>::infinity();
}

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
    const std::size_t before = spots.size();
    looker_.collect(state, sampler, spots);
    // Rough mirrors see wide, but what they see may be in plain view as well.
    for (std::size_t i = before; i < spots.size(); ++i) {
        Surface& spot = spots[i];
        spot.footprint =
            std::min(spot.footprint, camera_.cone().at(length(spot.position - ray.origin)));
    }
}

GatherPoint FinalGatherer::gather(const Surface& spot, std::uint32_t number) {
    const auto rays = static_cast<std::uint32_t>(options_.finalGather.rays);
    const std::uint32_t seed = hashPair(number, options_.seed ^ 0x6c8e9cf5U);
    const float pixel = pixelSize(spot);
    const float limit = options_.finalGather.maxRadius > 0.0F ? options_.finalGather.maxRadius
                                                              : defaultReach * scene_.radius();
    const Care& care = careOf(options_.samples);
    const float least = std::max(pixel * care.fewestPixels, 1e-6F * scene_.radius());
    GatherPoint point{spot.position, spot.normal, {}, least, least, 0.0F, true, {}};
    const float tooRough = care.roughShare * least;
    Gathered sums;
    const std::uint32_t probing = std::min(probingRays, rays);
    shoot(spot, seed, 0, probing, sums);
    point.steady = reachShare * typicalDistance(sums.nearness, probing);
    if (point.steady < 0.5F * tooRough)
        return point;
    shoot(spot, seed, probing, rays, sums);
    point.irradiance = sums.light * (pi / static_cast<float>(rays));
    point.steady = reachShare * typicalDistance(sums.nearness, rays);
    point.reach = std::max(least, std::min({point.steady, pixel * mostPixels, limit}));
    point.steady = std::min(point.steady, care.wallShare * wallAround(spot, sums.nearest, point));
    point.reach = std::min(point.reach, std::max(least, point.steady));
    point.rough = point.steady < tooRough;
    return point;
}

/// Distance of the nearest wall in reach of \p point, which gets its barriers. \p nearest is what
/// rays have met: none of many has missed a wall that is worth the name.
float FinalGatherer::wallAround(const Surface& spot, float nearest, GatherPoint& point) {
    if (nearest > farthestWall * point.reach)
        return std::numeric_limits<float>::infinity();
    looks_ += looksAround;
    return findBarriers(scene_, spot, point);
}

void FinalGatherer::shoot(const Surface& spot,
                          std::uint32_t seed,
                          std::uint32_t first,
                          std::uint32_t last,
                          Gathered& sums) {
    const Frame frame(spot.normal);
    for (std::uint32_t i = first; i < last; ++i) {
        Sampler sampler(hash32(seed), i);
        PathState state;
        const Vec3 local = cosineHemisphere(scrambledPoint(i, seed));
        const Vec3 direction = frame.toWorld(local);
        const float below = dot(direction, spot.geometricNormal);
        state.direction =
            below < 0.0F ? normalize(direction - spot.geometricNormal * (2.0F * below)) : direction;
        state.origin = spot.origin(spot.normal);
        state.budget = tracer_.fullBudget();
        --state.budget.diffuse;
        --state.budget.total;
        state.cone = {spot.footprint, diffuseSpread};
        state.lobePdf = local.z / pi;
        state.lightsCounted = true;
        state.straight = false;
        state.seesBackground = false;
        state.roughness = 1.0F;
        state.bounces = 1;
        float distance = std::numeric_limits<float>::infinity();
        sums.light += tracer_.trace(state, sampler, &distance).color;
        sums.nearness += 1.0F / std::max(distance, spot.offset);
        sums.nearest = std::min(sums.nearest, distance);
    }
}

RayCounts FinalGatherer::takeCounts() {
    RayCounts result;
    result.gather = looker_.counts().total() + tracer_.counts().total() + looks_;
    looks_ = 0;
    looker_.counts() = {};
    tracer_.counts() = {};
    return result;
}

} // namespace qor::engine
