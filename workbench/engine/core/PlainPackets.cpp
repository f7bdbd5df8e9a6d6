#include "workbench/engine/core/PlainPackets.h"

#include "workbench/engine/core/PlainLanes.h"

namespace qor::engine {

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr std::size_t width = packetWidth;

/// Rays of \p lanes into directions of their own or all into one.
void put(RayPacket& packet, const PlainLanes& lanes, std::size_t lane, const Vec3& direction) {
    packet.org_x[lane] = lanes.x[lane];
    packet.org_y[lane] = lanes.y[lane];
    packet.org_z[lane] = lanes.z[lane];
    packet.dir_x[lane] = direction.x;
    packet.dir_y[lane] = direction.y;
    packet.dir_z[lane] = direction.z;
    packet.tnear[lane] = 0.0F;
    packet.tfar[lane] = infinity;
    packet.time[lane] = 0.0F;
    packet.mask[lane] = ~0U;
    packet.id[lane] = 0;
    packet.flags[lane] = 0;
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
    std::array<Sampler, width> samplers;
    alignas(32) LaneFloats red; ///< throughput
    alignas(32) LaneFloats green;
    alignas(32) LaneFloats blue;
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

void PlainPackets::addSun(const Sun& sun,
                          const PlainLanes& lanes,
                          LaneColors& light,
                          RayCounts& counts) const {
    alignas(32) RayPacket packet;
    alignas(32) LaneFloats cosine;
    PacketMask asked;
    std::uint64_t rays = 0;
    for (std::size_t i = 0; i < width; ++i) {
        cosine[i] =
            lanes.nx[i] * sun.towards.x + lanes.ny[i] * sun.towards.y + lanes.nz[i] * sun.towards.z;
        asked.lane[i] = cosine[i] > 0.0F ? lanes.hit[i] : 0;
        cosine[i] = asked.lane[i] != 0 ? cosine[i] : 0.0F;
        rays += asked.lane[i] != 0 ? 1 : 0;
    }
    if (rays == 0)
        return;
    if (sun.castsShadows) {
        for (std::size_t i = 0; i < width; ++i)
            put(packet, lanes, i, sun.towards);
        if (lanes.scattered)
            scene_.structure().occludedScattered(asked, packet);
        else
            scene_.structure().occluded(asked, packet);
        for (std::size_t i = 0; i < width; ++i)
            cosine[i] = packet.tfar[i] < 0.0F ? 0.0F : cosine[i];
        counts.shadow += rays;
    }
    for (std::size_t i = 0; i < width; ++i) {
        light.red[i] += cosine[i] * sun.irradiance.x;
        light.green[i] += cosine[i] * sun.irradiance.y;
        light.blue[i] += cosine[i] * sun.irradiance.z;
    }
}

/// Light that falls on all lanes, over pi.
void PlainPackets::illuminate(const PlainLanes& lanes, LaneColors& light, RayCounts& counts) const {
    const Color& ambient = scene_.ambient();
    light.red.fill(ambient.x);
    light.green.fill(ambient.y);
    light.blue.fill(ambient.z);
    for (const Sun& sun : suns_)
        addSun(sun, lanes, light, counts);
}

/// Chooses where each lane goes on, as PathTracer does; fewer lanes where chance ends paths.
PacketMask
PlainPackets::scatter(Paths& paths, int bounce, RayHitPacket& packet, RayCounts& counts) const {
    PacketMask on;
    PlainLanes& lanes = paths.lanes;
    for (std::size_t i = 0; i < width; ++i) {
        packet.hit.geomID[i] = Hit::none;
        packet.hit.instID[0][i] = Hit::none;
        if (lanes.hit[i] == 0)
            continue;
        Sampler& sampler = paths.samplers[i];
        const Vec3 flat = lanes.flat(i);
        Vec3 direction = Frame(lanes.normal(i)).toWorld(cosineHemisphere(sampler.next2D()));
        if (const float below = dot(direction, flat); below < 0.0F)
            direction = normalize(direction - flat * (2.0F * below));
        paths.red[i] *= lanes.red[i];
        paths.green[i] *= lanes.green[i];
        paths.blue[i] *= lanes.blue[i];
        const float carried = std::max({paths.red[i], paths.green[i], paths.blue[i]});
        const float chance = survivalChance(carried, bounce + 1);
        if (!(chance > 0.0F) || (chance < 1.0F && sampler.next1D() >= chance))
            continue;
        paths.red[i] /= chance;
        paths.green[i] /= chance;
        paths.blue[i] /= chance;
        on.lane[i] = -1;
        ++counts.diffuse;
        put(packet.ray, lanes, i, direction);
    }
    return on;
}

void PlainPackets::addSky(const Paths& paths,
                          const PacketMask& left,
                          const RayPacket& rays,
                          LaneColors& colors) const {
    const EnvironmentMap& sky = scene_.environment();
    for (std::size_t i = 0; i < width; ++i) {
        if (left.lane[i] == 0)
            continue;
        const Color radiance =
            sky.radiance({rays.dir_x[i], rays.dir_y[i], rays.dir_z[i]}, diffuseSpread) *
            sky.diffuseShare();
        colors.red[i] += paths.red[i] * radiance.x;
        colors.green[i] += paths.green[i] * radiance.y;
        colors.blue[i] += paths.blue[i] * radiance.z;
    }
}

/// One more bounce: light of the sky, and unless it is the last one of the surfaces that are met.
/// False when no lane goes on.
bool PlainPackets::bounce(Paths& paths, int number, LaneColors& colors, RayCounts& counts) const {
    alignas(32) RayHitPacket packet;
    PacketMask on = scatter(paths, number, packet, counts);
    if (!on.any())
        return false;
    const bool last = number >= bounces_;
    if (last)
        scene_.structure().occludedScattered(on, packet.ray);
    else
        scene_.structure().intersectScattered(on, packet);
    PacketMask left;
    for (std::size_t i = 0; i < width; ++i) {
        const bool met = last ? packet.ray.tfar[i] < 0.0F : packet.hit.geomID[i] != Hit::none;
        left.lane[i] = on.lane[i] != 0 && !met ? -1 : 0;
    }
    if (looksAround_ && left.any())
        addSky(paths, left, packet.ray, colors);
    if (last)
        return false;
    paths.lanes.hit.fill(0);
    paths.lanes.scattered = true;
    paths.lanes.fill(scene_, packet);
    LaneColors light;
    illuminate(paths.lanes, light, counts);
    for (std::size_t i = 0; i < width; ++i) {
        const bool hit = paths.lanes.hit[i] != 0;
        colors.red[i] += hit ? paths.red[i] * light.red[i] * paths.lanes.red[i] : 0.0F;
        colors.green[i] += hit ? paths.green[i] * light.green[i] * paths.lanes.green[i] : 0.0F;
        colors.blue[i] += hit ? paths.blue[i] * light.blue[i] * paths.lanes.blue[i] : 0.0F;
    }
    return true;
}

bool PlainPackets::shade(const LanePlaces& places,
                         const RayHitPacket& packet,
                         LaneColors& colors,
                         RayCounts& counts) const {
    PlainLanes lanes;
    if (!lanes.fill(scene_, packet))
        return false;
    LaneColors light;
    illuminate(lanes, light, counts);
    for (std::size_t i = 0; i < width; ++i) {
        const bool hit = lanes.hit[i] != 0;
        colors.red[i] = hit ? light.red[i] * lanes.red[i] : colors.red[i];
        colors.green[i] = hit ? light.green[i] * lanes.green[i] : colors.green[i];
        colors.blue[i] = hit ? light.blue[i] * lanes.blue[i] : colors.blue[i];
        colors.alpha[i] = hit ? 1.0F : colors.alpha[i];
    }
    if (bounces_ == 0 && !looksAround_)
        return true;
    const auto sampler = [&](std::size_t i) {
        return pathSampler(places.seed[i], places.index[i]);
    };
    Paths paths{lanes,
                {sampler(0), sampler(1), sampler(2), sampler(3), sampler(4), sampler(5), sampler(6),
                 sampler(7)},
                {},
                {},
                {}};
    paths.red.fill(1.0F);
    paths.green.fill(1.0F);
    paths.blue.fill(1.0F);
    for (int number = 0; bounce(paths, number, colors, counts); ++number) {
    }
    return true;
}

} // namespace qor::engine
