#include "workbench/engine/adapter/EightBit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <numeric>
#include <vector>

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
    qor::adapter::encodeOpaque(pixel, 1, 3, 5, code);
    EXPECT_NEAR(code[0], exact(0.5F), 1);
    EXPECT_EQ(code[1], 255);
    EXPECT_EQ(code[2], 0);
    EXPECT_EQ(code[3], 255);
}

constexpr int side = 32;

/// Codes of a square of one value, whose corner lies at (40, 100).
std::vector<int> codesOf(float linear) {
    std::vector<int> codes;
    const float rgb[] = {linear, linear, linear};
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            std::uint8_t code[3] = {};
            qor::adapter::encodeColor(rgb, 40 + x, 100 + y, code);
            codes.push_back(code[0]);
        }
    return codes;
}

TEST(EightBit, KeepsWhatIsACodeEverywhere) {
    for (int code = 0; code <= 255; ++code) {
        const float linear = qor::engine::linearFromSrgb(static_cast<float>(code) / 255.0F);
        ASSERT_EQ(codesOf(linear), std::vector<int>(side * side, code));
    }
}

TEST(EightBit, ShowsInTheMeanWhatLiesBetweenTwoCodes) {
    for (float value = 0.3F; value < 255.0F; value += 3.7F) {
        const std::vector<int> codes = codesOf(qor::engine::linearFromSrgb(value / 255.0F));
        const double mean = std::accumulate(codes.begin(), codes.end(), 0.0) / (side * side);
        EXPECT_NEAR(mean, value, 0.05);
        EXPECT_GE(*std::min_element(codes.begin(), codes.end()), std::floor(value));
        EXPECT_LE(*std::max_element(codes.begin(), codes.end()), std::ceil(value));
    }
}

TEST(EightBit, ChoosesCodesByThePlaceInThePicture) {
    const float row[] = {0.1234F, 0.2345F, 0.3456F, 1.0F, 0.1234F, 0.2345F, 0.3456F, 1.0F};
    std::uint8_t both[8] = {};
    qor::adapter::encodeOpaque(row, 2, 7, 9, both);
    std::uint8_t second[4] = {};
    qor::adapter::encodeOpaque(row + 4, 1, 8, 9, second);
    EXPECT_TRUE(std::equal(second, second + 4, both + 4));
}

} // namespace
