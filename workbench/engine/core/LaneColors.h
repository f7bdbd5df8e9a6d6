#pragma once

#include "workbench/engine/core/Film.h"
#include "workbench/engine/core/Lanes.h"

namespace qor::engine {

/// What a packet of camera rays brought back.
struct LaneColors {
    Vec3x8 color;
    Float8 alpha{};

    void set(std::size_t lane, const Color& c, float a) {
        color.set(lane, c);
        alpha[lane] = a;
    }

    void add(std::size_t lane, const Color& c) {
        color.x[lane] += c.x;
        color.y[lane] += c.y;
        color.z[lane] += c.z;
    }
};

/// Adds the lanes of a packet, which lie in \p pixels in rising order, to their sums.
void addUp(const LaneColors& lanes, const Int8& pixels, BlockSums& sums);
/// The same for the lanes of \p asked alone.
void addUp(const LaneColors& lanes, const Int8& pixels, const Int8& asked, BlockSums& sums);

} // namespace qor::engine
