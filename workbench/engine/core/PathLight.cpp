// How light comes to the paths of PathTracer: chosen points of lights, what shines on a ray's way,
// what lies behind everything.
#include "workbench/engine/core/PathTracer.h"

namespace qor::engine {

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr int maxLayers = 64;

constexpr Color white{1.0F, 1.0F, 1.0F};

/// How wide the part of smooth surroundings is that a direction chosen with density \p pdf stands
/// for, when a few are chosen: rare ones stand for much, so that none brings a speckle. Method:
/// Křivánek and Colbert, "Real-time Shading with Filtered Importance Sampling", 2008.
float widthOfShare(float pdf) {
    constexpr float chosen = 4.0F;
    return std::min(2.0F / std::sqrt(pi * pdf * chosen), pi);
}

/// Where a background picture that keeps its proportions is cut at, to cover the whole picture.
Vec2 covering(const Vec2& raster, const Picture& picture, const RenderOptions& options) {
    const float wanted = static_cast<float>(options.width) / static_cast<float>(options.height);
    const float own = static_cast<float>(picture.width()) / static_cast<float>(picture.height());
    const float shareX = std::min(1.0F, wanted / own);
    const float shareY = std::min(1.0F, own / wanted);
    return {0.5F + (raster.x - 0.5F) * shareX, 0.5F + (raster.y - 0.5F) * shareY};
}

} // namespace

Color PathTracer::directLight(const Vertex& vertex, Sampler& sampler) {
    const LightSampler& lights = scene_.lights();
    const bool all = vertex.lightPick >= 1.0F;
    const auto count = static_cast<float>(lights.count());
    const int looks = all ? lights.count() : static_cast<int>(vertex.lightPick * count + 0.5F);
    Color sum;
    for (int i = 0; i < looks; ++i) {
        const int index =
            all ? i : std::min(static_cast<int>(sampler.next1D() * count), lights.count() - 1);
        const Vec2 u = lights.isDelta(index) ? Vec2{} : sampler.next2D();
        const LightSample light = lights.sample(index, vertex.surface.position, u);
        const LightShare arriving = unshadowed(vertex, light);
        if (!(maxComponent(arriving.whole()) > 0.0F))
            continue;
        if (!light.castsShadows) {
            sum += arriving.whole();
            continue;
        }
        const Visibility seen = visibility(vertex.surface, light);
        sum += arriving.straight * seen.straight + arriving.clear * seen.clear;
    }
    return all ? sum : sum / vertex.lightPick;
}

LightShare PathTracer::unshadowed(const Vertex& vertex, const LightSample& light) {
    if (!(light.pdf > 0.0F))
        return {};
    const bool hasExtent = light.pdf < infinity;
    LightShare sum;
    for (int i = 0; i < lobeCount; ++i) {
        const Lobe lobe{i};
        const bool through = lobe == Lobe::transmission;
        if (vertex.bsdf.albedo(lobe) <= 0.0F || (through && vertex.lightGoesStraight))
            continue;
        const LobeValue value = vertex.bsdf.evaluate(lobe, light.direction);
        // The diffuse lobe leaves lights that can be sampled to sampling; the others share them.
        const float weight =
            hasExtent && lobe != Lobe::diffuse
                ? powerHeuristic(light.pdf * vertex.lightPick,
                                 value.pdf * chanceOf(vertex, lobe, light.direction))
                : 1.0F;
        const bool foundByPaths = through || (hasExtent && lobe != Lobe::diffuse);
        const bool straight = !foundByPaths || (!through && vertex.lightGoesStraight);
        (straight ? sum.straight : sum.clear) += value.value * weight;
    }
    const Color radiance = hasExtent ? light.radiance / light.pdf : light.radiance;
    return {sum.straight * radiance, sum.clear * radiance};
}

Ray PathTracer::shadowRay(const Surface& surface, const LightSample& light) {
    const float end =
        light.distance < infinity ? light.distance * almostThere - surface.offset : infinity;
    return {surface.origin(light.direction), light.direction, 0.0F, end};
}

