#include "workbench/engine/adapter/EightBit.h"

#include <array>
#include <bit>

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
        from_[opaque + 1U] = 2.0F;
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

} // namespace

std::uint8_t srgb8(float linear) {
    return codes().of(linear);
}

void encodeOpaque(const float* rgba, std::size_t count, std::uint8_t* target) {
    const Codes& table = codes();
    for (std::size_t i = 0; i < count; ++i, rgba += 4, target += 4) {
        target[0] = table.of(rgba[0]);
        target[1] = table.of(rgba[1]);
        target[2] = table.of(rgba[2]);
        target[3] = opaque;
    }
}

} // namespace qor::adapter
