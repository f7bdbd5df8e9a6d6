#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace qor::engine {

/// Linear RGBA floats, top row first. Alpha is the share of a pixel that objects, the ground and
/// the shadows on it cover; colours are not multiplied by it, they hold the background where
/// nothing covers it.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<float> rgba;

    /// The four floats of column \p x and row \p y from the top.
    const float* pixel(int x, int y) const {
        return rgba.data() + (static_cast<std::size_t>(y) * width + x) * 4;
    }

    float* pixel(int x, int y) {
        return rgba.data() + (static_cast<std::size_t>(y) * width + x) * 4;
    }
};

/// One linear value as sRGB, 0..1 (IEC 61966-2-1); clamps.
float srgbFromLinear(float linear);
/// The inverse.
float linearFromSrgb(float encoded);

/// \p image as 8-bit sRGB RGBA, top row first, alpha linear.
std::vector<std::uint8_t> toSrgb8(const Image& image);

} // namespace qor::engine
