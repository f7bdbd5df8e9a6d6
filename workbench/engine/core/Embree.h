#pragma once

#include "workbench/engine/core/Assembly.h"

#include <embree3/rtcore.h>

#include <array>
#include <cstddef>

namespace qor::engine {

/// Everything that the engine asks of Embree; Embree.cpp is the only file that calls it.
///
/// Packets are eight wide and coherent, for camera rays and their shadow rays; two of them are
/// traced as one. Sixteen wide occlusion packets with the coherent flag never return on instanced
/// scenes, so there they are not.

/// How the triangles of an assembly are laid out.
enum class Layout {
    flat,     ///< all in one structure: rays are faster by 10 to 30 %
    instanced ///< a structure for each mesh, however often it appears: smaller, and sooner built
};

/// Eight rays, or eight rays and their hits, side by side.
using RayPacket = RTCRay8;
using RayHitPacket = RTCRayHit8;
constexpr int packetWidth = 8;

/// Which rays of a packet take part: -1 or 0 each.
struct alignas(32) PacketMask {
    std::array<int, packetWidth> lane{};

    bool any() const {
        int bits = 0;
        for (const int value : lane)
            bits |= value;
        return bits != 0;
    }
};

/// A single ray; directions need not be normalised.
struct Ray {
    Vec3 origin;
    Vec3 direction;
    float tNear = 0.0F;
    float tFar = 0.0F;
};

/// Where a ray met a triangle.
struct Hit {
    static constexpr unsigned none = RTC_INVALID_GEOMETRY_ID;

    unsigned instance = none;
    unsigned triangle = none;
    float t = 0.0F;
    float u = 0.0F; ///< weight of the triangle's second corner
    float v = 0.0F; ///< weight of its third

    explicit operator bool() const { return instance != none; }
};

/// The ray tracing structure of one mesh.
class MeshStructure {
public:
    /// Throws std::bad_alloc when memory is short.
    explicit MeshStructure(const MeshData& data);
    ~MeshStructure();
    MeshStructure(const MeshStructure&) = delete;
    MeshStructure(MeshStructure&&) = delete;
    MeshStructure& operator=(const MeshStructure&) = delete;
    MeshStructure& operator=(MeshStructure&&) = delete;

    RTCScene handle() const { return scene_; }

private:
    RTCScene scene_ = nullptr;
};

/// The ray tracing structure over all instances, whose meshes must outlive it. All queries may run
/// at once on any number of threads.
class AssemblyStructure {
public:
    /// Throws std::bad_alloc when memory is short.
    AssemblyStructure(const std::vector<Instance>& instances, Layout layout);
    ~AssemblyStructure();
    AssemblyStructure(const AssemblyStructure&) = delete;
    AssemblyStructure(AssemblyStructure&&) = delete;
    AssemblyStructure& operator=(const AssemblyStructure&) = delete;
    AssemblyStructure& operator=(AssemblyStructure&&) = delete;

    /// The nearest hit of a ray that may go anywhere.
    Hit intersect(const Ray& ray) const;
    /// Whether anything lies between the ends of \p ray.
    bool occluded(const Ray& ray) const;
    /// Nearest hits of eight rays that start close together and go much the same way.
    void intersect(const PacketMask& mask, RayHitPacket& packet) const;
    /// The same for all rays of two such packets that lie close together, which are traced as one
    /// where the processor is wide enough for that.
    void intersect(RayHitPacket& one, RayHitPacket& other) const;
    /// Sets tfar of occluded rays to minus infinity.
    void occluded(const PacketMask& mask, RayPacket& packet) const;
    /// The same for two such packets that lie close together, traced as one where that is possible.
    void occluded(const PacketMask& mask,
                  RayPacket& packet,
                  const PacketMask& otherMask,
                  RayPacket& other) const;
    /// Nearest hits and occlusion of eight rays that go anywhere.
    void intersectScattered(const PacketMask& mask, RayHitPacket& packet) const;
    void occludedScattered(const PacketMask& mask, RayPacket& packet) const;

private:
    void tellInstances(RayHitPacket& packet) const;

    RTCScene scene_ = nullptr;
    Layout layout_;
};

/// Bytes that all structures of this process hold at the moment.
std::size_t structureMemory();

} // namespace qor::engine
