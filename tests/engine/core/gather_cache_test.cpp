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

/// Points of very different radii, all over a cube and around both sides of its middle.
std::vector<GatherPoint> somePoints(int count) {
    std::vector<GatherPoint> points;
    std::uint32_t seed = 1;
    for (int i = 0; i < count; ++i) {
        const float size = number(seed);
        points.push_back({place(seed),
                          direction(seed),
                          {number(seed), number(seed), number(seed)},
                          0.05F + 3.0F * size * size});
    }
    return points;
}

struct Expected {
    bool covered = false;
    float weights = 0.0F;
    Color sum;
};

Expected searched(const std::vector<GatherPoint>& points, const Vec3& at, const Vec3& normal) {
    constexpr float allowed = GatherCache::allowedError;
    Expected result;
    for (const GatherPoint& point : points) {
        const Vec3 away = at - point.position;
        const float error = length(away) / point.radius +
                            std::sqrt(std::max(0.0F, 1.0F - dot(normal, point.normal)));
        if (error >= 2.0F * allowed || dot(away, normal + point.normal) <= -0.1F * point.radius)
            continue;
        result.covered = result.covered || error < allowed;
        const float wide = 1.0F - error / (2.0F * allowed);
        const float weight = 8.0F * std::max(0.0F, 1.0F - error / allowed) + wide * wide;
        result.weights += weight;
        result.sum += point.irradiance * weight;
    }
    return result;
}

TEST(GatherCache, FindsWhatASearchThroughAllPointsFinds) {
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
                anywhere ? place(seed) : near.position + direction(seed) * (0.2F * near.radius);
            // Not quite parallel: of the tiny difference of two equal normals only rounding is
            // left.
            const Vec3 normal =
                anywhere ? direction(seed) : normalize(near.normal + direction(seed) * 0.2F);
            const Expected wanted = searched(points, at, normal);
            Color got;
            const bool any = cache.irradiance(at, normal, got);
            EXPECT_EQ(cache.covers(at, normal), wanted.covered) << count << ' ' << i;
            ASSERT_EQ(any, wanted.weights > 0.0F) << count << ' ' << i;
            if (!any)
                continue;
            ++found;
            const Color mean = wanted.sum / wanted.weights;
            EXPECT_NEAR(got.x, mean.x, 5e-5F) << count << ' ' << i;
            EXPECT_NEAR(got.y, mean.y, 5e-5F) << count << ' ' << i;
            EXPECT_NEAR(got.z, mean.z, 5e-5F) << count << ' ' << i;
        }
        EXPECT_GT(found, 500) << count;
    }
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
