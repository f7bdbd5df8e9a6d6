#include "workbench/engine/core/PathTracer.h"

#include "workbench/engine/core/GatherCache.h"

namespace qor::engine {

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
/// Layers of cut-out or see-through surfaces that one ray passes.
constexpr int maxLayers = 64;
/// Glass smoother than this is not made rougher behind other surfaces.
constexpr float clearGlass = 0.05F;

float probabilityOf(const Vertex& vertex, Lobe lobe) {
    return vertex.probability[static_cast<std::size_t>(lobe)];
}

float facetProbability(const Vertex& vertex) {
    return probabilityOf(vertex, Lobe::specular) + probabilityOf(vertex, Lobe::transmission);
}

} // namespace

PathBudget PathTracer::fullBudget() const {
    const TraceDepth& depth = options_.depth;
    const int bounces =
        options_.finalGather.on ? std::max(1, depth.diffuseBounces) : depth.diffuseBounces;
    return {options_.raytracing ? depth.reflections : 0,
            options_.raytracing ? depth.refractions : 0, bounces, std::max(depth.total, bounces)};
}

PathResult PathTracer::trace(PathState state, Sampler& sampler, float* firstDistance) {
    PathResult result;
    Surface surface;
    while (advance(state, sampler, surface, result)) {
        if (firstDistance != nullptr) {
            *firstDistance = surface.distance;
            firstDistance = nullptr;
        }
        const Vertex vertex = vertexAt(state, surface);
        result.color += bounded(
            state, state.throughput * (directLight(vertex, sampler) + ownLight(vertex, state)));
        if (!scatter(state, vertex, sampler))
            break;
    }
    return result;
}

void PathTracer::collect(PathState state, Sampler& sampler, std::vector<Surface>& spots) {
    spots_ = &spots;
    PathResult ignored;
    Surface surface;
    while (advance(state, sampler, surface, ignored)) {
        Vertex vertex = vertexAt(state, surface);
        collectAt(vertex);
        vertex.gathered = true;
        setProbabilities(state, vertex);
        if (!scatter(state, vertex, sampler))
            break;
    }
    spots_ = nullptr;
}

void PathTracer::collectAt(const Vertex& vertex) {
    const Surface& surface = vertex.surface;
    if (maxComponent(vertex.bsdf.diffuseAlbedo()) > 0.0F &&
        !cache_->covers(surface.position, surface.normal))
        spots_->push_back(surface);
}

Color PathTracer::bounded(const PathState& state, const Color& light) const {
    const float most = options_.brightestIndirect;
    const float brightest = maxComponent(light);
    return most > 0.0F && state.bounces > 0 && brightest > most ? light * (most / brightest)
                                                                : light;
}

Color PathTracer::indirectLight(const Vertex& vertex, PathState state, Sampler& sampler) {
    const Color own = ownLight(vertex, state);
    state.throughput = {1.0F, 1.0F, 1.0F};
    return scatter(state, vertex, sampler) ? own + trace(state, sampler).color : own;
}

Color PathTracer::ownLight(const Vertex& vertex, const PathState& state) const {
    Color light = emitted(state, vertex.surface) + vertex.bsdf.diffuseAlbedo() * scene_.ambient() *
                                                       vertex.surface.material.occlusion;
    if (vertex.gathered)
        light += vertex.bsdf.diffuseAlbedo() * vertex.gatheredIrradiance / pi;
    return light;
}

