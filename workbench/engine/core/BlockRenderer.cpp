#include "workbench/engine/core/BlockRenderer.h"

namespace qor::engine {

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
/// Standard deviation and reach of the Gaussian filter, in pixels.
constexpr float filterSigma = 0.5F;
constexpr float filterReach = 1.5F;

void put(RayPacket& packet, std::size_t lane, const Ray& ray) {
    packet.org_x[lane] = ray.origin.x;
    packet.org_y[lane] = ray.origin.y;
    packet.org_z[lane] = ray.origin.z;
    packet.dir_x[lane] = ray.direction.x;
    packet.dir_y[lane] = ray.direction.y;
    packet.dir_z[lane] = ray.direction.z;
    packet.tnear[lane] = ray.tNear;
    packet.tfar[lane] = ray.tFar;
    packet.time[lane] = 0.0F;
    packet.mask[lane] = ~0U;
    packet.id[lane] = 0;
    packet.flags[lane] = 0;
}

Hit hitOf(const RayHitPacket& packet, std::size_t lane) {
    if (packet.hit.geomID[lane] == Hit::none)
        return {};
    return {packet.hit.instID[0][lane], packet.hit.primID[lane], packet.ray.tfar[lane],
            packet.hit.u[lane], packet.hit.v[lane]};
}

/// The numbers of everything behind the camera are independent of those that place the ray.
Sampler pathSampler(std::uint32_t seed, std::uint32_t index) {
    return {hash32(seed ^ 0x68bc21ebU), index};
}

} // namespace

Vec2 BlockRenderer::filterOffset(const Vec2& u) const {
    if (options_.filter == PixelFilter::box)
        return u;
    // Box and Muller's method, cut off at the filter's reach.
    const float cut =
        1.0F - std::exp(-0.5F * filterReach * filterReach / (filterSigma * filterSigma));
    const float r = filterSigma * std::sqrt(-2.0F * std::log(1.0F - u.x * cut));
    const float phi = 2.0F * pi * u.y;
    return {0.5F + r * std::cos(phi), 0.5F + r * std::sin(phi)};
}

PathState BlockRenderer::stateOf(const Lane& lane, const Ray& ray) const {
    PathState state;
    state.origin = ray.origin;
    state.direction = ray.direction;
    state.tNear = ray.tNear;
    state.budget = tracer_.fullBudget();
    state.cone = camera_.cone();
    state.raster = camera_.raster(lane.x, lane.y);
    return state;
}

BlockSums BlockRenderer::render(int x, int y, const BlockWork& work) {
    std::array<std::uint32_t, blockPixels> seeds{};
    for (int i = 0; i < blockPixels; ++i)
        seeds[static_cast<std::size_t>(i)] =
            pixelSeed(x + i % blockWidth, y + i / blockWidth, options_.seed);
    BlockSums sums;
    Lanes lanes;
    Results results;
    for (int first = 0; first < work.count * blockPixels; first += packetWidth) {
        for (int i = 0; i < packetWidth; ++i) {
            // Pixel by pixel, so that the rays of a packet lie as close together as can be.
            const int pixel = (first + i) / work.count;
            Lane& lane = lanes[static_cast<std::size_t>(i)];
            lane.seed = seeds[static_cast<std::size_t>(pixel)];
            lane.index = static_cast<std::uint32_t>(work.first + (first + i) % work.count);
            const Vec2 offset = filterOffset(scrambledPoint(lane.index, lane.seed));
            lane.x = static_cast<float>(x + pixel % blockWidth) + offset.x;
            lane.y = static_cast<float>(y + pixel / blockWidth) + offset.y;
        }
        trace(lanes, results);
        for (int i = 0; i < packetWidth; ++i) {
            const auto pixel = static_cast<std::size_t>((first + i) / work.count);
            const PathResult& r = results[static_cast<std::size_t>(i)];
            const float light = luminance(r.color);
            sums.rgba[pixel * 4] += r.color.x;
            sums.rgba[pixel * 4 + 1] += r.color.y;
            sums.rgba[pixel * 4 + 2] += r.color.z;
            sums.rgba[pixel * 4 + 3] += r.alpha;
            sums.squares[pixel] += light * light;
        }
    }
    return sums;
}