Visibility PathTracer::visibility(const Surface& surface, const LightSample& light) {
    const Ray ray = shadowRay(surface, light);
    const Color ground = white * groundTransparency(ray);
    if (!(ground.x > 0.0F) || !(ray.tFar > 0.0F))
        return {};
    if (!scene_.hasObjects())
        return {ground, ground};
    if (scene_.hasTransparency()) {
        const Visibility objects = marchVisibility(ray);
        return {objects.straight * ground, objects.clear * ground};
    }
    ++counts_.shadow;
    return scene_.structure().occluded(ray) ? Visibility{} : Visibility{ground, ground};
}

float PathTracer::groundTransparency(const Ray& ray) const {
    const Ground& ground = scene_.scene().ground;
    return crossGround(ground, ray.origin, ray.direction, ray.tFar) >= 0.0F ? ground.transparency
                                                                            : 1.0F;
}

Visibility PathTracer::marchVisibility(Ray ray) {
    Visibility share{white, white};
    float last = 0.0F;
    for (int layer = 0; layer < maxLayers; ++layer) {
        ++counts_.shadow;
        const Hit hit = scene_.structure().intersect(ray);
        if (!hit)
            return share;
        const Passage passage = passageAt(scene_, hit, ray.direction);
        share.clear *= 1.0F - passage.opacity;
        share.straight *=
            white * (1.0F - passage.opacity) + (options_.caustics ? Color{} : passage.glass);
        if (maxComponent(passage.absorption) > 0.0F)
            share.straight *= attenuated(passage.absorption, hit.t - last);
        last = hit.t;
        if (!(maxComponent(share.straight) > 0.0F))
            return {};
        ray.tNear = hit.t + std::max(scene_.instance(hit.instance).precision, hit.t * 1e-6F);
    }
    return {};
}

/// Weight of a light that the path ran into by itself.
float PathTracer::lightWeight(const PathState& state, float lightPdf) const {
    return state.lightsCounted ? 0.0F : powerHeuristic(state.pdf, lightPdf * state.lightPick);
}

Color PathTracer::lightsOnTheWay(const PathState& state, float farthest) const {
    Color sum;
    scene_.lights().hits(
        state.origin, state.direction, farthest, state.bounces == 0,
        [&](const LightHit& hit) { sum += hit.radiance * lightWeight(state, hit.pdf); });
    return sum;
}

Color PathTracer::emitted(const PathState& state, const Surface& surface) const {
    const Color& radiance = surface.material.emission;
    if (!(maxComponent(radiance) > 0.0F) || !(maxComponent(surface.sampledEmission) > 0.0F))
        return radiance;
    const float cosTheta = dot(surface.geometricNormal, surface.toEye);
    return radiance * lightWeight(state, scene_.lights().trianglePdf(surface.sampledEmission,
                                                                     surface.distance, cosTheta));
}

Color PathTracer::leaving(const PathState& state) const {
    if (state.seesBackground)
        return background(state);
    // Mirrors and glass see the ambient light around the scene as if it came from there.
    const Color ambient = state.straight ? scene_.ambient() : Color{};
    const EnvironmentMap& environment = scene_.environment();
    if (environment.isBlack())
        return ambient;
    const float width = environment.isSampled()
                            ? state.cone.spread
                            : std::max(state.cone.spread, widthOfShare(state.lobePdf));
    const Color radiance = environment.radiance(state.direction, width);
    if (!environment.isSampled() && !state.straight)
        return radiance * environment.diffuseShare();
    if (!environment.isSampled())
        return radiance + ambient;
    return radiance * lightWeight(state, environment.pdf(state.direction)) + ambient;
}

Color PathTracer::background(const PathState& state) const {
    const Background& background = scene_.scene().background;
    switch (background.kind) {
    case Background::Kind::environment:
        return scene_.environment().radiance(state.direction, state.cone.spread);
    case Background::Kind::gradient:
        return lerp(background.top, background.bottom, state.raster.y);
    case Background::Kind::picture: {
        const Picture& picture = *background.picture;
        const Vec2 at =
            background.stretch ? state.raster : covering(state.raster, picture, options_);
        return picture
            .lookupClamped(at.x, at.y,
                           1.0F / static_cast<float>(std::max(options_.width, options_.height)))
            .color;
    }
    }
    return {};
}

} // namespace qor::engine
