#include "workbench/engine/core/SurfaceLanes.h"

#include "workbench/engine/core/LaneLoads.h"
#include "workbench/engine/core/SmoothSurface.h"
#include "workbench/engine/core/Surface.h"
#include "workbench/engine/core/SurfaceTextures.h"

namespace qor::engine {

namespace {

constexpr std::size_t width = packetWidth;

template <typename Value>
bool allTheSame(const std::array<Value, width>& values) {
    return std::all_of(values.begin() + 1, values.end(),
                       [&](const Value& value) { return value == values.front(); });
}

/// Eight triangles as their meshes have them.
struct Triangles {
    std::array<LanePointers, 3> corners;
    std::array<LanePointers, 3> normals;
    std::array<const CompiledInstance*, width> instances;
    std::array<const CompiledMaterial*, width> materials;
    unsigned smooth = 0; ///< lanes with normals of their own
    unsigned varied = 0; ///< lanes whose material is not the same everywhere
    unsigned other = 0;  ///< lanes that packets do not shade

    Triangles(const CompiledScene& scene, const RayHitPacket& packet, unsigned asked) {
        const auto some = static_cast<std::size_t>(std::countr_zero(asked));
        for (std::size_t i = 0; i < width; ++i) {
            const std::size_t from = ((asked >> i) & 1U) != 0 ? i : some;
            take(scene, i, packet.hit.instID[0][from], packet.hit.primID[from]);
        }
    }

    void take(const CompiledScene& scene, std::size_t lane, unsigned which, unsigned triangle) {
        static constexpr std::array<float, 4> none{};
        const CompiledInstance& instance = scene.instance(which);
        const CompiledMaterial& material = scene.material(scene.materialOf(instance, triangle));
        const MeshData& mesh = *instance.mesh;
        const auto& index = mesh.triangles[triangle];
        const unsigned bit = 1U << lane;
        instances[lane] = &instance;
        materials[lane] = &material;
        smooth |= instance.flat ? 0U : bit;
        varied |= material.varied ? bit : 0U;
        other |= material.inPackets ? 0U : bit;
        for (std::size_t i = 0; i < 3; ++i) {
            corners[i][lane] = &mesh.positions[index[i]].x;
            normals[i][lane] = instance.flat ? none.data() : &mesh.normals[index[i]].x;
        }
    }
};

/// The ways of eight instances to the world.
struct Placing {
    Vec3x8 x;
    Vec3x8 y;
    Vec3x8 z;
    Vec3x8 origin;
    Vec3x8 normalX;
    Vec3x8 normalY;
    Vec3x8 normalZ;
    Float8 precision{};

    explicit Placing(const CompiledInstance& all)
        : x(all.transform.x)
        , y(all.transform.y)
        , z(all.transform.z)
        , origin(all.transform.origin)
        , normalX(all.normals.x)
        , normalY(all.normals.y)
        , normalZ(all.normals.z)
        , precision(eight(all.precision)) {}

    explicit Placing(const std::array<const CompiledInstance*, width>& instances) {
        const auto column = [&](auto part) {
            LanePointers from;
            for (std::size_t i = 0; i < width; ++i)
                from[i] = &part(*instances[i]).x;
            return loadLanes(from).vector;
        };
        x = column([](const CompiledInstance& i) -> const Vec3& { return i.transform.x; });
        y = column([](const CompiledInstance& i) -> const Vec3& { return i.transform.y; });
        z = column([](const CompiledInstance& i) -> const Vec3& { return i.transform.z; });
        origin =
            column([](const CompiledInstance& i) -> const Vec3& { return i.transform.origin; });
        normalX = column([](const CompiledInstance& i) -> const Vec3& { return i.normals.x; });
        normalY = column([](const CompiledInstance& i) -> const Vec3& { return i.normals.y; });
        normalZ = column([](const CompiledInstance& i) -> const Vec3& { return i.normals.z; });
        for (std::size_t i = 0; i < width; ++i)
            precision[i] = instances[i]->precision;
    }

    Vec3x8 point(const Vec3x8& p) const { return origin + x * p.x + y * p.y + z * p.z; }

    Vec3x8 normal(const Vec3x8& n) const { return normalX * n.x + normalY * n.y + normalZ * n.z; }
};

/// Eight points of triangles in the world.
struct Points {
    std::array<Vec3x8, 3> corners;
    std::array<Float8, 3> weights;
    Vec3x8 position;
    Vec3x8 flat; ///< as the corners go around

    Points(const Triangles& t, const Placing& placing, const RayHitPacket& packet) {
        const std::array<Vec3x8, 3> own{loadLanes(t.corners[0]).vector,
                                        loadLanes(t.corners[1]).vector,
                                        loadLanes(t.corners[2]).vector};
        const Float8 u = load(packet.hit.u);
        const Float8 v = load(packet.hit.v);
        weights = {1.0F - u - v, u, v};
        for (std::size_t i = 0; i < 3; ++i) {
            corners[i] = placing.point(own[i]);
            position += corners[i] * weights[i];
        }
        flat = normalize(placing.normal(cross(own[1] - own[0], own[2] - own[0])));
    }
};

/// What the normals of the corners make of eight points.
struct Bend {
    Vec3x8 normal;
    Int8 usable;
    Vec3x8 lift;

