#include "workbench/engine/core/PacketTracer.h"

namespace qor::engine {

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();

} // namespace

PacketTracer::PacketTracer(const CompiledScene& scene,
                           const RenderOptions& options,
                           const PathBudget& budget,
                           bool gathers)
    : scene_(scene)
    , options_(options)
    , lights_(scene, options)
    , budget_(budget)
    , constantSky_(scene.environment().isConstant())
    , apply_(!gathers && !scene.hasTransparency() && scene.hasObjects() &&
             !scene.scene().ground.visible) {
    for (std::uint32_t i = 0; i < scene.scene().materials.size(); ++i)
        skyOnly_ = skyOnly_ && !scene.material(i).emissive;
    int number = 0;
    for (const Light& light : scene.scene().lights) {
        skyOnly_ = skyOnly_ && std::holds_alternative<DirectionalLight>(light);
        hittable_ = hittable_ || !scene.lights().isDelta(number++);
    }
}

LaneBsdf PacketTracer::bsdfOf(const LanePaths& paths, const SurfaceLanes& surface) const {
    LaneMaterials material = surface.material;
    // As PathTracer::vertexAt: what rough reflectors focus could be found only by chance.
    if (!options_.caustics)
        material.roughness = greatest(material.roughness, paths.roughness);
    return {material, surface.normal, surface.toEye};
}

/// See PathTracer::setProbabilities.
void PacketTracer::setProbabilities(const LanePaths& paths, LaneVertex& vertex) const {
    const EnvironmentMap& sky = scene_.environment();
    const bool evenSky = sky.diffuseShare() > 0.0F && !sky.isSampled();
    const bool ambient = maxComponent(scene_.ambient()) > 0.0F;
    const Int8 never{};
    const Int8 always = ~never;
    const Int8 spent = paths.total <= 0;
    const Int8 noDiffuse = evenSky ? never : spent | (paths.diffuse <= 0);
    const Int8 sees =
        (scene_.lights().canBeHit() ? always : never) | (ambient ? paths.straight : never);
    const Int8 noSpecular = (spent | (paths.reflections <= 0)) & ~sees;
    const Float8 diffuse = noDiffuse ? Float8{} : vertex.bsdf.diffuseShare();
    const Float8 specular = noSpecular ? Float8{} : vertex.bsdf.specularShare();
    const Float8 sum = diffuse + specular;
    const Float8 scale = sum > 0.0F ? 1.0F / sum : Float8{};
    vertex.diffuse = diffuse * scale;
    vertex.specular = specular * scale;
}

/// See PathTracer::bounded.
Vec3x8 PacketTracer::bounded(const LanePaths& paths, const Vec3x8& light) const {
    const float most = options_.brightestIndirect;
    if (!(most > 0.0F) || paths.bounces == 0)
        return light;
    const Float8 brightest = largestOf(light);
    return light * (brightest > most ? most / brightest : eight(1.0F));
}

/// Light of the surfaces that the paths of \p on have met, and where they go on. False when none
/// does.
bool PacketTracer::shade(LanePaths& paths,
                         const SurfaceLanes& surface,
                         const Int8& on,
                         LaneColors& colors,
                         RayCounts& counts) const {
    const LaneVertex vertex = vertexOf(paths, surface, on);
    return goOn(paths, vertex, lights_.direct(vertex, paths.sampler, counts), colors, counts);
}

LaneVertex
PacketTracer::vertexOf(const LanePaths& paths, const SurfaceLanes& surface, const Int8& on) const {
    LaneVertex vertex{surface, bsdfOf(paths, surface), on};
    vertex.looks = paths.straight ? Int8{} + looksAtFirst : Int8{} + looksLater;
    vertex.scattered = paths.bounces > 0;
    setProbabilities(paths, vertex);
    return vertex;
}

/// Counts \p direct light and all other that \p vertex has by itself. False when no path goes on.
bool PacketTracer::goOn(LanePaths& paths,
                        const LaneVertex& vertex,
                        const Vec3x8& direct,
                        LaneColors& colors,
                        RayCounts& counts) const {
    const Vec3x8 light = direct + vertex.bsdf.diffuseAlbedo() * Vec3x8(scene_.ambient()) *
                                      vertex.surface.material.occlusion;
    colors.color += select(vertex.on, bounded(paths, paths.throughput * light), Vec3x8{});
    paths.on = scatter(paths, vertex, counts);
    return bitsOf(paths.on) != 0;
}

