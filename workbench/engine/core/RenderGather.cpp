// The filling of the interpolation cache before the passes of a RenderJob.
#include "workbench/engine/core/FinalGatherer.h"
#include "workbench/engine/core/RenderJob.h"

namespace qor::engine {

namespace {

/// Share of a time limit after which no more light is gathered: what is not covered then is traced,
/// and samples get the rest.
constexpr double gatherShare = 0.5;
/// Grids of fewer pixels than this tell little about a picture and are left out.
constexpr int fewestLooks = 200;
/// Where light changes too quickly at more of the places of the first grid than this, all is
/// traced: points would stand as close as pixels, and without a cache there are quicker ways
/// through plain scenes.
constexpr double mostCramped = 0.3;

int looksOf(const BlockGrid& grid, int step) {
    return ((grid.right - grid.left) / step) * ((grid.bottom - grid.top) / step);
}

} // namespace

/// False if light is better traced everywhere, or the render has been stopped.
bool RenderJob::fillCache(const CompiledScene& scene, GatherCache& cache) {
    const auto start = Clock::now();
    bool first = true;
    timeShare_ = gatherShare;
    for (const int step : FinalGatherer::steps) {
        if (isOutOfTime())
            break;
        if (step != FinalGatherer::steps.back() && looksOf(film_.grid(), step) < fewestLooks)
            continue;
        if (!fillRound(scene, cache, step, first))
            return false;
        {
            const std::scoped_lock lock(stateMutex_);
            stats_.gatherSeconds = secondsSince(start);
            stats_.gatherPoints = cache.size();
        }
        if (first && cache.crampedShare() > mostCramped) {
            timeShare_ = 1.0;
            return false;
        }
        first = false;
    }
    timeShare_ = 1.0;
    return true;
}

/// What the pixels of a grid show that the cache does not cover, row by row.
std::vector<Surface>
RenderJob::findSpots(const CompiledScene& scene, const GatherCache& cache, int step, bool first) {
    const CameraRays camera(camera_, options_);
    const BlockGrid& grid = film_.grid();
    const auto rows = static_cast<std::size_t>((grid.bottom - grid.top + step - 1) / step);
    std::vector<std::vector<Surface>> spotsOfRow(rows);
    onWorkers(rows, 1, [&] {
        return [&, gatherer = FinalGatherer(scene, camera, options_, cache)](std::size_t row,
                                                                             std::size_t) mutable {
            const int y = grid.top + static_cast<int>(row) * step;
            for (int x = grid.left; x < grid.right; x += step)
                if (first || (x - grid.left) % (2 * step) != 0 || (y - grid.top) % (2 * step) != 0)
                    gatherer.look(x, y, spotsOfRow[row]);
            addRays(gatherer.takeCounts());
        };
    });
    std::vector<Surface> spots;
    for (const std::vector<Surface>& row : spotsOfRow)
        spots.insert(spots.end(), row.begin(), row.end());
    return spots;
}

/// Finds uncovered spots, then gathers at all of them, then lets the cache know: nothing in a round
/// depends on what another worker does in it.
bool RenderJob::fillRound(const CompiledScene& scene, GatherCache& cache, int step, bool first) {
    const CameraRays camera(camera_, options_);
    const std::vector<Surface> spots = findSpots(scene, cache, step, first);
    std::vector<GatherPoint> points(spots.size());
    const auto before = static_cast<std::uint32_t>(cache.size());
    onWorkers(spots.size(), 4, [&] {
        return [&, gatherer = FinalGatherer(scene, camera, options_, cache)](
                   std::size_t from, std::size_t to) mutable {
            for (std::size_t i = from; i < to && !shouldStop(); ++i)
                points[i] = gatherer.gather(spots[i], before + static_cast<std::uint32_t>(i));
            addRays(gatherer.takeCounts());
        };
    });
    if (stop_)
        return false;
    std::erase_if(points, [](const GatherPoint& point) { return !(point.reach > 0.0F); });
    cache.add(points);
    cache.index();
    return true;
}

} // namespace qor::engine
