#include "workbench/engine/core/Image.h"

#include <algorithm>
#include <cmath>

namespace qor::engine {

float srgbFromLinear(float linear) {
    if (!(linear > 0.0F))
        return 0.0F;
    if (linear >= 1.0F)
        return 1.0F;
    return linear <= 0.0031308F ? linear * 12.92F : 1.055F * std::pow(linear, 1.0F / 2.4F) - 0.055F;
}

float linearFromSrgb(float encoded) {
    const float value = std::clamp(encoded, 0.0F, 1.0F);
    return value <= 0.04045F ? value / 12.92F : std::pow((value + 0.055F) / 1.055F, 2.4F);
}

std::vector<std::uint8_t> toSrgb8(const Image& image) {
    const auto byte = [](float unit) {
        return static_cast<std::uint8_t>(unit * 255.0F + 0.5F);
    };
    std::vector<std::uint8_t> result(image.rgba.size());
    for (std::size_t i = 0; i < result.size(); ++i) {
        const float value = image.rgba[i];
        const bool isAlpha = i % 4 == 3;
        result[i] =
            byte(isAlpha ? (value > 0.0F ? std::min(value, 1.0F) : 0.0F) : srgbFromLinear(value));
    }
    return result;
}

} // namespace qor::engine
