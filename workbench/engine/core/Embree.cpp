#include "workbench/engine/core/Embree.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>

namespace qor::engine {

namespace {

std::atomic<std::ptrdiff_t> _structureBytes{0};

bool countMemory(void* /*user*/, ssize_t bytes, bool /*post*/) {
    _structureBytes += bytes;
    return true;
}

/// One device for the process. It is never released: structures may outlive any order of static
/// destruction.
RTCDevice device() {
    static RTCDevice instance = [] {
        RTCDevice created = rtcNewDevice(nullptr);
        if (created != nullptr)
            rtcSetDeviceMemoryMonitorFunction(created, countMemory, nullptr);
        return created;
    }();
    if (instance == nullptr)
        throw std::runtime_error(
            "the ray tracing device cannot be made: most likely there is not enough memory");
    return instance;
}

void throwOnError() {
    const RTCError error = rtcGetDeviceError(device());
    if (error == RTC_ERROR_OUT_OF_MEMORY)
        throw std::bad_alloc();
    if (error != RTC_ERROR_NONE)
        throw std::runtime_error("ray tracing structure: error " + std::to_string(error));
}

RTCScene newScene() {
    RTCScene scene = rtcNewScene(device());
    if (scene == nullptr) {
        throwOnError();
        throw std::bad_alloc();
    }
    rtcSetSceneBuildQuality(scene, RTC_BUILD_QUALITY_MEDIUM);
    return scene;
}

/// The mesh's own arrays, which outlive the structure; Mesh keeps room for the fourth float that is
/// read with each position.
void sharePositions(RTCGeometry geometry, const MeshData& data) {
    rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                               data.positions.data(), 0, sizeof(Vec3), data.positions.size());
}

void placePositions(RTCGeometry geometry, const MeshData& data, const Transform& transform) {
    auto* placed = static_cast<Vec3*>(rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0,
                                                              RTC_FORMAT_FLOAT3, sizeof(Vec3),
                                                              data.positions.size()));
    if (placed == nullptr)
        throw std::bad_alloc();
    std::transform(data.positions.begin(), data.positions.end(), placed,
                   [&](const Vec3& position) { return transform.point(position); });
}

void shareTriangles(RTCGeometry geometry, const MeshData& data) {
    rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                               data.triangles.data(), 0, sizeof(data.triangles[0]),
                               data.triangles.size());
}

void attachAndRelease(RTCScene scene, RTCGeometry geometry, unsigned id) {
    rtcCommitGeometry(geometry);
    rtcAttachGeometryByID(scene, geometry, id);
    rtcReleaseGeometry(geometry);
}

RTCGeometry newGeometry(RTCGeometryType type) {
    RTCGeometry geometry = rtcNewGeometry(device(), type);
    if (geometry == nullptr) {
        throwOnError();
        throw std::bad_alloc();
    }
    return geometry;
}

/// Column-major 3×4, as Embree takes it.
std::array<float, 12> columns(const Transform& t) {
    return {t.x.x, t.x.y, t.x.z, t.y.x,      t.y.y,      t.y.z,
            t.z.x, t.z.y, t.z.z, t.origin.x, t.origin.y, t.origin.z};
}

void attachInstance(RTCScene scene, const Instance& instance, unsigned id) {
    RTCGeometry geometry = newGeometry(RTC_GEOMETRY_TYPE_INSTANCE);
    rtcSetGeometryInstancedScene(geometry, instance.mesh->structure().handle());
    rtcSetGeometryTimeStepCount(geometry, 1);
    rtcSetGeometryTransform(geometry, 0, RTC_FORMAT_FLOAT3X4_COLUMN_MAJOR,
                            columns(instance.transform).data());
    attachAndRelease(scene, geometry, id);
}

void attachTriangles(RTCScene scene, const Instance& instance, unsigned id) {
    const MeshData& data = instance.mesh->data();
    if (data.triangles.empty())
        return;
    RTCGeometry geometry = newGeometry(RTC_GEOMETRY_TYPE_TRIANGLE);
    try {
        if (instance.transform == Transform{})
            sharePositions(geometry, data);
        else
            placePositions(geometry, data, instance.transform);
    } catch (...) {
        rtcReleaseGeometry(geometry);
        throw;
    }
    shareTriangles(geometry, data);
    attachAndRelease(scene, geometry, id);
}

