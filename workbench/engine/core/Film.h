#pragma once

#include "workbench/engine/core/Image.h"
#include "workbench/engine/core/RenderOptions.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <new>
#include <type_traits>
#include <vector>

namespace qor::engine {

/// Pixels are rendered in blocks of 4 × 2, aligned to the whole picture, and stored in them.
constexpr int blockWidth = 4;
constexpr int blockHeight = 2;
constexpr int blockPixels = blockWidth * blockHeight;
/// Blocks are handed out in tiles of this many.
constexpr int tileBlocksX = 8;
constexpr int tileBlocksY = 16;

/// Samples of one block, summed up by pixel.
struct BlockSums {
    std::array<float, blockPixels * 4> rgba{};
    std::array<float, blockPixels> squares{}; ///< of luminance
};

/// How far the parts that a block's samples came in differ: squared, relative to what they show,
/// mean over pixels and channels, and as large as the error of the parts' mean would be if they had
/// nothing to do with each other.
struct BlockDifferences {
    float halves = 0.0F; ///< what was there before and what came last, or both halves of the first
    float quarters = 0.0F; ///< both halves of what came last; 0: it did not come in halves
};

/// Squared errors are relative to the squared brightness and this, after Rousselle et al.,
/// "Adaptive Sampling and Reconstruction using Greedy Error Minimization", 2011.
constexpr float errorFloor = 0.01F;

/// Where the blocks of a picture's region lie.
struct BlockGrid {
    explicit BlockGrid(const RenderOptions& options);

    int pictureWidth;
    int pictureHeight;
    int left; ///< region in pixels, rows from the top
    int top;
    int right; ///< one beyond
    int bottom;
    int firstX; ///< blocks
    int firstY;
    int columns;
    int rows;

    std::size_t count() const {
        return static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
    }

    int tilesX() const { return (columns + tileBlocksX - 1) / tileBlocksX; }

    int tilesY() const { return (rows + tileBlocksY - 1) / tileBlocksY; }

    std::size_t index(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
               static_cast<std::size_t>(column);
    }

    /// Column or row of the first pixel of a block.
    int pixelX(int column) const { return (firstX + column) * blockWidth; }

    int pixelY(int row) const { return (firstY + row) * blockHeight; }

    bool contains(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }
};

/// Zeros whose memory is had page by page when it is first written, by whoever writes it: so that
/// it costs workers a little instead of making them wait for all of it.
template <typename Value>
class Zeros {
public:
    /// Throws std::bad_alloc when memory is short.
    explicit Zeros(std::size_t size)
        : size_(size), values_(static_cast<Value*>(std::calloc(size, sizeof(Value)))) {
        static_assert(std::is_trivially_copyable_v<Value> &&
                      std::is_trivially_destructible_v<Value>);
        if (!values_ && size > 0)
            throw std::bad_alloc();
    }

    std::size_t size() const { return size_; }

    Value& operator[](std::size_t index) { return values_.get()[index]; }

    const Value& operator[](std::size_t index) const { return values_.get()[index]; }

private:
    struct Free {
        void operator()(Value* values) const { std::free(values); }
    };

    std::size_t size_;
    std::unique_ptr<Value, Free> values_;
};

/// The pixels of a render: sums of samples. Workers add to it and anybody may take a picture of it
/// at any time.
class Film {
public:
    explicit Film(const RenderOptions& options);

    const BlockGrid& grid() const { return grid_; }

    /// Adds \p samples samples a pixel to block \p index.
    void add(std::size_t index, const BlockSums& sums, int samples);
    /// The same for samples that come in two halves.
    void addHalves(std::size_t index, const BlockSums& one, const BlockSums& other, int samples);
    /// Shows \p rgba in the 4 × 4 pixels of coarse cell \p cell until they have samples. A cell is
    /// two blocks, one above the other.
    void setCoarse(std::size_t cell, const std::array<float, 4>& rgba);

    int coarseRows() const { return (grid_.rows + 1) / 2; }

    /// What is there so far of block \p index; only by the one who adds to it.
    const BlockSums& sums(std::size_t index) const { return blocks_[index]; }

    std::uint32_t samples(std::size_t index) const { return counts_[index]; }

    /// Kept only where a target for noise is set.
    const BlockDifferences& differences(std::size_t index) const { return differences_[index]; }

    /// From now on nothing changes any more.
    void freeze();

    /// Copies all into \p image, which is resized to the whole picture.
    void snapshot(Image& image) const { snapshotRows(0, grid_.pictureHeight, image); }

    /// Copies \p count rows from row \p first (from the top) on into \p image, which is resized to
    /// them; all within the picture.
    void snapshotRows(int first, int count, Image& image) const;

    std::size_t memory() const;

private:
    static constexpr std::size_t lockCount = 64;

    /// On a cache line of its own.
    struct alignas(64) Lock {
        std::mutex mutex;
    };

    std::mutex& lockOf(std::size_t index) const { return locks_[index / 64 % lockCount].mutex; }

    void addLocked(std::size_t index, const BlockSums& sums, int samples);
    void showBlock(Image& image, int firstRow, int column, int row) const;
    void showPixels(Image& image,
                    int firstRow,
                    int column,
                    int row,
                    const std::array<float, std::size_t{4} * blockPixels>& rgba) const;

    BlockGrid grid_;
    std::atomic<bool> frozen_{false};
    Zeros<BlockSums> blocks_;
    Zeros<std::uint32_t> counts_;
    Zeros<BlockDifferences> differences_;
    Zeros<std::array<float, 4>> coarse_;
    mutable std::array<Lock, lockCount> locks_;
};

} // namespace qor::engine
