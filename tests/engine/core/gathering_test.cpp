// Gathered and interpolated light against traced light, place by place.
#include "tests/engine/core/TestScenes.h"
#include "tests/support/Sanitized.h"

#include <gtest/gtest.h>

#include <cmath>

namespace qor::engine::testing {
namespace {

/// Relative differences of the means over squares of three by three pixels.
struct Difference {
    double largest = 0.0;
    double meanSquare = 0.0;
};

Difference differenceOf(const Image& image, const Image& reference) {
    Difference result;
    int count = 0;
    for (int y = 0; y + 3 <= image.height; ++y)
        for (int x = 0; x + 3 <= image.width; ++x) {
            const double wanted = meanOf(reference, x, y, x + 3, y + 3);
            const double got = meanOf(image, x, y, x + 3, y + 3);
            const double off = (got - wanted) / (wanted + 0.02);
            result.largest = std::max(result.largest, std::abs(off));
            result.meanSquare += off * off;
            ++count;
        }
    result.meanSquare /= count;
    return result;
}

/// Under a sanitizer there are too few samples to be judged.
void expectSmall(const Difference& off, double largest, double rootMeanSquare) {
    if (isSanitized)
        return;
    EXPECT_LT(off.largest, largest);
    EXPECT_LT(std::sqrt(off.meanSquare), rootMeanSquare);
}

RenderOptions tracing(int size, int samples) {
    RenderOptions options = plainOptions(size, samples);
    options.depth = {4, 4, 10, 1};
    return options;
}

Image gathered(const Scene& scene, const Camera& camera, RenderOptions options, int samples) {
    options.samples.minimum = options.samples.maximum = samples;
    options.finalGather.on = true;
    options.finalGather.rays = 64;
    return rendered(scene, camera, options);
}

/// Two plates that meet, and a bar whose shadow crosses the seam.
Scene seam() {
    Scene scene = sceneOf(
        {quad({-2, -2, 0}, {4, 0, 0}, {0, 3, 0}), quad({-2, 1, 0}, {4, 0, 0}, {0, 0, 3}),
         box({-0.3F, -1.5F, 1.2F}, {0.0F, 1.0F, 1.4F})},
        {diffuse({0.8F, 0.8F, 0.8F}), diffuse({0.7F, 0.7F, 0.7F}), diffuse({0.6F, 0.6F, 0.6F})});
    scene.environment = constant(0.3F);
    scene.lights = {DirectionalLight{{0.3F, 0.5F, -1}, {2, 2, 2}, 0.0F, true}};
    return scene;
}

TEST(GatheredLight, IsCleanWhereTwoPlatesMeet) {
    const Camera view = lookFrom({2, -4, 3}, 40.0F);
    // As many samples, for outlines are to be the same.
    const RenderOptions options = tracing(64, unlessSanitized(512, 8));
    const Image traced = rendered(seam(), view, options);
    const Difference off =
        differenceOf(gathered(seam(), view, options, options.samples.maximum), traced);
    expectSmall(off, 0.08, 0.01);
}

/// Varnished parts in surroundings that are bright above and dark below.
Scene varnished() {
    Material varnish;
    varnish.baseColor = {0.05F, 0.05F, 0.05F};
    Scene scene =
        sceneOf({quad({-6, -6, -1}, {12, 0, 0}, {0, 12, 0}), sphere(1.0F, 48)}, {varnish, varnish});
    std::vector<float> sky;
    constexpr int rows = 32;
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < 2 * rows; ++x)
            for (int channel = 0; channel < 4; ++channel)
                sky.push_back(channel == 3 || y < rows / 2 ? 1.0F : 0.05F);
    scene.environment.radiance = {1, 1, 1};
    scene.environment.picture = Picture::create(2 * rows, rows, std::move(sky)).value();
    scene.environment.smooth = true;
    return scene;
}

TEST(GatheredLight, LeavesMirrorImagesOfSmoothSurroundingsAsTheyAre) {
    const Camera view = lookFrom({2, -6, 2.5F}, 30.0F);
    const RenderOptions options = tracing(24, unlessSanitized(256, 8));
    const Image traced = rendered(varnished(), view, options);
    const Image image = gathered(varnished(), view, options, options.samples.maximum);
    if (isSanitized)
        return; // too few samples for what comes next
    EXPECT_NEAR(meanOf(image, 0, 0, 24, 24) / meanOf(traced, 0, 0, 24, 24), 1.0, 0.005);
    EXPECT_LT(std::sqrt(differenceOf(image, traced).meanSquare), 0.02);
}

TEST(GatheredLight, StaysOutOfAClosedBox) {
    // The floor goes on under a box without a bottom: what lies in it gets no light at all.
    Scene scene = sceneOf({quad({-2, -2, 0}, {4, 0, 0}, {0, 4, 0}),
                           quad({-0.4F, -0.4F, 0}, {0, 0, 0.6F}, {0.8F, 0, 0}),
                           quad({-0.4F, 0.4F, 0}, {0.8F, 0, 0}, {0, 0, 0.6F}),
                           quad({-0.4F, -0.4F, 0}, {0, 0.8F, 0}, {0, 0, 0.6F}),
                           quad({0.4F, -0.4F, 0}, {0, 0, 0.6F}, {0, 0.8F, 0}),
                           quad({-0.4F, -0.4F, 0.6F}, {0.8F, 0, 0}, {0, 0.8F, 0})},
                          std::vector<Material>(6, diffuse({0.8F, 0.8F, 0.8F})));
    scene.environment = constant(1.0F);
    const Camera inside = lookFrom({0.3F, 0.3F, 0.5F}, 90.0F);
    const Image image = gathered(scene, inside, tracing(64, 4), 4);
    EXPECT_LT(meanOf(image, 0, 0, 64, 64), 0.002);
}

/// Two rooms with a common floor and rear wall, open towards the eye, and a wall between them. The
/// left one has a lamp, of which nothing can get into the right one.
Scene rooms(const MeshPtr& between) {
    Scene scene = sceneOf(
        {quad({-1, -1, 0}, {2, 0, 0}, {0, 2, 0}), quad({-1, 1, 0}, {2, 0, 0}, {0, 0, 1}), between},
        std::vector<Material>(3, diffuse({0.8F, 0.8F, 0.8F})));
    scene.lights = {PointLight{{-0.5F, 0, 0.6F}, {1, 1, 1}, 0.0F, true}};
    return scene;
}

/// The brightest pixel of those that get no light at all.
double brightestOfTheDark(const Image& image, const Image& traced) {
    double brightest = 0.0;
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x)
            if (traced.pixel(x, y)[0] == 0.0F)
                brightest = std::max(brightest, double{image.pixel(x, y)[0]});
    return brightest;
}

