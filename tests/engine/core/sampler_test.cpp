// Random numbers: how well they are spread over the samples of a pixel and over its neighbours.
#include "workbench/engine/core/Sampler.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <vector>

namespace qor::engine {
namespace {

constexpr std::uint32_t seeds[] = {0, 1, 77};

Vec2 numbersOf(int x, int y, std::uint32_t seed, std::uint32_t index, std::uint32_t dimension) {
    Sampler sampler(pixelSeed(x, y, seed), index, dimension);
    return sampler.next2D();
}

/// Whether each of the \p points lies in a cell of its own, of columns × rows equal ones.
bool fillsCells(const std::vector<Vec2>& points, int columns, int rows) {
    std::set<int> cells;
    for (const Vec2& p : points)
        cells.insert(static_cast<int>(p.x * static_cast<float>(columns)) * rows +
                     static_cast<int>(p.y * static_cast<float>(rows)));
    return cells.size() == points.size();
}

TEST(Sampler, SpreadsTheSamplesOfAPixelOverAllElementaryIntervals) {
    for (const std::uint32_t seed : seeds)
        for (std::uint32_t dimension = 0; dimension < 6; ++dimension)
            for (const int count : {1, 2, 4, 16, 64}) {
                std::vector<Vec2> points;
                for (int i = 0; i < count; ++i)
                    points.push_back(
                        numbersOf(37, 101, seed, static_cast<std::uint32_t>(i), dimension));
                for (int columns = 1; columns <= count; columns *= 2)
                    EXPECT_TRUE(fillsCells(points, columns, count / columns))
                        << seed << ' ' << dimension << ' ' << count << ' ' << columns;
            }
}

TEST(Sampler, SpreadsTheNumbersOfNeighboursBetweenEachOtherForAnyNumberOfSamples) {
    for (const std::uint32_t seed : seeds)
        for (std::uint32_t dimension = 0; dimension < 6; ++dimension)
            for (const int side : {2, 4, 8})
                for (const int count : {1, 2, 8, 32}) {
                    std::vector<Vec2> points;
                    for (int pixel = 0; pixel < side * side; ++pixel)
                        for (int i = 0; i < count; ++i)
                            points.push_back(numbersOf(40 + pixel % side, 24 + pixel / side, seed,
                                                       static_cast<std::uint32_t>(i), dimension));
                    const auto all = static_cast<int>(points.size());
                    EXPECT_TRUE(fillsCells(points, all, 1)) << seed << ' ' << side << ' ' << count;
                    EXPECT_TRUE(fillsCells(points, 1, all)) << seed << ' ' << side << ' ' << count;
                }
}

TEST(Sampler, SpreadsOneSampleOfEachNeighbourOverAllElementaryIntervals) {
    constexpr int side = 8;
    for (const std::uint32_t seed : seeds)
        for (const std::uint32_t index : {0U, 1U}) {
            std::vector<Vec2> points;
            for (int pixel = 0; pixel < side * side; ++pixel)
                points.push_back(numbersOf(pixel % side, pixel / side, seed, index, 4));
            for (int columns = 1; columns <= side * side; columns *= 2)
                EXPECT_TRUE(fillsCells(points, columns, side * side / columns)) << columns;
        }
}

/// Mean of squared deviations of the mean over blocks of side × side pixels, of a smooth integrand
/// with a few samples a pixel.
double errorOfBlocks(int side, int samples) {
    constexpr int size = 128;
    double sum = 0.0;
    int blocks = 0;
    for (const std::uint32_t seed : seeds)
        for (int y = 0; y < size; y += side)
            for (int x = 0; x < size; x += side, ++blocks) {
                double mean = 0.0;
                for (int i = 0; i < side * side; ++i)
                    for (int s = 0; s < samples; ++s) {
                        const Vec2 u = numbersOf(x + i % side, y + i / side, seed,
                                                 static_cast<std::uint32_t>(s), 2);
                        mean += std::sin(3.0 * u.x) * u.y;
                    }
                const double exact = (1.0 - std::cos(3.0)) / 6.0;
                const double off = mean / (side * side * samples) - exact;
                sum += off * off;
            }
    return sum / blocks;
}

TEST(Sampler, LetsErrorsOfNeighboursCancelOut) {
    for (const int samples : {1, 4, 16}) {
        const double pixel = errorOfBlocks(1, samples);
        // Independent pixels would leave a quarter and a sixteenth.
        EXPECT_LT(errorOfBlocks(2, samples), 0.6 * pixel / 4) << samples;
        EXPECT_LT(errorOfBlocks(4, samples), 0.6 * pixel / 16) << samples;
    }
}

TEST(Sampler, PairsDimensionsAsIfByChance) {
    // What two dimensions have to do with each other over a whole tile, of what chance would leave.
    constexpr int side = 16;
    constexpr int samples = 64;
    constexpr int dimensions = 5;
    double squares = 0.0;
    int pairs = 0;
    for (std::uint32_t seed = 0; seed < 8; ++seed)
        for (std::uint32_t a = 0; a < dimensions; ++a)
            for (std::uint32_t b = 0; b < a; ++b, ++pairs) {
                int alike = 0;
                for (int pixel = 0; pixel < side * side; ++pixel)
                    for (std::uint32_t i = 0; i < samples; ++i) {
                        const Vec2 u = numbersOf(pixel % side, pixel / side, seed, i, a);
                        const Vec2 v = numbersOf(pixel % side, pixel / side, seed, i, b);
                        alike += (u.x < 0.5F) == (v.x < 0.5F) ? 1 : -1;
                    }
                squares += static_cast<double>(alike) * alike / (side * side * samples);
            }
    // Shuffles that are nested leave twice as much as chance does.
    EXPECT_LT(squares / pairs, 2.8);
}

TEST(Sampler, HasOtherNumbersForOtherSeedsTilesAndDimensions) {
    const Vec2 some = numbersOf(10, 20, 5, 3, 1);
    EXPECT_NE(some.x, numbersOf(10, 20, 6, 3, 1).x);
    EXPECT_NE(some.x, numbersOf(74, 20, 5, 3, 1).x);
    EXPECT_NE(some.x, numbersOf(10, 84, 5, 3, 1).x);
    EXPECT_NE(some.x, numbersOf(10, 20, 5, 3, 2).x);
}

} // namespace
} // namespace qor::engine
