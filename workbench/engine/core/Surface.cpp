#include "workbench/engine/core/Surface.h"

#include "workbench/engine/core/Microfacet.h"
#include "workbench/engine/core/SmoothSurface.h"
#include "workbench/engine/core/SurfaceTextures.h"

#include <array>
#include <limits>

namespace qor::engine {

namespace {

TrianglePlace triangleAt(const CompiledInstance& instance, const Hit& hit) {
    return {*instance.mesh, instance.mesh->triangles[hit.triangle], hit.u, hit.v};
}

/// The lift of a hit, its corners brought to the world.
Vec3 liftAt(const CompiledInstance& instance,
            const TrianglePlace& t,
            const Vec3& position,
            float side,
            const Vec3& flat) {
    std::array<Vec3, 3> corners;
    std::array<Vec3, 3> normals;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        corners[i] = instance.transform.point(t.mesh.positions[t.corners[i]]);
        normals[i] = normalize(instance.normals(t.mesh.normals[t.corners[i]])) * side;
    }
    const std::array<float, 3> weights{1.0F - t.u - t.v, t.u, t.v};
    return liftOf(position, corners, normals, weights, flat);
}

float cutOut(const Material& material, float opacity) {
    if (material.alphaMode == AlphaMode::mask)
        return opacity >= material.alphaCutoff ? 1.0F : 0.0F;
    return material.alphaMode == AlphaMode::opaque ? 1.0F : opacity;
}

} // namespace

SurfaceMaterial untextured(const CompiledMaterial& compiled) {
    const Material& m = compiled.material;
    return {m.baseColor, m.opacity,      m.metallic,         m.roughness, m.ior,
            m.specular,  m.transmission, m.thinWalled,       m.clearcoat, m.clearcoatRoughness,
            m.emission,  1.0F,           compiled.absorption};
}

Surface
surfaceAt(const CompiledScene& scene, const Hit& hit, const Vec3& direction, const RayCone& cone) {
    const CompiledInstance& instance = scene.instance(hit.instance);
    const CompiledMaterial& material = scene.material(scene.materialOf(instance, hit.triangle));
    const TrianglePlace t = triangleAt(instance, hit);
    const auto& positions = t.mesh.positions;
    const Vec3& a = positions[t.corners[0]];
    const Vec3 local = t.mix(positions);
    const Vec3 outward = cross(positions[t.corners[1]] - a, positions[t.corners[2]] - a);

    Surface s;
    s.toEye = -direction;
    s.distance = hit.t;
    s.footprint = cone.at(hit.t);
    s.position = instance.transform.point(local);
    s.offset = instance.precision;
    const Vec3 worldNormal = normalize(instance.normals(outward));
    s.frontFace = dot(worldNormal, direction) < 0.0F;
    s.geometricNormal = s.frontFace ? worldNormal : -worldNormal;
    s.normal = s.geometricNormal;
    s.lifted = s.position;
    if (!instance.flat) {
        const Vec3 smooth = t.mix(t.mesh.normals);
        const float side = dot(smooth, outward) < 0.0F ? -1.0F : 1.0F;
        const Vec3 world = instance.normals(smooth * (s.frontFace ? side : -side));
        if (const float n = length(world); n > 0.0F && std::isfinite(n)) {
            s.normal = world / n;
            s.lifted +=
                liftAt(instance, t, s.position, s.frontFace ? side : -side, s.geometricNormal);
        }
    }
    if (material.emissionSampled)
        s.sampledEmission = material.material.emission;
    s.material = untextured(material);
    s.coatNormal = s.normal;
    if (material.textured)
        applyTextures(instance, t, material, s);
    if (instance.colored)
        applyCornerColors(t, s.material);
    s.material.opacity = cutOut(material.material, s.material.opacity);
    s.normal = facing(s.normal, s.toEye);
    s.coatNormal = facing(s.coatNormal, s.toEye);
    return s;
}

float crossGround(const Ground& ground, const Vec3& origin, const Vec3& direction, float farthest) {
    if (!ground.visible)
        return -1.0F;
    const Vec3 normal = normalize(ground.normal);
    const float slope = dot(direction, normal);
    const float height = dot(origin - ground.origin, normal);
    if (!(slope * height < 0.0F))
        return -1.0F;
    const float t = -height / slope;
    if (!(t < farthest))
        return -1.0F;
    const Vec3 local = Frame(normal).toLocal(origin + direction * t - ground.origin);
    const float half = 0.5F * ground.size;
    return std::abs(local.x) <= half && std::abs(local.y) <= half ? t : -1.0F;
}

float hitGround(const Ground& ground, const Vec3& origin, const Vec3& direction, float farthest) {
    return dot(direction, ground.normal) < 0.0F ? crossGround(ground, origin, direction, farthest)
                                                : -1.0F;
}

Surface
groundAt(const CompiledScene& scene, const Vec3& position, const Vec3& direction, float distance) {
    const Ground& ground = scene.scene().ground;
    Surface s;
    s.geometricNormal = s.normal = s.coatNormal = normalize(ground.normal);
    s.position = s.lifted = position;
    s.toEye = -direction;
    s.distance = distance;
    const float size =
        std::max({std::abs(position.x), std::abs(position.y), std::abs(position.z), distance});
    s.offset = size * 8.0F * std::numeric_limits<float>::epsilon();
    s.material.baseColor = ground.color;
    s.material.specular = 0.0F;
    return s;
}

Passage passageAt(const CompiledScene& scene, const Hit& hit, const Vec3& direction) {
    const CompiledInstance& instance = scene.instance(hit.instance);
    const CompiledMaterial& material = scene.material(scene.materialOf(instance, hit.triangle));
    if (!material.transparent)
        return {};
    const Surface s = surfaceAt(scene, hit, direction, {});
    const SurfaceMaterial& m = s.material;
    Passage result{m.opacity, {}, s.frontFace ? Color{} : m.absorption};
    // Straight through glass: as if the other boundary bent it back.
    const float share = fresnelDielectric(dot(s.geometricNormal, s.toEye), m.ior);
    const float reflected = m.thinWalled ? 2.0F * share / (1.0F + share) : share;
    const Color& base = m.baseColor;
    const Color tint =
        m.thinWalled ? base : Color{std::sqrt(base.x), std::sqrt(base.y), std::sqrt(base.z)};
    result.glass = tint * (m.opacity * m.transmission * (1.0F - m.metallic) * (1.0F - reflected));
    return result;
}

} // namespace qor::engine