RTCIntersectContext context(RTCIntersectContextFlags flags) {
    RTCIntersectContext result{};
    rtcInitIntersectContext(&result);
    result.flags = flags;
    return result;
}

RTCRay embreeRay(const Ray& ray) {
    RTCRay result{};
    result.org_x = ray.origin.x;
    result.org_y = ray.origin.y;
    result.org_z = ray.origin.z;
    result.tnear = ray.tNear;
    result.dir_x = ray.direction.x;
    result.dir_y = ray.direction.y;
    result.dir_z = ray.direction.z;
    result.tfar = ray.tFar;
    result.mask = ~0U;
    return result;
}

/// A packet of \p Narrow is arrays of eight numbers, one of \p Wide the same arrays of sixteen.
template <typename Wide, typename Narrow>
void join(Wide& wide, const Narrow& one, const Narrow& other) {
    static_assert(sizeof(Wide) == 2 * sizeof(Narrow));
    constexpr std::size_t bytes = packetWidth * sizeof(float);
    auto* to = reinterpret_cast<std::byte*>(&wide);
    for (std::size_t at = 0; at < sizeof(Narrow); at += bytes) {
        std::memcpy(to + 2 * at, reinterpret_cast<const std::byte*>(&one) + at, bytes);
        std::memcpy(to + 2 * at + bytes, reinterpret_cast<const std::byte*>(&other) + at, bytes);
    }
}

/// Half \p which of \p from, an array of sixteen numbers.
template <typename Number>
void takeHalf(const Number* from, int which, Number* to) {
    std::memcpy(to, from + which * packetWidth, packetWidth * sizeof(Number));
}

void takeHits(const RTCRayHit16& wide, int which, RayHitPacket& packet) {
    takeHalf(wide.ray.tfar, which, packet.ray.tfar);
    takeHalf(wide.hit.u, which, packet.hit.u);
    takeHalf(wide.hit.v, which, packet.hit.v);
    takeHalf(wide.hit.primID, which, packet.hit.primID);
    takeHalf(wide.hit.geomID, which, packet.hit.geomID);
    takeHalf(wide.hit.instID[0], which, packet.hit.instID[0]);
}

bool isSixteenWide() {
    static const bool wide =
        rtcGetDeviceProperty(device(), RTC_DEVICE_PROPERTY_NATIVE_RAY16_SUPPORTED) != 0;
    return wide;
}

alignas(64) constexpr std::array<int, std::size_t{2}* packetWidth> allRays = [] {
    std::array<int, std::size_t{2} * packetWidth> all{};
    all.fill(-1);
    return all;
}();

} // namespace

MeshStructure::MeshStructure(const MeshData& data) : scene_(newScene()) {
    try {
        if (!data.triangles.empty()) {
            RTCGeometry geometry = newGeometry(RTC_GEOMETRY_TYPE_TRIANGLE);
            sharePositions(geometry, data);
            shareTriangles(geometry, data);
            attachAndRelease(scene_, geometry, 0);
        }
        rtcCommitScene(scene_);
        throwOnError();
    } catch (...) {
        rtcReleaseScene(scene_);
        throw;
    }
}

MeshStructure::~MeshStructure() {
    rtcReleaseScene(scene_);
}

AssemblyStructure::AssemblyStructure(const std::vector<Instance>& instances, Layout layout)
    : scene_(newScene()), layout_(layout) {
    const auto attach = layout == Layout::flat ? attachTriangles : attachInstance;
    try {
        for (std::size_t i = 0; i < instances.size(); ++i)
            attach(scene_, instances[i], static_cast<unsigned>(i));
        rtcCommitScene(scene_);
        throwOnError();
    } catch (...) {
        rtcReleaseScene(scene_);
        throw;
    }
}

AssemblyStructure::~AssemblyStructure() {
    rtcReleaseScene(scene_);
}

