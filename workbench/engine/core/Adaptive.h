#pragma once

#include "workbench/engine/core/BlockNoise.h"

#include <cstdint>
#include <vector>

namespace qor::engine {

/// Samples first .. first + count - 1 of every pixel of one block.
struct BlockWork {
    int column = 0;
    int row = 0;
    int first = 0;
    int count = 0;

    friend bool operator==(const BlockWork&, const BlockWork&) = default;
};

/// Decides which blocks get which samples next. Deterministic: it looks at whole passes only.
class Adaptive {
public:
    Adaptive(const RenderOptions& options, const Film& film);

    /// The next pass, in the order to work on; empty when the picture is done.
    std::vector<BlockWork> nextPass();

    /// Estimated mean of squared relative errors after the last pass; 0 as long as it is not known.
    double estimatedError() const { return estimatedError_; }

    /// Pixel samples that are sure to come, passes before the next included.
    double plannedSamples() const { return planned_; }

private:
    int leastSamples() const;
    std::vector<BlockWork> wholePass(int count);
    std::vector<BlockWork> refinedPass();
    std::vector<bool> chooseByTarget();
    std::vector<bool> chooseByContrast() const;
    int nextCount(int have) const;
    std::size_t indexOf(const BlockWork& work) const;

    const RenderOptions& options_;
    const Film& film_;
    BlockNoise noise_;
    std::vector<BlockWork> order_; ///< all blocks in the order to work on
    int uniform_ = 0;              ///< samples that every block has
    double planned_ = 0.0;
    double estimatedError_ = 0.0;
};

} // namespace qor::engine
