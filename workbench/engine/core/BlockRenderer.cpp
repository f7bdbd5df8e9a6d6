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

/// What all rays see that meet nothing, where it is the same in all directions.
std::optional<Color> evenBackground(const CompiledScene& scene) {
    const EnvironmentMap& environment = scene.environment();
    if (scene.scene().background.kind != Background::Kind::environment || !environment.isConstant())
        return {};
    return environment.radiance({0.0F, 0.0F, 1.0F}, 0.0F);
}

bool hasAreas(const std::vector<Light>& lights) {
    return std::any_of(lights.begin(), lights.end(),
                       [](const Light& light) { return std::holds_alternative<AreaLight>(light); });
}

} // namespace

BlockRenderer::BlockRenderer(const CompiledScene& scene,
                             const CameraRays& camera,
                             const RenderOptions& options,
                             const GatherCache* cache)
    : scene_(scene)
    , camera_(camera)
    , options_(options)
    , tracer_(scene, options, cache)
    , evenBackground_(evenBackground(scene))
    , seesLights_(hasAreas(scene.scene().lights))
    , packets_(scene, options, tracer_.fullBudget(), cache != nullptr) {}

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

PathState BlockRenderer::stateOf(const LanePlaces& places,
                                 const RayHitPacket& packet,
                                 std::size_t lane) const {
    PathState state;
    state.origin = {packet.ray.org_x[lane], packet.ray.org_y[lane], packet.ray.org_z[lane]};
    state.direction = {packet.ray.dir_x[lane], packet.ray.dir_y[lane], packet.ray.dir_z[lane]};
    state.tNear = packet.ray.tnear[lane];
    state.budget = tracer_.fullBudget();
    state.cone = camera_.cone();
    state.raster = camera_.raster(places.x[lane], places.y[lane]);
    return state;
}

BlockRenderer::Seeds BlockRenderer::seedsOf(int x, int y) const {
    Seeds seeds{};
    for (int i = 0; i < blockPixels; ++i)
        seeds[static_cast<std::size_t>(i)] =
            pixelSeed(x + i % blockWidth, y + i / blockWidth, options_.seed);
    return seeds;
}

/// Calls \p visit(look) for each packet of \p work that has been traced.
template <typename Visit>
void BlockRenderer::renderLooks(int x, int y, const BlockWork& work, const Visit& visit) {
    static_assert(blockPixels == packetWidth);
    const Seeds seeds = seedsOf(x, y);
    constexpr int most = std::tuple_size_v<decltype(looks_)>;
    for (int first = 0; first < work.count; first += most) {
        const int count = std::min(most, work.count - first);
        for (int i = 0; i < count; ++i)
            place(x, y, first + i, work, seeds, looks_[static_cast<std::size_t>(i)]);
        trace(looks_.data(), count);
        for (int i = 0; i < count; ++i)
            visit(looks_[static_cast<std::size_t>(i)]);
    }
}

BlockSums BlockRenderer::render(int x, int y, const BlockWork& work) {
    BlockSums sums;
    renderLooks(x, y, work, [&](const Look& look) { addUp(look.colors, look.pixels, sums); });
    return sums;
}

std::array<BlockSums, 2> BlockRenderer::renderHalves(int x, int y, const BlockWork& work) {
    std::array<BlockSums, 2> halves;
    const Int8 middle = Int8{} + (work.first + work.count / 2);
    renderLooks(x, y, work, [&](const Look& look) {
        const Int8 early = std::bit_cast<Int8>(look.places.index) < middle;
        addUp(look.colors, look.pixels, early, halves[0]);
        addUp(look.colors, look.pixels, ~early, halves[1]);
    });
    return halves;
}

std::array<BlockSums, 2> BlockRenderer::renderPair(int x, int y, int sample) {
    std::array<BlockSums, 2> sums;
    for (std::size_t i = 0; i < sums.size(); ++i) {
        const int blockX = x + static_cast<int>(i) * blockWidth;
        place(blockX, y, 0, {0, 0, sample, 1}, seedsOf(blockX, y), looks_[i]);
    }
    trace(looks_.data(), 2);
    for (std::size_t i = 0; i < sums.size(); ++i)
        addUp(looks_[i].colors, looks_[i].pixels, sums[i]);
    return sums;
}

/// Gives each lane of packet \p number of a block its sample and that its place in its pixel. Pixel
/// by pixel, so that the rays of a packet lie as close together as can be.
void BlockRenderer::place(
    int x, int y, int number, const BlockWork& work, const Seeds& seeds, Look& look) const {
    const Int8 lane{0, 1, 2, 3, 4, 5, 6, 7};
    const Int8 sample = lane + number * packetWidth;
    LanePlaces& places = look.places;
    look.pixels = wholePart((numberOf(sample) + 0.5F) * (1.0F / static_cast<float>(work.count)));
    places.index = std::bit_cast<UInt8>(sample - look.pixels * work.count + work.first);
    for (std::size_t i = 0; i < packetWidth; ++i)
        places.seed[i] = seeds[static_cast<std::size_t>(look.pixels[i])];
    const DimensionBits<UInt8> bits(places.seed, places.index, UInt8{} + 1U);
    const Float8 u = unitFloat(bits.first());
    const Float8 v = unitFloat(bits.second());
    for (std::size_t i = 0; i < packetWidth; ++i) {
        const Vec2 offset = filterOffset({u[i], v[i]});
        places.x[i] = offset.x;
        places.y[i] = offset.y;
    }
    places.x += numberOf(look.pixels % blockWidth + x);
    places.y += numberOf(look.pixels / blockWidth + y);
}