std::array<std::array<float, 4>, packetWidth> BlockRenderer::renderCoarse(int x, int y) {
    constexpr int cell = 4;
    Lanes lanes;
    for (int i = 0; i < packetWidth; ++i) {
        const int cellX = x + i % blockWidth * cell;
        const int cellY = y + i / blockWidth * cell;
        lanes[static_cast<std::size_t>(i)] = {static_cast<float>(cellX) + 0.5F * cell,
                                              static_cast<float>(cellY) + 0.5F * cell,
                                              pixelSeed(cellX, cellY, options_.seed), 0};
    }
    Results results;
    trace(lanes, results);
    std::array<std::array<float, 4>, packetWidth> pixels{};
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = {results[i].color.x, results[i].color.y, results[i].color.z, results[i].alpha};
    return pixels;
}

void BlockRenderer::trace(const Lanes& lanes, Results& results) {
    alignas(32) RayHitPacket packet;
    PacketMask all;
    for (std::size_t i = 0; i < packetWidth; ++i) {
        put(packet.ray, i, camera_.at(lanes[i].x, lanes[i].y));
        packet.hit.geomID[i] = Hit::none;
        packet.hit.instID[0][i] = Hit::none;
        all.lane[i] = -1;
    }
    tracer_.counts().camera += packetWidth;
    if (scene_.hasObjects())
        scene_.structure().intersect(all, packet);

    SeenLanes seen;
    for (std::size_t i = 0; i < packetWidth; ++i) {
        const Lane& lane = lanes[i];
        const PathState state = stateOf(lane, camera_.at(lane.x, lane.y));
        Sampler sampler = pathSampler(lane.seed, lane.index);
        const Hit hit = hitOf(packet, i);
        const float farthest = hit ? hit.t : infinity;
        if (hitGround(scene_.scene().ground, state.origin, state.direction, farthest) >= 0.0F) {
            results[i] = tracer_.trace(state, sampler);
            continue;
        }
        if (!hit) {
            results[i] = {tracer_.lightsOnTheWay(state, infinity) + tracer_.leaving(state), 0.0F};
            continue;
        }
        const Surface surface = surfaceAt(scene_, hit, state.direction, state.cone);
        if (surface.material.opacity < 1.0F) {
            results[i] = tracer_.trace(state, sampler);
            continue;
        }
        results[i] = {tracer_.lightsOnTheWay(state, farthest), 1.0F};
        seen[i].emplace(Seen{state, tracer_.vertexAt(state, surface), sampler, {}});
    }
    addDirectLight(seen);
    for (std::size_t i = 0; i < packetWidth; ++i)
        if (seen[i])
            results[i].color +=
                seen[i]->direct +
                tracer_.indirectLight(seen[i]->vertex, seen[i]->state, seen[i]->sampler);
}

/// Lights that are looked at by every lane go in packets; where light passes through surfaces, or
/// where there are too many lights, each lane goes its own way.
void BlockRenderer::addDirectLight(SeenLanes& seen) {
    const bool inPackets = !scene_.hasTransparency() && scene_.hasObjects();
    for (auto& lane : seen)
        if (lane && !(inPackets && lane->vertex.lightPick >= 1.0F))
            lane->direct = tracer_.directLight(lane->vertex, lane->sampler);
    if (!inPackets)
        return;
    for (int light = 0; light < scene_.lights().count(); ++light)
        addLight(seen, light);
}

void BlockRenderer::addLight(SeenLanes& seen, int light) {
    alignas(32) RayPacket packet;
    PacketMask asked;
    std::array<Color, packetWidth> arriving;
    for (std::size_t i = 0; i < packetWidth; ++i) {
        if (!seen[i] || seen[i]->vertex.lightPick < 1.0F)
            continue;
        const Surface& surface = seen[i]->vertex.surface;
        const LightSampler& lights = scene_.lights();
        const Vec2 u = lights.isDelta(light) ? Vec2{} : seen[i]->sampler.next2D();
        const LightSample sample = lights.sample(light, surface.position, u);
        arriving[i] = PathTracer::unshadowed(seen[i]->vertex, sample);
        if (!(maxComponent(arriving[i]) > 0.0F))
            continue;
        if (!sample.castsShadows) {
            seen[i]->direct += arriving[i];
            continue;
        }
        const Ray ray = tracer_.shadowRay(surface, sample);
        arriving[i] *= tracer_.groundTransparency(ray);
        put(packet, i, ray);
        asked.lane[i] = ray.tFar > 0.0F ? -1 : 0;
    }
    if (!asked.any())
        return;
    scene_.structure().occluded(asked, packet);
    for (std::size_t i = 0; i < packetWidth; ++i) {
        if (asked.lane[i] == 0)
            continue;
        ++tracer_.counts().shadow;
        if (!(packet.tfar[i] < 0.0F))
            seen[i]->direct += arriving[i];
    }
}

} // namespace qor::engine