/// Chooses where each lane goes on, as PathTracer does; fewer lanes where chance ends paths.
Int8 PacketTracer::scatter(LanePaths& paths, const LaneVertex& vertex, RayCounts& counts) const {
    const LaneBsdf& bsdf = vertex.bsdf;
    if (bitsOf(vertex.on & (vertex.diffuse + vertex.specular > 0.0F)) == 0)
        return Int8{};
    Float8 u;
    Float8 v;
    paths.sampler.next2D(vertex.on, u, v);
    Int8 diffuse = vertex.on & (vertex.diffuse > 0.0F);
    LaneBsdf::Samples sample = bsdf.sampleDiffuse(u, v);
    sample.valid &= diffuse;
    if (bsdf.anyShines()) {
        const Int8 asked = vertex.on & bsdf.shining();
        const Float8 choice = paths.sampler.next1D(asked);
        diffuse &= ~asked | (choice < vertex.diffuse);
        const Int8 specular = asked & ~diffuse & (choice - vertex.diffuse < vertex.specular);
        const LaneBsdf::Samples mirrored = bsdf.sampleSpecular(u, v);
        sample.direction = select(diffuse, sample.direction, mirrored.direction);
        sample.weight = select(diffuse, sample.weight, mirrored.weight);
        sample.pdf = diffuse ? sample.pdf : mirrored.pdf;
        sample.valid = (diffuse & sample.valid) | (specular & mirrored.valid);
    }
    paths.pick = lights_.picks(vertex);
    paths.follow(vertex, sample, diffuse, diffuse ? vertex.diffuse : vertex.specular);
    const Int8 on = paths.survivors(vertex.on & sample.valid);
    countRays(on, diffuse, counts);
    return on;
}

void PacketTracer::countRays(const Int8& on, const Int8& diffuse, RayCounts& counts) {
    counts.diffuse += static_cast<std::uint64_t>(std::popcount(bitsOf(on & diffuse)));
    counts.reflection += static_cast<std::uint64_t>(std::popcount(bitsOf(on & ~diffuse)));
}

/// Traces the rays on their way; the lanes that have met something.
Int8 PacketTracer::query(LanePaths& paths) const {
    RayHitPacket& packet = paths.packet;
    for (int i = 0; i < packetWidth; ++i) {
        packet.hit.geomID[i] = Hit::none;
        packet.hit.instID[0][i] = Hit::none;
    }
    // Who only looks for lights behind everything need not know what is before them.
    const Int8 asks = skyOnly_ ? paths.on & paths.lightsOnly : Int8{};
    const Int8 goes = paths.on & ~asks;
    if (bitsOf(asks) != 0)
        scene_.structure().occludedScattered(packetMask(asks), packet.ray);
    const Int8 blocked = asks & (load(packet.ray.tfar) < 0.0F);
    if (bitsOf(goes) != 0)
        scene_.structure().intersectScattered(packetMask(goes), packet);
    return blocked | (goes & (load(packet.hit.geomID) != static_cast<int>(Hit::none)));
}

/// Follows the paths of \p asked to their ends one by one; the others stay.
Int8 PacketTracer::goAlone(LanePaths& paths,
                           const Int8& asked,
                           LaneColors& colors,
                           PathTracer& single) const {
    for (std::size_t i = 0; i < packetWidth; ++i) {
        if (asked[i] == 0)
            continue;
        Sampler sampler = paths.sampler.of(i);
        colors.add(i, single.trace(paths.of(i, budget_), sampler).color);
    }
    return paths.on & ~asked;
}

/// Lights of the list that rays run into before anything else.
void PacketTracer::seeLights(const LanePaths& paths,
                             const Int8& met,
                             LaneColors& colors,
                             PathTracer& single) const {
    const Int8 asked = paths.on & ~paths.lightsCounted & (skyOnly_ ? ~met : ~Int8{});
    if (!hittable_ || bitsOf(asked) == 0)
        return;
    Vec3x8 seen;
    for (std::size_t i = 0; i < packetWidth; ++i)
        if (asked[i] != 0)
            seen.set(i, single.lightsOnTheWay(paths.of(i, budget_),
                                              met[i] != 0 ? paths.packet.ray.tfar[i] : infinity));
    colors.color += select(asked, bounded(paths, paths.throughput * seen), Vec3x8{});
}

