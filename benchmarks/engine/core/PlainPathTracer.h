#pragma once

#include "workbench/engine/core/Camera.h"
#include "workbench/engine/core/Image.h"
#include "workbench/engine/core/Scene.h"

#include <embree3/rtcore.h>

#include <cstdint>
#include <vector>

namespace qor::engine::benchmarks {

/// What anybody would write first on top of Embree, and well: one path at a time, independent
/// random numbers, one light chosen for each surface, multiple importance sampling between shining
/// triangles and the surface's own directions, Russian roulette, the same number of samples in
/// every pixel, a box filter, all processors. It knows diffuse surfaces, directional lights without
/// extent, shining triangles and a constant environment. It shares no code with the engine beyond
/// vectors and scenes.
class PlainPathTracer {
public:
    /// Builds one flat structure of all instances.
    explicit PlainPathTracer(const Scene& scene);
    ~PlainPathTracer();
    PlainPathTracer(const PlainPathTracer&) = delete;
    PlainPathTracer(PlainPathTracer&&) = delete;
    PlainPathTracer& operator=(const PlainPathTracer&) = delete;
    PlainPathTracer& operator=(PlainPathTracer&&) = delete;

    /// \p bounces diffuse ones at most; on \p threads threads.
    Image render(const Camera& camera,
                 int width,
                 int height,
                 int samples,
                 int bounces,
                 std::uint32_t seed,
                 int threads) const;

private:
    struct Vertex {
        Vec3 position;
        Vec3 normal;
        Vec3 flat;
        Color albedo;
        Color emission;
        float area = 0.0F;
    };
    struct Random;

    void append(const Instance& instance, const Scene& scene);
    Vertex vertexAt(const RTCRayHit& hit, const Vec3& direction) const;
    Color radiance(Vec3 origin, Vec3 direction, int bounces, Random& random) const;
    Color direct(const Vertex& vertex, Random& random) const;
    Color fromTriangle(const Vertex& vertex, float pick, Random& random) const;
    bool occluded(const Vec3& origin, const Vec3& direction, float farthest) const;

    std::vector<Vec3> positions_;
    std::vector<Vec3> normals_;
    std::vector<std::uint32_t> indices_;
    std::vector<Color> albedo_;
    std::vector<Color> emission_;
    std::vector<std::uint32_t> shining_;
    std::vector<float> shiningAreas_; ///< running sums
    std::vector<std::pair<Vec3, Color>> suns_;
    Color sky_;
    float offset_ = 0.0F;
    RTCDevice device_ = nullptr;
    RTCScene scene_ = nullptr;
};

} // namespace qor::engine::benchmarks
