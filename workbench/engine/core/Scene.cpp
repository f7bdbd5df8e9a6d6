#include "workbench/engine/core/Scene.h"

#include <array>
#include <string>

namespace qor::engine {

namespace {

Error refuse(const std::string& place, const std::string& why) {
    return {ErrorCode::invalidInput, place + ": " + why};
}

bool isColor(const Color& c) {
    return isFinite(c) && c.x >= 0.0F && c.y >= 0.0F && c.z >= 0.0F;
}

bool isUnitColor(const Color& c) {
    return isColor(c) && maxComponent(c) <= 1.0F;
}

bool isDirection(const Vec3& v) {
    return isFinite(v) && length(v) > 0.0F && std::isfinite(length(v));
}

/// One requirement of a record; the first that does not hold is reported.
struct Rule {
    bool holds;
    const char* broken;
};

template <std::size_t N>
Result<Done> firstBroken(const std::string& place, const std::array<Rule, N>& rules) {
    for (const Rule& rule : rules)
        if (!rule.holds)
            return refuse(place, rule.broken);
    return Done{};
}

bool inUnit(float value) {
    return value >= 0.0F && value <= 1.0F;
}

bool texturesAreFinite(const Material& material) {
    bool finite = true;
    forEachTexture(material, [&](const Texture& t) {
        finite = finite && std::isfinite(t.offset.x) && std::isfinite(t.offset.y) &&
                 std::isfinite(t.scale.x) && std::isfinite(t.scale.y) &&
                 std::isfinite(t.rotationRad);
    });
    return finite;
}

Result<Done> check(const Material& m, const std::string& place) {
    return firstBroken(
        place,
        std::array{
            Rule{isUnitColor(m.baseColor), "base colour is not within 0 .. 1"},
            Rule{inUnit(m.opacity), "opacity is not within 0 .. 1"},
            Rule{inUnit(m.metallic), "metallic is not within 0 .. 1"},
            Rule{inUnit(m.roughness), "roughness is not within 0 .. 1"},
            Rule{m.ior >= 1.0F && m.ior <= 4.0F, "index of refraction is not within 1 .. 4"},
            Rule{inUnit(m.specular), "specular is not within 0 .. 1"},
            Rule{inUnit(m.transmission), "transmission is not within 0 .. 1"},
            Rule{inUnit(m.clearcoat), "clearcoat is not within 0 .. 1"},
            Rule{inUnit(m.clearcoatRoughness), "clearcoat roughness is not within 0 .. 1"},
            Rule{isColor(m.emission), "emission is negative or not finite"},
            Rule{std::isfinite(m.normalScale), "normal scale is not finite"},
            Rule{std::isfinite(m.clearcoatNormalScale), "clearcoat normal scale is not finite"},
            Rule{m.alphaCutoff >= 0.0F && std::isfinite(m.alphaCutoff),
                 "alpha cutoff is negative or not finite"},
            Rule{inUnit(m.occlusionStrength), "occlusion strength is not within 0 .. 1"},
            Rule{isUnitColor(m.attenuationColor), "attenuation colour is not within 0 .. 1"},
            Rule{m.attenuationDistance >= 0.0F && std::isfinite(m.attenuationDistance),
                 "attenuation distance is negative or not finite"},
            Rule{texturesAreFinite(m), "a texture's placement is not finite"},
        });
}

Result<Done> checkLight(const DirectionalLight& l, const std::string& place) {
    return firstBroken(
        place, std::array{
                   Rule{isDirection(l.direction), "no direction"},
                   Rule{isColor(l.irradiance), "irradiance is negative or not finite"},
                   Rule{l.angleRad >= 0.0F && l.angleRad <= pi, "angle is not within 0 .. pi"},
               });
}

Result<Done> checkLight(const PointLight& l, const std::string& place) {
    return firstBroken(place, std::array{
                                  Rule{isFinite(l.position), "position is not finite"},
                                  Rule{isColor(l.intensity), "intensity is negative or not finite"},
                                  Rule{l.radius >= 0.0F && std::isfinite(l.radius),
                                       "radius is negative or not finite"},
                              });
}

Result<Done> checkLight(const SpotLight& l, const std::string& place) {
    return firstBroken(
        place,
        std::array{
            Rule{isFinite(l.position), "position is not finite"},
            Rule{isDirection(l.direction), "no direction"},
            Rule{isColor(l.intensity), "intensity is negative or not finite"},
            Rule{l.outerRad > 0.0F && l.outerRad <= pi / 2, "outer angle is not within 0 .. pi/2"},
            Rule{l.innerRad >= 0.0F && l.innerRad <= l.outerRad,
                 "inner angle is not within 0 .. outer angle"},
            Rule{l.radius >= 0.0F && std::isfinite(l.radius), "radius is negative or not finite"},
        });
}

Result<Done> checkLight(const AreaLight& l, const std::string& place) {
    const float area = length(cross(l.edgeU, l.edgeV));
    return firstBroken(place,
                       std::array{
                           Rule{isFinite(l.corner), "corner is not finite"},
                           Rule{area > 0.0F && std::isfinite(area), "area is zero or not finite"},
                           Rule{isColor(l.radiance), "radiance is negative or not finite"},
                       });
}

Result<Done> check(const Environment& e) {
    return firstBroken("environment",
                       std::array{
                           Rule{isColor(e.radiance), "radiance is negative or not finite"},
                           Rule{isDirection(e.up), "no up direction"},
                           Rule{std::isfinite(e.rotationRad), "rotation is not finite"},
                           Rule{inUnit(e.diffuseShare), "diffuse share is not within 0 .. 1"},
                       });
}

Result<Done> check(const Background& b) {
    return firstBroken(
        "background",
        std::array{
            Rule{isColor(b.top) && isColor(b.bottom), "a colour is negative or not finite"},
            Rule{b.kind != Background::Kind::picture || b.picture, "no picture"},
        });
}

Result<Done> check(const Ground& g) {
    return firstBroken("ground",
                       std::array{
                           Rule{isFinite(g.origin), "origin is not finite"},
                           Rule{isDirection(g.normal), "no normal"},
                           Rule{g.size > 0.0F && std::isfinite(g.size), "size is not positive"},
                           Rule{isUnitColor(g.color), "colour is not within 0 .. 1"},
                           Rule{inUnit(g.transparency), "transparency is not within 0 .. 1"},
                           Rule{inUnit(g.reflectivity), "reflectivity is not within 0 .. 1"},
                           Rule{inUnit(g.fadeFrom), "fade is not within 0 .. 1"},
                       });
}

Result<Done> checkInstances(const Scene& scene) {
    if (!scene.assembly)
        return Done{};
    const auto& instances = scene.assembly->instances();
    for (std::size_t i = 0; i < instances.size(); ++i)
        for (const std::uint32_t material : instances[i].materials)
            if (material >= scene.materials.size())
                return refuse("instance " + std::to_string(i),
                              "material " + std::to_string(material) + " of " +
                                  std::to_string(scene.materials.size()));
    return Done{};
}

} // namespace

Result<Done> validate(const Light& light, const std::string& name) {
    return std::visit([&](const auto& one) { return checkLight(one, name); }, light);
}

Result<Done> validate(const Scene& scene) {
    Result<Done> result = checkInstances(scene);
    for (std::size_t i = 0; result && i < scene.materials.size(); ++i)
        result = check(scene.materials[i], "material " + std::to_string(i));
    for (std::size_t i = 0; result && i < scene.lights.size(); ++i)
        result = validate(scene.lights[i], "light " + std::to_string(i));
    if (result)
        result = check(scene.environment);
    if (result)
        result = check(scene.background);
    if (result && !isColor(scene.ambient))
        result = refuse("ambient", "colour is negative or not finite");
    if (result && scene.ground.visible)
        result = check(scene.ground);
    return result;
}

} // namespace qor::engine