Hit AssemblyStructure::intersect(const Ray& ray) const {
    RTCIntersectContext how = context(RTC_INTERSECT_CONTEXT_FLAG_INCOHERENT);
    RTCRayHit query{};
    query.ray = embreeRay(ray);
    query.hit.geomID = RTC_INVALID_GEOMETRY_ID;
    query.hit.instID[0] = RTC_INVALID_GEOMETRY_ID;
    rtcIntersect1(scene_, &how, &query);
    if (query.hit.geomID == RTC_INVALID_GEOMETRY_ID)
        return {};
    const unsigned instance = layout_ == Layout::flat ? query.hit.geomID : query.hit.instID[0];
    return {instance, query.hit.primID, query.ray.tfar, query.hit.u, query.hit.v};
}

bool AssemblyStructure::occluded(const Ray& ray) const {
    RTCIntersectContext how = context(RTC_INTERSECT_CONTEXT_FLAG_INCOHERENT);
    RTCRay query = embreeRay(ray);
    rtcOccluded1(scene_, &how, &query);
    return query.tfar < 0.0F;
}

/// Geometries of a flat structure are numbered as the instances that they stand for.
void AssemblyStructure::tellInstances(RayHitPacket& packet) const {
    if (layout_ == Layout::flat)
        std::memcpy(packet.hit.instID[0], packet.hit.geomID, sizeof(packet.hit.geomID));
}

void AssemblyStructure::intersect(const PacketMask& mask, RayHitPacket& packet) const {
    RTCIntersectContext how = context(RTC_INTERSECT_CONTEXT_FLAG_COHERENT);
    rtcIntersect8(mask.lane.data(), scene_, &how, &packet);
    tellInstances(packet);
}

void AssemblyStructure::intersect(RayHitPacket& one, RayHitPacket& other) const {
    RTCIntersectContext how = context(RTC_INTERSECT_CONTEXT_FLAG_COHERENT);
    if (!isSixteenWide()) {
        for (RayHitPacket* packet : {&one, &other}) {
            rtcIntersect8(allRays.data(), scene_, &how, packet);
            tellInstances(*packet);
        }
        return;
    }
    RTCRayHit16 both;
    join(both.ray, one.ray, other.ray);
    std::memset(both.hit.geomID, -1, sizeof(both.hit.geomID));
    std::memset(both.hit.instID, -1, sizeof(both.hit.instID));
    rtcIntersect16(allRays.data(), scene_, &how, &both);
    takeHits(both, 0, one);
    takeHits(both, 1, other);
    tellInstances(one);
    tellInstances(other);
}

void AssemblyStructure::occluded(const PacketMask& mask, RayPacket& packet) const {
    RTCIntersectContext how = context(RTC_INTERSECT_CONTEXT_FLAG_COHERENT);
    rtcOccluded8(mask.lane.data(), scene_, &how, &packet);
}

void AssemblyStructure::occluded(const PacketMask& mask,
                                 RayPacket& packet,
                                 const PacketMask& otherMask,
                                 RayPacket& other) const {
    const bool together = layout_ == Layout::flat && isSixteenWide();
    if (!together || !mask.any() || !otherMask.any()) {
        if (mask.any())
            occluded(mask, packet);
        if (otherMask.any())
            occluded(otherMask, other);
        return;
    }

    struct alignas(64) {
        std::array<int, packetWidth> one;
        std::array<int, packetWidth> other;
    } masks{mask.lane, otherMask.lane};

    RTCIntersectContext how = context(RTC_INTERSECT_CONTEXT_FLAG_COHERENT);
    RTCRay16 both;
    join(both, packet, other);
    rtcOccluded16(masks.one.data(), scene_, &how, &both);
    takeHalf(both.tfar, 0, packet.tfar);
    takeHalf(both.tfar, 1, other.tfar);
}

void AssemblyStructure::intersectScattered(const PacketMask& mask, RayHitPacket& packet) const {
    RTCIntersectContext how = context(RTC_INTERSECT_CONTEXT_FLAG_INCOHERENT);
    rtcIntersect8(mask.lane.data(), scene_, &how, &packet);
    tellInstances(packet);
}

void AssemblyStructure::occludedScattered(const PacketMask& mask, RayPacket& packet) const {
    RTCIntersectContext how = context(RTC_INTERSECT_CONTEXT_FLAG_INCOHERENT);
    rtcOccluded8(mask.lane.data(), scene_, &how, &packet);
}

std::size_t structureMemory() {
    const std::ptrdiff_t bytes = _structureBytes;
    return bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
}

} // namespace qor::engine
