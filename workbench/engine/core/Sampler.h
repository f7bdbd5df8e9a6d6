#pragma once

#include "workbench/engine/core/Vec.h"

#include <cstdint>

namespace qor::engine {

/// Mixes all bits of \p x. Method: C. Wellons, "Prospecting for hash functions", 2018 (lowbias32).
template <typename Bits>
constexpr Bits hash32(Bits x) {
    x ^= x >> 16U;
    x *= 0x7feb352dU;
    x ^= x >> 15U;
    x *= 0x846ca68bU;
    x ^= x >> 16U;
    return x;
}

template <typename Bits>
constexpr Bits hashPair(Bits a, Bits b) {
    return hash32(a ^ (hash32(b) + 0x9e3779b9U + (a << 6U) + (a >> 2U)));
}

template <typename Bits>
constexpr Bits reverseBits(Bits x) {
    x = ((x >> 1U) & 0x55555555U) | ((x & 0x55555555U) << 1U);
    x = ((x >> 2U) & 0x33333333U) | ((x & 0x33333333U) << 2U);
    x = ((x >> 4U) & 0x0f0f0f0fU) | ((x & 0x0f0f0f0fU) << 4U);
    x = ((x >> 8U) & 0x00ff00ffU) | ((x & 0x00ff00ffU) << 8U);
    return (x >> 16U) | (x << 16U);
}

/// Owen scrambling of a number whose bits are reversed: every bit is flipped depending on all bits
/// below it. Method: Laine and Karras 2011, section 3.1, as used by Burley, "Practical Hash-based
/// Owen Scrambling", JCGT 9(4), 2020, with the constants of N. Vegdahl, "Building a Better LK
/// Hash", 2021.
template <typename Bits>
constexpr Bits scrambleReversed(Bits x, Bits seed) {
    x ^= x * 0x3d20adeaU;
    x += seed;
    x *= (seed >> 16U) | 1U;
    x ^= x * 0x05526c56U;
    x ^= x * 0x53a22864U;
    return x;
}

/// Second dimension of the Sobol sequence, bits reversed. Its matrix is Pascal's triangle modulo 2,
/// which is five Kronecker factors, so five steps do for 32 bits (Lucas' theorem).
template <typename Bits>
constexpr Bits sobolSecondReversed(Bits i) {
    i ^= (i >> 1U) & 0x55555555U;
    i ^= (i >> 2U) & 0x33333333U;
    i ^= (i >> 4U) & 0x0f0f0f0fU;
    i ^= (i >> 8U) & 0x00ff00ffU;
    i ^= (i >> 16U) & 0x0000ffffU;
    return i;
}

/// 0 <= result < 1.
constexpr float unitFloat(std::uint32_t x) {
    return static_cast<float>(x >> 8U) * 0x1p-24F;
}

/// Both numbers of point \p index of an Owen-scrambled (0, 2)-sequence, in all their bits. Of one
/// point or of several, as everything above.
template <typename Bits>
constexpr Bits scrambledFirst(Bits index, Bits seed) {
    return reverseBits(scrambleReversed(index, hash32(seed)));
}

template <typename Bits>
constexpr Bits scrambledSecond(Bits index, Bits seed) {
    return reverseBits(scrambleReversed(sobolSecondReversed(index), hash32(seed ^ 0x5bd1e995U)));
}

/// The same point between 0 and 1.
constexpr Vec2 scrambledPoint(std::uint32_t index, std::uint32_t seed) {
    return {unitFloat(scrambledFirst(index, seed)), unitFloat(scrambledSecond(index, seed))};
}

/// A point's place in a sequence that is shuffled in the way of \p seed.
template <typename Bits>
constexpr Bits shuffledIndex(Bits index, Bits seed) {
    return reverseBits(scrambleReversed(reverseBits(index), seed ^ 0xa511e9b3U));
}

/// The same, with the first 2, 4, 8 … points staying the first.
template <typename Bits>
constexpr Bits shuffledWithin(Bits index, Bits seed) {
    const Bits key = seed ^ 0xa511e9b3U;
    return reverseBits(scrambleReversed(reverseBits(index), key) ^ scrambleReversed(Bits{}, key));
}

/// Lower triangle of Pascal's triangle modulo 2, times the bits of \p i. The samples of a pixel
/// fill the upper digits of their numbers one by one; of what this matrix makes of a pixel's place,
/// the digits that follow them are as independent of each other, however many samples there are:
/// any block of its columns that starts at the first has full rank in any rows that follow each
/// other (its minors there are those of binomial coefficients, which are 1).
template <typename Bits>
constexpr Bits belowSamples(Bits i) {
    i ^= (i & 0x55555555U) << 1U;
    i ^= (i & 0x33333333U) << 2U;
    i ^= (i & 0x0f0f0f0fU) << 4U;
    i ^= (i & 0x00ff00ffU) << 8U;
    i ^= (i & 0x0000ffffU) << 16U;
    return i;
}

/// A pixel's seed is the random number of its tile of 8 × 8 pixels, above its place in the tile
/// on a Z-shaped curve.
constexpr unsigned tileBits = 3;
constexpr unsigned placeBits = 2 * tileBits;

/// The numbers that one dimension gives to one sample of a pixel, in all their bits; of one sample
/// or of several, as everything above. Pixels of a tile share one scrambled sequence, each shifted
/// by its place: so the samples of a pixel are an Owen-scrambled (0, 2)-sequence, and those of
/// neighbours fall between them. What errors are left cancel out over a few pixels, where the eye
/// sees them least. Method: Ahmed and Wonka, "Screen-space blue-noise diffusion of Monte Carlo
/// sampling error via hierarchical ordering of pixels", 2020, here for any number of samples.
template <typename Bits>
class DimensionBits {
public:
    constexpr DimensionBits(Bits pixelSeed, Bits index, Bits dimension)
        : seed_(hashPair(pixelSeed >> placeBits, dimension))
        , sample_(shuffledWithin(index, hashPair(pixelSeed, dimension)))
        , place_(shuffledIndex(pixelSeed & ((1U << placeBits) - 1U), seed_ ^ 0x3c6ef372U)) {}

