#include "workbench/engine/core/LaneLights.h"

namespace qor::engine {

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();

} // namespace

void putRays(RayPacket& packet, const SurfaceLanes& surface, const Vec3x8& direction) {
    store(packet.org_x, surface.start.x);
    store(packet.org_y, surface.start.y);
    store(packet.org_z, surface.start.z);
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

void LaneLights::Arrivals::set(std::size_t lane, const LightSample& sample) {
    direction.set(lane, sample.direction);
    distance[lane] = sample.distance;
    radiance.set(lane, sample.radiance);
    pdf[lane] = sample.pdf;
    castsShadows[lane] = sample.castsShadows ? -1 : 0;
}

LaneLights::LaneLights(const CompiledScene& scene, const RenderOptions& options) : scene_(scene) {
    for (const Light& light : scene.scene().lights) {
        const auto* sun = std::get_if<DirectionalLight>(&light);
        if (sun == nullptr)
            return;
        // Any point of it tells its density and radiance.
        const LightSample sample = scene.lights().sample(static_cast<int>(suns_.size()), {}, {});
        const float s = std::sin(0.25F * sun->angleRad);
        suns_.push_back({Frame(normalize(-sun->direction)), sample.radiance, sample.pdf,
                         sample.pdf < infinity ? 2.0F * s * s : 0.0F,
                         sun->castsShadows && options.shadows});
    }
}

Float8 LaneLights::picks(const LaneVertex& vertex) const {
    return least(numberOf(vertex.looks) / static_cast<float>(std::max(1, scene_.lights().count())),
                 eight(1.0F));
}

Vec3x8 LaneLights::direct(const LaneVertex& vertex, LaneSampler& sampler, RayCounts& counts) const {
    const int count = scene_.lights().count();
    const Int8 all = vertex.on & (vertex.looks >= count);
    Vec3x8 sum;
    if (bitsOf(all) != 0)
        for (int light = 0; light < count; ++light)
            sum += arriving(vertex, sampleAll(light, vertex, all, sampler), all, counts);
    if (bitsOf(vertex.on & ~all) == 0)
        return sum;
    const Float8 share = 1.0F / picks(vertex);
    for (int look = 0;; ++look) {
        const Int8 some = vertex.on & ~all & (vertex.looks > look);
        if (bitsOf(some) == 0)
            return sum;
        sum += arriving(vertex, sampleSome(vertex, some, sampler), some, counts) * share;
    }
}

LaneLights::Arrivals LaneLights::sampleSun(const Sun& sun, const Float8& u, const Float8& v) {
    Arrivals result;
    result.direction = Vec3x8(sun.frame.z);
    if (!sun.isDelta()) {
        const Vec3x8 local = uniformCone(u, v, sun.oneMinusCos);
        result.direction = Vec3x8(sun.frame.x) * local.x + Vec3x8(sun.frame.y) * local.y +
                           Vec3x8(sun.frame.z) * local.z;
    }
    result.distance = eight(infinity);
    result.radiance = Vec3x8(sun.radiance);
    result.pdf = eight(sun.pdf);
    result.castsShadows = Int8{} - (sun.castsShadows ? 1 : 0);
    return result;
}

/// Every lane looks at the same light.
LaneLights::Arrivals LaneLights::sampleAll(int light,
                                           const LaneVertex& vertex,
                                           const Int8& asked,
                                           LaneSampler& sampler) const {
    Float8 u{};
    Float8 v{};
    const Sun* sun = static_cast<std::size_t>(light) < suns_.size()
                         ? &suns_[static_cast<std::size_t>(light)]
                         : nullptr;
    if (sun != nullptr ? !sun->isDelta() : !scene_.lights().isDelta(light))
        sampler.next2D(asked, u, v);
    if (sun != nullptr)
        return sampleSun(*sun, u, v);
    Arrivals result;
    const Vec3x8& at = vertex.surface.position;
    for (std::size_t i = 0; i < packetWidth; ++i)
        if (asked[i] != 0)
            result.set(i, scene_.lights().sample(light, {at.x[i], at.y[i], at.z[i]}, {u[i], v[i]}));
    return result;
}

/// Each lane chooses a light.
LaneLights::Arrivals
LaneLights::sampleSome(const LaneVertex& vertex, const Int8& asked, LaneSampler& sampler) const {
    const LightSampler& lights = scene_.lights();
    const Float8 choice = sampler.next1D(asked) * static_cast<float>(lights.count());
    const Int8 last = Int8{} + (lights.count() - 1);
    const Int8 whole = wholePart(choice);
    const Int8 chosen = whole < last ? whole : last;
    Int8 extended{};
    for (std::size_t i = 0; i < packetWidth; ++i)
        extended[i] = asked[i] != 0 && !lights.isDelta(chosen[i]) ? -1 : 0;
    Float8 u{};
    Float8 v{};
    sampler.next2D(extended, u, v);
    Arrivals result;
    const Vec3x8& at = vertex.surface.position;
    for (std::size_t i = 0; i < packetWidth; ++i)
        if (asked[i] != 0)
            result.set(i, lights.sample(chosen[i], {at.x[i], at.y[i], at.z[i]}, {u[i], v[i]}));
    return result;
}

Vec3x8 LaneLights::arriving(const LaneVertex& vertex,
                            const Arrivals& lights,
                            const Int8& asked,
                            RayCounts& counts) const {
    const LaneBsdf::Values values = vertex.bsdf.evaluate(lights.direction);
    const Int8 extended = lights.pdf < infinity;
    Vec3x8 value = values.diffuse;
    if (vertex.bsdf.anyShines()) {
        // The power heuristic: the reflector finds lights with an extent by itself, too.
        const Float8 own = lights.pdf * picks(vertex);
        const Float8 other = values.specularPdf * vertex.specular;
        const Float8 weight = own * own / (own * own + other * other);
        value += values.specular * (extended ? weight : eight(1.0F));
    }
    value = value * lights.radiance * (extended ? 1.0F / lights.pdf : eight(1.0F));
    const Int8 lit = asked & (lights.pdf > 0.0F) & (largestOf(value) > 0.0F);
    return select(unblocked(vertex, lights, lit, counts), value, Vec3x8{});
}

/// The lanes of \p asked that see their light.
Int8 LaneLights::unblocked(const LaneVertex& vertex,
                           const Arrivals& lights,
                           const Int8& asked,
                           RayCounts& counts) const {
    alignas(32) RayPacket packet;
    const Float8 end = lights.distance < infinity
                           ? lights.distance * almostThere - vertex.surface.offset
                           : eight(infinity);
    const Int8 open = asked & ~lights.castsShadows;
    const Int8 rays = asked & lights.castsShadows & (end > 0.0F);
    if (bitsOf(rays) == 0)
        return open;
    putRays(packet, vertex.surface, lights.direction);
    store(packet.tfar, end);
    if (vertex.scattered)
        scene_.structure().occludedScattered(packetMask(rays), packet);
    else
        scene_.structure().occluded(packetMask(rays), packet);
    counts.shadow += static_cast<std::uint64_t>(std::popcount(bitsOf(rays)));
    return open | (rays & (load(packet.tfar) >= 0.0F));
}

} // namespace qor::engine
