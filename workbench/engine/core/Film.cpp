#include "workbench/engine/core/Film.h"

#include <algorithm>

namespace qor::engine {

namespace {

/// Between \p one, of \p count samples, and \p other, of \p otherCount (see BlockDifferences).
float differenceOf(const BlockSums& one, int count, const BlockSums& other, int otherCount) {
    const auto samples = static_cast<float>(count);
    const auto otherSamples = static_cast<float>(otherCount);
    const float all = samples + otherSamples;
    float sum = 0.0F;
    for (std::size_t i = 0; i < one.rgba.size(); ++i) {
        const float difference = one.rgba[i] / samples - other.rgba[i] / otherSamples;
        const float mean = (one.rgba[i] + other.rgba[i]) / all;
        const float counts = i % 4 == 3 ? 0.0F : 1.0F; // but not the alpha
        sum += counts * difference * difference / (mean * mean + errorFloor);
    }
    return sum * samples * otherSamples / (all * all * 3.0F * blockPixels);
}

void addUp(const BlockSums& from, BlockSums& to) {
    for (std::size_t i = 0; i < to.rgba.size(); ++i)
        to.rgba[i] += from.rgba[i];
    for (std::size_t i = 0; i < to.squares.size(); ++i)
        to.squares[i] += from.squares[i];
}

} // namespace

BlockGrid::BlockGrid(const RenderOptions& options)
    : pictureWidth(options.width), pictureHeight(options.height) {
    const Region region = clippedRegion(options);
    left = region.x;
    right = region.x + region.width;
    top = options.height - region.y - region.height;
    bottom = options.height - region.y;
    firstX = left / blockWidth;
    firstY = top / blockHeight;
    columns = (right - 1) / blockWidth - firstX + 1;
    rows = (bottom - 1) / blockHeight - firstY + 1;
}

Film::Film(const RenderOptions& options)
    : grid_(options)
    , blocks_(grid_.count())
    , counts_(grid_.count())
    , differences_(options.samples.noiseTarget ? grid_.count() : 0)
    , coarse_(static_cast<std::size_t>(grid_.columns) *
              static_cast<std::size_t>((grid_.rows + 1) / 2)) {}

void Film::add(std::size_t index, const BlockSums& sums, int samples) {
    const std::scoped_lock lock(lockOf(index));
    if (!frozen_)
        addLocked(index, sums, samples);
}

void Film::addHalves(std::size_t index, const BlockSums& one, const BlockSums& other, int samples) {
    BlockSums sums = one;
    addUp(other, sums);
    const std::scoped_lock lock(lockOf(index));
    if (frozen_)
        return;
    const bool first = counts_[index] == 0;
    addLocked(index, sums, samples);
    if (differences_.size() == 0)
        return;
    const float difference = differenceOf(one, samples / 2, other, samples - samples / 2);
    (first ? differences_[index].halves : differences_[index].quarters) = difference;
}

void Film::addLocked(std::size_t index, const BlockSums& sums, int samples) {
    BlockSums& block = blocks_[index];
    const auto before = static_cast<int>(counts_[index]);
    if (differences_.size() > 0)
        differences_[index] = {before > 0 ? differenceOf(block, before, sums, samples) : 0.0F,
                               0.0F};
    addUp(sums, block);
    counts_[index] += static_cast<std::uint32_t>(samples);
}

void Film::setCoarse(std::size_t cell, const std::array<float, 4>& rgba) {
    // The lock of one of its blocks is as good as any.
    const std::scoped_lock lock(lockOf(cell));
    if (!frozen_)
        coarse_[cell] = rgba;
}

void Film::freeze() {
    frozen_ = true;
    // Whoever is adding holds a lock; whoever comes after sees the flag.
    for (Lock& lock : locks_)
        const std::scoped_lock passed(lock.mutex);
}

void Film::snapshotRows(int first, int count, Image& image) const {
    image.width = grid_.pictureWidth;
    image.height = count;
    image.rgba.assign(
        static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height) * 4, 0.0F);
    const int last = std::min(first + count, grid_.bottom) - 1;
    const int from = std::max(first, grid_.top);
    if (last < from)
        return;
    for (int row = from / blockHeight - grid_.firstY; row <= last / blockHeight - grid_.firstY;
         ++row)
        for (int column = 0; column < grid_.columns; ++column)
            showBlock(image, first, column, row);
}

void Film::showBlock(Image& image, int firstRow, int column, int row) const {
    const std::size_t index = grid_.index(column, row);
    std::array<float, std::size_t{4} * blockPixels> rgba{};
    std::uint32_t count = 0;
    {
        const std::scoped_lock lock(lockOf(index));
        rgba = blocks_[index].rgba;
        count = counts_[index];
    }
    if (count > 0) {
        const float scale = 1.0F / static_cast<float>(count);
        for (float& value : rgba)
            value *= scale;
    } else {
        const std::size_t cell = grid_.index(column, row / 2);
        const std::scoped_lock lock(lockOf(cell));
        for (std::size_t i = 0; i < rgba.size(); ++i)
            rgba[i] = coarse_[cell][i % 4];
    }
    showPixels(image, firstRow, column, row, rgba);
}

/// Copies what lies in the region and in the rows of \p image.
void Film::showPixels(Image& image,
                      int firstRow,
                      int column,
                      int row,
                      const std::array<float, std::size_t{4} * blockPixels>& rgba) const {
    const int x = grid_.pixelX(column);
    const int left = std::max(x, grid_.left);
    const int right = std::min(x + blockWidth, grid_.right);
    for (int i = 0; i < blockHeight; ++i) {
        const int y = grid_.pixelY(row) + i;
        if (y < grid_.top || y >= grid_.bottom || y < firstRow || y >= firstRow + image.height)
            continue;
        const float* from =
            rgba.data() + static_cast<std::ptrdiff_t>(4) * (i * blockWidth + left - x);
        std::copy_n(from, 4 * (right - left), image.pixel(left, y - firstRow));
    }
}

std::size_t Film::memory() const {
    return blocks_.size() * sizeof(BlockSums) + counts_.size() * sizeof(std::uint32_t) +
           differences_.size() * sizeof(BlockDifferences) +
           coarse_.size() * sizeof(std::array<float, 4>);
}

} // namespace qor::engine
