#pragma once

#include "workbench/engine/core/Adaptive.h"
#include "workbench/engine/core/CameraRays.h"
#include "workbench/engine/core/PacketTracer.h"

#include <optional>

namespace qor::engine {

/// Renders blocks of pixels: in packets of eight from end to end where they apply, else camera rays
/// and the shadow rays of what they see in packets, everything behind as single paths. One object
/// for each task.
class BlockRenderer {
public:
    BlockRenderer(const CompiledScene& scene,
                  const CameraRays& camera,
                  const RenderOptions& options,
                  const GatherCache* cache);

    /// Samples of all pixels of the block whose first pixel is (\p x, \p y), also of those outside
    /// the picture: so the packets of a block are the same whatever is cut out of the picture.
    BlockSums render(int x, int y, const BlockWork& work);

    /// The same, the first half of each pixel's samples and the rest by themselves. The packets
    /// are those of render(): nothing is slower than without halves.
    std::array<BlockSums, 2> renderHalves(int x, int y, const BlockWork& work);

    /// A sample of all pixels of two blocks side by side, the left one's first pixel at (\p x, \p
    /// y), with number \p sample: two packets that are traced as one.
    std::array<BlockSums, 2> renderPair(int x, int y, int sample);

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

    struct Look : CameraPacket {
        Int8 pixels{}; ///< of the block
    };

    using Seeds = std::array<std::uint32_t, blockPixels>;

    Vec2 filterOffset(const Vec2& u) const;
    Seeds seedsOf(int x, int y) const;
    void
    place(int x, int y, int first, const BlockWork& work, const Seeds& seeds, Look& look) const;
    template <typename Visit>
    void renderLooks(int x, int y, const BlockWork& work, const Visit& visit);
    void trace(Look* looks, int count);
    void traceAny(const LanePlaces& places, const RayHitPacket& packet, LaneColors& colors);
    void traceInPackets(Look* looks, int count);
    void showBackground(const LanePlaces& places, const RayHitPacket& packet, LaneColors& colors);
    void addDirectLight(SeenLanes& seen);
    void addLight(SeenLanes& seen, int light);
    PathState stateOf(const LanePlaces& places, const RayHitPacket& packet, std::size_t lane) const;

    const CompiledScene& scene_;
    const CameraRays& camera_;
    const RenderOptions& options_;
    PathTracer tracer_;
    std::array<Look, PacketTracer::mostPackets> looks_;
    std::optional<Color> evenBackground_; ///< where it is the same everywhere
    bool seesLights_; ///< the camera may: lights of the list that are no surfaces
    PacketTracer packets_;
};

} // namespace qor::engine