    Bend(const Triangles& t,
         const Placing& placing,
         const Points& points,
         const Float8& side,
         const Vec3x8& toEye) {
        Vec3x8 mixed;
        std::array<Vec3x8, 3> units;
        for (std::size_t i = 0; i < 3; ++i) {
            const Vec3x8 n = placing.normal(loadLanes(t.normals[i]).vector);
            const Float8 size = length(n);
            const Int8 good = (size > 0.0F) & (size < std::numeric_limits<float>::infinity());
            mixed += select(good, n, Vec3x8{}) * points.weights[i];
            units[i] = select(good, n * (1.0F / size), points.flat);
        }
        const Float8 turn = dot(mixed, points.flat) < 0.0F ? -side : side;
        const Float8 size = length(mixed);
        usable = size > 0.0F;
        normal = facing(mixed * (turn / size), toEye);
        for (Vec3x8& unit : units)
            unit = unit * turn;
        lift = liftOf(points.position, points.corners, units, points.weights, points.flat * side);
    }
};

LaneMaterials everywhere(const Material& m) {
    return {Vec3x8(m.baseColor), eight(m.metallic), eight(m.roughness),
            eight(m.ior),        eight(m.specular), eight(1.0F)};
}

LaneMaterials sideBySide(const std::array<const CompiledMaterial*, width>& materials) {
    LanePointers colors;
    LanePointers shines;
    for (std::size_t i = 0; i < width; ++i) {
        colors[i] = materials[i]->packet.data();
        shines[i] = materials[i]->packet.data() + 4;
    }
    const LoadedLanes color = loadLanes(colors);
    const LoadedLanes shine = loadLanes(shines);
    return {color.vector,   color.behind,   shine.vector.x,
            shine.vector.y, shine.vector.z, eight(1.0F)};
}

Vec3 laneOf(const Vec3x8& v, std::size_t lane) {
    return {v.x[lane], v.y[lane], v.z[lane]};
}

} // namespace

SurfaceLanes::SurfaceLanes(const CompiledScene& scene,
                           const RayHitPacket& packet,
                           const Int8& asked,
                           const LaneCones& cones) {
    const Triangles t(scene, packet, bitsOf(asked));
    other = maskOf(t.other);
    material = allTheSame(t.materials) ? everywhere(t.materials.front()->material)
                                       : sideBySide(t.materials);
    const Placing placing =
        allTheSame(t.instances) ? Placing(*t.instances.front()) : Placing(t.instances);
    const Points points(t, placing, packet);
    toEye = {-load(packet.ray.dir_x), -load(packet.ray.dir_y), -load(packet.ray.dir_z)};
    const Float8 side = dot(points.flat, toEye) > 0.0F ? eight(1.0F) : eight(-1.0F);
    position = points.position;
    flat = points.flat * side;
    normal = flat;
    offset = placing.precision;
    start = position + flat * offset;
    footprint = cones.width + cones.spread * load(packet.ray.tfar);
    if (t.smooth != 0) {
        const Int8 smooth = maskOf(t.smooth);
        const Bend bend(t, placing, points, side, toEye);
        normal = select(smooth & bend.usable, bend.normal, normal);
        start = select(smooth, start + bend.lift, start);
    }
    if (const unsigned varied = t.varied & ~t.other & bitsOf(asked); varied != 0)
        takeVaried(scene, packet, varied, cones);
}

/// The lanes whose textures or corners' colours have to be looked up, one by one.
void SurfaceLanes::takeVaried(const CompiledScene& scene,
                              const RayHitPacket& packet,
                              unsigned lanes,
                              const LaneCones& cones) {
    for (std::size_t i = 0; i < width; ++i) {
        if (((lanes >> i) & 1U) == 0)
            continue;
        const Hit hit{packet.hit.instID[0][i], packet.hit.primID[i], packet.ray.tfar[i],
                      packet.hit.u[i], packet.hit.v[i]};
        const CompiledInstance& instance = scene.instance(hit.instance);
        const CompiledMaterial& compiled = scene.material(scene.materialOf(instance, hit.triangle));
        Surface s;
        if (compiled.material.normalTexture.picture) {
            s = surfaceAt(scene, hit, -laneOf(toEye, i), {cones.width[i], cones.spread[i]});
            normal.set(i, s.normal);
        } else {
            s = lookedUp(instance, compiled, hit, i);
        }
        material.baseColor.set(i, s.material.baseColor);
        material.metallic[i] = s.material.metallic;
        material.roughness[i] = s.material.roughness;
        material.occlusion[i] = s.material.occlusion;
    }
}

/// A lane with its material at one place; what bends normals left out.
Surface SurfaceLanes::lookedUp(const CompiledInstance& instance,
                               const CompiledMaterial& compiled,
                               const Hit& hit,
                               std::size_t lane) const {
    const TrianglePlace place{*instance.mesh, instance.mesh->triangles[hit.triangle], hit.u, hit.v};
    Surface s;
    s.geometricNormal = laneOf(flat, lane);
    s.toEye = laneOf(toEye, lane);
    s.footprint = footprint[lane];
    s.material = untextured(compiled);
    if (compiled.textured)
        applyTextures(instance, place, compiled, s);
    if (instance.colored)
        applyCornerColors(place, s.material);
    return s;
}

} // namespace qor::engine
