#pragma once

#include <cstdint>

/// A colour, 0..255 a channel; alpha 255 is opaque.
struct QorColor {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;

    bool operator==(const QorColor&) const = default;
};

/// How lines, points and texts of a representation look.
struct QorGraphicAttributeSet {
    QorColor color;
    float thickness = 1.0F; ///< of lines, in device-independent pixels
    float pointSize = 5.0F; ///< side of a point mark, in device-independent pixels
    bool dashed = false;

    bool operator==(const QorGraphicAttributeSet&) const = default;
};
