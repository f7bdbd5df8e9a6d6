#include "workbench/engine/adapter/ViewLighting.h"

#include "workbench/engine/adapter/LightRecipe.h"
#include "workbench/engine/adapter/SceneRecipe.h"
#include "workbench/engine/adapter/Vectors.h"

#include <algorithm>
#include <cmath>

namespace qor::adapter {

namespace {

using engine::Color;
using engine::Vec3;

float step(float from, float to, float value) {
    const float t = std::clamp((value - from) / (to - from), 0.0F, 1.0F);
    return t * t * (3.0F - 2.0F * t);
}

float mix(float a, float b, float t) {
    return a + (b - a) * t;
}

float brightness(const Color& c) {
    return (c.x + c.y + c.z) / 3.0F;
}

ViewLight lightOf(const Qor3DLightSourceRep& from, const engine::Transform& eye, Color& ambient) {
    constexpr float softPart = 0.15F;
    const engine::Transform place =
        from.GetMode() == QorLightMode::Viewer ? eye : engine::Transform{};
    ViewLight light;
    light.far = from.GetType() == QorLightType::Directional;
    light.position = place.point(vec3(from.GetPosition()));
    light.direction = normalize(place.vector(vec3(from.GetDirection())));
    if (!(length(light.direction) > 0.0F))
        light.direction = {0.0F, 0.0F, -1.0F};
    if (from.GetType() == QorLightType::Spot) {
        const float half = radians(static_cast<double>(from.GetAngle())) / 2;
        light.coneEnd = std::cos(half);
        light.coneStart = std::cos(half * (1.0F - softPart)) + 1e-4F;
    }
    const LightColors colors(from);
    ambient += colors.ambient;
    light.diffuse = colors.diffuse;
    light.specular = colors.specular;
    return light;
}

/// Method: Walter et al. 2007 (distribution), Hammon 2017 (visibility, "PBR Diffuse Lighting for
/// GGX+Smith Microsurfaces").
float ggx(float nh, float nl, float nv, float alpha) {
    const float squared = alpha * alpha;
    const float base = nh * nh * (squared - 1.0F) + 1.0F;
    const float visibility = 0.5F / std::max(mix(2.0F * nl * nv, nl + nv, alpha), 1e-4F);
    return squared / (engine::pi * base * base) * visibility;
}

Color fresnel(const Color& straight, float cosine) {
    const float part = std::pow(1.0F - cosine, 5.0F);
    return straight + (Color{1.0F, 1.0F, 1.0F} - straight) * part;
}

/// Part of the surroundings that a surface throws back. Method: Karis 2014, "Physically Based
/// Shading on Mobile".
Color thrownBack(const Color& straight, float roughness, float nv) {
    const float x = 1.0F - roughness;
    const float y = 0.0425F - 0.0275F * roughness;
    const float z = 1.04F - 0.572F * roughness;
    const float w = 0.022F * roughness - 0.04F;
    const float a = std::min(x * x, std::exp2(-9.28F * nv)) * x + y;
    const float addition = 1.04F * a + w;
    return straight * (-1.04F * a + z) + Color{addition, addition, addition};
}

} // namespace

Vec3 ViewLight::towards(const Vec3& place) const {
    return far ? -direction : normalize(position - place);
}

float ViewLight::conePart(const Vec3& toLight) const {
    return step(coneEnd, coneStart, dot(-toLight, direction));
}

ViewLighting::ViewLighting(const QorRdgSnapshot& snapshot)
    : ambient(color(snapshot.ambient.data())), vertical(normalize(vec3(snapshot.vertical))) {
    constexpr float lampPart = 0.42F;
    const engine::Camera camera = cameraOf(snapshot.camera).value_or(engine::Camera{});
    const engine::Transform eye = eyeFrame(camera);
    const Vec3 level = eye.x - vertical * dot(eye.x, vertical);
    aside = normalize(length(level) > 1e-6F ? level : eye.y);
    ahead = cross(vertical, aside);
    for (const auto& light : snapshot.lights)
        lights.push_back(lightOf(*light, eye, ambient));
    // What is reflected is as bright as the light that there is.
    surroundings = brightness(ambient);
    for (const ViewLight& light : lights)
        surroundings += lampPart * brightness(light.specular);
}

Color ViewLighting::fill(const Vec3& normal) const {
    return ambient * (1.0F + 0.3F * dot(normal, vertical));
}

float ViewLighting::studio(const Vec3& direction, float roughness) const {
    const float height = dot(direction, vertical);
    const float soft = 0.06F + 0.9F * roughness;
    float room = mix(0.22F, 0.55F, step(-soft, soft, height));
    room += 0.35F * step(0.1F - soft, 0.9F + soft, height);
    const Vec3 box = normalize(vertical * 0.75F - aside * 0.55F - ahead * 0.35F);
    const Vec3 strip = normalize(aside * 0.85F + vertical * 0.2F - ahead * 0.45F);
    float glow = 1.1F * step(0.8F - soft, 0.86F + soft, dot(direction, box));
    glow += 0.7F * step(0.88F - soft, 0.92F + soft, dot(direction, strip));
    return room + glow * mix(1.0F, 0.45F, roughness);
}

ViewShine shade(const ViewLighting& lighting,
                const ViewMatter& matter,
                const Vec3& place,
                const Vec3& normal,
                const Vec3& back) {
    const float nv = std::clamp(dot(normal, back), 1e-3F, 1.0F);
    const float roughness = std::clamp(matter.roughness, 0.06F, 1.0F);
    const float plain = matter.reflectance;
    const Color straight = lerp(Color{plain, plain, plain}, matter.base, matter.metallic);
    const Color body = matter.base * (1.0F - matter.metallic);
    const Vec3 mirrored = normal * (2.0F * dot(normal, back)) - back;
    ViewShine shine{body * lighting.fill(normal),
                    thrownBack(straight, roughness, nv) *
                        (lighting.surroundings * lighting.studio(mirrored, roughness))};
    const float coat = matter.coat * (0.04F + 0.96F * std::pow(1.0F - nv, 5.0F));
    const float coatShine =
        coat * lighting.surroundings * lighting.studio(mirrored, matter.coatRoughness);
    shine.gloss = shine.gloss * (1.0F - coat) + Color{coatShine, coatShine, coatShine};
    const float coatAlpha = std::max(matter.coatRoughness * matter.coatRoughness, 0.01F);
    for (const ViewLight& light : lighting.lights) {
        const Vec3 toLight = light.towards(place);
        const float nl = dot(normal, toLight);
        if (nl <= 0.0F)
            continue;
        const float share = nl * light.conePart(toLight);
        const Vec3 halfway = normalize(toLight + back);
        const float nh = std::clamp(dot(normal, halfway), 0.0F, 1.0F);
        const float hv = std::clamp(dot(halfway, back), 0.0F, 1.0F);
        const float coatPart = matter.coat * 0.04F * ggx(nh, nl, nv, coatAlpha);
        shine.matt += body * light.diffuse * share;
        shine.gloss += light.specular * (engine::pi * share) *
                       (fresnel(straight, hv) * ggx(nh, nl, nv, roughness * roughness) +
                        Color{coatPart, coatPart, coatPart});
    }
    return shine;
}

Color bent(const Color& linear) {
    constexpr float knee = 0.8F;
    const auto bend = [](float value) {
        return value <= knee
                   ? value
                   : knee + (1.0F - knee) * (1.0F - std::exp(-(value - knee) / (1.0F - knee)));
    };
    return {bend(linear.x), bend(linear.y), bend(linear.z)};
}

} // namespace qor::adapter
