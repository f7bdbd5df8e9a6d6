#pragma once

#include "workbench/engine/core/Embree.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>

#if defined(__AVX__)
#include <immintrin.h>
#endif

namespace qor::engine {

/// Eight numbers side by side that are computed with at once, one for each ray of a packet.
/// Comparing two gives -1 or 0 in each lane, which `condition ? a : b` chooses by.
using Float8 = float __attribute__((vector_size(4 * packetWidth)));
using Int8 = std::int32_t __attribute__((vector_size(4 * packetWidth)));
using UInt8 = std::uint32_t __attribute__((vector_size(4 * packetWidth)));

inline Float8 eight(float value) {
    return Float8{} + value;
}

inline Float8 load(const float* from) {
    Float8 result;
    std::memcpy(&result, from, sizeof(result));
    return result;
}

inline Int8 load(const unsigned* from) {
    Int8 result;
    std::memcpy(&result, from, sizeof(result));
    return result;
}

inline void store(float* to, const Float8& value) {
    std::memcpy(to, &value, sizeof(value));
}

/// One bit for each lane that is set.
inline unsigned bitsOf(const Int8& mask) {
#if defined(__AVX__)
    return static_cast<unsigned>(_mm256_movemask_ps(std::bit_cast<__m256>(mask)));
#else
    unsigned bits = 0;
    for (int i = 0; i < packetWidth; ++i)
        bits |= mask[i] != 0 ? 1U << static_cast<unsigned>(i) : 0U;
    return bits;
#endif
}

inline PacketMask packetMask(const Int8& mask) {
    return std::bit_cast<PacketMask>(mask);
}

inline Float8 squareRoot(const Float8& value) {
#if defined(__AVX__)
    return std::bit_cast<Float8>(_mm256_sqrt_ps(std::bit_cast<__m256>(value)));
#else
    Float8 result;
    for (int i = 0; i < packetWidth; ++i)
        result[i] = std::sqrt(value[i]);
    return result;
#endif
}

inline float squareRoot(float value) {
    return std::sqrt(value);
}

inline Float8 least(const Float8& a, const Float8& b) {
    return a < b ? a : b;
}

inline Float8 greatest(const Float8& a, const Float8& b) {
    return a > b ? a : b;
}

inline float least(float a, float b) {
    return std::min(a, b);
}

inline float greatest(float a, float b) {
    return std::max(a, b);
}

inline bool allOf(const Int8& mask) {
    return bitsOf(mask) == (1U << static_cast<unsigned>(packetWidth)) - 1U;
}

inline bool allOf(bool one) {
    return one;
}

inline float sumOf(const Float8& value) {
    const Float8& v = value;
    return ((v[0] + v[4]) + (v[2] + v[6])) + ((v[1] + v[5]) + (v[3] + v[7]));
}

inline Float8 magnitude(const Float8& value) {
    return std::bit_cast<Float8>(std::bit_cast<UInt8>(value) & 0x7fffffffU);
}

/// The lanes whose bits are set.
inline Int8 maskOf(unsigned bits) {
    const Int8 one{1, 2, 4, 8, 16, 32, 64, 128};
    return ((Int8{} + static_cast<int>(bits)) & one) != 0;
}

/// Entries of a table of numbers, \p stride apart.
template <int stride>
Float8 entriesOf(const float* table, const Int8& index) {
#if defined(__AVX2__)
    return std::bit_cast<Float8>(
        _mm256_i32gather_ps(table, std::bit_cast<__m256i>(index * stride), 4));
#else
    Float8 result;
    for (int i = 0; i < packetWidth; ++i)
        result[i] = table[index[i] * stride];
    return result;
#endif
}

/// 1 with the sign of \p value, of zeros too.
inline Float8 signOf(const Float8& value) {
    const UInt8 sign = std::bit_cast<UInt8>(value) & 0x80000000U;
    return std::bit_cast<Float8>(sign | std::bit_cast<UInt8>(eight(1.0F)));
}

/// 0 <= result < 1, as the function of the same name for one number.
inline Float8 unitFloat(const UInt8& x) {
    return __builtin_convertvector(std::bit_cast<Int8>(x >> 8U), Float8) * 0x1p-24F;
}

inline Int8 wholePart(const Float8& value) {
    return __builtin_convertvector(value, Int8);
}

inline Float8 numberOf(const Int8& value) {
    return __builtin_convertvector(value, Float8);
}

/// The one or the other for one number, as `condition ? a : b` does it lane by lane.
template <typename Value>
Value select(bool condition, const Value& a, const Value& b) {
    return condition ? a : b;
}

inline Float8 select(const Int8& condition, const Float8& a, const Float8& b) {
    return condition ? a : b;
}

/// Eight points, directions or colours.
struct Vec3x8 {
    Float8 x{};
    Float8 y{};
    Float8 z{};

    Vec3x8() = default;

    Vec3x8(const Float8& vx, const Float8& vy, const Float8& vz) : x(vx), y(vy), z(vz) {}

    /// The same in every lane.
    explicit Vec3x8(const Vec3& v) : x(eight(v.x)), y(eight(v.y)), z(eight(v.z)) {}

    void set(std::size_t lane, const Vec3& v) {
        x[lane] = v.x;
        y[lane] = v.y;
        z[lane] = v.z;
    }
};

inline Vec3x8 operator+(const Vec3x8& a, const Vec3x8& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

inline Vec3x8 operator-(const Vec3x8& a, const Vec3x8& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

inline Vec3x8 operator-(const Vec3x8& a) {
    return {-a.x, -a.y, -a.z};
}

inline Vec3x8 operator*(const Vec3x8& a, const Vec3x8& b) {
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}

inline Vec3x8 operator*(const Vec3x8& a, const Float8& s) {
    return {a.x * s, a.y * s, a.z * s};
}

inline Vec3x8& operator+=(Vec3x8& a, const Vec3x8& b) {
    return a = a + b;
}

inline Float8 dot(const Vec3x8& a, const Vec3x8& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline Vec3x8 cross(const Vec3x8& a, const Vec3x8& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline Vec3x8 select(const Int8& condition, const Vec3x8& a, const Vec3x8& b) {
    return {condition ? a.x : b.x, condition ? a.y : b.y, condition ? a.z : b.z};
}

inline Float8 length(const Vec3x8& a) {
    return squareRoot(dot(a, a));
}

inline Float8 largestOf(const Vec3x8& a) {
    return greatest(greatest(a.x, a.y), a.z);
}

/// \p a at length 1; what has no length stays as it is.
inline Vec3x8 normalize(const Vec3x8& a) {
    const Float8 n = length(a);
    return a * (1.0F / (n > 0.0F ? n : eight(1.0F)));
}

inline Float8 luminance(const Vec3x8& color) {
    const Color weights = luminanceWeights;
    return color.x * weights.x + color.y * weights.y + color.z * weights.z;
}

} // namespace qor::engine