TEST(GatheredLight, StaysOnItsSideOfAThinWall) {
    const Camera view = lookFrom({0.4F, -3, 2.2F}, 45.0F);
    for (const float half : {0.0F, 0.004F}) {
        const Scene scene = rooms(half > 0.0F ? box({-half, -1, 0}, {half, 1, 1})
                                              : quad({0, -1, 0}, {0, 2, 0}, {0, 0, 1}));
        for (const int samples : {4, 16, 64}) {
            if (isSanitized && samples > 4)
                break;
            const RenderOptions options = tracing(96, samples);
            const Image traced = rendered(scene, view, options);
            const Image image = gathered(scene, view, options, samples);
            EXPECT_LT(brightestOfTheDark(image, traced), 1e-3) << half << ' ' << samples;
        }
    }
}

/// A slab on a floor, in light from behind it: at its foot lies a narrow shadow, bright floor
/// beyond.
Scene slab() {
    Scene scene = sceneOf({quad({-4, -4, 0}, {8, 0, 0}, {0, 8, 0}), box({-2, 0, 0}, {2, 1, 0.5F}),
                           box({-0.2F, 0.4F, 0.5F}, {0.2F, 0.8F, 1})},
                          std::vector<Material>(3, diffuse({0.8F, 0.8F, 0.8F})));
    scene.environment = constant(0.2F);
    scene.lights = {DirectionalLight{{-0.2F, -0.15F, -1}, {3, 3, 3}, 0.0F, true}};
    return scene;
}

TEST(GatheredLight, DarkensFeetOfWallsAsTracedLightDoes) {
    Camera view = lookFrom({-1, -5, 2.2F}, 22.0F);
    const RenderOptions options = tracing(96, unlessSanitized(256, 8));
    const Image traced = rendered(slab(), view, options);
    const Difference off =
        differenceOf(gathered(slab(), view, options, options.samples.maximum), traced);
    expectSmall(off, 0.15, 0.02);
}

TEST(GatheredLight, GoesAroundCornersAsTracedLightDoes) {
    // A tall block that is lit from one side stands on a floor in the dark.
    Scene scene = sceneOf({quad({-4, -4, 0}, {8, 0, 0}, {0, 8, 0}), box({-1, -0.5F, 0}, {0, 2, 2})},
                          std::vector<Material>(2, diffuse({0.8F, 0.8F, 0.8F})));
    scene.lights = {DirectionalLight{{-1, 0.1F, -1}, {3, 3, 3}, 0.0F, true}};
    const Camera view = lookFrom({1, -5, 2.5F}, 25.0F);
    const RenderOptions options = tracing(96, unlessSanitized(256, 8));
    const Image traced = rendered(scene, view, options);
    const Difference off =
        differenceOf(gathered(scene, view, options, options.samples.maximum), traced);
    expectSmall(off, 0.1, 0.01);
}

} // namespace
} // namespace qor::engine::testing
