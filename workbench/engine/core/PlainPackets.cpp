#include "workbench/engine/core/PlainPackets.h"

#include "workbench/engine/core/PlainLanes.h"

namespace qor::engine {

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();

/// Rays that leave \p lanes.
void put(RayPacket& packet, const PlainLanes& lanes, const Vec3x8& direction) {
    store(packet.org_x, lanes.start.x);
    store(packet.org_y, lanes.start.y);
    store(packet.org_z, lanes.start.z);
    store(packet.dir_x, direction.x);
    store(packet.dir_y, direction.y);
    store(packet.dir_z, direction.z);
    store(packet.tnear, eight(0.0F));
    store(packet.tfar, eight(infinity));
    store(packet.time, eight(0.0F));
    for (int i = 0; i < packetWidth; ++i) {
        packet.mask[i] = ~0U;
        packet.id[i] = 0;
        packet.flags[i] = 0;
    }
}

/// The random numbers of eight samples, each as Sampler has them.
class LaneSampler {
public:
    explicit LaneSampler(const LanePlaces& places)
        : seed_(pathSeed(places.seed)), index_(places.index) {}

    /// Two numbers for every lane.
    void next2D(Float8& u, Float8& v) {
        dimension_ += 1U;
        const UInt8 seed = hashPair(seed_, dimension_);
        const UInt8 index = shuffledIndex(index_, seed);
        u = unitFloat(scrambledFirst(index, seed));
        v = unitFloat(scrambledSecond(index, seed));
    }

    /// A number for each lane of \p asked.
    Float8 next1D(const Int8& asked) {
        dimension_ -= std::bit_cast<UInt8>(asked);
        const UInt8 seed = hashPair(seed_, dimension_);
        return unitFloat(scrambledFirst(shuffledIndex(index_, seed), seed));
    }

private:
    UInt8 seed_;
    UInt8 index_;
    UInt8 dimension_{};
};

/// As the function of the same name for one direction.
Vec3x8 cosineHemisphere(const Float8& u, const Float8& v) {
    const Float8 a = 2.0F * u - 1.0F;
    const Float8 b = 2.0F * v - 1.0F;
    const Int8 wide = magnitude(a) > magnitude(b);
    const Float8 r = wide ? a : b;
    const Float8 angle = (pi / 4) * ((wide ? b : a) / (r != 0.0F ? r : eight(1.0F)));
    const Float8 along = r * smallCosine(angle);
    const Float8 across = r * smallSine(angle);
    const Float8 x = wide ? along : across;
    const Float8 y = wide ? across : along;
    return {x, y, squareRoot(greatest(1.0F - x * x - y * y, Float8{}))};
}

/// \p local in the frames that Frame makes around \p axis.
Vec3x8 toWorld(const Vec3x8& axis, const Vec3x8& local) {
    const Float8 sign = signOf(axis.z);
    const Float8 a = -1.0F / (sign + axis.z);
    const Float8 b = axis.x * axis.y * a;
    const Vec3x8 x{1.0F + sign * axis.x * axis.x * a, sign * b, -sign * axis.x};
    const Vec3x8 y{b, sign + axis.y * axis.y * a, -axis.y};
    return x * local.x + y * local.y + axis * local.z;
}

bool isPlain(const CompiledScene& scene) {
    for (std::uint32_t i = 0; i < scene.scene().materials.size(); ++i)
        if (!scene.material(i).plain)
            return false;
    return true;
}

} // namespace

/// Eight paths on their way.
struct PlainPackets::Paths {
    PlainLanes lanes;
    LaneSampler sampler;
    Vec3x8 throughput;
};

PlainPackets::PlainPackets(const CompiledScene& scene,
                           const RenderOptions& options,
                           const PathBudget& budget,
                           bool gathers)
    : scene_(scene)
    , bounces_(std::min(budget.diffuse, budget.total))
    , looksAround_(scene.environment().diffuseShare() > 0.0F) {
    if (gathers || scene.environment().isSampled() || scene.hasTransparency() ||
        !scene.hasObjects() || scene.scene().ground.visible)
        return;
    // Behind the first surface nothing may be met that is not plain.
    if ((bounces_ > 0 || looksAround_) && !isPlain(scene))
        return;
    for (const Light& light : scene.scene().lights) {
        const auto* sun = std::get_if<DirectionalLight>(&light);
        if (sun == nullptr || !scene.lights().isDelta(static_cast<int>(suns_.size())))
            return;
        suns_.push_back({normalize(-sun->direction), sun->irradiance / pi,
                         sun->castsShadows && options.shadows});
    }
    constexpr std::size_t fewLights = 2; // more of them are chosen from behind the first surface
    apply_ = scene.lights().count() == static_cast<int>(suns_.size()) &&
             (bounces_ == 0 || suns_.size() <= fewLights);
}

