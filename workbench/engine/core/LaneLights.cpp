#include "workbench/engine/core/LaneLights.h"

namespace qor::engine {

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();

std::uint64_t numberOfRays(const Int8& mask) {
    return static_cast<std::uint64_t>(std::popcount(bitsOf(mask)));
}

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

LaneLights::Expected
LaneLights::expect(const LaneVertex& vertex, const Arrivals& lights, const Int8& asked) const {
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
    Expected result;
    result.light = value * lights.radiance * (extended ? 1.0F / lights.pdf : eight(1.0F));
    result.lit = asked & (lights.pdf > 0.0F) & (largestOf(result.light) > 0.0F);
    result.end = lights.distance < infinity ? lights.distance * almostThere - vertex.surface.offset
                                            : eight(infinity);
    result.rays = result.lit & lights.castsShadows & (result.end > 0.0F);
    // Whatever is closer than a ray could start is not lit.
    result.lit &= ~lights.castsShadows | result.rays;
    return result;
}

Vec3x8 LaneLights::Expected::seen(const RayPacket& packet) const {
    const Int8 blocked = rays & (load(packet.tfar) < 0.0F);
    return select(lit & ~blocked, light, Vec3x8{});
}

void LaneLights::putShadowRays(const LaneVertex& vertex,
                               const Arrivals& lights,
                               const Expected& expected,
                               RayPacket& packet) {
    putRays(packet, vertex.surface, lights.direction);
    store(packet.tfar, expected.end);
}

Vec3x8 LaneLights::arriving(const LaneVertex& vertex,
                            const Arrivals& lights,
                            const Int8& asked,
                            RayCounts& counts) const {
    const Expected expected = expect(vertex, lights, asked);
    alignas(32) RayPacket packet;
    putShadowRays(vertex, lights, expected, packet);
    if (bitsOf(expected.rays) == 0)
        return expected.seen(packet);
    if (vertex.scattered)
        scene_.structure().occludedScattered(packetMask(expected.rays), packet);
    else
        scene_.structure().occluded(packetMask(expected.rays), packet);
    counts.shadow += numberOfRays(expected.rays);
    return expected.seen(packet);
}

void LaneLights::direct(Request& one, Request& other, RayCounts& counts) const {
    const int count = scene_.lights().count();
    const auto looksAtAll = [&](const Request& request) {
        return bitsOf(request.vertex.on & (request.vertex.looks < count)) == 0;
    };
    if (!looksAtAll(one) || !looksAtAll(other)) {
        for (Request* request : {&one, &other})
            request->light = direct(request->vertex, request->sampler, counts);
        return;
    }
    for (int light = 0; light < count; ++light) {
        std::array<Expected, 2> expected;
        alignas(32) std::array<RayPacket, 2> packets;
        for (const auto& [request, to, packet] :
             {std::tie(one, expected[0], packets[0]), std::tie(other, expected[1], packets[1])}) {
            const Int8& on = request.vertex.on;
            const Arrivals lights = sampleAll(light, request.vertex, on, request.sampler);
            to = expect(request.vertex, lights, on);
            putShadowRays(request.vertex, lights, to, packet);
            counts.shadow += numberOfRays(to.rays);
        }
        scene_.structure().occluded(packetMask(expected[0].rays), packets[0],
                                    packetMask(expected[1].rays), packets[1]);
        one.light += expected[0].seen(packets[0]);
        other.light += expected[1].seen(packets[1]);
    }
}

} // namespace qor::engine