bool PathTracer::advance(PathState& state, Sampler& sampler, Surface& surface, PathResult& result) {
    for (int layer = 0; layer < maxLayers; ++layer) {
        const Hit hit = scene_.hasObjects()
                            ? scene_.structure().intersect(
                                  {state.origin, state.direction, state.tNear, infinity})
                            : Hit{};
        const float farthest = hit ? hit.t : infinity;
        const float ground =
            hitGround(scene_.scene().ground, state.origin, state.direction, farthest);
        const float end = ground >= 0.0F ? ground : farthest;
        if (end < infinity && maxComponent(state.absorption) > 0.0F)
            state.throughput *= attenuated(state.absorption, end);
        result.color += bounded(state, state.throughput * lightsOnTheWay(state, end));
        if (ground >= 0.0F) {
            if (meetGround(state, sampler, ground, surface, result))
                return !state.lightsOnly;
            if (!(maxComponent(state.throughput) > 0.0F))
                return false;
            continue;
        }
        if (!hit) {
            result.color += bounded(state, state.throughput * leaving(state));
            if (state.bounces == 0)
                result.alpha = 1.0F - state.uncovered;
            return false;
        }
        surface = surfaceAt(scene_, hit, state.direction, state.cone);
        if (surface.material.opacity >= 1.0F || sampler.next1D() < surface.material.opacity) {
            if (state.lightsOnly)
                result.color += state.throughput * (emitted(state, surface) +
                                                    (state.straight ? scene_.ambient() : Color{}));
            return !state.lightsOnly;
        }
        state.origin = surface.position - surface.geometricNormal * surface.offset;
        state.tNear = 0.0F;
        state.cone.width = surface.footprint;
    }
    return false;
}

Vertex PathTracer::vertexAt(const PathState& state, const Surface& surface) const {
    SurfaceMaterial material = surface.material;
    // Unless caustics are asked for, reflectors that a path meets behind a rough one are at least
    // as rough: what they focus could be found only by chance, as speckles. (Path space
    // regularisation, Kaplanyan and Dachsbacher 2013.)
    if (!options_.caustics && (material.transmission == 0.0F || material.roughness > clearGlass)) {
        material.roughness = std::max(material.roughness, state.roughness);
        material.clearcoatRoughness = std::max(material.clearcoatRoughness, state.roughness);
    }
    Vertex vertex{
        surface,
        Bsdf(material, surface.normal, surface.coatNormal, surface.toEye, surface.frontFace),
        {},
        1.0F,
        false,
        false,
        {},
        !options_.caustics && !state.straight};
    if (cache_ != nullptr && (state.straight || cacheBehind_) &&
        maxComponent(vertex.bsdf.diffuseAlbedo()) > 0.0F)
        vertex.gathered =
            cache_->irradiance(surface.position, surface.normal, vertex.gatheredIrradiance);
    const int lights = scene_.lights().count();
    const int looks = state.straight ? looksAtFirst : looksLater;
    vertex.lightPick =
        lights > looks ? static_cast<float>(looks) / static_cast<float>(lights) : 1.0F;
    setProbabilities(state, vertex);
    return vertex;
}

bool PathTracer::exhausted(const PathBudget& budget, Lobe lobe) {
    if (budget.total <= 0)
        return true;
    switch (lobe) {
    case Lobe::diffuse:
        return budget.diffuse <= 0;
    case Lobe::transmission:
        return budget.refractions <= 0;
    case Lobe::specular:
    case Lobe::clearcoat:
        return budget.reflections <= 0;
    }
    return true;
}

/// Lobes are chosen in proportion to what they return. One whose budget is used up still looks for
/// lights, if there are any that only it can find.
void PathTracer::setProbabilities(const PathState& state, Vertex& vertex) const {
    const bool constantEnvironment =
        scene_.environment().diffuseShare() > 0.0F && !scene_.environment().isSampled();
    const bool ambient = state.straight && maxComponent(scene_.ambient()) > 0.0F;
    float sum = 0.0F;
    vertex.probability = {};
    for (int i = 0; i < lobeCount; ++i) {
        const Lobe lobe{i};
        const bool diffuse = lobe == Lobe::diffuse;
        if (diffuse && vertex.gathered)
            continue;
        if (exhausted(state.budget, lobe) &&
            !(diffuse ? constantEnvironment : scene_.lights().canBeHit() || ambient))
            continue;
        vertex.probability[static_cast<std::size_t>(i)] = vertex.bsdf.albedo(lobe);
        sum += vertex.bsdf.albedo(lobe);
    }
    if (sum > 0.0F)
        for (float& p : vertex.probability)
            p /= sum;
    vertex.byFacet = vertex.bsdf.hasFacets() && probabilityOf(vertex, Lobe::specular) > 0.0F &&
                     probabilityOf(vertex, Lobe::transmission) > 0.0F;
}

float chanceOf(const Vertex& vertex, Lobe lobe, const Vec3& direction) {
    const bool bent = lobe == Lobe::transmission;
    if (!vertex.byFacet || (!bent && lobe != Lobe::specular))
        return probabilityOf(vertex, lobe);
    const float reflects = vertex.bsdf.facetReflects(lobe, direction);
    return facetProbability(vertex) * (bent ? 1.0F - reflects : reflects);
}

