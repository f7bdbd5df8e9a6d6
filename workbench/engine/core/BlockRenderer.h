#pragma once

#include "workbench/engine/core/Adaptive.h"
#include "workbench/engine/core/CameraRays.h"
#include "workbench/engine/core/PathTracer.h"

#include <optional>

namespace qor::engine {

/// Renders blocks of pixels: camera rays and the shadow rays of what they see in packets of eight,
/// everything behind as single paths. One object for each task.
class BlockRenderer {
public:
    BlockRenderer(const CompiledScene& scene,
                  const CameraRays& camera,
                  const RenderOptions& options,
                  const GatherCache* cache)
        : scene_(scene), camera_(camera), options_(options), tracer_(scene, options, cache) {}

    /// Samples of all pixels of the block whose first pixel is (\p x, \p y), also of those outside
    /// the picture: so the packets of a block are the same whatever is cut out of the picture.
    BlockSums render(int x, int y, const BlockWork& work);

    /// One sample for each of 4 × 2 cells of 4 × 4 pixels, the first at (\p x, \p y).
    std::array<std::array<float, 4>, packetWidth> renderCoarse(int x, int y);

    RayCounts& counts() { return tracer_.counts(); }

private:
    /// What a packet is to look at: a place in the picture and a sample's random numbers for each
    /// lane.
    struct Lane {
        float x = 0.0F;
        float y = 0.0F;
        std::uint32_t seed = 0;
        std::uint32_t index = 0;
    };

    using Lanes = std::array<Lane, packetWidth>;
    using Results = std::array<PathResult, packetWidth>;

    /// A lane that has met a surface.
    struct Seen {
        PathState state;
        Vertex vertex;
        Sampler sampler;
        Color direct;
    };

    using SeenLanes = std::array<std::optional<Seen>, packetWidth>;

    Vec2 filterOffset(const Vec2& u) const;
    void trace(const Lanes& lanes, Results& results);
    void addDirectLight(SeenLanes& seen);
    void addLight(SeenLanes& seen, int light);
    PathState stateOf(const Lane& lane, const Ray& ray) const;

    const CompiledScene& scene_;
    const CameraRays& camera_;
    const RenderOptions& options_;
    PathTracer tracer_;
};

} // namespace qor::engine
