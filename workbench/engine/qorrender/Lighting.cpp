#include "workbench/engine/qorrender/Lighting.h"

#include "workbench/document/product/ProductQuery.h"

#include <algorithm>
#include <cmath>

namespace qor::render {

namespace {

using engine::Color;
using engine::Vec3;

Vec3 vectorOf(const document::Vector3& v) {
    return {static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])};
}

constexpr float radians(float degrees) {
    return degrees * engine::pi / 180.0F;
}

/// A light with its place and direction in the world's axes.
engine::Light lightOf(const document::Light& from, const document::Transform& world) {
    constexpr float squareMmPerSquareM = 1e6F;
    document::Transform turn = world;
    turn[3] = turn[7] = turn[11] = 0;
    const Vec3 direction = vectorOf(document::transformPoint(turn, from.direction));
    const Vec3 position = vectorOf(document::transformPoint(world, from.position));
    const Color color = vectorOf(from.color) * static_cast<float>(from.intensity);
    const float outer = std::min(static_cast<float>(from.outerCone), engine::pi / 2);
    switch (from.kind) {
    case document::LightKind::Directional:
        return engine::DirectionalLight{direction, color,
                                        radians(static_cast<float>(from.angleDeg)), true};
    case document::LightKind::Spot:
        return engine::SpotLight{position,
                                 direction,
                                 color * squareMmPerSquareM,
                                 std::min(static_cast<float>(from.innerCone), outer * 0.999F),
                                 outer,
                                 0.0F,
                                 true};
    case document::LightKind::Point:
        break;
    }
    return engine::PointLight{position, color * squareMmPerSquareM, 0.0F, true};
}

bool hasOwnLight(const engine::Scene& scene, const document::Product& product) {
    const auto shines = [](const engine::Material& material) {
        return engine::maxComponent(material.emission) > 0.0F;
    };
    return !product.lights.empty() || product.environment ||
           std::any_of(scene.materials.begin(), scene.materials.end(), shines);
}

void addOwnLight(engine::Scene& scene, const document::Product& product) {
    const std::vector<document::Transform> worlds = document::worldTransforms(product);
    for (const document::Light& light : product.lights)
        scene.lights.push_back(lightOf(light, light.node == document::none
                                                  ? document::identityTransform
                                                  : worlds[static_cast<std::size_t>(light.node)]));
    if (product.environment)
        scene.environment.radiance = vectorOf(*product.environment);
}

/// Even light from all around, a key light over the left shoulder, and a bright backdrop.
void addStudio(engine::Scene& scene, const engine::Camera& camera) {
    const Vec3 sight = normalize(camera.target - camera.eye);
    const Vec3 right = normalize(cross(sight, camera.up));
    const Vec3 up = cross(right, sight);
    scene.environment.radiance = {0.55F, 0.55F, 0.57F};
    scene.lights.emplace_back(engine::DirectionalLight{
        sight + right * 0.6F - up * 0.8F, {1.6F, 1.58F, 1.52F}, radians(4.0F), true});
    scene.background.kind = engine::Background::Kind::gradient;
    scene.background.top = {0.50F, 0.54F, 0.60F};
    scene.background.bottom = {0.86F, 0.87F, 0.88F};
}

} // namespace

void addLight(engine::Scene& scene,
              const document::Product& product,
              const engine::Camera& camera) {
    if (hasOwnLight(scene, product))
        addOwnLight(scene, product);
    else
        addStudio(scene, camera);
}

} // namespace qor::render
