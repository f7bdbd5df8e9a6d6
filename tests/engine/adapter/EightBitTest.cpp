#include "workbench/engine/adapter/EightBit.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

namespace {

std::uint8_t exact(float linear) {
    qor::engine::Image image{1, 1, {linear, 0.0F, 0.0F, 1.0F}};
    return qor::engine::toSrgb8(image).front();
}

TEST(EightBit, GivesTheCodesOfTheExactCurve) {
    // Every 101st float from far below one code to beyond white.
    for (std::uint32_t bits = std::bit_cast<std::uint32_t>(1e-6F);
         bits < std::bit_cast<std::uint32_t>(1.5F); bits += 101) {
        const float linear = std::bit_cast<float>(bits);
        ASSERT_EQ(qor::adapter::srgb8(linear), exact(linear)) << linear;
    }
}

TEST(EightBit, ShowsWhatIsNoColourAsBlackOrWhite) {
    EXPECT_EQ(qor::adapter::srgb8(std::nanf("")), 0);
    EXPECT_EQ(qor::adapter::srgb8(-1.0F), 0);
    EXPECT_EQ(qor::adapter::srgb8(std::numeric_limits<float>::infinity()), 255);
}

TEST(EightBit, IsOpaque) {
    const float pixel[] = {0.5F, 1.0F, 0.0F, 0.25F};
    std::uint8_t code[4] = {};
    qor::adapter::encodeOpaque(pixel, 1, code);
    EXPECT_EQ(code[0], exact(0.5F));
    EXPECT_EQ(code[1], 255);
    EXPECT_EQ(code[2], 0);
    EXPECT_EQ(code[3], 255);
}

} // namespace
