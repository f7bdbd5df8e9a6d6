#include "workbench/engine/core/Adaptive.h"

#include "workbench/engine/core/Vec.h"

#include <algorithm>
#include <cmath>

namespace qor::engine {

namespace {

/// Relative errors of pixels darker than this count as if they were as bright.
constexpr float darkest = 0.03F;
/// With fewer samples a pixel's own spread says nothing; a block's eight pixels together need fewer
/// each.
constexpr int fewestForSpread = 4;
constexpr int fewestForBlock = 2;
/// Most samples that one whole pass takes, so that pictures refine evenly.
constexpr int longestPass = 32;

/// Mean luminance of a pixel and the variance of that mean.
struct PixelSpread {
    float mean = 0.0F;
    float variance = 0.0F;
};

PixelSpread spreadOf(const BlockSums& sums, int pixel, float count) {
    const auto at = static_cast<std::size_t>(pixel) * 4;
    const float total = luminance({sums.rgba[at], sums.rgba[at + 1], sums.rgba[at + 2]});
    const float mean = total / count;
    const float spread =
        std::max(0.0F, sums.squares[static_cast<std::size_t>(pixel)] / count - mean * mean);
    return {mean, spread / std::max(1.0F, count - 1.0F)};
}

/// Growth of the screen's value with linear light, of a range of 1 each (slope of the sRGB curve).
float screenSlope(float linear) {
    const float value = std::clamp(linear, 0.0031308F, 1.0F);
    return 1.055F / 2.4F * std::pow(value, 1.0F / 2.4F - 1.0F);
}

std::vector<BlockWork> tileOrder(const BlockGrid& grid) {
    std::vector<BlockWork> order;
    order.reserve(grid.count());
    for (int tileY = 0; tileY < grid.tilesY(); ++tileY)
        for (int tileX = 0; tileX < grid.tilesX(); ++tileX)
            for (int y = tileY * tileBlocksY; y < std::min(grid.rows, (tileY + 1) * tileBlocksY);
                 ++y)
                for (int x = tileX * tileBlocksX;
                     x < std::min(grid.columns, (tileX + 1) * tileBlocksX); ++x)
                    order.push_back({x, y, 0, 0});
    return order;
}

} // namespace

Adaptive::Adaptive(const RenderOptions& options, const Film& film)
    : options_(options)
    , film_(film)
    , order_(tileOrder(film.grid()))
    , planned_(static_cast<double>(order_.size()) * blockPixels * options.samples.minimum) {}

std::vector<BlockWork> Adaptive::nextPass() {
    const Samples& samples = options_.samples;
    if (uniform_ < samples.minimum) {
        const int wanted =
            options_.progressive ? std::max(1, uniform_ * (uniform_ < 4 ? 3 : 1)) : samples.minimum;
        return wholePass(std::min({wanted, samples.minimum - uniform_, longestPass}));
    }
    if (samples.maximum <= samples.minimum)
        return {};
    const int fewest =
        std::min(samples.noiseTarget ? fewestForBlock : fewestForSpread, samples.maximum);
    if (uniform_ < fewest)
        return wholePass(fewest - uniform_);
    return refinedPass();
}

std::vector<BlockWork> Adaptive::wholePass(int count) {
    std::vector<BlockWork> pass = order_;
    for (BlockWork& work : pass) {
        work.first = uniform_;
        work.count = count;
    }
    uniform_ += count;
    planned_ = std::max(planned_, static_cast<double>(order_.size()) * blockPixels * uniform_);
    return pass;
}

int Adaptive::nextCount(int have) const {
    return std::min({have, options_.samples.maximum - have, 4 * longestPass});
}

std::vector<BlockWork> Adaptive::refinedPass() {
    const std::vector<bool> chosen =
        options_.samples.noiseTarget ? chooseByTarget() : chooseByContrast();
    std::vector<BlockWork> pass;
    for (std::size_t place = 0; place < order_.size(); ++place) {
        if (!chosen[place])
            continue;
        BlockWork work = order_[place];
        work.first = static_cast<int>(film_.samples(film_.grid().index(work.column, work.row)));
        work.count = nextCount(work.first);
        if (work.count > 0)
            pass.push_back(work);
        planned_ += static_cast<double>(work.count) * blockPixels;
    }
    return pass;
}

Adaptive::Want Adaptive::relativeError(std::size_t place) const {
    const BlockWork& work = order_[place];
    const BlockGrid& grid = film_.grid();
    const std::size_t index = grid.index(work.column, work.row);
    const auto count = static_cast<float>(film_.samples(index));
    Want want{0.0, 0.0, place};
    for (int i = 0; i < blockPixels; ++i) {
        if (!grid.contains(grid.pixelX(work.column) + i % blockWidth,
                           grid.pixelY(work.row) + i / blockWidth))
            continue;
        const PixelSpread spread = spreadOf(film_.sums(index), i, count);
        want.error += spread.variance / (spread.mean * spread.mean + darkest * darkest);
    }
    want.gain = nextCount(static_cast<int>(count)) > 0 ? want.error / count : 0.0;
    return want;
}

/// Doubling the samples of a block halves its error; the blocks where that gains most for a sample
/// are taken until the target would be met.
std::vector<bool> Adaptive::chooseByTarget() {
    std::vector<Want> wants;
    wants.reserve(order_.size());
    double total = 0.0;
    for (std::size_t place = 0; place < order_.size(); ++place) {
        wants.push_back(relativeError(place));
        total += wants.back().error;
    }
    const BlockGrid& grid = film_.grid();
    const double pixels =
        static_cast<double>(grid.right - grid.left) * static_cast<double>(grid.bottom - grid.top);
    estimatedError_ = total / pixels;
    const double target = *options_.samples.noiseTarget * pixels;
    std::vector<bool> chosen(order_.size());
    std::stable_sort(wants.begin(), wants.end(),
                     [](const Want& a, const Want& b) { return a.gain > b.gain; });
    for (const Want& want : wants) {
        if (total <= target || want.gain <= 0.0)
            break;
        chosen[want.place] = true;
        total -= 0.5 * want.error;
    }
    return chosen;
}

bool Adaptive::isVisiblyNoisy(std::size_t place) const {
    const BlockWork& work = order_[place];
    const BlockGrid& grid = film_.grid();
    const std::size_t index = grid.index(work.column, work.row);
    const auto count = static_cast<float>(film_.samples(index));
    const float allowed = options_.samples.contrast;
    for (int i = 0; i < blockPixels; ++i) {
        if (!grid.contains(grid.pixelX(work.column) + i % blockWidth,
                           grid.pixelY(work.row) + i / blockWidth))
            continue;
        const PixelSpread spread = spreadOf(film_.sums(index), i, count);
        // Beyond white the screen shows no difference, but what is an edge of it does.
        const float slope = screenSlope(spread.mean);
        if (spread.variance * slope * slope > allowed * allowed)
            return true;
    }
    return false;
}

/// Whether most of the blocks around are noisy and have at least as many samples: a block that
/// looks calm there was only lucky so far.
bool Adaptive::liesAmongNoisy(const std::vector<bool>& noisy, const BlockWork& work) const {
    constexpr int most = 4;
    const BlockGrid& grid = film_.grid();
    const std::uint32_t own = film_.samples(grid.index(work.column, work.row));
    int count = 0;
    for (int row = std::max(0, work.row - 1); row <= std::min(grid.rows - 1, work.row + 1); ++row)
        for (int column = std::max(0, work.column - 1);
             column <= std::min(grid.columns - 1, work.column + 1); ++column) {
            const std::size_t index = grid.index(column, row);
            count += noisy[index] && film_.samples(index) >= own ? 1 : 0;
        }
    return count >= most;
}

std::vector<bool> Adaptive::chooseByContrast() const {
    std::vector<bool> noisy(order_.size()); // by index in the grid
    for (std::size_t place = 0; place < order_.size(); ++place)
        noisy[film_.grid().index(order_[place].column, order_[place].row)] = isVisiblyNoisy(place);
    std::vector<bool> chosen(order_.size());
    for (std::size_t place = 0; place < order_.size(); ++place) {
        const BlockWork& work = order_[place];
        chosen[place] =
            noisy[film_.grid().index(work.column, work.row)] || liesAmongNoisy(noisy, work);
    }
    return chosen;
}

} // namespace qor::engine
