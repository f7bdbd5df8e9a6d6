#include "workbench/engine/core/Probe.h"

#include "workbench/engine/core/CameraRays.h"
#include "workbench/engine/core/CompiledScene.h"
#include "workbench/engine/core/Surface.h"

#include <limits>

namespace qor::engine {

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();

RenderOptions pictureOf(int width, int height) {
    RenderOptions options;
    options.width = width;
    options.height = height;
    return options;
}

Sight sightOf(const Surface& from, unsigned instance) {
    const SurfaceMaterial& m = from.material;
    Sight to;
    to.instance = instance;
    to.distance = from.distance;
    to.position = from.position;
    to.facet = from.geometricNormal;
    to.normal = from.normal;
    to.back = from.toEye;
    to.baseColor = m.baseColor;
    to.opacity = m.opacity;
    to.metallic = m.metallic;
    to.roughness = m.roughness;
    to.ior = m.ior;
    to.specular = m.specular;
    to.transmission = m.transmission;
    to.clearcoat = m.clearcoat;
    to.clearcoatRoughness = m.clearcoatRoughness;
    to.occlusion = m.occlusion;
    to.emission = m.emission;
    return to;
}

} // namespace

Result<Probe> Probe::create(Scene scene, const Camera& camera, int width, int height) {
    const RenderOptions options = pictureOf(width, height);
    Result<Done> valid = validate(options);
    if (valid)
        valid = validate(camera);
    if (valid)
        valid = validate(scene);
    if (!valid)
        return valid.error();
    auto compiled = CompiledScene::create(std::move(scene), options);
    if (!compiled)
        return compiled.error();
    return Probe(std::move(compiled).value(), camera, width, height);
}

Probe::Probe(std::shared_ptr<const CompiledScene> scene,
             const Camera& camera,
             int width,
             int height)
    : scene_(std::move(scene))
    , rays_(std::make_unique<const CameraRays>(camera, pictureOf(width, height))) {}

Probe::~Probe() = default;
Probe::Probe(Probe&& other) noexcept = default;
Probe& Probe::operator=(Probe&& other) noexcept = default;

std::optional<Sight> Probe::look(float x, float y, float from) const {
    if (!scene_->hasObjects())
        return std::nullopt;
    Ray ray = rays_->at(x, y);
    ray.tNear = std::max(ray.tNear, from);
    const Hit hit = scene_->structure().intersect(ray);
    if (!hit)
        return std::nullopt;
    return sightOf(surfaceAt(*scene_, hit, ray.direction, rays_->cone()), hit.instance);
}

std::optional<Vec3>
Probe::crossing(float x, float y, const Vec3& origin, const Vec3& normal, float& distance) const {
    const Ray ray = rays_->at(x, y);
    const float slope = dot(ray.direction, normal);
    distance = slope == 0.0F ? -1.0F : dot(origin - ray.origin, normal) / slope;
    if (!(distance > ray.tNear) || !(distance < infinity))
        return std::nullopt;
    return ray.origin + ray.direction * distance;
}

bool Probe::isCovered(const Vec3& position, const Vec3& direction) const {
    const float offset = scene_->radius() * 1e-4F;
    return scene_->hasObjects() &&
           scene_->structure().occluded({position, direction, offset, infinity});
}

} // namespace qor::engine
