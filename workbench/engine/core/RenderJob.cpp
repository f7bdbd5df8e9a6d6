#include "workbench/engine/core/RenderJob.h"

#include <exception>
#include <new>

namespace qor::engine {

namespace {

constexpr std::chrono::milliseconds notifyInterval{20};
/// Blocks that a worker takes at a time.
constexpr std::size_t blocksAtATime = 64;

/// Who has little time gets a coarse picture first and passes over all of it, so that there is
/// something to show whenever it is over.
RenderOptions withinTime(RenderOptions options) {
    options.progressive = options.progressive || options.timeLimitSeconds;
    return options;
}

/// For the coarse picture: what can be had at once. One mirror image, and what stands behind a
/// pane.
RenderOptions coarseOptions(RenderOptions options) {
    constexpr TraceDepth enough{
        .reflections = 1, .refractions = 2, .total = 2, .diffuseBounces = 0};
    TraceDepth& depth = options.depth;
    depth.reflections = std::min(depth.reflections, enough.reflections);
    depth.refractions = std::min(depth.refractions, enough.refractions);
    depth.total = std::min(depth.total, enough.total);
    depth.diffuseBounces = enough.diffuseBounces;
    options.finalGather.on = false;
    return options;
}

} // namespace

RenderJob::RenderJob(Scene scene,
                     const Camera& camera,
                     const RenderOptions& options,
                     Render::Listener listener)
    : scene_(std::move(scene))
    , camera_(camera)
    , options_(withinTime(options))
    , film_(options)
    , listener_(std::move(listener)) {
    stats_.filmBytes = film_.memory();
}

void RenderJob::run() {
    try {
        inArena(options_.threads, [this] { render(); });
    } catch (const std::bad_alloc&) {
        end(RenderState::failed, {ErrorCode::outOfMemory, "not enough memory to render"});
    } catch (const std::exception& failure) {
        end(RenderState::failed, {ErrorCode::internal, failure.what()});
    }
}

void RenderJob::render() {
    const auto compiled = CompiledScene::create(scene_, options_);
    if (!compiled)
        return end(RenderState::failed, compiled.error());
    const CompiledScene& scene = *compiled.value();
    {
        const std::scoped_lock lock(stateMutex_);
        stats_.prepareSeconds = secondsSince(started_);
        stats_.sceneBytes = scene.memory() + structureMemory();
    }
    if (options_.progressive && !renderCoarse(scene))
        return end(RenderState::aborted, {});
    {
        const std::scoped_lock lock(stateMutex_);
        if (state_ == RenderState::preparing)
            state_ = RenderState::tracing;
    }
    GatherCache cache;
    const bool gathered = options_.finalGather.on && fillCache(scene, cache);
    if (stop_ || !renderPasses(scene, gathered ? &cache : nullptr))
        return end(RenderState::aborted, {});
    fraction_ = 1.0F;
    end(RenderState::finished, {});
}

bool RenderJob::renderCoarse(const CompiledScene& scene) {
    const RenderOptions options = coarseOptions(options_);
    const CameraRays camera(camera_, options);
    const BlockGrid& grid = film_.grid();
    const int columns = (grid.columns + blockWidth - 1) / blockWidth;
    const int rows = (film_.coarseRows() + blockHeight - 1) / blockHeight;
    const auto count = static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
    onWorkers(count, 16, [&] {
        return [&, renderer = BlockRenderer(scene, camera, options, nullptr)](
                   std::size_t first, std::size_t last) mutable {
            for (std::size_t i = first; i < last; ++i) {
                const int column = static_cast<int>(i) % columns * blockWidth;
                const int row = static_cast<int>(i) / columns * blockHeight;
                const auto cells = renderer.renderCoarse(grid.pixelX(column), grid.pixelY(2 * row));
                for (int k = 0; k < packetWidth; ++k) {
                    const int x = column + k % blockWidth;
                    const int y = row + k / blockWidth;
                    if (x < grid.columns && y < film_.coarseRows())
                        film_.setCoarse(grid.index(x, y), cells[static_cast<std::size_t>(k)]);
                }
            }
            addRays(renderer.counts());
            renderer.counts() = {};
        };
    });
    if (stop_)
        return false;
    {
        const std::scoped_lock lock(stateMutex_);
        stats_.firstPictureSeconds = secondsSince(started_);
    }
    hasPicture_ = true;
    ++revision_;
    notify(true);
    return true;
}

bool RenderJob::renderPasses(const CompiledScene& scene, const GatherCache* cache) {
    const auto start = Clock::now();
    Adaptive adaptive(options_, film_);
    while (!shouldStop()) {
        const std::vector<BlockWork> pass = adaptive.nextPass();
        {
            const std::scoped_lock lock(stateMutex_);
            stats_.estimatedError = adaptive.estimatedError();
            stats_.traceSeconds = secondsSince(start);
        }
        if (pass.empty() || !renderPass(scene, cache, pass, adaptive.plannedSamples()))
            break;
        const std::scoped_lock lock(stateMutex_);
        ++stats_.passes;
        if (!hasWholePass_.exchange(true) && stats_.firstPictureSeconds == 0.0)
            stats_.firstPictureSeconds = secondsSince(started_);
        hasPicture_ = true;
        stats_.traceSeconds = secondsSince(start);
    }
    return !stop_;
}

bool RenderJob::renderPass(const CompiledScene& scene,
                           const GatherCache* cache,
                           const std::vector<BlockWork>& pass,
                           double planned) {
    const CameraRays camera(camera_, options_);
    onWorkers(pass.size(), blocksAtATime, [&] {
        return [&, renderer = BlockRenderer(scene, camera, options_, cache)](
                   std::size_t first, std::size_t last) mutable {
            const std::span<const BlockWork> works(pass.data() + first, last - first);
            const double samples = renderBlocks(renderer, works);
            addRays(renderer.counts());
            renderer.counts() = {};
            const double done = done_.fetch_add(samples) + samples;
            const auto fraction = static_cast<float>(std::min(0.999, done / planned));
            float before = fraction_;
            while (before < fraction && !fraction_.compare_exchange_weak(before, fraction)) {
            }
            changed();
        };
    });
    return !shouldStop();
}

/// The samples that this has added.
double RenderJob::renderBlocks(BlockRenderer& renderer, std::span<const BlockWork> works) {
    double samples = 0.0;
    while (!works.empty() && !shouldStop()) {
        std::size_t done = 1;
        if (works.front().count == 1)
            done = renderPair(renderer, works);
        else
            renderBlock(renderer, works.front());
        samples += static_cast<double>(done) * works.front().count * blockPixels;
        works = works.subspan(done);
    }
    return samples;
}

/// Single samples are rendered in pairs of blocks that are the same whatever is cut out of the
/// picture, even where but one of the two is wanted: so is what they show. The number of \p works
/// that it has done, from the first.
std::size_t RenderJob::renderPair(BlockRenderer& renderer, std::span<const BlockWork> works) {
    const BlockGrid& grid = film_.grid();
    const BlockWork& work = works.front();
    const int place = (grid.firstX + work.column) % 2;
    const auto sums =
        renderer.renderPair(grid.pixelX(work.column - place), grid.pixelY(work.row), work.first);
    const std::size_t index = grid.index(work.column, work.row);
    film_.add(index, sums[static_cast<std::size_t>(place)], 1);
    const BlockWork partner{work.column + 1, work.row, work.first, 1};
    if (place == 1 || works.size() < 2 || works[1] != partner)
        return 1;
    film_.add(index + 1, sums[1], 1);
    return 2;
}

/// In halves where errors are estimated by what they differ.
void RenderJob::renderBlock(BlockRenderer& renderer, const BlockWork& work) {
    const BlockGrid& grid = film_.grid();
    const std::size_t index = grid.index(work.column, work.row);
    const int x = grid.pixelX(work.column);
    const int y = grid.pixelY(work.row);
    if (!options_.samples.noiseTarget)
        return film_.add(index, renderer.render(x, y, work), work.count);
    const auto [one, other] = renderer.renderHalves(x, y, work);
    film_.addHalves(index, one, other, work.count);
}

bool RenderJob::isOutOfTime() const {
    return options_.timeLimitSeconds && hasPicture_ &&
           secondsSince(started_) > *options_.timeLimitSeconds * timeShare_;
}

bool RenderJob::shouldStop() const {
    return stop_ || isOutOfTime();
}

void RenderJob::addRays(const RayCounts& rays) {
    const std::scoped_lock lock(stateMutex_);
    stats_.rays += rays;
}

void RenderJob::changed() {
    ++revision_;
    notify(false);
}

void RenderJob::notify(bool always) {
    const std::scoped_lock lock(listenerMutex_);
    if (!listener_)
        return;
    const auto now = Clock::now();
    if (!always && now - lastNotified_ < notifyInterval)
        return;
    lastNotified_ = now;
    const Render::Listener listener = listener_;
    listener();
}

void RenderJob::end(RenderState state, Error error) {
    {
        const std::scoped_lock lock(stateMutex_);
        if (state_ != RenderState::preparing && state_ != RenderState::tracing)
            return;
        state_ = state;
        error_ = std::move(error);
        stats_.samples = static_cast<std::uint64_t>(done_);
    }
    ended_.notify_all();
    ++revision_;
    notify(true);
}

void RenderJob::abort() {
    stop_ = true;
    {
        const std::scoped_lock lock(listenerMutex_);
        listener_ = nullptr;
    }
    film_.freeze();
    end(RenderState::aborted, {});
}

RenderState RenderJob::wait() const {
    std::unique_lock lock(stateMutex_);
    ended_.wait(lock, [this] {
        return state_ != RenderState::preparing && state_ != RenderState::tracing;
    });
    return state_;
}

RenderProgress RenderJob::progress() const {
    const std::scoped_lock lock(stateMutex_);
    return {state_, fraction_, revision_, hasPicture_, hasWholePass_};
}

RenderStats RenderJob::stats() const {
    const std::scoped_lock lock(stateMutex_);
    RenderStats stats = stats_;
    stats.samples = static_cast<std::uint64_t>(done_.load());
    return stats;
}

Error RenderJob::error() const {
    const std::scoped_lock lock(stateMutex_);
    return error_;
}

} // namespace qor::engine
