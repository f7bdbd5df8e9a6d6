#include "workbench/engine/adapter/EightBit.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

namespace qor::adapter {

namespace {

constexpr std::uint8_t opaque = 255;
/// Floats are looked up by their upper half: sign, exponent and seven bits, so that one step is
/// less than one code anywhere. All below the first entry are black.
constexpr std::uint32_t firstBits = 0x39000000; // 2^-13
constexpr std::uint32_t oneBits = 0x3F800000;
constexpr unsigned dropped = 16;
constexpr std::size_t entries = (oneBits - firstBits) >> dropped;

unsigned exactCode(float linear) {
    return static_cast<unsigned>(engine::srgbFromLinear(linear) * 255.0F + 0.5F);
}

class Codes {
public:
    Codes() {
        for (unsigned code = 1; code <= opaque; ++code)
            from_[code] = smallestOf(code);
        // So that black and white lie in the middle of their codes as all others do.
        from_[0] = -from_[1];
        from_[opaque + 1U] = 2.0F - from_[opaque];
        for (std::size_t i = 0; i < entries; ++i)
            atLeast_[i] = static_cast<std::uint8_t>(exactCode(
                std::bit_cast<float>(firstBits + (static_cast<std::uint32_t>(i) << dropped))));
    }

    std::uint8_t of(float linear) const {
        const auto bits = std::bit_cast<std::uint32_t>(linear);
        if (!(linear >= std::bit_cast<float>(firstBits)))
            return 0;
        if (bits >= oneBits)
            return opaque;
        unsigned code = atLeast_[(bits - firstBits) >> dropped];
        while (linear >= from_[code + 1U])
            ++code;
        return static_cast<std::uint8_t>(code);
    }

    /// The code of \p linear or, if it lies between two, the one of them that \p threshold (0..1)
    /// chooses.
    std::uint8_t of(float linear, float threshold) const {
        const std::uint8_t nearest = of(linear);
        const float low = from_[nearest];
        const float high = from_[nearest + 1U];
        const float beyond = (linear - low) / (high - low) - 0.5F;
        if (beyond > 1.0F - threshold && nearest < opaque)
            return nearest + 1;
        return beyond < -threshold && nearest > 0 ? nearest - 1 : nearest;
    }

private:
    /// The smallest float that shows \p code. Floats above 0 are in the order of their bits.
    static float smallestOf(unsigned code) {
        std::uint32_t low = 0;
        std::uint32_t high = oneBits;
        while (high - low > 1) {
            const std::uint32_t middle = low + (high - low) / 2;
            (exactCode(std::bit_cast<float>(middle)) >= code ? high : low) = middle;
        }
        return std::bit_cast<float>(high);
    }

    std::array<std::uint8_t, entries> atLeast_{};
    std::array<float, 257> from_{};
};

const Codes& codes() {
    static const Codes table;
    return table;
}

/// What a pixel needs beyond a code to be rounded up: spread evenly over any few neighbours.
float thresholdAt(int x, int y) {
    constexpr float exactShare = 0.02F;
    const float slow = 0.06711056F * static_cast<float>(x) + 0.00583715F * static_cast<float>(y);
    const float fast = 52.9829189F * (slow - std::floor(slow));
    return std::clamp(fast - std::floor(fast), exactShare, 1.0F - exactShare);
}

} // namespace

std::uint8_t srgb8(float linear) {
    return codes().of(linear);
}

void encodeColor(const float* rgb, int x, int y, std::uint8_t* target) {
    const Codes& table = codes();
    const float threshold = thresholdAt(x, y);
    for (std::size_t channel = 0; channel < 3; ++channel)
        target[channel] = table.of(rgb[channel], threshold);
}

void encodeOpaque(const float* rgba, std::size_t count, int x, int y, std::uint8_t* target) {
    for (std::size_t i = 0; i < count; ++i, ++x, rgba += 4, target += 4) {
        encodeColor(rgba, x, y, target);
        target[3] = opaque;
    }
}

} // namespace qor::adapter