/// The lobe to go on with and its probability; \p u will choose its direction.
PathTracer::LobeChoice
PathTracer::chooseLobe(const Vertex& vertex, const Vec2& u, Sampler& sampler) {
    float choice = vertex.bsdf.isDiffuseOnly() ? 0.0F : sampler.next1D();
    int index = 0;
    while (index < lobeCount - 1 && choice >= vertex.probability[static_cast<std::size_t>(index)])
        choice -= vertex.probability[static_cast<std::size_t>(index++)];
    const Lobe lobe{index};
    if (!vertex.byFacet || (lobe != Lobe::specular && lobe != Lobe::transmission))
        return {lobe, probabilityOf(vertex, lobe)};
    const float both = facetProbability(vertex);
    const float reflects = vertex.bsdf.facetReflects(u);
    if (sampler.next1D() < reflects)
        return {Lobe::specular, both * reflects};
    return {Lobe::transmission, both * (1.0F - reflects)};
}

bool PathTracer::scatter(PathState& state, const Vertex& vertex, Sampler& sampler) {
    const Vec2 u = sampler.next2D();
    const auto [lobe, probability] = chooseLobe(vertex, u, sampler);
    if (!(probability > 0.0F))
        return false;
    const LobeSample sample = vertex.bsdf.sample(lobe, u);
    if (!sample.valid)
        return false;

    const Surface& surface = vertex.surface;
    state.direction = sample.direction;
    if (const float c = dot(sample.direction, surface.geometricNormal);
        lobe != Lobe::transmission && c < 0.0F)
        state.direction = normalize(sample.direction - surface.geometricNormal * (2.0F * c));
    state.origin = surface.origin(lobe == Lobe::transmission ? -surface.normal : surface.normal);
    state.tNear = 0.0F;
    state.throughput *= sample.weight / probability;
    state.pdf = sample.pdf * probability;
    state.lobePdf = sample.pdf;
    state.lightPick = vertex.lightPick;
    state.lightsOnly = exhausted(state.budget, lobe);
    // Behind a diffuse bounce, light through glass has been counted as if it came straight.
    const bool straightened =
        vertex.lightGoesStraight && (lobe == Lobe::transmission || vertex.bsdf.isDelta(lobe));
    state.lightsCounted = lobe == Lobe::diffuse || straightened;
    state.straight = state.straight && lobe != Lobe::diffuse;
    state.seesBackground = state.seesBackground && lobe == Lobe::transmission;
    if (lobe == Lobe::transmission)
        state.absorption = surface.frontFace ? surface.material.absorption : Color{};
    state.cone.width = surface.footprint;
    state.cone.spread =
        lobe == Lobe::diffuse ? diffuseSpread : state.cone.spread + vertex.bsdf.alpha(lobe) * 0.25F;
    state.roughness = std::max(state.roughness,
                               lobe == Lobe::diffuse ? 1.0F : std::sqrt(vertex.bsdf.alpha(lobe)));
    --state.budget.total;
    state.budget.diffuse -= lobe == Lobe::diffuse ? 1 : 0;
    state.budget.refractions -= lobe == Lobe::transmission ? 1 : 0;
    state.budget.reflections -= lobe == Lobe::specular || lobe == Lobe::clearcoat ? 1 : 0;
    ++state.bounces;
    countRay(lobe);
    return survives(state, sampler);
}

bool PathTracer::survives(PathState& state, Sampler& sampler) {
    const float chance = survivalChance(maxComponent(state.throughput), state.bounces);
    if (!(chance > 0.0F) || (chance < 1.0F && sampler.next1D() >= chance))
        return false;
    state.throughput *= 1.0F / chance;
    return true;
}

void PathTracer::countRay(Lobe lobe) {
    counts_.diffuse += lobe == Lobe::diffuse ? 1 : 0;
    counts_.refraction += lobe == Lobe::transmission ? 1 : 0;
    counts_.reflection += lobe == Lobe::specular || lobe == Lobe::clearcoat ? 1 : 0;
}

} // namespace qor::engine