    constexpr Bits first() const {
        return reverseBits(scrambleReversed(sample_ ^ belowSamples(place_), hash32(seed_)));
    }

    constexpr Bits second() const {
        return reverseBits(scrambleReversed(sobolSecondReversed(sample_) ^
                                                belowSamples(sobolSecondReversed(place_)),
                                            hash32(seed_ ^ 0x5bd1e995U)));
    }

private:
    Bits seed_;
    Bits sample_;
    Bits place_;
};

/// The random numbers of one sample of one pixel. Each call uses up a fresh dimension, in which the
/// samples of the pixel, and of its neighbours, are well distributed; dimensions are decorrelated
/// among each other by scrambling and shuffling.
class Sampler {
public:
    /// \p dimension: how many numbers have been used up before.
    Sampler(std::uint32_t pixelSeed, std::uint32_t index, std::uint32_t dimension = 0)
        : seed_(pixelSeed), index_(index), dimension_(dimension) {}

    Vec2 next2D() {
        const DimensionBits<std::uint32_t> bits(seed_, index_, ++dimension_);
        return {unitFloat(bits.first()), unitFloat(bits.second())};
    }

    float next1D() {
        return unitFloat(DimensionBits<std::uint32_t>(seed_, index_, ++dimension_).first());
    }

private:
    std::uint32_t seed_;
    std::uint32_t index_;
    std::uint32_t dimension_;
};

/// The lower bits of \p i, each followed by a zero.
constexpr std::uint32_t spreadBits(std::uint32_t i) {
    i = (i | (i << 4U)) & 0x0f0fU;
    i = (i | (i << 2U)) & 0x3333U;
    return (i | (i << 1U)) & 0x5555U;
}

/// The seed of the pixel in column \p x and row \p y.
constexpr std::uint32_t pixelSeed(int x, int y, std::uint32_t seed) {
    constexpr std::uint32_t inTile = (1U << tileBits) - 1U;
    const auto column = static_cast<std::uint32_t>(x);
    const auto row = static_cast<std::uint32_t>(y);
    const std::uint32_t tile = hashPair(hashPair(column >> tileBits, row >> tileBits), seed);
    return (tile << placeBits) | spreadBits(column & inTile) | (spreadBits(row & inTile) << 1U);
}

/// Where sample \p index lies in its pixel, 0..1: its first numbers.
inline Vec2 placeInPixel(std::uint32_t pixelSeed, std::uint32_t index) {
    return Sampler(pixelSeed, index).next2D();
}

} // namespace qor::engine
