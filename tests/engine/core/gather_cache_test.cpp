// The cache of gathered light against a search through all of its points.
#include "workbench/engine/core/GatherCache.h"
#include "workbench/engine/core/Sampler.h"
#include "workbench/engine/core/Sampling.h"

#include <gtest/gtest.h>

namespace qor::engine::testing {
namespace {

float number(std::uint32_t& seed) {
    return unitFloat(hash32(++seed));
}

Vec3 direction(std::uint32_t& seed) {
    const float u = number(seed);
    return uniformCone({u, number(seed)}, 2.0F);
}

Vec3 place(std::uint32_t& seed) {
    const float x = number(seed);
    const float y = number(seed);
    return {x * 4.0F - 2.0F, y * 4.0F - 2.0F, number(seed) * 4.0F - 2.0F};
}

constexpr float unbounded = std::numeric_limits<float>::infinity();

/// Points of very different reaches, all over a cube and around both sides of its middle.
std::vector<GatherPoint> somePoints(int count) {
    std::vector<GatherPoint> points;
    std::uint32_t seed = 1;
    for (int i = 0; i < count; ++i) {
        const float size = number(seed);
        points.push_back({place(seed),
                          direction(seed),
                          {number(seed), number(seed), number(seed)},
                          0.05F + 3.0F * size * size,
                          0.0F,
                          unbounded,
                          i % 9 == 5,
                          {}});
    }
    return points;
}

/// Points on the plane z = 0 whose light is \p light of their place.
template <typename Light>
std::vector<GatherPoint> plate(int count, float reach, const Light& light) {
    std::vector<GatherPoint> points;
    std::uint32_t seed = 5;
    for (int i = 0; i < count; ++i) {
        const Vec3 at = place(seed);
        const Vec3 flat{at.x, at.y, 0.0F};
        points.push_back({flat, {0, 0, 1}, light(flat), reach, 0.0F, unbounded, false, {}});
    }
    return points;
}

struct Expected {
    bool covered = false;
    double weights = 0.0;
    double rough = 0.0;
    Color mean;
};

Expected searched(const std::vector<GatherPoint>& points, const Vec3& at, const Vec3& normal) {
    Expected result;
    Color sum;
    for (const GatherPoint& point : points) {
        const Vec3 away = at - point.position;
        const float error = length(away) / point.reach +
                            2.73F * std::sqrt(std::max(0.0F, 1.0F - dot(normal, point.normal)));
        if (error >= 1.0F || std::abs(dot(away, normal + point.normal)) >= 0.1F * point.reach)
            continue;
        result.covered = result.covered || error < GatherCache::coveringShare;
        const float weight = (1.0F - error * error) * (1.0F - error * error);
        (point.rough ? result.rough : result.weights) += weight;
        sum += point.irradiance * (point.rough ? 0.0F : weight);
    }
    if (result.weights > 0.0)
        result.mean = sum / static_cast<float>(result.weights);
    return result;
}

/// Whether \p wanted is so near to what decides that rounding may.
bool isClose(const Expected& wanted, double least) {
    return std::abs(wanted.weights - least) < 1e-3 ||
           std::abs(wanted.weights - wanted.rough) < 1e-3;
}

TEST(GatherCache, FindsWhatASearchThroughAllPointsFinds) {
    constexpr double leastWeight = 0.75 * 0.75;
    for (const int count : {1, 7, 300, 5000}) {
        const std::vector<GatherPoint> points = somePoints(count);
        GatherCache cache;
        cache.add(points);
        cache.index();
        EXPECT_EQ(cache.size(), points.size());
        std::uint32_t seed = 77;
        int found = 0;
        for (int i = 0; i < 2000; ++i) {
            // Half of the places are near a point, so that sparse ones are found as well.
            const GatherPoint& near = points[static_cast<std::size_t>(i % count)];
            const bool anywhere = i % 2 == 0;
            const Vec3 at =
                anywhere ? place(seed) : near.position + direction(seed) * (0.2F * near.reach);
            // Not quite parallel: of the tiny difference of two equal normals only rounding is
            // left.
            const Vec3 normal =
                anywhere ? direction(seed) : normalize(near.normal + direction(seed) * 0.1F);
            const Expected wanted = searched(points, at, normal);
            Color got;
            const bool any = cache.irradiance(at, normal, got);
            EXPECT_EQ(cache.covers(at, normal), wanted.covered) << count << ' ' << i;
            if (isClose(wanted, leastWeight))
                continue;
            ASSERT_EQ(any, wanted.weights > leastWeight && wanted.weights > wanted.rough)
                << count << ' ' << i;
            found += any ? 1 : 0;
        }
        EXPECT_GT(found, 100) << count;
    }
}

TEST(GatherCache, KeepsALinearChange) {
    const auto light = [](const Vec3& at) {
        return Color{3.0F + at.x, 3.0F - 0.5F * at.y, 3.0F + 0.3F * at.x + 0.6F * at.y};
    };
    GatherCache cache;
    cache.add(plate(600, 0.8F, light));
    cache.index();
    std::uint32_t seed = 9;
    for (int i = 0; i < 500; ++i) {
        const Vec3 at = place(seed);
        const Vec3 flat{at.x, at.y, 0.0F};
        // At the border all points lie to one side.
        const bool inside = std::max(std::abs(at.x), std::abs(at.y)) < 1.2F;
        const float tolerance = inside ? 0.005F : 0.06F;
        Color got;
        ASSERT_TRUE(cache.irradiance(flat, {0, 0, 1}, got));
        EXPECT_NEAR(got.x, light(flat).x, tolerance);
        EXPECT_NEAR(got.y, light(flat).y, tolerance);
        EXPECT_NEAR(got.z, light(flat).z, tolerance);
    }
}

TEST(GatherCache, MakesNoLightUpBesideWhatWasGathered) {
    // Two points side by side that disagree, and a place beyond them.
    for (const float apart : {0.0F, 1e-6F, 1e-3F, 0.05F}) {
        GatherCache cache;
        cache.add({{{0, 0, 0}, {0, 0, 1}, {1, 1, 1}, 1.0F, 0.0F, unbounded, false},
                   {{apart, 0, 0}, {0, 0, 1}, {2, 2, 2}, 1.0F, 0.0F, unbounded, false}});
        cache.index();
        for (const float x : {-0.3F, 0.0F, 0.3F}) {
            Color got;
            ASSERT_TRUE(cache.irradiance({x, 0.1F, 0}, {0, 0, 1}, got));
            EXPECT_GT(got.x, 0.5F) << apart << ' ' << x;
            EXPECT_LT(got.x, 2.5F) << apart << ' ' << x;
        }
    }
}

TEST(GatherCache, AveragesNoiseOfManyPoints) {
    std::uint32_t seed = 3;
    GatherCache cache;
    cache.add(plate(600, 0.8F, [&](const Vec3&) {
        const float grey = 0.5F + number(seed);
        return Color{grey, grey, grey};
    }));
    cache.index();
    for (const float x : {-1.0F, -0.3F, 0.4F, 1.0F}) {
        Color got;
        ASSERT_TRUE(cache.irradiance({x, 0.2F, 0}, {0, 0, 1}, got));
        EXPECT_NEAR(got.x, 1.0F, 0.15F);
    }
}

TEST(GatherCache, BoundsReachesByWhatNeighboursHaveSeen) {
    const GatherPoint far{{0, 0, 0}, {0, 0, 1}, {1, 1, 1}, 2.0F, 0.1F, unbounded, false};
    const Vec3 beyond{0.9F, 0, 0};
    Color got;
    GatherCache alone;
    alone.add({far});
    alone.index();
    EXPECT_TRUE(alone.irradiance(beyond, {0, 0, 1}, got));
    // Light changes within a twentieth at a point half way.
    GatherCache bounded;
    bounded.add({far, {{0.5F, 0, 0}, {0, 0, 1}, {1, 1, 1}, 0.2F, 0.1F, 0.05F, false}});
    bounded.index();
    EXPECT_FALSE(bounded.irradiance(beyond, {0, 0, 1}, got));
    EXPECT_TRUE(bounded.irradiance({0.2F, 0, 0}, {0, 0, 1}, got));
}

TEST(GatherCache, UsesNoPointBehindItsWalls) {
    // Eight points in a corner, with walls at x = 0.5 and y = 0.25.
    const std::array<Vec3, 2> walls{Vec3{2, 0, 0}, Vec3{0, 4, 0}};
    GatherCache cache;
    cache.add(std::vector<GatherPoint>(
        8, {{0, 0, 0}, {0, 0, 1}, {1, 1, 1}, 2.0F, 0.0F, unbounded, false, walls}));
    cache.index();
    Color got;
    EXPECT_TRUE(cache.irradiance({0.49F, 0.24F, 0}, {0, 0, 1}, got));
    EXPECT_TRUE(cache.irradiance({-0.6F, -0.6F, 0}, {0, 0, 1}, got));
    for (const Vec3& behind : {Vec3{0.51F, 0, 0}, Vec3{0, 0.26F, 0}, Vec3{-0.6F, 0.26F, 0}}) {
        EXPECT_FALSE(cache.irradiance(behind, {0, 0, 1}, got));
        EXPECT_FALSE(cache.covers(behind, {0, 0, 1}));
    }
    // A point without walls is.
    cache.add({{{0, 0, 0}, {0, 0, 1}, {1, 1, 1}, 2.0F, 0.0F, unbounded, false, {}}});
    cache.index();
    EXPECT_TRUE(cache.irradiance({0.51F, 0, 0}, {0, 0, 1}, got));
}

TEST(GatherCache, LeavesRoughPlacesToTracing) {
    GatherCache cache;
    cache.add({{{0, 0, 0}, {0, 0, 1}, {1, 1, 1}, 1.0F, 0.0F, unbounded, false},
               {{0.5F, 0, 0}, {0, 0, 1}, {}, 0.5F, 0.5F, 0.0F, true}});
    cache.index();
    Color got;
    EXPECT_TRUE(cache.covers({0.5F, 0, 0}, {0, 0, 1}));
    EXPECT_FALSE(cache.irradiance({0.5F, 0, 0}, {0, 0, 1}, got));
    EXPECT_TRUE(cache.irradiance({-0.2F, 0, 0}, {0, 0, 1}, got));
    EXPECT_EQ(cache.crampedShare(), 0.5);
}

TEST(GatherCache, KeepsStepsApart) {
    // Light on a floor says nothing of a plate that lies on it.
    GatherCache cache;
    cache.add(plate(600, 0.8F, [](const Vec3&) { return Color{1, 1, 1}; }));
    cache.index();
    Color got;
    EXPECT_TRUE(cache.irradiance({0, 0, 0.01F}, {0, 0, 1}, got));
    EXPECT_FALSE(cache.irradiance({0, 0, 0.1F}, {0, 0, 1}, got));
    EXPECT_FALSE(cache.irradiance({0, 0, -0.1F}, {0, 0, 1}, got));
}

TEST(GatherCache, IsEmptyBeforeItIsIndexed) {
    GatherCache cache;
    cache.add(somePoints(10));
    Color light;
    EXPECT_FALSE(cache.covers({0, 0, 0}, {0, 0, 1}));
    EXPECT_FALSE(cache.irradiance({0, 0, 0}, {0, 0, 1}, light));
}

} // namespace
} // namespace qor::engine::testing