/// The cosines under which \p sun is seen, 0 where it is not.
Float8 PlainPackets::fromSun(const Sun& sun, const PlainLanes& lanes, RayCounts& counts) const {
    const Vec3x8 towards(sun.towards);
    const Float8 cosine = dot(lanes.normal, towards);
    Int8 lit = (cosine > 0.0F) & lanes.hit;
    const unsigned rays = bitsOf(lit);
    if (rays != 0 && sun.castsShadows) {
        alignas(32) RayPacket packet;
        put(packet, lanes, towards);
        if (lanes.scattered)
            scene_.structure().occludedScattered(packetMask(lit), packet);
        else
            scene_.structure().occluded(packetMask(lit), packet);
        lit &= load(packet.tfar) >= 0.0F;
        counts.shadow += static_cast<std::uint64_t>(std::popcount(rays));
    }
    return lit ? cosine : Float8{};
}

/// Light that falls on all lanes, over pi.
Vec3x8 PlainPackets::illuminate(const PlainLanes& lanes, RayCounts& counts) const {
    Vec3x8 light(scene_.ambient());
    for (const Sun& sun : suns_)
        light += Vec3x8(sun.irradiance) * fromSun(sun, lanes, counts);
    return light;
}

/// Chooses where each lane goes on, as PathTracer does; fewer lanes where chance ends paths.
Int8 PlainPackets::scatter(Paths& paths,
                           int bounce,
                           RayHitPacket& packet,
                           RayCounts& counts) const {
    const PlainLanes& lanes = paths.lanes;
    Float8 u;
    Float8 v;
    paths.sampler.next2D(u, v);
    Vec3x8 direction = toWorld(lanes.normal, cosineHemisphere(u, v));
    const Float8 below = least(dot(direction, lanes.flat), Float8{});
    if (bitsOf(below < 0.0F) != 0)
        direction =
            select(below < 0.0F, normalize(direction - lanes.flat * (2.0F * below)), direction);
    paths.throughput = paths.throughput * lanes.albedo;
    const Vec3x8& carried = paths.throughput;
    const Float8 most = greatest(greatest(carried.x, carried.y), carried.z);
    Int8 on = lanes.hit & (most > 0.0F);
    if (bounce + 1 > certainBounces) {
        const Float8 chance = least(greatest(most, eight(leastChance)), eight(1.0F));
        const Int8 asked = chance < 1.0F;
        on &= ~asked | (paths.sampler.next1D(asked) < chance);
        paths.throughput = paths.throughput * (1.0F / chance);
    }
    put(packet.ray, lanes, direction);
    for (int i = 0; i < packetWidth; ++i) {
        packet.hit.geomID[i] = Hit::none;
        packet.hit.instID[0][i] = Hit::none;
    }
    counts.diffuse += static_cast<std::uint64_t>(std::popcount(bitsOf(on)));
    return on;
}

/// What the lanes of \p asked see that leave the scene.
Vec3x8 PlainPackets::sky(const Int8& asked, const RayPacket& rays) const {
    const EnvironmentMap& sky = scene_.environment();
    if (sky.isConstant())
        return select(asked, Vec3x8(sky.mean() * sky.diffuseShare()), Vec3x8{});
    LaneColors seen;
    for (std::size_t i = 0; i < packetWidth; ++i)
        if (asked[i] != 0)
            seen.add(i, sky.radiance({rays.dir_x[i], rays.dir_y[i], rays.dir_z[i]}, diffuseSpread) *
                            sky.diffuseShare());
    return seen.color;
}

/// One more bounce: light of the sky, and unless it is the last one of the surfaces that are met.
/// False when no lane goes on.
bool PlainPackets::bounce(Paths& paths, int number, LaneColors& colors, RayCounts& counts) const {
    alignas(32) RayHitPacket packet;
    const Int8 on = scatter(paths, number, packet, counts);
    if (bitsOf(on) == 0)
        return false;
    const bool last = number >= bounces_;
    if (last)
        scene_.structure().occludedScattered(packetMask(on), packet.ray);
    else
        scene_.structure().intersectScattered(packetMask(on), packet);
    const Int8 met = last ? load(packet.ray.tfar) < 0.0F
                          : load(packet.hit.geomID) != static_cast<int>(Hit::none);
    const Int8 left = on & ~met;
    if (looksAround_ && bitsOf(left) != 0)
        colors.color += paths.throughput * sky(left, packet.ray);
    if (last)
        return false;
    paths.lanes.scattered = true;
    paths.lanes.fill(scene_, packet);
    if (bitsOf(paths.lanes.hit) == 0)
        return false;
    const Vec3x8 light = illuminate(paths.lanes, counts);
    colors.color +=
        select(paths.lanes.hit, paths.throughput * light * paths.lanes.albedo, Vec3x8{});
    return true;
}

bool PlainPackets::shade(const LanePlaces& places,
                         const RayHitPacket& packet,
                         LaneColors& colors,
                         RayCounts& counts) const {
    PlainLanes lanes;
    if (!lanes.fill(scene_, packet))
        return false;
    if (bitsOf(lanes.hit) == 0)
        return true;
    const Vec3x8 light = illuminate(lanes, counts);
    colors.color = select(lanes.hit, light * lanes.albedo, colors.color);
    colors.alpha = lanes.hit ? eight(1.0F) : colors.alpha;
    if (bounces_ == 0 && !looksAround_)
        return true;
    Paths paths{lanes, LaneSampler(places), Vec3x8(Vec3{1.0F, 1.0F, 1.0F})};
    for (int number = 0; bounce(paths, number, colors, counts); ++number) {
    }
    return true;
}

} // namespace qor::engine
