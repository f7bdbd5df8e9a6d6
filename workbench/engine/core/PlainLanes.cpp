#include "workbench/engine/core/PlainLanes.h"

#include "workbench/engine/core/SmoothSurface.h"

namespace qor::engine {

namespace {

using Instances = std::array<const CompiledInstance*, packetWidth>;

/// Vectors that come one at a time.
struct Collected {
    alignas(32) std::array<float, packetWidth> x;
    alignas(32) std::array<float, packetWidth> y;
    alignas(32) std::array<float, packetWidth> z;

    void set(std::size_t lane, const Vec3& v) {
        x[lane] = v.x;
        y[lane] = v.y;
        z[lane] = v.z;
    }

    Vec3x8 all() const { return {load(x.data()), load(y.data()), load(z.data())}; }
};

/// Eight triangles as their meshes have them.
struct Triangles {
    std::array<Collected, 3> corners;
    std::array<Collected, 3> normals;
    Collected albedo;
    Instances instances;
    alignas(32) std::array<int, packetWidth> smooth; ///< -1: with normals of its own, or 0

    /// False if a surface is not plain.
    bool collect(const CompiledScene& scene, const RayHitPacket& packet, unsigned hits);
    bool take(const CompiledScene& scene, std::size_t lane, unsigned instance, unsigned triangle);
    bool isOneInstance() const;
};

bool Triangles::take(const CompiledScene& scene,
                     std::size_t lane,
                     unsigned instanceIndex,
                     unsigned triangle) {
    const CompiledInstance& instance = scene.instance(instanceIndex);
    const CompiledMaterial& material = scene.material(scene.materialOf(instance, triangle));
    const auto& index = instance.mesh->triangles[triangle];
    instances[lane] = &instance;
    smooth[lane] = instance.flat ? 0 : -1;
    albedo.set(lane, material.material.baseColor);
    for (std::size_t i = 0; i < 3; ++i) {
        corners[i].set(lane, instance.mesh->positions[index[i]]);
        normals[i].set(lane, instance.flat ? Vec3{} : instance.mesh->normals[index[i]]);
    }
    return material.plain;
}

bool Triangles::collect(const CompiledScene& scene, const RayHitPacket& packet, unsigned hits) {
    const auto some = static_cast<std::size_t>(std::countr_zero(hits));
    for (std::size_t i = 0; i < packetWidth; ++i) {
        const std::size_t from = ((hits >> i) & 1U) != 0 ? i : some;
        if (!take(scene, i, packet.hit.instID[0][from], packet.hit.primID[from]))
            return false;
    }
    return true;
}

bool Triangles::isOneInstance() const {
    return std::all_of(instances.begin(), instances.end(),
                       [&](const CompiledInstance* i) { return i == instances.front(); });
}

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

    explicit Placing(const Instances& instances) {
        std::array<Collected, 7> columns;
        for (std::size_t i = 0; i < packetWidth; ++i) {
            const CompiledInstance& one = *instances[i];
            columns[0].set(i, one.transform.x);
            columns[1].set(i, one.transform.y);
            columns[2].set(i, one.transform.z);
            columns[3].set(i, one.transform.origin);
            columns[4].set(i, one.normals.x);
            columns[5].set(i, one.normals.y);
            columns[6].set(i, one.normals.z);
            precision[i] = one.precision;
        }
        x = columns[0].all();
        y = columns[1].all();
        z = columns[2].all();
        origin = columns[3].all();
        normalX = columns[4].all();
        normalY = columns[5].all();
        normalZ = columns[6].all();
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
        const std::array<Vec3x8, 3> own{t.corners[0].all(), t.corners[1].all(), t.corners[2].all()};
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
         const Vec3x8& direction) {
        Vec3x8 mixed;
        std::array<Vec3x8, 3> units;
        for (std::size_t i = 0; i < 3; ++i) {
            const Vec3x8 n = placing.normal(t.normals[i].all());
            const Float8 size = length(n);
            const Int8 good = (size > 0.0F) & (size < std::numeric_limits<float>::infinity());
            mixed += select(good, n, Vec3x8{}) * points.weights[i];
            units[i] = select(good, n * (1.0F / size), points.flat);
        }
        const Float8 turn = dot(mixed, points.flat) < 0.0F ? -side : side;
        const Float8 size = length(mixed);
        usable = size > 0.0F;
        normal = facing(mixed * (turn / size), -direction);
        for (Vec3x8& unit : units)
            unit = unit * turn;
        lift = liftOf(points.position, points.corners, units, points.weights, points.flat * side);
    }
};

} // namespace

bool PlainLanes::fill(const CompiledScene& scene, const RayHitPacket& packet) {
    hit = load(packet.hit.geomID) != static_cast<int>(Hit::none);
    const unsigned hits = bitsOf(hit);
    if (hits == 0)
        return true;
    Triangles t;
    if (!t.collect(scene, packet, hits))
        return false;
    albedo = t.albedo.all();
    const Placing placing =
        t.isOneInstance() ? Placing(*t.instances.front()) : Placing(t.instances);
    const Points points(t, placing, packet);
    const Vec3x8 direction{load(packet.ray.dir_x), load(packet.ray.dir_y), load(packet.ray.dir_z)};
    const Float8 side = dot(points.flat, direction) < 0.0F ? eight(1.0F) : eight(-1.0F);
    flat = points.flat * side;
    normal = flat;
    start = points.position + flat * placing.precision;
    const Int8 smooth = std::bit_cast<Int8>(t.smooth);
    if (bitsOf(smooth) == 0)
        return true;
    const Bend bend(t, placing, points, side, direction);
    normal = select(smooth & bend.usable, bend.normal, normal);
    start = select(smooth, start + bend.lift, start);
    return true;
}

} // namespace qor::engine
