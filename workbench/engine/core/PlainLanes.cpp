#include "workbench/engine/core/PlainLanes.h"

#include "workbench/engine/core/Surface.h"

namespace qor::engine {

namespace {

/// A triangle in world space, set up once for all lanes that meet it.
struct WorldTriangle {
    unsigned instance = Hit::none;
    unsigned triangle = Hit::none;
    std::array<Vec3, 3> corners;
    std::array<Vec3, 3> normals; ///< as long as the mesh has them
    std::array<Vec3, 3> units;
    Vec3 flat;
    Color albedo;
    float precision = 0.0F;
    bool smooth = false;
    bool plain = false;
};

void setUp(const CompiledScene& scene,
           unsigned instanceIndex,
           unsigned triangleIndex,
           WorldTriangle& t) {
    const CompiledInstance& instance = scene.instance(instanceIndex);
    const CompiledMaterial& material = scene.material(scene.materialOf(instance, triangleIndex));
    const auto& index = instance.mesh->triangles[triangleIndex];
    t.instance = instanceIndex;
    t.triangle = triangleIndex;
    t.plain = material.plain;
    t.albedo = material.material.baseColor;
    t.precision = instance.precision;
    t.smooth = !instance.flat;
    for (std::size_t i = 0; i < 3; ++i)
        t.corners[i] = instance.transform.point(instance.mesh->positions[index[i]]);
    const auto& p = instance.mesh->positions;
    t.flat =
        normalize(instance.normals(cross(p[index[1]] - p[index[0]], p[index[2]] - p[index[0]])));
    for (std::size_t i = 0; t.smooth && i < 3; ++i) {
        const Vec3 n = instance.normals(instance.mesh->normals[index[i]]);
        const float size = length(n);
        const bool usable = size > 0.0F && std::isfinite(size);
        t.normals[i] = usable ? n : Vec3{};
        t.units[i] = usable ? n / size : t.flat;
    }
}

} // namespace

bool PlainLanes::fill(const CompiledScene& scene, const RayHitPacket& packet) {
    WorldTriangle t;
    for (std::size_t i = 0; i < packetWidth; ++i) {
        if (packet.hit.geomID[i] == Hit::none)
            continue;
        if (packet.hit.primID[i] != t.triangle || packet.hit.instID[0][i] != t.instance)
            setUp(scene, packet.hit.instID[0][i], packet.hit.primID[i], t);
        if (!t.plain)
            return false;
        const float u = packet.hit.u[i];
        const float v = packet.hit.v[i];
        const float w = 1.0F - u - v;
        const Vec3 direction{packet.ray.dir_x[i], packet.ray.dir_y[i], packet.ray.dir_z[i]};
        const float side = dot(t.flat, direction) < 0.0F ? 1.0F : -1.0F;
        Vec3 position = t.corners[0] * w + t.corners[1] * u + t.corners[2] * v;
        Vec3 normal = t.flat * side;
        const Vec3 offset = normal * t.precision;
        if (t.smooth) {
            const Vec3 smooth = t.normals[0] * w + t.normals[1] * u + t.normals[2] * v;
            const float turn = dot(smooth, t.flat) < 0.0F ? -side : side;
            if (const float size = length(smooth); size > 0.0F)
                normal = facing(smooth * (turn / size), -direction);
            const std::array<Vec3, 3> units{t.units[0] * turn, t.units[1] * turn,
                                            t.units[2] * turn};
            position += liftOf(position, t.corners, units, {w, u, v}, t.flat * side);
        }
        position += offset;
        hit[i] = -1;
        x[i] = position.x;
        y[i] = position.y;
        z[i] = position.z;
        nx[i] = normal.x;
        ny[i] = normal.y;
        nz[i] = normal.z;
        gx[i] = t.flat.x * side;
        gy[i] = t.flat.y * side;
        gz[i] = t.flat.z * side;
        red[i] = t.albedo.x;
        green[i] = t.albedo.y;
        blue[i] = t.albedo.z;
    }
    return true;
}

} // namespace qor::engine
