#include "workbench/import/scene/GltfViews.h"

#include "workbench/import/scene/GltfCheck.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qor::import {

using document::Camera;
using document::Light;
using document::LightKind;
using nlohmann::json;

namespace {

constexpr const char* lightExtension = "KHR_lights_punctual";

// Cameras and lights of glTF look along -z of their node, with y up.
void readPlace(const Axes& axes, document::Vector3& direction) {
    direction = axes.direction({0, 0, -1});
}

Camera cameraOf(const json& source, const Axes& axes) {
    Camera camera;
    camera.name = stringOf(source, "name");
    readPlace(axes, camera.direction);
    camera.up = axes.direction({0, 1, 0});
    camera.perspective = stringOf(source, "type") != "orthographic";
    const json& lens = objectOf(source, camera.perspective ? "perspective" : "orthographic");
    camera.nearMm = numberOf(lens, "znear", 0) * axes.scale;
    camera.farMm = numberOf(lens, "zfar", 0) * axes.scale;
    if (camera.perspective) {
        camera.fieldOfView =
            std::clamp(numberOf(lens, "yfov", camera.fieldOfView), 1e-4, std::numbers::pi - 1e-4);
        camera.aspect = std::max(0.0, numberOf(lens, "aspectRatio", 0));
        return camera;
    }
    const double halfWidth = std::abs(numberOf(lens, "xmag", 0));
    const double halfHeight = std::abs(numberOf(lens, "ymag", 0));
    if (halfHeight > 0) {
        camera.viewHeightMm = 2 * halfHeight * axes.scale;
        camera.aspect = halfWidth / halfHeight;
    }
    return camera;
}

LightKind kindOf(const std::string& type) {
    if (type == "spot")
        return LightKind::Spot;
    return type == "point" ? LightKind::Point : LightKind::Directional;
}

Light lightOf(const json& source, const Axes& axes) {
    Light light;
    light.name = stringOf(source, "name");
    readPlace(axes, light.direction);
    light.kind = kindOf(stringOf(source, "type"));
    light.intensity = numberOf(source, "intensity", 1);
    light.rangeMm = std::max(0.0, numberOf(source, "range", 0)) * axes.scale;
    const json& color = arrayOf(source, "color");
    for (std::size_t i = 0; i < 3 && color.size() == 3; ++i)
        light.color[i] = color[i].is_number() ? color[i].get<double>() : 1;
    if (light.kind == LightKind::Spot) {
        const json& spot = objectOf(source, "spot");
        light.innerCone = numberOf(spot, "innerConeAngle", 0);
        light.outerCone = numberOf(spot, "outerConeAngle", std::numbers::pi / 4);
    }
    light.angleDeg = std::clamp(numberOf(objectOf(source, "extras"), "angle_deg", 0), 0.0, 180.0);
    return light;
}

std::optional<int> boundsOf(const json& work, const char* member) {
    const double value = numberOf(work, member, -1);
    return value < 0 ? std::nullopt : std::optional<int>(static_cast<int>(std::min(value, 1e6)));
}

void readSceneExtras(const json& gltf, document::Product& product) {
    const json& scenes = arrayOf(gltf, "scenes");
    if (scenes.empty())
        return;
    const auto index = static_cast<std::size_t>(numberOf(gltf, "scene", 0));
    const json& extras = objectOf(scenes[std::min(index, scenes.size() - 1)], "extras");
    if (const auto found = extras.find("environment"); found != extras.end()) {
        std::array<double, 3> radiance{};
        for (std::size_t i = 0; i < 3; ++i) {
            const json* value = found->is_array() && i < found->size() ? &(*found)[i] : &*found;
            radiance[i] = value->is_number() ? value->get<double>() : 0;
        }
        product.environment = radiance;
    }
    const json& work = objectOf(extras, "work");
    product.work.diffuseBounces = boundsOf(work, "diffuse_bounces");
    product.work.glossyBounces = boundsOf(work, "glossy_bounces");
    product.work.transmissionBounces = boundsOf(work, "transmission_bounces");
    if (const auto found = work.find("caustics"); found != work.end() && found->is_boolean())
        product.work.caustics = found->get<bool>();
}

} // namespace

void addGltfViews(const GltfFile& gltf,
                  const Axes& axes,
                  const std::vector<std::int32_t>& nodeOf,
                  document::Product& product) {
    const json& cameras = arrayOf(gltf.root(), "cameras");
    const json& lights =
        arrayOf(objectOf(objectOf(gltf.root(), "extensions"), lightExtension), "lights");
    const json& nodes = arrayOf(gltf.root(), "nodes");
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (nodeOf[i] == document::none)
            continue;
        const std::int32_t camera = indexOf(nodes[i], "camera", cameras.size(), "node");
        if (camera >= 0) {
            product.cameras.push_back(cameraOf(cameras[camera], axes));
            product.cameras.back().node = nodeOf[i];
        }
        const json& carried = objectOf(objectOf(nodes[i], "extensions"), lightExtension);
        const std::int32_t light = indexOf(carried, "light", lights.size(), "node");
        if (light >= 0) {
            product.lights.push_back(lightOf(lights[light], axes));
            product.lights.back().node = nodeOf[i];
        }
    }
    readSceneExtras(gltf.root(), product);
}

} // namespace qor::import
