#include "workbench/engine/core/Surface.h"

#include "workbench/engine/core/Microfacet.h"

#include <array>
#include <limits>

namespace qor::engine {

namespace {

/// The corners of one triangle and the place of a hit in it.
struct Triangle {
    const MeshData& mesh;
    const std::array<std::uint32_t, 3>& corners;
    float u;
    float v;

    template <typename T>
    T mix(const std::vector<T>& values) const {
        const float w = 1.0F - u - v;
        const T& a = values[corners[0]];
        const T& b = values[corners[1]];
        const T& c = values[corners[2]];
        if constexpr (requires { a.z; })
            return a * w + b * u + c * v;
        else
            return {a.x * w + b.x * u + c.x * v, a.y * w + b.y * u + c.y * v};
    }
};

Triangle triangleAt(const CompiledInstance& instance, const Hit& hit) {
    return {*instance.mesh, instance.mesh->triangles[hit.triangle], hit.u, hit.v};
}

/// Moves \p p outwards to the surface that the triangle's normals describe, so that the edges of
/// triangles throw no shadow on their neighbours. Method: Hanika, "Hacking the Shadow Terminator",
/// Ray Tracing Gems II, 2021, ch. 4.
Vec3 liftedPoint(const Triangle& t, const Vec3& p, float side) {
    const auto lift = [&](std::uint32_t corner) {
        const Vec3 n = t.mesh.normals[corner] * side;
        const float below = std::min(0.0F, dot(p - t.mesh.positions[corner], n));
        return n * -below;
    };
    return p + lift(t.corners[0]) * (1.0F - t.u - t.v) + lift(t.corners[1]) * t.u +
           lift(t.corners[2]) * t.v;
}

/// A normal that the eye sees: bent to just before the horizon when interpolation has turned it
/// away.
Vec3 facing(const Vec3& normal, const Vec3& toEye) {
    constexpr float least = 0.01F;
    const float c = dot(normal, toEye);
    return c >= least ? normal : normalize(normal + toEye * (least - c));
}

Vec2 place(const Texture& texture, const Vec2& uv) {
    const float c = std::cos(texture.rotationRad);
    const float s = std::sin(texture.rotationRad);
    const Vec2 scaled{uv.x * texture.scale.x, uv.y * texture.scale.y};
    return {texture.offset.x + c * scaled.x + s * scaled.y,
            texture.offset.y - s * scaled.x + c * scaled.y};
}

/// A texture's texel under a ray, white where there is no picture.
Texel look(const Texture& texture, const Vec2& uv, float footprint) {
    if (!texture.picture)
        return {{1.0F, 1.0F, 1.0F}, 1.0F};
    const Vec2 at = place(texture, uv);
    const float scale = std::max(std::abs(texture.scale.x), std::abs(texture.scale.y));
    return texture.picture->lookup(at.x, at.y, footprint * scale);
}

/// Edges of a triangle in space and on its textures.
struct Chart {
    Vec3 edge1;
    Vec3 edge2;
    Vec2 uv1;
    Vec2 uv2;

