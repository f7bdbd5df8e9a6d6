#include "workbench/engine/core/PlainPackets.h"

namespace qor::engine {

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr std::size_t width = packetWidth;
using Floats = std::array<float, width>;

/// A triangle in world space, set up once for all lanes that meet it.
struct WorldTriangle {
    unsigned instance = Hit::none;
    unsigned triangle = Hit::none;
    std::array<Vec3, 3> corners;
    std::array<Vec3, 3> normals; ///< on the side of `flat`
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
        t.normals[i] = size > 0.0F && std::isfinite(size) ? n / size : t.flat;
        if (dot(t.normals[i], t.flat) < 0.0F)
            t.normals[i] = -t.normals[i];
    }
}

} // namespace

struct PlainPackets::Lanes {
    alignas(32) std::array<int, width> hit{};
    // Where shadow rays start, and the normal to shade with.
    alignas(32) Floats x{};
    alignas(32) Floats y{};
    alignas(32) Floats z{};
    alignas(32) Floats nx{};
    alignas(32) Floats ny{};
    alignas(32) Floats nz{};
    alignas(32) Floats red{};
    alignas(32) Floats green{};
    alignas(32) Floats blue{};
};

PlainPackets::PlainPackets(const CompiledScene& scene,
                           const RenderOptions& options,
                           const PathBudget& budget,
                           bool gathers)
    : scene_(scene) {
    const bool constantEnvironment = !scene.environment().isBlack();
    const bool indirect = budget.diffuse > 0 && budget.total > 0;
    if (constantEnvironment || indirect || gathers || scene.hasTransparency() ||
        !scene.hasObjects() || scene.scene().ground.visible)
        return;
    for (const Light& light : scene.scene().lights) {
        const auto* sun = std::get_if<DirectionalLight>(&light);
        if (sun == nullptr || !scene.lights().isDelta(static_cast<int>(suns_.size())))
            return;
        suns_.push_back({normalize(-sun->direction), sun->irradiance / pi,
                         sun->castsShadows && options.shadows});
    }
    apply_ = scene.lights().count() == static_cast<int>(suns_.size());
}

bool PlainPackets::gather(const RayHitPacket& packet, Lanes& lanes) const {
    WorldTriangle t;
    for (std::size_t i = 0; i < width; ++i) {
        if (packet.hit.geomID[i] == Hit::none)
            continue;
        if (packet.hit.primID[i] != t.triangle || packet.hit.instID[0][i] != t.instance)
            setUp(scene_, packet.hit.instID[0][i], packet.hit.primID[i], t);
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
            normal = normalize((t.normals[0] * w + t.normals[1] * u + t.normals[2] * v) * side);
            // As in surfaceAt: out to the smooth surface that the triangles stand for.
            const std::array<float, 3> weights{w, u, v};
            Vec3 lift;
            for (std::size_t k = 0; k < 3; ++k) {
                const float below = dot(position - t.corners[k], t.normals[k]) * side;
                lift += t.normals[k] * (-std::min(0.0F, below) * weights[k] * side);
            }
            position += lift;
        }
        position += offset;
        lanes.hit[i] = -1;
        lanes.x[i] = position.x;
        lanes.y[i] = position.y;
        lanes.z[i] = position.z;
        lanes.nx[i] = normal.x;
        lanes.ny[i] = normal.y;
        lanes.nz[i] = normal.z;
        lanes.red[i] = t.albedo.x;
        lanes.green[i] = t.albedo.y;
        lanes.blue[i] = t.albedo.z;
    }
    return true;
}

void PlainPackets::addSun(const Sun& sun,
                          const Lanes& lanes,
                          LaneColors& light,
                          RayCounts& counts) const {
    alignas(32) RayPacket packet;
    alignas(32) Floats cosine;
    PacketMask asked;
    std::uint64_t rays = 0;
    for (std::size_t i = 0; i < width; ++i) {
        cosine[i] =
            lanes.nx[i] * sun.towards.x + lanes.ny[i] * sun.towards.y + lanes.nz[i] * sun.towards.z;
        asked.lane[i] = cosine[i] > 0.0F ? lanes.hit[i] : 0;
        cosine[i] = asked.lane[i] != 0 ? cosine[i] : 0.0F;
        rays += asked.lane[i] != 0 ? 1 : 0;
    }
    if (rays == 0)
        return;
    if (sun.castsShadows) {
        for (std::size_t i = 0; i < width; ++i) {
            packet.org_x[i] = lanes.x[i];
            packet.org_y[i] = lanes.y[i];
            packet.org_z[i] = lanes.z[i];
            packet.dir_x[i] = sun.towards.x;
            packet.dir_y[i] = sun.towards.y;
            packet.dir_z[i] = sun.towards.z;
            packet.tnear[i] = 0.0F;
            packet.tfar[i] = infinity;
            packet.time[i] = 0.0F;
            packet.mask[i] = ~0U;
            packet.id[i] = 0;
            packet.flags[i] = 0;
        }
        scene_.structure().occluded(asked, packet);
        for (std::size_t i = 0; i < width; ++i)
            cosine[i] = packet.tfar[i] < 0.0F ? 0.0F : cosine[i];
        counts.shadow += rays;
    }
    for (std::size_t i = 0; i < width; ++i) {
        light.red[i] += cosine[i] * sun.irradiance.x;
        light.green[i] += cosine[i] * sun.irradiance.y;
        light.blue[i] += cosine[i] * sun.irradiance.z;
    }
}

bool PlainPackets::shade(const RayHitPacket& packet, LaneColors& colors, RayCounts& counts) const {
    Lanes lanes;
    if (!gather(packet, lanes))
        return false;
    LaneColors light;
    const Color& ambient = scene_.ambient();
    light.red.fill(ambient.x);
    light.green.fill(ambient.y);
    light.blue.fill(ambient.z);
    for (const Sun& sun : suns_)
        addSun(sun, lanes, light, counts);
    for (std::size_t i = 0; i < width; ++i) {
        const bool hit = lanes.hit[i] != 0;
        colors.red[i] = hit ? light.red[i] * lanes.red[i] : colors.red[i];
        colors.green[i] = hit ? light.green[i] * lanes.green[i] : colors.green[i];
        colors.blue[i] = hit ? light.blue[i] * lanes.blue[i] : colors.blue[i];
        colors.alpha[i] = hit ? 1.0F : colors.alpha[i];
    }
    return true;
}

} // namespace qor::engine