/// See PathTracer::leaving.
void PacketTracer::leave(const LanePaths& paths,
                         const Int8& left,
                         LaneColors& colors,
                         PathTracer& single) const {
    const EnvironmentMap& sky = scene_.environment();
    const Color even = sky.isBlack() ? Color{} : sky.mean();
    Vec3x8 seen =
        select(paths.straight, Vec3x8(even + scene_.ambient()), Vec3x8(even * sky.diffuseShare()));
    if (!constantSky_)
        for (std::size_t i = 0; i < packetWidth; ++i)
            if (left[i] != 0)
                seen.set(i, single.leaving(paths.of(i, budget_)));
    colors.color += select(left, bounded(paths, paths.throughput * seen), Vec3x8{});
}

/// One more ray of each path and what it meets. False when no path goes on.
bool PacketTracer::bounce(LanePaths& paths, LaneColors& colors, PathTracer& single) const {
    Int8 met = query(paths);
    const Int8 shaded = met & ~paths.lightsOnly;
    std::optional<SurfaceLanes> surface;
    if (bitsOf(shaded) != 0) {
        surface.emplace(scene_, paths.packet, shaded, paths.cones);
        if (const Int8 other = shaded & surface->other; bitsOf(other) != 0)
            paths.on = goAlone(paths, other, colors, single);
    }
    if (!skyOnly_)
        paths.on = goAlone(paths, met & paths.lightsOnly, colors, single);
    met &= paths.on;
    seeLights(paths, met, colors, single);
    const Int8 left = paths.on & ~met;
    if (bitsOf(left) != 0)
        leave(paths, left, colors, single);
    if (const Int8 blocked = met & paths.lightsOnly & paths.straight; bitsOf(blocked) != 0)
        colors.color += select(blocked, paths.throughput * Vec3x8(scene_.ambient()), Vec3x8{});
    const Int8 on = met & ~paths.lightsOnly;
    return bitsOf(on) != 0 && shade(paths, *surface, on, colors, single.counts());
}

/// What the lanes of a camera packet meet first.
struct PacketTracer::Start {
    LanePaths paths;
    SurfaceLanes surface;
    LaneVertex vertex;

    Start(const PacketTracer& tracer,
          const CameraPacket& from,
          const RayCone& cone,
          const Int8& hit)
        : paths(from.places, cone, tracer.budget_)
        , surface(tracer.scene_, from.packet, hit, paths.cones)
        , vertex(tracer.vertexOf(paths, surface, hit & ~surface.other)) {}

    Start(const Start&) = delete; // the vertex knows where its surface is
    Start(Start&&) = delete;
    Start& operator=(const Start&) = delete;
    Start& operator=(Start&&) = delete;
    ~Start() = default;
};

std::array<unsigned, PacketTracer::mostPackets>
PacketTracer::trace(const std::array<CameraPacket*, mostPackets>& packets,
                    int count,
                    const RayCone& cone,
                    PathTracer& single) const {
    std::array<std::optional<Start>, mostPackets> starts;
    std::array<unsigned, mostPackets> alone{};
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        const Int8 hit = load(packets[i]->packet.hit.geomID) != static_cast<int>(Hit::none);
        if (bitsOf(hit) == 0)
            continue;
        alone[i] = bitsOf(hit & starts[i].emplace(*this, *packets[i], cone, hit).surface.other);
    }
    const std::array<Vec3x8, mostPackets> direct = directLight(starts, single.counts());
    for (std::size_t i = 0; i < starts.size(); ++i)
        if (starts[i] && goOn(starts[i]->paths, starts[i]->vertex, direct[i], packets[i]->colors,
                              single.counts()))
            while (bounce(starts[i]->paths, packets[i]->colors, single)) {
            }
    return alone;
}

/// Of the lights in the list. Where two packets have met something, together.
std::array<Vec3x8, PacketTracer::mostPackets>
PacketTracer::directLight(std::array<std::optional<Start>, mostPackets>& starts,
                          RayCounts& counts) const {
    if (starts[0] && starts[1]) {
        LaneLights::Request one{starts[0]->vertex, starts[0]->paths.sampler};
        LaneLights::Request other{starts[1]->vertex, starts[1]->paths.sampler};
        lights_.direct(one, other, counts);
        return {one.light, other.light};
    }
    std::array<Vec3x8, mostPackets> light;
    for (std::size_t i = 0; i < starts.size(); ++i)
        if (starts[i])
            light[i] = lights_.direct(starts[i]->vertex, starts[i]->paths.sampler, counts);
    return light;
}

} // namespace qor::engine
