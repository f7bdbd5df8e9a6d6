#pragma once

#include "workbench/engine/core/BlockRenderer.h"
#include "workbench/engine/core/Film.h"
#include "workbench/engine/core/FlushDenormals.h"
#include "workbench/engine/core/GatherCache.h"
#include "workbench/engine/core/Parallel.h"
#include "workbench/engine/core/Render.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <span>

namespace qor::engine {

/// What a Render and its workers share: everything that they touch lives here, so that either may
/// go first.
class RenderJob {
public:
    /// Throws std::bad_alloc when the pixels find no room.
    RenderJob(Scene scene,
              const Camera& camera,
              const RenderOptions& options,
              Render::Listener listener);
    RenderJob(const RenderJob&) = delete;
    RenderJob(RenderJob&&) = delete;
    RenderJob& operator=(const RenderJob&) = delete;
    RenderJob& operator=(RenderJob&&) = delete;
    ~RenderJob() = default;

    /// The whole render, on the calling thread and the workers of its arena.
    void run();

    void abort();
    RenderState wait() const;
    RenderProgress progress() const;
    RenderStats stats() const;
    Error error() const;

    const Film& film() const { return film_; }

private:
    using Clock = std::chrono::steady_clock;

    static double secondsSince(Clock::time_point start) {
        return std::chrono::duration<double>(Clock::now() - start).count();
    }

    void render();
    bool renderCoarse(const CompiledScene& scene);
    bool fillCache(const CompiledScene& scene, GatherCache& cache);
    bool fillRound(const CompiledScene& scene, GatherCache& cache, int step, bool first);
    std::vector<Surface>
    findSpots(const CompiledScene& scene, const GatherCache& cache, int step, bool first);
    bool renderPasses(const CompiledScene& scene, const GatherCache* cache);
    bool renderPass(const CompiledScene& scene,
                    const GatherCache* cache,
                    const std::vector<BlockWork>& pass,
                    double planned);
    double renderBlocks(BlockRenderer& renderer, std::span<const BlockWork> works);
    void renderBlock(BlockRenderer& renderer, const BlockWork& work);
    std::size_t renderPair(BlockRenderer& renderer, std::span<const BlockWork> works);
    template <typename Task>
    void onWorkers(std::size_t items, std::size_t grain, const Task& task);
    bool shouldStop() const;
    bool isOutOfTime() const;
    void end(RenderState state, Error error);
    void changed();
    void notify(bool always);
    void addRays(const RayCounts& rays);

    const Scene scene_;
    const Camera camera_;
    const RenderOptions options_;
    const Clock::time_point started_ = Clock::now();
    Film film_;
    std::atomic<bool> stop_{false};
    std::atomic<double> done_{0.0};
    std::atomic<float> fraction_{0.0F};
    std::atomic<std::uint64_t> revision_{0};
    std::atomic<bool> hasPicture_{false};
    std::atomic<bool> hasWholePass_{false};
    std::atomic<double> timeShare_{1.0}; ///< of the time limit, that the stage under way may use up

    mutable std::mutex stateMutex_; ///< guards the next four
    mutable std::condition_variable ended_;
    RenderState state_ = RenderState::preparing;
    Error error_;
    RenderStats stats_;

    std::recursive_mutex listenerMutex_; ///< guards the next two; the listener itself may abort
    Render::Listener listener_;
    Clock::time_point lastNotified_;
};

/// Hands out \p items, \p grain at a time in their order, to as many workers as the arena has.
template <typename Task>
void RenderJob::onWorkers(std::size_t items, std::size_t grain, const Task& task) {
    std::atomic<std::size_t> next{0};
    onEveryWorker([&] {
        const FlushDenormals flush;
        auto worker = task();
        for (std::size_t first = next.fetch_add(grain); first < items && !shouldStop();
             first = next.fetch_add(grain))
            worker(first, std::min(items, first + grain));
    });
}

} // namespace qor::engine
