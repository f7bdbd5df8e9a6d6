#pragma once

#include <algorithm>
#include <cmath>

namespace qor::engine {

/// Two floats: texture coordinates, points of the unit square.
struct Vec2 {
    float x = 0.0F;
    float y = 0.0F;
};

/// Three floats: a point, a direction or a linear colour. Which one is said by the name that holds
/// it.
struct Vec3 {
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
};

/// Linear red, green and blue, not bounded above.
using Color = Vec3;

constexpr float pi = 3.14159265358979F;

constexpr Vec3 operator+(const Vec3& a, const Vec3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

constexpr Vec3 operator-(const Vec3& a, const Vec3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

constexpr Vec3 operator-(const Vec3& a) {
    return {-a.x, -a.y, -a.z};
}

constexpr Vec3 operator*(const Vec3& a, const Vec3& b) {
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}

constexpr Vec3 operator*(const Vec3& a, float s) {
    return {a.x * s, a.y * s, a.z * s};
}

constexpr Vec3 operator*(float s, const Vec3& a) {
    return a * s;
}

constexpr Vec3 operator/(const Vec3& a, float s) {
    return {a.x / s, a.y / s, a.z / s};
}

constexpr Vec3& operator+=(Vec3& a, const Vec3& b) {
    return a = a + b;
}

constexpr Vec3& operator*=(Vec3& a, const Vec3& b) {
    return a = a * b;
}

constexpr Vec3& operator*=(Vec3& a, float s) {
    return a = a * s;
}

constexpr bool operator==(const Vec3& a, const Vec3& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

constexpr float dot(const Vec3& a, const Vec3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

constexpr Vec3 cross(const Vec3& a, const Vec3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline float length(const Vec3& a) {
    return std::sqrt(dot(a, a));
}

/// \p a at length 1; a vector without a length stays as it is.
inline Vec3 normalize(const Vec3& a) {
    const float n = length(a);
    return n > 0.0F ? a / n : a;
}

constexpr float maxComponent(const Vec3& a) {
    return std::max(a.x, std::max(a.y, a.z));
}

/// Of the sRGB primaries (Rec. ITU-R BT.709).
constexpr Color luminanceWeights{0.2126F, 0.7152F, 0.0722F};

/// Relative luminance of a linear colour.
constexpr float luminance(const Color& c) {
    return dot(luminanceWeights, c);
}

constexpr Vec3 lerp(const Vec3& a, const Vec3& b, float t) {
    return a + (b - a) * t;
}

inline bool isFinite(const Vec3& a) {
    return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z);
}

} // namespace qor::engine
