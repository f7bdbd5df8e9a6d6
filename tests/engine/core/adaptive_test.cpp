// Adaptive sampling: what it says about its own errors, and where it takes samples.
#include "tests/engine/core/TestScenes.h"
#include "tests/support/Sanitized.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace qor::engine::testing {
namespace {

constexpr int width = 96;
constexpr int height = 72;
constexpr auto targets = std::to_array({0.05F, 0.01F, 0.003F, 0.001F});

/// A ball, a box and a floor.
Scene still(const Material& ball) {
    Scene scene = sceneOf({sphere(1.0F, 48), box({1.2F, -0.6F, -1.0F}, {2.4F, 0.6F, 0.4F}),
                           quad({-6, -6, -1}, {12, 0, 0}, {0, 12, 0})},
                          {ball, diffuse({0.7F, 0.1F, 0.1F}), diffuse({0.6F, 0.6F, 0.6F})});
    return scene;
}

struct Case {
    std::string name;
    Scene scene;
    int bounces;
    double tolerance; ///< of the estimated error
};

std::vector<Case> cases() {
    std::vector<Case> all;
    const auto add = [&](const char* name, const Material& ball, float sunAngle, float sky,
                         int bounces, double tolerance = 0.15) {
        Scene scene = still(ball);
        scene.lights = {DirectionalLight{{0.3F, 0.5F, -1}, {2, 2, 2}, sunAngle, true}};
        scene.environment = constant(sky);
        all.push_back({name, std::move(scene), bounces, tolerance});
    };
    Material plastic;
    plastic.baseColor = {0.1F, 0.3F, 0.7F};
    plastic.roughness = 0.4F;
    Material metal = plastic;
    metal.metallic = 1.0F;
    add("hard shadows", diffuse({0.7F, 0.5F, 0.2F}), 0.0F, 0.0F, 0,
        0.25); // few blocks have any error
    add("sky", diffuse({0.7F, 0.5F, 0.2F}), 0.0F, 0.4F, 0);
    add("bounces", diffuse({0.7F, 0.5F, 0.2F}), 0.0F, 0.4F, 2);
    add("soft shadows", plastic, 0.2F, 0.0F, 0);
    add("metal", metal, 0.05F, 0.3F, 1);
    return all;
}

RenderOptions sized(const Case& c) {
    RenderOptions options = plainOptions(width, 1);
    options.height = height;
    options.depth.diffuseBounces = c.bounces;
    return options;
}

Camera camera() {
    return lookFrom({2, -6, 2.5F}, 45.0F);
}

double errorOf(const Image& image, const Image& reference) {
    double sum = 0.0;
    for (std::size_t i = 0; i < image.rgba.size(); ++i) {
        const double off = i % 4 == 3 ? 0.0 : double{image.rgba[i]} - double{reference.rgba[i]};
        sum += off * off / (double{reference.rgba[i]} * reference.rgba[i] + 0.01);
    }
    return sum / (static_cast<double>(image.rgba.size()) * 0.75);
}

TEST(NoiseTarget, IsTheErrorThatIsReachedAndReported) {
    constexpr int seeds = unlessSanitized(6, 1);
    for (const Case& c : cases()) {
        RenderOptions options = sized(c);
        options.samples.minimum = options.samples.maximum = unlessSanitized(2048, 8);
        options.seed = 1000;
        const Image reference = rendered(c.scene, camera(), options);
        for (const float target : targets) {
            if (isSanitized && target < targets[0])
                break;
            options.samples = {1, 4096, 0.0F, target};
            double actual = 0.0;
            double estimated = 0.0;
            for (options.seed = 0; options.seed < seeds; ++options.seed) {
                RenderStats stats;
                const auto image = renderImage(c.scene, camera(), options, &stats);
                ASSERT_TRUE(image);
                actual += errorOf(image.value(), reference) / seeds;
                estimated += stats.estimatedError / seeds;
            }
            EXPECT_LE(estimated, target) << c.name;
            if (!isSanitized) {
                EXPECT_NEAR(estimated, actual, c.tolerance * actual) << c.name << ' ' << target;
            }
        }
    }
}

TEST(NoiseTarget, IsReachedHoweverManySamplesComeFirst) {
    const Case c = cases().front();
    RenderOptions options = sized(c);
    options.samples.minimum = options.samples.maximum = unlessSanitized(2048, 64);
    options.seed = 1000;
    const Image reference = rendered(c.scene, camera(), options);
    for (const int first : {1, 3, 4, 16}) {
        options.samples = {first, 4096, 0.0F, targets[1]};
        options.seed = 5;
        RenderStats stats;
        const auto image = renderImage(c.scene, camera(), options, &stats);
        ASSERT_TRUE(image);
        EXPECT_GT(stats.estimatedError, 0.0) << first;
        EXPECT_LE(stats.estimatedError, targets[1]) << first;
        EXPECT_LE(errorOf(image.value(), reference), 1.5 * targets[1]) << first;
    }
}

double onScreen(float linear) {
    const double value = std::clamp(double{linear}, 0.0, 1.0);
    return value <= 0.0031308 ? 12.92 * value : 1.055 * std::pow(value, 1 / 2.4) - 0.055;
}

double brightness(const float* rgb) {
    return 0.2126 * onScreen(rgb[0]) + 0.7152 * onScreen(rgb[1]) + 0.0722 * onScreen(rgb[2]);
}

/// The largest root mean square of what pixels of a tile are off on the screen.
double worstGrain(const Image& image, const Image& reference) {
    constexpr int tile = 12;
    double worst = 0.0;
    for (int y = 0; y < height; y += tile)
        for (int x = 0; x < width; x += tile) {
            double sum = 0.0;
            for (int i = 0; i < tile * tile; ++i) {
                const int column = x + i % tile;
                const int row = y + i / tile;
                const double off =
                    brightness(image.pixel(column, row)) - brightness(reference.pixel(column, row));
                sum += off * off;
            }
            worst = std::max(worst, std::sqrt(sum / (tile * tile)));
        }
    return worst;
}

TEST(Contrast, IsTheGrainThatIsLeftAnywhereOnTheScreen) {
    for (const Case& c : cases()) {
        RenderOptions options = sized(c);
        options.samples.minimum = options.samples.maximum = unlessSanitized(1024, 4);
        options.seed = 1000;
        const Image reference = rendered(c.scene, camera(), options);
        for (const float contrast : {0.04F, 0.015F}) {
            options.samples = {1, unlessSanitized(1024, 16), contrast, {}};
            for (options.seed = 0; options.seed < unlessSanitized(3U, 1U); ++options.seed) {
                const Image image = rendered(c.scene, camera(), options);
                if (!isSanitized) {
                    EXPECT_LT(worstGrain(image, reference), 1.25 * contrast)
                        << c.name << ' ' << contrast << ' ' << options.seed;
                }
            }
        }
    }
}

TEST(Contrast, LeavesARegionMuchAsItIsInTheWholePicture) {
    for (const Case& c : cases()) {
        RenderOptions options = sized(c);
        options.samples = {4, 64, 0.015F, {}};
        const Image whole = rendered(c.scene, camera(), options);
        options.region = Region{20, 12, 40, 40};
        const Image part = rendered(c.scene, camera(), options);
        int others = 0;
        for (int y = height - 52; y < height - 12; ++y)
            for (int x = 20; x < 60; ++x) {
                const double off =
                    std::abs(brightness(whole.pixel(x, y)) - brightness(part.pixel(x, y)));
                EXPECT_LT(off, 0.06) << c.name << ' ' << x << ' ' << y;
                others += off > 0.0 ? 1 : 0;
            }
        // Only blocks along the rim have lost neighbours to be judged with.
        EXPECT_LT(others, 40 * 40 / 16) << c.name;
    }
}

} // namespace
} // namespace qor::engine::testing
