#include "workbench/engine/core/Film.h"

#include <algorithm>

namespace qor::engine {

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
    , coarse_(static_cast<std::size_t>(grid_.columns) *
              static_cast<std::size_t>((grid_.rows + 1) / 2)) {}

void Film::add(std::size_t index, const BlockSums& sums, int samples) {
    const std::scoped_lock lock(lockOf(index));
    if (frozen_)
        return;
    BlockSums& block = blocks_[index];
    for (std::size_t i = 0; i < sums.rgba.size(); ++i)
        block.rgba[i] += sums.rgba[i];
    for (std::size_t i = 0; i < sums.squares.size(); ++i)
        block.squares[i] += sums.squares[i];
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
           coarse_.size() * sizeof(std::array<float, 4>);
}

} // namespace qor::engine
