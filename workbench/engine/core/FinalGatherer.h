#pragma once

#include "workbench/engine/core/CameraRays.h"
#include "workbench/engine/core/GatherCache.h"
#include "workbench/engine/core/PathTracer.h"

namespace qor::engine {

/// Fills a GatherCache for a picture. It looks at ever denser grids of pixels and gathers light at
/// what they show wherever the points so far do not cover it. One object for each task; the rounds
/// themselves are ordered by the caller.
class FinalGatherer {
public:
    /// Distances of the grids' pixels, one for each round.
    static constexpr std::array<int, 5> steps{32, 16, 8, 4, 2};

    /// From so many bounces on it does not matter that gather rays which use points of earlier
    /// rounds see one bounce too much.
    static constexpr int manyBounces = 6;

    FinalGatherer(const CompiledScene& scene,
                  const CameraRays& camera,
                  const RenderOptions& options,
                  const GatherCache& cache)
        : scene_(scene)
        , camera_(camera)
        , options_(options)
        , looker_(scene, options, &cache)
        , tracer_(scene, options, &cache, options.depth.diffuseBounces >= manyBounces) {}

    /// Appends to \p spots the surfaces that pixel (\p x, \p y) shows, in mirrors and through glass
    /// too, and that the cache does not cover.
    void look(int x, int y, std::vector<Surface>& spots);

    /// Gathers the light of \p spot; \p number makes its random numbers its own.
    GatherPoint gather(const Surface& spot, std::uint32_t number);

    /// All rays, counted as gather rays.
    RayCounts takeCounts();

private:
    /// What some rays of a point have brought.
    struct Gathered {
        Color light;
        float nearness = 0.0F; ///< sum of reciprocal distances
        float nearest = std::numeric_limits<float>::infinity();
    };

    float wallAround(const Surface& spot, float nearest, GatherPoint& point);
    void shoot(const Surface& spot,
               std::uint32_t seed,
               std::uint32_t first,
               std::uint32_t last,
               Gathered& sums);

    const CompiledScene& scene_;
    const CameraRays& camera_;
    const RenderOptions& options_;
    PathTracer looker_;
    PathTracer tracer_;
    std::uint64_t looks_ = 0; ///< rays along surfaces
};

} // namespace qor::engine
