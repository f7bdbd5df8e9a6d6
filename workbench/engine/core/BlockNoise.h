#pragma once

#include "workbench/engine/core/Film.h"

#include <array>
#include <cstdint>
#include <vector>

namespace qor::engine {

/// How noisy the blocks of a film are. Looks at whole passes only.
class BlockNoise {
public:
    explicit BlockNoise(const Film& film);

    /// Estimated mean of squared relative errors over a block's pixels, by its index in the grid.
    /// Method: what the halves of a block's samples differ tells the error of their mean without
    /// bias as far as they are independent; they fall between each other instead, so errors fall
    /// faster than the number of samples grows. How much faster is seen from what halves of these
    /// halves differ, over all blocks with as many samples. A block itself is judged by the spread
    /// of its samples and a little by its neighbours', so that none starves that was only lucky.
    std::vector<double> relativeErrors();

    /// Estimated standard deviations of pixels as a screen shows them, of a range of 1: of a block
    /// and its neighbours together, and the largest of its own.
    struct Visible {
        double together = 0.0;
        double worst = 0.0;
    };

    std::vector<Visible> visibleErrors() const;

private:
    /// Powers of two of numbers of samples.
    static constexpr std::size_t levelCount = 32;

    /// Sums over all blocks that have come to about as many samples.
    struct Level {
        double halves = 0.0;
        double halvesOfSplit = 0.0; ///< of those whose last samples came in halves themselves
        double quarters = 0.0;
        double spreads = 0.0;
        double blocks = 0.0;

        void operator+=(const Level& other);
    };

    int countOf(std::size_t index) const { return static_cast<int>(film_.samples(index)); }

    double around(const std::vector<double>& spreads, int column, int row) const;
    std::vector<double> pooled(const std::vector<double>& spreads) const;
    void learn(const std::vector<double>& errors);
    double scaleOf(const Level& level) const;

    const Film& film_;
    std::vector<std::uint32_t> known_; ///< samples of each block when it was learnt from
    std::array<Level, levelCount> levels_;
    Level all_;
};

} // namespace qor::engine
