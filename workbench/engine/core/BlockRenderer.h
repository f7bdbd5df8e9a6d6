#pragma once

#include "workbench/engine/core/Adaptive.h"
#include "workbench/engine/core/CameraRays.h"
#include "workbench/engine/core/PlainPackets.h"

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
        : scene_(scene)
        , camera_(camera)
        , options_(options)
        , tracer_(scene, options, cache)
        , plain_(scene, options, tracer_.fullBudget(), cache != nullptr) {}

    /// Samples of all pixels of the block whose first pixel is (\p x, \p y), also of those outside
    /// the picture: so the packets of a block are the same whatever is cut out of the picture.
    BlockSums render(int x, int y, const BlockWork& work);

    /// One sample for each of 4 × 2 cells of 4 × 4 pixels, the first at (\p x, \p y).
    std::array<std::array<float, 4>, packetWidth> renderCoarse(int x, int y);

    RayCounts& counts() { return tracer_.counts(); }

private:
    /// A lane that has met a surface.
    struct Seen {
        PathState state;
        Vertex vertex;
        Sampler sampler;
        Color direct;
    };

    using SeenLanes = std::array<std::optional<Seen>, packetWidth>;

    Vec2 filterOffset(const Vec2& u) const;
    void place(int x,
               int y,
               const std::array<std::size_t, packetWidth>& pixels,
               LanePlaces& places) const;
    void trace(const LanePlaces& places, LaneColors& colors);
    void traceAny(const LanePlaces& places, const RayHitPacket& packet, LaneColors& colors);
    void showBackground(const LanePlaces& places, const RayHitPacket& packet, LaneColors& colors);
    void addDirectLight(SeenLanes& seen);
    void addLight(SeenLanes& seen, int light);
    PathState stateOf(const LanePlaces& places, const RayHitPacket& packet, std::size_t lane) const;

    const CompiledScene& scene_;
    const CameraRays& camera_;
    const RenderOptions& options_;
    PathTracer tracer_;
    PlainPackets plain_;
};

} // namespace qor::engine
