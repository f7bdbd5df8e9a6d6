#include "workbench/engine/qorrender/OwnLight.h"

#include "workbench/document/product/ProductQuery.h"
#include "workbench/engine/core/Scene.h"

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

} // namespace

bool hasOwnLight(const document::Product& product, const adapter::SceneRecipe& recipe) {
    const auto shines = [](const adapter::MaterialRecipe& one) {
        return engine::maxComponent(one.material.emission) > 0.0F;
    };
    return !product.lights.empty() || product.environment ||
           std::any_of(recipe.materials.begin(), recipe.materials.end(), shines);
}

void useOwnLight(const document::Product& product,
                 adapter::SceneRecipe& recipe,
                 const std::function<void(const std::string&)>& warn) {
    engine::Scene& scene = recipe.scene;
    scene.lights.clear();
    scene.environment = {};
    scene.background = {};
    const std::vector<document::Transform> worlds = document::worldTransforms(product);
    for (const document::Light& from : product.lights) {
        const engine::Light light = lightOf(
            from, from.node == document::none ? document::identityTransform
                                              : worlds[static_cast<std::size_t>(from.node)]);
        const std::string name = from.name.empty() ? "a light" : "light \"" + from.name + "\"";
        if (const auto sound = engine::validate(light, name))
            scene.lights.push_back(light);
        else
            warn(sound.error().message + "; it was left out");
    }
    if (product.environment)
        scene.environment.radiance = vectorOf(*product.environment);
}

} // namespace qor::render