std::array<std::array<float, 4>, packetWidth> BlockRenderer::renderCoarse(int x, int y) {
    constexpr int cell = 4;
    Look& look = looks_.front();
    LanePlaces& places = look.places;
    for (int i = 0; i < packetWidth; ++i) {
        const int cellX = x + i % blockWidth * cell;
        const int cellY = y + i / blockWidth * cell;
        const auto lane = static_cast<std::size_t>(i);
        places.x[lane] = static_cast<float>(cellX) + 0.5F * cell;
        places.y[lane] = static_cast<float>(cellY) + 0.5F * cell;
        places.seed[lane] = pixelSeed(cellX, cellY, options_.seed);
    }
    places.index = UInt8{};
    trace(&look, 1);
    const LaneColors& colors = look.colors;
    std::array<std::array<float, 4>, packetWidth> pixels{};
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = {colors.color.x[i], colors.color.y[i], colors.color.z[i], colors.alpha[i]};
    return pixels;
}

/// One packet or two.
void BlockRenderer::trace(Look* looks, int count) {
    static const PacketMask all{{-1, -1, -1, -1, -1, -1, -1, -1}};
    for (int i = 0; i < count; ++i)
        camera_.at(looks[i].places.x, looks[i].places.y, looks[i].packet);
    tracer_.counts().camera += static_cast<std::uint64_t>(count) * packetWidth;
    if (scene_.hasObjects() && count == 2)
        scene_.structure().intersect(looks[0].packet, looks[1].packet);
    else if (scene_.hasObjects())
        scene_.structure().intersect(all, looks[0].packet);
    if (packets_.apply())
        return traceInPackets(looks, count);
    for (int i = 0; i < count; ++i)
        traceAny(looks[i].places, looks[i].packet, looks[i].colors);
}

void BlockRenderer::traceInPackets(Look* looks, int count) {
    for (int i = 0; i < count; ++i)
        showBackground(looks[i].places, looks[i].packet, looks[i].colors);
    const auto alone = packets_.trace({looks, looks + count - 1}, count, camera_.cone(), tracer_);
    for (int k = 0; k < count; ++k) {
        Look& look = looks[k];
        for (std::size_t i = 0; i < packetWidth; ++i) {
            if (((alone[static_cast<std::size_t>(k)] >> i) & 1U) == 0)
                continue;
            Sampler sampler = pathSampler(look.places.seed[i], look.places.index[i]);
            const PathResult result = tracer_.trace(stateOf(look.places, look.packet, i), sampler);
            look.colors.set(i, result.color, result.alpha);
        }
    }
}

/// What is behind everything where lanes meet nothing, else nothing yet; and lights before it.
void BlockRenderer::showBackground(const LanePlaces& places,
                                   const RayHitPacket& packet,
                                   LaneColors& colors) {
    const Int8 hits = load(packet.hit.geomID) != static_cast<int>(Hit::none);
    colors.color = select(hits, Vec3x8{}, Vec3x8(evenBackground_.value_or(Color{})));
    colors.alpha = hits ? eight(1.0F) : Float8{};
    if (!seesLights_ && (evenBackground_ || bitsOf(~hits) == 0))
        return;
    for (std::size_t i = 0; i < packetWidth; ++i) {
        const bool hit = hits[i] != 0;
        const PathState state = stateOf(places, packet, i);
        const Color behind = hit ? Color{} : tracer_.leaving(state);
        colors.color.set(i, behind +
                                tracer_.lightsOnTheWay(state, hit ? packet.ray.tfar[i] : infinity));
    }
}

void BlockRenderer::traceAny(const LanePlaces& places,
                             const RayHitPacket& packet,
                             LaneColors& colors) {
    SeenLanes seen;
    for (std::size_t i = 0; i < packetWidth; ++i) {
        const PathState state = stateOf(places, packet, i);
        Sampler sampler = pathSampler(places.seed[i], places.index[i]);
        const Hit hit = hitOf(packet, i);
        const float farthest = hit ? hit.t : infinity;
        const bool onGround =
            hitGround(scene_.scene().ground, state.origin, state.direction, farthest) >= 0.0F;
        if (!hit && !onGround) {
            colors.set(i, tracer_.lightsOnTheWay(state, infinity) + tracer_.leaving(state), 0.0F);
            continue;
        }
        Surface surface;
        if (!onGround)
            surface = surfaceAt(scene_, hit, state.direction, state.cone);
        if (onGround || surface.material.opacity < 1.0F) {
            const PathResult result = tracer_.trace(state, sampler);
            colors.set(i, result.color, result.alpha);
            continue;
        }
        colors.set(i, tracer_.lightsOnTheWay(state, farthest), 1.0F);
        seen[i].emplace(Seen{state, tracer_.vertexAt(state, surface), sampler, {}});
    }
    addDirectLight(seen);
    for (std::size_t i = 0; i < packetWidth; ++i) {
        if (!seen[i])
            continue;
        const Color light = seen[i]->direct + tracer_.indirectLight(seen[i]->vertex, seen[i]->state,
                                                                    seen[i]->sampler);
        colors.add(i, light);
    }
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
        arriving[i] = PathTracer::unshadowed(seen[i]->vertex, sample).whole();
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
