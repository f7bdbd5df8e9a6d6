#include "workbench/engine/core/BlockNoise.h"

#include "workbench/engine/core/Vec.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <numeric>

namespace qor::engine {

namespace {

/// A block's neighbours together count for as much as so many pairs of samples of its pixels.
constexpr double neighboursCount = 20.0;
/// So many blocks say enough about how fast errors fall.
constexpr double enoughBlocks = 256.0;
/// Powers of the number of samples by which errors fall.
constexpr double slowest = 1.0;
constexpr double fastest = 1.8;
/// The same power from one doubling to the next: errors fall ever more slowly.
constexpr double slowing = 0.95;
/// Of the first few samples, while it cannot be seen.
constexpr double usual = 1.45;

/// Mean of one pixel and the variance of one sample, of luminance.
struct PixelSpread {
    Color mean;
    float brightness = 0.0F;
    float variance = 0.0F;
};

PixelSpread spreadOf(const BlockSums& sums, int pixel, float count) {
    const auto at = static_cast<std::size_t>(pixel) * 4;
    const Color mean = Color{sums.rgba[at], sums.rgba[at + 1], sums.rgba[at + 2]} / count;
    const float bright = luminance(mean);
    const float spread =
        std::max(0.0F, sums.squares[static_cast<std::size_t>(pixel)] / count - bright * bright);
    return {mean, bright, spread * count / std::max(1.0F, count - 1.0F)};
}

/// Growth of the screen's value with linear light, of a range of 1 each (slope of the sRGB curve).
/// Beyond white the screen shows no difference, but what is an edge of it does.
float screenSlope(float linear) {
    const float value = std::clamp(linear, 0.0031308F, 1.0F);
    return 1.055F / 2.4F * std::pow(value, 1.0F / 2.4F - 1.0F);
}

/// How much brighter the screen gets with light of no colour: on strong colours it shows in the
/// dark channels.
float screenSlope(const Color& mean) {
    return luminance(Color{screenSlope(mean.x), screenSlope(mean.y), screenSlope(mean.z)});
}

std::size_t levelOf(int count) {
    return static_cast<std::size_t>(std::bit_width(static_cast<unsigned>(std::max(count, 1)))) - 1;
}

} // namespace

void BlockNoise::Level::operator+=(const Level& other) {
    halves += other.halves;
    halvesOfSplit += other.halvesOfSplit;
    quarters += other.quarters;
    spreads += other.spreads;
    blocks += other.blocks;
}

BlockNoise::BlockNoise(const Film& film) : film_(film), known_(film.grid().count()) {}

/// Mean over the neighbours of a block, but not over those that stand out: an edge that passes by
/// is none of its business.
double BlockNoise::around(const std::vector<double>& spreads, int column, int row) const {
    constexpr std::size_t most = 8;
    constexpr std::size_t standingOut = 3;
    const BlockGrid& grid = film_.grid();
    std::array<double, most> found{};
    std::size_t count = 0;
    for (int y = std::max(0, row - 1); y <= std::min(grid.rows - 1, row + 1); ++y)
        for (int x = std::max(0, column - 1); x <= std::min(grid.columns - 1, column + 1); ++x)
            if (x != column || y != row)
                found[count++] = spreads[grid.index(x, y)];
    const std::size_t kept = count > standingOut ? count - standingOut : count;
    std::nth_element(found.begin(), found.begin() + static_cast<std::ptrdiff_t>(kept),
                     found.begin() + static_cast<std::ptrdiff_t>(count));
    return kept > 0 ? std::accumulate(found.begin(),
                                      found.begin() + static_cast<std::ptrdiff_t>(kept), 0.0) /
                          static_cast<double>(kept)
                    : spreads[grid.index(column, row)];
}

/// Each block's variance of single samples and its neighbours' together.
std::vector<double> BlockNoise::pooled(const std::vector<double>& spreads) const {
    const BlockGrid& grid = film_.grid();
    std::vector<double> result(spreads.size());
    for (int row = 0; row < grid.rows; ++row)
        for (int column = 0; column < grid.columns; ++column) {
            const std::size_t index = grid.index(column, row);
            const double known = static_cast<double>(blockPixels) * (countOf(index) - 1);
            result[index] =
                (spreads[index] * known + around(spreads, column, row) * neighboursCount) /
                (known + neighboursCount);
        }
    return result;
}

std::vector<double> BlockNoise::relativeErrors() {
    const std::size_t blocks = film_.grid().count();
    std::vector<double> spreads(blocks);
    for (std::size_t index = 0; index < blocks; ++index)
        for (int i = 0; i < blockPixels; ++i) {
            const PixelSpread spread =
                spreadOf(film_.sums(index), i, static_cast<float>(countOf(index)));
            spreads[index] += spread.variance /
                              (spread.brightness * spread.brightness + errorFloor) / blockPixels;
        }
    std::vector<double> errors = pooled(spreads);
    for (std::size_t index = 0; index < blocks; ++index)
        errors[index] /= countOf(index);
    learn(errors);
    std::array<double, levelCount> scales{};
    std::transform(levels_.begin(), levels_.end(), scales.begin(),
                   [this](const Level& level) { return scaleOf(level); });
    for (std::size_t index = 0; index < blocks; ++index)
        errors[index] *= scales[levelOf(countOf(index))];
    return errors;
}

/// From blocks that have come to a new number of samples, before any of them is chosen for what is
/// found: those that are not chosen would look better than they are.
void BlockNoise::learn(const std::vector<double>& errors) {
    for (std::size_t index = 0; index < errors.size(); ++index) {
        if (known_[index] == film_.samples(index))
            continue;
        known_[index] = film_.samples(index);
        const BlockDifferences& found = film_.differences(index);
        const bool split = found.quarters > 0.0F;
        const Level own{found.halves, split ? found.halves : 0.0, found.quarters, errors[index],
                        1.0};
        levels_[levelOf(countOf(index))] += own;
        all_ += own;
    }
}

/// What spreads at \p level are to be multiplied by. The error of a mean over what its halves
/// differ is 1 / (2^p - 1) where errors fall with the number of samples to the power of -p. Levels
/// of few blocks borrow from all.
double BlockNoise::scaleOf(const Level& level) const {
    if (!(level.spreads > 0.0))
        return 1.0;
    const double borrowed = enoughBlocks / all_.blocks;
    const double halves = level.halvesOfSplit + borrowed * all_.halvesOfSplit;
    const double quarters = level.quarters + borrowed * all_.quarters;
    const double fall = halves > 0.0 ? std::pow(quarters / halves, slowing) : std::exp2(usual);
    return level.halves / level.spreads /
           (std::clamp(fall, std::exp2(slowest), std::exp2(fastest)) - 1.0);
}

std::vector<BlockNoise::Visible> BlockNoise::visibleErrors() const {
    const BlockGrid& grid = film_.grid();
    std::vector<double> spreads(grid.count());
    std::vector<Visible> result(grid.count());
    for (int row = 0; row < grid.rows; ++row)
        for (int column = 0; column < grid.columns; ++column) {
            const std::size_t index = grid.index(column, row);
            const auto count = static_cast<float>(countOf(index));
            int shown = 0;
            double sum = 0.0;
            for (int i = 0; i < blockPixels; ++i) {
                if (!grid.contains(grid.pixelX(column) + i % blockWidth,
                                   grid.pixelY(row) + i / blockWidth))
                    continue;
                const PixelSpread spread = spreadOf(film_.sums(index), i, count);
                const float slope = screenSlope(spread.mean);
                const double seen = double{spread.variance} * slope * slope;
                sum += seen;
                ++shown;
                result[index].worst = std::max(result[index].worst, std::sqrt(seen / count));
            }
            spreads[index] = shown > 0 ? sum / shown : 0.0;
        }
    const std::vector<double> together = pooled(spreads);
    for (std::size_t index = 0; index < result.size(); ++index)
        result[index].together = std::sqrt(together[index] / countOf(index));
    return result;
}

} // namespace qor::engine
