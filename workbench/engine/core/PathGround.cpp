// The ground on the way of a path: a floor that may be see-through, mirror objects, and catch
// shadows.
#include "workbench/engine/core/PathTracer.h"

namespace qor::engine {

namespace {

constexpr Color white{1.0F, 1.0F, 1.0F};

/// Directions into the surroundings that one look at a shadow takes, of the camera and of a mirror.
constexpr int looksAround = 4;
constexpr int looksAroundMirrored = 1;

/// How much of the ground is there at \p place.
float presence(const Ground& ground, const Vec3& place) {
    if (ground.fadeFrom >= 1.0F)
        return 1.0F;
    const float along = length(place - ground.origin) / (0.5F * ground.size);
    const float t = std::clamp((along - ground.fadeFrom) / (1.0F - ground.fadeFrom), 0.0F, 1.0F);
    return 1.0F - t * t * (3.0F - 2.0F * t);
}

float clearness(const Ground& ground, float present) {
    return 1.0F - (1.0F - ground.transparency) * present;
}

/// Point \p i of a lattice of looksAround points that is shifted by \p shift.
Vec2 spread(const Vec2& shift, int i) {
    const auto wrapped = [](float value) {
        return value - std::floor(value);
    };
    const auto part = static_cast<float>(i) / looksAround;
    return {wrapped(shift.x + part), wrapped(shift.y + 0.5F * static_cast<float>(i) + 0.5F * part)};
}

float ratio(float lit, float whole) {
    return whole > 0.0F ? std::clamp(lit / whole, 0.0F, 1.0F) : 1.0F;
}

} // namespace

bool PathTracer::meetGround(
    PathState& state, Sampler& sampler, float t, Surface& surface, PathResult& result) {
    const Ground& ground = scene_.scene().ground;
    surface = groundAt(scene_, state.origin + state.direction * t, state.direction, t);
    surface.footprint = state.cone.at(t);
    const float clear = clearness(ground, presence(ground, surface.position));
    if (state.straight && !state.lightsOnly) {
        shadeGround(state, sampler, surface, result);
    } else if (clear < 1.0F && sampler.next1D() >= clear) {
        return true;
    }
    state.origin = surface.position - surface.normal * surface.offset;
    state.tNear = 0.0F;
    state.cone.width = surface.footprint;
    return false;
}

/// A mirror image covers the floor only where an object is mirrored, unless the surroundings are
/// the background, too.
void PathTracer::shadeGround(PathState& state,
                             Sampler& sampler,
                             const Surface& surface,
                             PathResult& result) {
    const Ground& ground = scene_.scene().ground;
    const float present = presence(ground, surface.position);
    const float clear = clearness(ground, present);
    if (spots_ != nullptr) {
        if (clear < 1.0F)
            collectAt(vertexAt(state, surface));
        state.throughput *= clear;
        return;
    }
    float covered = 0.0F;
    Color light;
    if (ground.reflectivity > 0.0F && state.budget.reflections > 0 && state.budget.total > 0) {
        const PathResult mirror = mirrorInGround(state, surface, sampler);
        const bool everywhere = scene_.scene().background.kind == Background::Kind::environment;
        covered = ground.reflectivity * present * (everywhere ? 1.0F : mirror.alpha);
        light = mirror.color * covered;
    }
    const Vertex vertex = vertexAt(state, surface);
    const float floor = (1.0F - covered) * (1.0F - clear);
    if (floor > 0.0F)
        light += (directLight(vertex, sampler) + indirectLight(vertex, state, sampler)) * floor;
    result.color += state.throughput * light;

    const float through = (1.0F - covered) * clear;
    const int looks =
        state.bounces == 0 && state.seesBackground ? looksAround : looksAroundMirrored;
    const Color shadow =
        through > 0.0F && present > 0.0F ? groundShadow(vertex, looks, sampler) : white;
    const Color seen = lerp(white, shadow, present) * through;
    state.uncovered *= luminance(seen); // shadows cover the background, too
    state.throughput *= seen;
}

PathResult
PathTracer::mirrorInGround(const PathState& state, const Surface& surface, Sampler& sampler) {
    PathState mirror = state;
    mirror.origin = surface.origin(surface.normal);
    mirror.direction =
        normalize(state.direction - surface.normal * (2.0F * dot(state.direction, surface.normal)));
    mirror.tNear = 0.0F;
    mirror.throughput = white;
    mirror.uncovered = 1.0F;
    mirror.seesBackground = false;
    mirror.bounces = 0;
    mirror.cone.width = surface.footprint;
    --mirror.budget.reflections;
    --mirror.budget.total;
    ++counts_.reflection;
    return trace(mirror, sampler);
}

/// Share of the light that would arrive at \p vertex without the objects: what see-through ground
/// shows of them.
Color PathTracer::groundShadow(const Vertex& vertex, int looks, Sampler& sampler) {
    const LightSampler& lights = scene_.lights();
    Color whole = scene_.ambient() * pi;
    Color lit = whole;
    for (int i = 0; i < lights.count(); ++i) {
        const LightSample light = lights.sample(i, vertex.surface.position,
                                                lights.isDelta(i) ? Vec2{} : sampler.next2D());
        const float cosTheta = dot(light.direction, vertex.surface.normal);
        if (!(light.pdf > 0.0F) || cosTheta <= 0.0F)
            continue;
        const Color share =
            light.radiance * (std::isfinite(light.pdf) ? cosTheta / light.pdf : cosTheta);
        whole += share;
        lit += light.castsShadows ? share * visibility(vertex.surface, light).straight : share;
    }
    const EnvironmentMap& environment = scene_.environment();
    if (environment.diffuseShare() > 0.0F && !environment.isSampled()) {
        const float infinity = std::numeric_limits<float>::infinity();
        const Frame frame(vertex.surface.normal);
        const Vec2 first = sampler.next2D();
        for (int i = 0; i < looks; ++i) {
            const Vec3 up = frame.toWorld(cosineHemisphere(spread(first, i)));
            const Color share = environment.radiance(up, 0.0F) *
                                (environment.diffuseShare() * pi / static_cast<float>(looks));
            whole += share;
            lit +=
                share * visibility(vertex.surface, {up, infinity, white, infinity, true}).straight;
        }
    }
    return {ratio(lit.x, whole.x), ratio(lit.y, whole.y), ratio(lit.z, whole.z)};
}

} // namespace qor::engine