    float density() const {
        const float onTexture = std::abs(uv1.x * uv2.y - uv1.y * uv2.x);
        const float inSpace = length(cross(edge1, edge2));
        return inSpace > 0.0F ? std::sqrt(onTexture / inSpace) : 0.0F;
    }
};

Chart chartOf(const CompiledInstance& instance, const Triangle& t) {
    const auto& p = t.mesh.positions;
    const auto& uv = t.mesh.textureCoordinates;
    const auto& c = t.corners;
    return {instance.transform.vector(p[c[1]] - p[c[0]]),
            instance.transform.vector(p[c[2]] - p[c[0]]),
            {uv[c[1]].x - uv[c[0]].x, uv[c[1]].y - uv[c[0]].y},
            {uv[c[2]].x - uv[c[0]].x, uv[c[2]].y - uv[c[0]].y}};
}

Vec3 mapped(const Material& material,
            const Chart& chart,
            const Vec2& uv,
            float footprint,
            const Vec3& normal) {
    const float det = chart.uv1.x * chart.uv2.y - chart.uv1.y * chart.uv2.x;
    if (det == 0.0F)
        return normal;
    const Vec3 alongU =
        (chart.edge1 * chart.uv2.y - chart.edge2 * chart.uv1.y) * (det > 0.0F ? 1.0F : -1.0F);
    const Vec3 flat = alongU - normal * dot(normal, alongU);
    if (!(length(flat) > 0.0F))
        return normal;
    const Vec3 tangent = normalize(flat);
    // Pictures hold +y upwards while v counts downwards.
    const Vec3 bitangent = cross(normal, tangent) * (det > 0.0F ? -1.0F : 1.0F);
    const Color c = look(material.normalTexture, uv, footprint).color;
    const float x = (2.0F * c.x - 1.0F) * material.normalScale;
    const float y = (2.0F * c.y - 1.0F) * material.normalScale;
    const Vec3 result = tangent * x - bitangent * y + normal * (2.0F * c.z - 1.0F);
    return length(result) > 0.0F ? normalize(result) : normal;
}

SurfaceMaterial untextured(const Material& m) {
    return {m.baseColor,    m.opacity,    m.metallic,  m.roughness,          m.ior,     m.specular,
            m.transmission, m.thinWalled, m.clearcoat, m.clearcoatRoughness, m.emission};
}

void applyTextures(const CompiledInstance& instance,
                   const Triangle& t,
                   const Material& source,
                   Surface& surface) {
    const Chart chart = chartOf(instance, t);
    const Vec2 uv = t.mix(t.mesh.textureCoordinates);
    const float slant = std::max(0.25F, std::abs(dot(surface.geometricNormal, surface.toEye)));
    const float footprint = surface.footprint * chart.density() / slant;
    SurfaceMaterial& m = surface.material;
    const Texel base = look(source.baseTexture, uv, footprint);
    m.baseColor *= base.color;
    m.opacity *= base.alpha;
    const Color surfaceTexel = look(source.metallicRoughnessTexture, uv, footprint).color;
    m.roughness *= surfaceTexel.y;
    m.metallic *= surfaceTexel.z;
    m.emission *= look(source.emissionTexture, uv, footprint).color;
    if (source.normalTexture.picture)
        surface.normal = mapped(source, chart, uv, footprint, surface.normal);
}

} // namespace

Surface
surfaceAt(const CompiledScene& scene, const Hit& hit, const Vec3& direction, const RayCone& cone) {
    const CompiledInstance& instance = scene.instance(hit.instance);
    const CompiledMaterial& material = scene.material(scene.materialOf(instance, hit.triangle));
    const Triangle t = triangleAt(instance, hit);
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
            s.lifted = instance.transform.point(liftedPoint(t, local, s.frontFace ? side : -side));
        }
    }
    s.plain = material.plain;
    if (material.emissionSampled)
        s.sampledEmission = material.material.emission;
    s.material = untextured(material.material);
    if (material.textured && !t.mesh.textureCoordinates.empty())
        applyTextures(instance, t, material.material, s);
    s.normal = facing(s.normal, s.toEye);
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
    s.geometricNormal = s.normal = normalize(ground.normal);
    s.position = s.lifted = position;
    s.toEye = -direction;
    s.distance = distance;
    const float size =
        std::max({std::abs(position.x), std::abs(position.y), std::abs(position.z), distance});
    s.offset = size * 8.0F * std::numeric_limits<float>::epsilon();
    s.plain = true;
    s.material.baseColor = ground.color;
    s.material.specular = 0.0F;
    return s;
}

Passage
passageAt(const CompiledScene& scene, const Hit& hit, const Vec3& direction, bool throughGlass) {
    const CompiledInstance& instance = scene.instance(hit.instance);
    const CompiledMaterial& material = scene.material(scene.materialOf(instance, hit.triangle));
    if (!material.transparent)
        return {};
    const Surface s = surfaceAt(scene, hit, direction, {});
    const SurfaceMaterial& m = s.material;
    Passage result{m.opacity, {}};
    const float glass = throughGlass ? m.transmission * (1.0F - m.metallic) : 0.0F;
    // Straight through glass: as if the other boundary bent it back.
    const float reflected = fresnelDielectric(dot(s.geometricNormal, s.toEye), m.ior);
    const Color& base = m.baseColor;
    const Color tint =
        m.thinWalled ? base : Color{std::sqrt(base.x), std::sqrt(base.y), std::sqrt(base.z)};
    result.tint = Color{1.0F, 1.0F, 1.0F} * (1.0F - m.opacity) +
                  tint * (m.opacity * glass * (1.0F - reflected));
    return result;
}

} // namespace qor::engine
