#pragma once

#include <cstdint>

/// A render region in output pixels: x from the left, y from the bottom; width = x2 - x1, height =
/// y2 - y1.
struct QorRdgWindow {
    std::int32_t x1 = 0;
    std::int32_t y1 = 0;
    std::int32_t x2 = 0;
    std::int32_t y2 = 0;

    bool operator==(const QorRdgWindow&) const = default;

    [[nodiscard]] std::int32_t Width() const { return x2 - x1; }

    [[nodiscard]] std::int32_t Height() const { return y2 - y1; }
};
