// Whole paths in packets against the same paths followed one by one: they take the same random
// numbers, so their pictures differ by rounding, and by the few paths that rounding sends
// elsewhere.
#include "tests/engine/core/TestScenes.h"

#include <gtest/gtest.h>

namespace qor::engine::testing {
namespace {

constexpr float roundingError = 2e-5F;

RenderOptions smallOptions() {
    RenderOptions options;
    options.width = 70;
    options.height = 51;
    options.samples.minimum = options.samples.maximum = 8;
    return options;
}

const Camera camera = lookFrom({2, -6, 2.5F}, 45.0F);

Material shining(const Color& color, float metallic, float roughness) {
    Material m;
    m.baseColor = color;
    m.metallic = metallic;
    m.roughness = roughness;
    return m;
}

PicturePtr stripes() {
    std::vector<std::uint8_t> texels;
    for (int i = 0; i < 32 * 32; ++i)
        for (const int value : {i % 32 / 4 % 2 == 0 ? 250 : 60, 180, i / 32 * 8, 255})
            texels.push_back(static_cast<std::uint8_t>(value));
    return Picture::create(32, 32, texels, PictureEncoding::srgb).value();
}

std::vector<Light> suns(float angle) {
    return {DirectionalLight{{0.3F, 0.5F, -1}, {2, 2, 2}, angle, true},
            DirectionalLight{{-0.6F, 0.1F, -1}, {1, 1, 1}, 0.0F, true}};
}

/// A ball, a box and a floor.
Scene threeThings(const Material& ball, const Material& box, const Material& floor) {
    Scene scene = sceneOf({sphere(1.0F, 48), testing::box({1.2F, -0.6F, -1.0F}, {2.4F, 0.6F, 0.4F}),
                           quad({-6, -6, -1}, {12, 0, 0}, {0, 12, 0})},
                          {ball, box, floor});
    scene.lights = suns(0.0F);
    return scene;
}

Scene mattScene() {
    return threeThings(diffuse({0.8F, 0.5F, 0.2F}), diffuse({0.3F, 0.6F, 0.9F}),
                       diffuse({0.6F, 0.6F, 0.6F}));
}

Scene shiningScene() {
    return threeThings(shining({0.9F, 0.7F, 0.3F}, 1.0F, 0.3F),
                       shining({0.2F, 0.3F, 0.8F}, 0, 0.2F),
                       shining({0.6F, 0.6F, 0.6F}, 0.0F, 0.6F));
}

void expectTheSame(Scene scene, const RenderOptions& options, float error, const Camera& from) {
    const Image packets = rendered(scene, from, options);
    goTheLongWay(scene);
    const Image single = rendered(scene, from, options);
    EXPECT_LT(relativeError(packets, single), error);
    const double mean = meanOf(single, 0, 0, options.width, options.height);
    EXPECT_GT(mean, 0.01);
    EXPECT_NEAR(meanOf(packets, 0, 0, options.width, options.height), mean, 1e-3 * mean);
    EXPECT_NEAR(meanOf(packets, 0, 0, options.width, options.height, 3),
                meanOf(single, 0, 0, options.width, options.height, 3), 1e-6);
}

TEST(Packets, ShowMattThingsAsSinglePathsDo) {
    for (const float sky : {0.0F, 0.4F})
        for (const int bounces : {0, 1, 5}) {
            SCOPED_TRACE(::testing::Message() << sky << ' ' << bounces);
            Scene scene = mattScene();
            scene.environment = constant(sky);
            scene.ambient = {0.05F, 0.05F, 0.05F};
            RenderOptions options = smallOptions();
            options.depth.diffuseBounces = bounces;
            expectTheSame(scene, options, roundingError, camera);
        }
}

TEST(Packets, ShowShiningThingsAsSinglePathsDo) {
    for (const float sky : {0.0F, 0.4F})
        for (const float angle : {0.0F, 0.05F})
            for (const int bounces : {0, 3}) {
                SCOPED_TRACE(::testing::Message() << sky << ' ' << angle << ' ' << bounces);
                Scene scene = shiningScene();
                scene.lights = suns(angle);
                scene.environment = constant(sky);
                scene.ambient = {0.05F, 0.05F, 0.05F};
                RenderOptions options = smallOptions();
                options.depth.diffuseBounces = bounces;
                options.depth.reflections = bounces;
                options.brightestIndirect = angle > 0.0F ? 1.5F : 0.0F;
                expectTheSame(scene, options, roundingError, camera);
            }
}

TEST(Packets, ShowMirrorsAndCausticsAsSinglePathsDo) {
    for (const bool caustics : {false, true}) {
        Scene scene = shiningScene();
        scene.materials[0] = mirror({0.9F, 0.9F, 0.9F});
        scene.lights = suns(0.1F);
        scene.environment = constant(0.4F);
        RenderOptions options = smallOptions();
        options.depth.diffuseBounces = 2;
        options.caustics = caustics;
        expectTheSame(scene, options, roundingError, camera);
    }
}

TEST(Packets, ShowTexturesAsSinglePathsDo) {
    Scene scene = shiningScene();
    for (Material& m : scene.materials) {
        m.baseTexture.picture = stripes();
        m.metallicRoughnessTexture.picture = stripes();
        m.normalTexture.picture = stripes();
        m.occlusionTexture.picture = stripes();
    }
    scene.ambient = {0.2F, 0.2F, 0.2F};
    scene.environment = constant(0.4F);
    RenderOptions options = smallOptions();
    options.depth.diffuseBounces = 2;
    expectTheSame(scene, options, roundingError, camera);
    for (Material& m : scene.materials)
        m.normalTexture.picture = nullptr;
    expectTheSame(scene, options, roundingError, camera);
}

TEST(Packets, GoOnAloneWhereTheyMeetWhatTheyDoNotShade) {
    // A coat, and something that shines by itself.
    Scene scene = shiningScene();
    scene.materials[0].clearcoat = 1.0F;
    scene.materials[0].clearcoatRoughness = 0.1F;
    scene.materials[1].emission = {2.0F, 1.0F, 0.5F};
    scene.environment = constant(0.2F);
    RenderOptions options = smallOptions();
    options.depth.diffuseBounces = 2;
    expectTheSame(scene, options, roundingError, camera);
}

TEST(Packets, SeeAllKindsOfLightsAsSinglePathsDo) {
    Scene scene = shiningScene();
    scene.lights = {PointLight{{-3, -3, 3}, {8, 8, 9}, 0.2F, true},
                    AreaLight{{-1, 2, 2}, {2, 0, 0}, {0, 0, 1}, {3, 3, 3}, true, true, true}};
    RenderOptions options = smallOptions();
    options.depth.diffuseBounces = 2;
    expectTheSame(scene, options, roundingError, camera);
    // More than each surface looks at.
    for (int i = 0; i < 20; ++i)
        scene.lights.emplace_back(DirectionalLight{
            {0.1F * static_cast<float>(i) - 1.0F, 0.3F, -1}, {0.2F, 0.2F, 0.2F}, 0.02F, i != 3});
    expectTheSame(scene, options, roundingError, camera);
}

TEST(Packets, FollowInstancesHoweverPlaced) {
    // Small turned, stretched and mirrored balls and boxes, so that one packet meets several.
    const MeshPtr ball = sphere(0.5F, 24);
    const MeshPtr cube = box({-0.4F, -0.4F, -0.4F}, {0.4F, 0.4F, 0.4F});
    std::vector<Instance> instances;
    for (int i = 0; i < 49; ++i) {
        const auto turn = static_cast<float>(i);
        const Vec3 place{static_cast<float>(i % 7) - 3.0F, static_cast<float>(i / 7) - 3.0F, 0.0F};
        instances.push_back(
            {i % 2 == 0 ? ball : cube,
             Transform::translation(place) * Transform::rotation({1.0F, 0.3F * turn, 0.5F}, turn) *
                 Transform::scaling({i % 3 == 0 ? -0.7F : 0.9F, 0.5F, 0.8F}),
             {static_cast<std::uint32_t>(i % 2)}});
    }
    Scene scene;
    scene.assembly = Assembly::create(std::move(instances)).value();
    scene.materials = {diffuse({0.8F, 0.5F, 0.2F}), shining({0.5F, 0.6F, 0.7F}, 1.0F, 0.4F)};
    scene.lights = suns(0.0F);
    scene.environment = constant(0.4F);
    RenderOptions options = smallOptions();
    options.depth.diffuseBounces = 2;
    expectTheSame(scene, options, roundingError, lookFrom({3, -9, 7}, 40.0F));
}

TEST(Packets, ShowInARegionWhatTheyShowInTheWholePicture) {
    // However samples share packets and packets go in pairs.
    for (const int samples : {1, 2, 3, 8})
        for (const Region& region : {Region{0, 0, 9, 9}, Region{5, 3, 3, 30}, Region{13, 7, 22, 5},
                                     Region{37, 11, 27, 37}}) {
            RenderOptions options = smallOptions();
            options.samples.minimum = options.samples.maximum = samples;
            options.depth.diffuseBounces = 1;
            const Image whole = rendered(mattScene(), camera, options);
            options.region = region;
            const Image part = rendered(mattScene(), camera, options);
            for (int row = region.y; row < region.y + region.height; ++row)
                for (int x = region.x; x < region.x + region.width; ++x)
                    for (int c = 0; c < 4; ++c)
                        ASSERT_EQ(part.pixel(x, options.height - 1 - row)[c],
                                  whole.pixel(x, options.height - 1 - row)[c])
                            << x << ' ' << row << " with " << samples;
        }
}

} // namespace
} // namespace qor::engine::testing
