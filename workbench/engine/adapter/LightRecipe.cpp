#include "workbench/engine/adapter/LightRecipe.h"

#include "workbench/engine/adapter/Vectors.h"

#include <algorithm>

namespace qor::adapter {

namespace {

using engine::Vec3;

/// A spot's light is full in this share of its opening.
constexpr float fullShare = 0.8F;

engine::Color diffuseOf(const Qor3DLightSourceRep& from) {
    const engine::Color factor = LightColors(from).diffuse;
    return isFinite(factor)
               ? Vec3{std::max(factor.x, 0.0F), std::max(factor.y, 0.0F), std::max(factor.z, 0.0F)}
               : Vec3{};
}

bool isDirection(const Vec3& v) {
    return isFinite(v) && length(v) > 0.0F;
}

} // namespace

LightColors::LightColors(const Qor3DLightSourceRep& from) {
    std::array<float, 4> own{};
    std::array<float, 4> scattered{};
    std::array<float, 4> mirrored{};
    from.GetColorParameters(own.data(), scattered.data(), mirrored.data());
    ambient = color(own.data());
    diffuse = color(scattered.data());
    specular = color(mirrored.data());
}

engine::Transform eyeFrame(const engine::Camera& camera) {
    const Vec3 back = normalize(camera.eye - camera.target);
    const Vec3 right = normalize(cross(camera.up, back));
    return {right, cross(back, right), back, camera.eye};
}

std::optional<engine::Light> lightRecipe(const Qor3DLightSourceRep& from,
                                         const engine::Transform& eye,
                                         const Vec3& middle,
                                         double discDegrees) {
    const bool movesWithEye = from.GetMode() == QorLightMode::Viewer;
    const engine::Transform place = movesWithEye ? eye : engine::Transform{};
    const Vec3 position = place.point(vec3(from.GetPosition()));
    const Vec3 direction = normalize(place.vector(vec3(from.GetDirection())));
    const engine::Color irradiance = diffuseOf(from) * engine::pi;
    if (!(maxComponent(irradiance) > 0.0F))
        return std::nullopt;
    if (from.GetType() == QorLightType::Directional) {
        if (!isDirection(direction))
            return std::nullopt;
        return engine::DirectionalLight{direction, irradiance,
                                        std::clamp(radians(discDegrees), 0.0F, engine::pi), true};
    }
    const Vec3 way = middle - position;
    const engine::Color intensity = irradiance * std::max(dot(way, way), 1e-6F);
    if (!isFinite(position) || !isFinite(intensity))
        return std::nullopt;
    if (from.GetType() == QorLightType::Point)
        return engine::PointLight{position, intensity, 0.0F, true};
    if (!isDirection(direction))
        return std::nullopt;
    const float outer =
        std::clamp(radians(static_cast<double>(from.GetAngle())) / 2, 1e-3F, engine::pi / 2);
    return engine::SpotLight{position, direction, intensity, outer * fullShare, outer, 0.0F, true};
}

} // namespace qor::adapter
