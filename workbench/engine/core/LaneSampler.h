#pragma once

#include "workbench/engine/core/Lanes.h"
#include "workbench/engine/core/PathTracer.h"

namespace qor::engine {

/// What a packet of camera rays is to look at: a place in the picture in pixels, and the random
/// numbers, of each lane.
struct LanePlaces {
    Float8 x{};
    Float8 y{};
    UInt8 seed{};
    UInt8 index{};
};

/// The random numbers of eight samples behind the camera, each as pathSampler() has them.
class LaneSampler {
public:
    explicit LaneSampler(const LanePlaces& places)
        : seed_(pathSeed(places.seed)), index_(places.index) {}

    /// Two numbers for each lane of \p asked.
    void next2D(const Int8& asked, Float8& u, Float8& v) {
        const DimensionBits<UInt8> bits = next(asked);
        u = unitFloat(bits.first());
        v = unitFloat(bits.second());
    }

    /// A number for each lane of \p asked.
    Float8 next1D(const Int8& asked) { return unitFloat(next(asked).first()); }

    /// What goes on with the numbers of \p lane.
    Sampler of(std::size_t lane) const { return {seed_[lane], index_[lane], dimension_[lane]}; }

private:
    DimensionBits<UInt8> next(const Int8& asked) {
        dimension_ -= std::bit_cast<UInt8>(asked);
        return {seed_, index_, dimension_};
    }

    UInt8 seed_;
    UInt8 index_;
    UInt8 dimension_{};
};

} // namespace qor::engine
