#pragma once

#include "workbench/engine/core/Lanes.h"

namespace qor::engine {

/// Where the vectors of eight lanes lie in memory; each must have a float behind it that may be
/// read.
using LanePointers = std::array<const float*, packetWidth>;

/// The vectors, and the floats behind them.
struct LoadedLanes {
    Vec3x8 vector;
    Float8 behind;
};

/// Reads four floats a lane and turns rows into columns.
inline LoadedLanes loadLanes(const LanePointers& from) {
#if defined(__AVX__)
    const auto pair = [&](std::size_t i) {
        return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(from[i])),
                                    _mm_loadu_ps(from[i + 4]), 1);
    };
    const __m256 rows[4] = {pair(0), pair(1), pair(2), pair(3)};
    const __m256 xy01 = _mm256_unpacklo_ps(rows[0], rows[1]);
    const __m256 xy23 = _mm256_unpacklo_ps(rows[2], rows[3]);
    const __m256 zw01 = _mm256_unpackhi_ps(rows[0], rows[1]);
    const __m256 zw23 = _mm256_unpackhi_ps(rows[2], rows[3]);
    const auto low = [](const __m256& a, const __m256& b) {
        return std::bit_cast<Float8>(_mm256_shuffle_ps(a, b, _MM_SHUFFLE(1, 0, 1, 0)));
    };
    const auto high = [](const __m256& a, const __m256& b) {
        return std::bit_cast<Float8>(_mm256_shuffle_ps(a, b, _MM_SHUFFLE(3, 2, 3, 2)));
    };
    return {{low(xy01, xy23), high(xy01, xy23), low(zw01, zw23)}, high(zw01, zw23)};
#else
    LoadedLanes result;
    for (std::size_t i = 0; i < packetWidth; ++i) {
        result.vector.set(i, {from[i][0], from[i][1], from[i][2]});
        result.behind[i] = from[i][3];
    }
    return result;
#endif
}

} // namespace qor::engine
