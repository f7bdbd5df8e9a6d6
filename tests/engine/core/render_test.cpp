#include "tests/engine/core/TestScenes.h"
#include "tests/support/Sanitized.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <thread>

namespace qor::engine::testing {
namespace {

using Clock = std::chrono::steady_clock;

/// A ball, a box and a floor of different materials under two lights and a faint sky.
Scene stillLife() {
    Material metal;
    metal.baseColor = {0.9F, 0.7F, 0.3F};
    metal.metallic = 1.0F;
    metal.roughness = 0.3F;
    Material plastic;
    plastic.baseColor = {0.7F, 0.1F, 0.1F};
    plastic.roughness = 0.4F;
    Scene scene = sceneOf({sphere(1.0F, 48), box({1.2F, -0.6F, -1.0F}, {2.4F, 0.6F, 0.4F}),
                           quad({-6, -6, -1}, {12, 0, 0}, {0, 12, 0})},
                          {metal, plastic, diffuse({0.6F, 0.6F, 0.6F})});
    scene.lights = {DirectionalLight{{0.3F, 0.5F, -1}, {2, 2, 2}, 0.05F, true},
                    PointLight{{-3, -3, 3}, {8, 8, 9}, 0.0F, true}};
    scene.environment = constant(0.2F);
    return scene;
}

RenderOptions stillLifeOptions() {
    RenderOptions options;
    options.width = 70;
    options.height = 51;
    options.depth.diffuseBounces = 1;
    options.samples.minimum = options.samples.maximum = 8;
    return options;
}

const Camera camera = lookFrom({2, -6, 2.5F}, 45.0F);

bool samePixels(const Image& a, const Image& b) {
    return a.width == b.width && a.height == b.height && a.rgba == b.rgba;
}

TEST(Determinism, TheNumberOfThreadsDoesNotMatter) {
    for (const bool gather : {false, true})
        for (const bool adaptive : {false, true}) {
            RenderOptions options = stillLifeOptions();
            options.finalGather.on = gather;
            options.finalGather.rays = 64;
            options.samples.maximum = adaptive ? 32 : 8;
            options.threads = 1;
            const Image one = rendered(stillLife(), camera, options);
            options.threads = 4;
            EXPECT_TRUE(samePixels(one, rendered(stillLife(), camera, options)))
                << gather << adaptive;
        }
}

TEST(Determinism, ProgressOrNotGivesTheSameMeanAndAnotherSeedAnotherPicture) {
    RenderOptions options = stillLifeOptions();
    const Image a = rendered(stillLife(), camera, options);
    options.seed = 7;
    const Image b = rendered(stillLife(), camera, options);
    EXPECT_FALSE(samePixels(a, b));
    EXPECT_NEAR(meanOf(a, 0, 0, 70, 51), meanOf(b, 0, 0, 70, 51), 0.01);
}

TEST(Region, IsTheSameRectangleOfTheWholePicture) {
    RenderOptions options = stillLifeOptions();
    const Image whole = rendered(stillLife(), camera, options);
    options.region = Region{13, 7, 30, 21}; // y from the bottom
    const Image part = rendered(stillLife(), camera, options);
    for (int y = 0; y < 51; ++y)
        for (int x = 0; x < 70; ++x) {
            const bool inside = x >= 13 && x < 43 && y >= 51 - 28 && y < 51 - 7;
            for (int c = 0; c < 4; ++c)
                ASSERT_EQ(part.pixel(x, y)[c], inside ? whole.pixel(x, y)[c] : 0.0F)
                    << x << ' ' << y;
        }
}

TEST(Region, WithGatheringAndAdaptiveSamplingItIsCloseToTheWholePicture) {
    RenderOptions options = stillLifeOptions();
    options.finalGather.on = true;
    options.samples.maximum = 64;
    const Image whole = rendered(stillLife(), camera, options);
    options.region = Region{13, 7, 30, 21};
    const Image part = rendered(stillLife(), camera, options);
    EXPECT_NEAR(meanOf(part, 13, 23, 43, 44), meanOf(whole, 13, 23, 43, 44),
                0.02 * meanOf(whole, 13, 23, 43, 44));
}

TEST(Region, OutsideThePictureIsRefused) {
    RenderOptions options = stillLifeOptions();
    for (const Region region :
         {Region{70, 0, 5, 5}, Region{-9, 0, 9, 9}, Region{0, 51, 3, 3}, Region{3, 3, 0, 5}}) {
        options.region = region;
        const auto render = Render::start(stillLife(), camera, options);
        ASSERT_FALSE(render);
        EXPECT_EQ(render.error().code, ErrorCode::emptyRegion);
    }
    options.region = Region{60, 40, 1000, 1000};
    EXPECT_TRUE(Render::start(stillLife(), camera, options));
}

TEST(Abort, DetachesAtOnceAndPixelsStay) {
    RenderOptions options = stillLifeOptions();
    options.width = options.height = 800;
    options.samples.minimum = options.samples.maximum = 4096;
    std::atomic<int> calls{0};
    auto render = Render::start(stillLife(), camera, options, [&] { ++calls; }).value();
    while (!render.progress().hasPicture)
        std::this_thread::yield();
    const auto start = Clock::now();
    render.abort();
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    EXPECT_LT(seconds, 0.05);
    EXPECT_EQ(render.progress().state, RenderState::aborted);
    const int callsThen = calls;
    EXPECT_GT(callsThen, 0);
    Image first;
    render.snapshot(first);
    waitForAllRenders();
    Image second;
    render.snapshot(second);
    EXPECT_TRUE(samePixels(first, second));
    EXPECT_EQ(calls, callsThen);
    EXPECT_GT(meanOf(second, 0, 0, 800, 800), 0.01);
}

TEST(Abort, AtAnyMomentEndsEveryWorker) {
    RenderOptions options = stillLifeOptions();
    options.finalGather.on = true;
    options.samples.minimum = options.samples.maximum = 64;
    for (int i = 0; i < 30; ++i) {
        auto render = Render::start(stillLife(), camera, options).value();
        std::this_thread::sleep_for(std::chrono::microseconds(20 * i * i));
        if (i % 2 == 0)
            render.abort();
    }
    waitForAllRenders();
}

TEST(Abort, FromItsOwnListenerWorks) {
    RenderOptions options = stillLifeOptions();
    options.samples.minimum = options.samples.maximum = 1024;
    std::atomic<Render*> running{nullptr};
    std::atomic<bool> aborted{false};
    auto render = Render::start(stillLife(), camera, options, [&] {
                      if (Render* r = running; r != nullptr && !aborted.exchange(true))
                          r->abort();
                  }).value();
    running = &render;
    EXPECT_EQ(render.wait(), RenderState::aborted);
    waitForAllRenders();
}

TEST(Progress, GoesForwardsToTheEnd) {
    RenderOptions options = stillLifeOptions();
    options.samples.minimum = options.samples.maximum = 64;
    auto render = Render::start(stillLife(), camera, options).value();
    RenderProgress last;
    while (last.state == RenderState::preparing || last.state == RenderState::tracing) {
        const RenderProgress now = render.progress();
        EXPECT_GE(now.fraction, last.fraction);
        EXPECT_GE(now.revision, last.revision);
        last = now;
        Image image;
        render.snapshot(image);
        EXPECT_EQ(image.rgba.size(), 70U * 51U * 4U);
    }
    EXPECT_EQ(last.state, RenderState::finished);
    EXPECT_EQ(last.fraction, 1.0F);
    const RenderStats stats = render.stats();
    EXPECT_GE(stats.rays.camera, 70U * 51U * 64U);
    EXPECT_GT(stats.rays.shadow, 0U);
    EXPECT_GT(stats.rays.diffuse, 0U);
    EXPECT_GT(stats.passes, 1);
    EXPECT_LE(stats.filmBytes, (72U * 52U) * 40U);
}

TEST(TimeLimit, EndsWithAWholePicture) {
    RenderOptions options = stillLifeOptions();
    options.samples.minimum = options.samples.maximum = 1 << 20;
    options.timeLimitSeconds =
        1.0; // of a pass of milliseconds, so that a busy machine ends one, too
    RenderStats stats;
    const auto image = renderImage(stillLife(), camera, options, &stats);
    ASSERT_TRUE(image);
    EXPECT_GT(stats.passes, 0);
}

TEST(TimeLimit, HoldsWhileLightIsGatheredAndInTheFirstPass) {
    RenderOptions options = stillLifeOptions();
    options.progressive = false;
    options.samples.minimum = options.samples.maximum = 1 << 16;
    options.finalGather = {true, 1'000'000};
    options.timeLimitSeconds = 1e-6;
    RenderStats stats;
    const auto image = renderImage(stillLife(), camera, options, &stats);
    ASSERT_TRUE(image);
    EXPECT_EQ(stats.passes, 0);
    EXPECT_GT(stats.firstPictureSeconds, 0.0);
    for (int y = 0; y < image.value().height; ++y)
        for (int x = 0; x < image.value().width; ++x)
            ASSERT_GT(image.value().pixel(x, y)[0] + image.value().pixel(x, y)[3], 0.0F)
                << x << ", " << y;
}

TEST(Structures, AreBuiltOnceForAllRenders) {
    waitForAllRenders(); // the structures of aborted ones count until they have wound down
    const Scene scene = stillLife();
    ASSERT_TRUE(scene.assembly->prepare());
    RenderStats stats;
    ASSERT_TRUE(renderImage(scene, camera, stillLifeOptions(), &stats));
    const std::size_t bytes = stats.sceneBytes;
    ASSERT_TRUE(renderImage(scene, lookFrom({5, 5, 5}), stillLifeOptions(), &stats));
    EXPECT_EQ(stats.sceneBytes, bytes);
}

TEST(Adaptive, SpendsSamplesWhereThePictureIsNoisy) {
    RenderOptions options = stillLifeOptions();
    options.samples = {4, 256, 0.01F, {}};
    RenderStats stats;
    const auto image = renderImage(stillLife(), camera, options, &stats);
    ASSERT_TRUE(image);
    EXPECT_GT(stats.samples, 72U * 52U * 4U);
    EXPECT_LT(stats.samples, 72U * 52U * 200U);
}

TEST(Adaptive, MeetsANoiseTarget) {
    RenderOptions options = stillLifeOptions();
    options.samples.minimum = options.samples.maximum = unlessSanitized(2048, 8);
    const Image reference = rendered(stillLife(), camera, options);
    for (const float target : {0.01F, 0.001F}) {
        options.samples = {4, unlessSanitized(4096, 16), 0.0F, target};
        const Image image = rendered(stillLife(), camera, options);
        if (!isSanitized) {
            EXPECT_LT(relativeError(image, reference), 1.2 * target) << target;
        }
    }
}

TEST(SteepNormals, LeaveNoBlackFaces) {
    // Corner normals that lean far off their triangle, as on the flanks of coarse gear teeth.
    MeshData data;
    data.positions = {{-1, -1, 0}, {1, -1, 0}, {0, 1, 0}};
    for (const Vec3& lean : {Vec3{-5, 0, 1}, Vec3{-4, 1, 1}, Vec3{2, -3, 1}})
        data.normals.push_back(normalize(lean));
    data.triangles = {{0, 1, 2}};
    Scene scene = sceneOf({Mesh::create(std::move(data)).value()}, {diffuse({1, 1, 1})});
    scene.environment = constant(1.0F);
    for (const bool longWay : {false, true}) {
        if (longWay)
            goTheLongWay(scene);
        const Image image =
            rendered(scene, lookFrom({0.2F, -0.3F, 4}, 40.0F), plainOptions(64, 16));
        for (int i = 0; i < 64 * 64; ++i)
            if (image.pixel(i % 64, i / 64)[3] >= 1.0F) {
                ASSERT_GT(image.pixel(i % 64, i / 64)[0], 0.9F) << i << ' ' << longWay;
            }
    }
}

TEST(FinalGather, AgreesWithPathTracing) {
    // A corner of two walls and a floor: the colour of one bleeds onto the others.
    Scene scene =
        sceneOf({quad({-2, -2, 0}, {4, 0, 0}, {0, 4, 0}), quad({-2, 2, 0}, {4, 0, 0}, {0, 0, 3}),
                 quad({-2, -2, 0}, {0, 4, 0}, {0, 0, 3}), sphere(0.5F, 48)},
                {diffuse({0.7F, 0.7F, 0.7F}), diffuse({0.8F, 0.2F, 0.2F}),
                 diffuse({0.2F, 0.3F, 0.8F}), diffuse({0.8F, 0.8F, 0.8F})});
    scene.lights = {
        AreaLight{{0, -1, 3.5F}, {0, 1, 0}, {1, 0, 0}, {12, 12, 12}, false, true, true}};
    const Camera view = lookFrom({4, -5, 4}, 40.0F);
    RenderOptions options = plainOptions(64, unlessSanitized(256, 8));
    options.depth = {4, 4, 10, 3};
    const Image traced = rendered(scene, view, options);
    options.samples.minimum = options.samples.maximum = 16;
    options.finalGather.on = true;
    options.finalGather.rays = unlessSanitized(512, 64);
    RenderStats stats;
    const auto gathered = renderImage(scene, view, options, &stats);
    ASSERT_TRUE(gathered);
    EXPECT_GT(stats.gatherPoints, 50U);
    if (isSanitized)
        return; // too few samples for what comes next
    EXPECT_LT(stats.gatherPoints, 3000U);
    for (int channel = 0; channel < 3; ++channel)
        EXPECT_NEAR(meanOf(gathered.value(), 0, 0, 64, 64, channel) /
                        meanOf(traced, 0, 0, 64, 64, channel),
                    1.0, 0.01);
    EXPECT_LT(relativeError(gathered.value(), traced), 0.003);
}

} // namespace
} // namespace qor::engine::testing
