#include "tests/engine/core/TestScenes.h"
#include "tests/support/Sanitized.h"

#include <gtest/gtest.h>

namespace qor::engine::testing {
namespace {

const Color white{1.0F, 1.0F, 1.0F};

/// A large floor through the origin, facing +z.
MeshPtr floorMesh(float half = 50.0F) {
    return quad({-half, -half, 0}, {2 * half, 0, 0}, {0, 2 * half, 0});
}

/// Worst deviation of the first channel from \p wanted, relative, over pixels that objects fill.
double worstInside(const Image& image, float wanted) {
    double worst = 0.0;
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x)
            if (image.pixel(x, y)[3] >= 1.0F)
                worst = std::max(worst, std::abs(image.pixel(x, y)[0] / double{wanted} - 1.0));
    return worst;
}

TEST(WhiteFurnace, DiffuseSphereShowsItsAlbedo) {
    for (const bool smooth : {true, false}) {
        Scene scene = sceneOf({sphere(1.0F, 128, smooth)}, {diffuse({0.8F, 0.8F, 0.8F})});
        scene.environment = constant(1.0F);
        const Image image = rendered(scene, lookFrom({0, -4, 0}), plainOptions(96, 16));
        EXPECT_LT(worstInside(image, 0.8F), 0.005) << "smooth " << smooth;
        EXPECT_GT(meanOf(image, 44, 44, 52, 52, 3), 0.99);
    }
}

TEST(WhiteFurnace, WhiteMaterialsVanish) {
    for (const float metallic : {0.0F, 1.0F})
        for (const float roughness : {0.2F, 0.6F, 1.0F}) {
            Material m;
            m.baseColor = white;
            m.metallic = metallic;
            m.roughness = roughness;
            Scene scene = sceneOf({sphere(1.0F, 96)}, {m});
            scene.environment = constant(1.0F);
            const Image image = rendered(scene, lookFrom({0, -4, 0}), plainOptions(32, 64));
            EXPECT_NEAR(meanOf(image, 12, 12, 20, 20), 1.0, 0.01) << metallic << ' ' << roughness;
        }
}

TEST(WhiteFurnace, GlassSphereVanishes) {
    Scene scene = sceneOf({sphere(1.0F, 128)}, {glass(1.5F)});
    scene.environment = constant(1.0F);
    RenderOptions options = plainOptions(32, 64);
    options.depth = {50, 50, 50, 0};
    const Image image = rendered(scene, lookFrom({0, -4, 0}), options);
    EXPECT_NEAR(meanOf(image, 10, 10, 22, 22), 1.0, 0.01);
}

TEST(DirectLight, DirectionalLightFollowsTheCosine) {
    for (const float degrees : {0.0F, 30.0F, 60.0F, 80.0F}) {
        const float angle = degrees * pi / 180.0F;
        Scene scene = sceneOf({floorMesh()}, {diffuse({0.6F, 0.3F, 0.1F})});
        scene.lights = {
            DirectionalLight{{std::sin(angle), 0, -std::cos(angle)}, {2, 2, 2}, 0, true}};
        const Image image = rendered(scene, lookFrom({0, 0, 10}), plainOptions(16, 4));
        for (int channel = 0; channel < 3; ++channel) {
            const double albedo = std::array{0.6, 0.3, 0.1}[static_cast<std::size_t>(channel)];
            EXPECT_NEAR(meanOf(image, 0, 0, 16, 16, channel), albedo / pi * 2.0 * std::cos(angle),
                        1e-5);
        }
    }
}

TEST(DirectLight, SoftDirectionalLightHasTheSameIrradiance) {
    Scene scene = sceneOf({floorMesh()}, {diffuse({0.5F, 0.5F, 0.5F})});
    scene.lights = {DirectionalLight{{0, 0, -1}, {2, 2, 2}, 0.2F, true}};
    const Image image = rendered(scene, lookFrom({0, 0, 10}), plainOptions(16, 64));
    EXPECT_NEAR(meanOf(image, 0, 0, 16, 16), 0.5 / pi * 2.0, 1e-3);
}

TEST(DirectLight, PointLightFallsWithTheSquare) {
    for (const float radius : {0.0F, 0.2F}) {
        Scene scene = sceneOf({floorMesh()}, {diffuse({0.5F, 0.5F, 0.5F})});
        scene.lights = {PointLight{{0, 0, 3}, {9, 9, 9}, radius, true}};
        Camera camera = lookFrom({0, 0, 10}, 1.0F);
        const Image image = rendered(scene, camera, plainOptions(16, 64));
        EXPECT_NEAR(meanOf(image, 0, 0, 16, 16), 0.5 / pi, 2e-3) << radius;
    }
}

TEST(DirectLight, SpotLightEndsAtItsOuterAngle) {
    Scene scene = sceneOf({floorMesh()}, {diffuse(white)});
    scene.lights = {SpotLight{{0, 0, 1}, {0, 0, -1}, {1, 1, 1}, 0.2F, 0.4F, 0.0F, true}};
    const Image image = rendered(scene, lookFrom({0, 0, 10}, 20.0F), plainOptions(101, 16));
    const double perPixel = 2.0 * 10.0 * std::tan(10.0 * pi / 180.0) / 101.0;
    const auto at = [&](double r) {
        return image.pixel(50 + static_cast<int>(r / perPixel), 50)[0];
    };
    EXPECT_NEAR(at(0.0), 1.0 / pi, 1e-3);
    // Between the cones with the square of the cosine's way, and with the cosine's cube for the
    // slant and the distance.
    const double angle = std::atan(static_cast<int>(std::tan(0.3) / perPixel) * perPixel);
    const double part = (std::cos(angle) - std::cos(0.4)) / (std::cos(0.2) - std::cos(0.4));
    EXPECT_NEAR(at(std::tan(0.3)), part * part * std::pow(std::cos(angle), 3) / pi, 2e-3);
    EXPECT_EQ(at(std::tan(0.4) + 2 * perPixel), 0.0F);
}

/// Irradiance under the middle of a parallel square of side 2a at height h (closed form of the form
/// factor).
double squareIrradiance(double a, double h, double radiance) {
    const double x = a / h;
    const double corner = x / std::sqrt(1 + x * x) * std::atan(x / std::sqrt(1 + x * x));
    return radiance * 4.0 * corner;
}

TEST(DirectLight, RectangleFollowsTheClosedForm) {
    Scene scene = sceneOf({floorMesh()}, {diffuse({0.5F, 0.5F, 0.5F})});
    scene.lights = {AreaLight{{-1, 1, 2}, {2, 0, 0}, {0, -2, 0}, {3, 3, 3}, false, true, true}};
    Camera camera = lookFrom({0.0F, -9.0F, 1.0F}, 0.02F);
    const Image image = rendered(scene, camera, plainOptions(16, 256));
    EXPECT_NEAR(meanOf(image, 0, 0, 16, 16), 0.5 / pi * squareIrradiance(1, 2, 3), 2e-3);
}

TEST(DirectLight, ShiningTrianglesLightLikeARectangle) {
    Material lamp = diffuse({0, 0, 0});
    lamp.emission = {3, 3, 3};
    Scene scene = sceneOf({floorMesh(), quad({-1, 1, 2}, {2, 0, 0}, {0, -2, 0})},
                          {diffuse({0.5F, 0.5F, 0.5F}), lamp});
    const Image image =
        rendered(scene, lookFrom({0.0F, -9.0F, 1.0F}, 0.02F), plainOptions(16, 256));
    EXPECT_NEAR(meanOf(image, 0, 0, 16, 16), 0.5 / pi * squareIrradiance(1, 2, 3), 2e-3);
}

TEST(DirectLight, GlossySurfacesGetTheSameFromLightsHoweverSampled) {
    // A rectangle behind which nothing is, once as a light, once as shining triangles, once only by
    // the surface's samples.
    Material shiny;
    shiny.metallic = 1.0F;
    shiny.roughness = 0.3F;
    Material lamp = diffuse({0, 0, 0});
    lamp.emission = {3, 3, 3};
    const Camera camera = lookFrom({0, -3, 3}, 10.0F);
    RenderOptions options = plainOptions(8, 1024);
    Scene asLight = sceneOf({floorMesh()}, {shiny});
    asLight.lights = {AreaLight{{-1, 3, 2}, {2, 0, 0}, {0, 0, 2}, {3, 3, 3}, true, true, true}};
    Scene asMesh = sceneOf({floorMesh(), quad({-1, 3, 2}, {2, 0, 0}, {0, 0, 2})}, {shiny, lamp});
    Scene unsampled = asMesh;
    unsampled.materials[1].emissionTexture.picture =
        Picture::create(1, 1, std::vector<std::uint8_t>{255, 255, 255, 255},
                        PictureEncoding::linear)
            .value();
    const double a = meanOf(rendered(asLight, camera, options), 0, 0, 8, 8);
    const double b = meanOf(rendered(asMesh, camera, options), 0, 0, 8, 8);
    const double c = meanOf(rendered(unsampled, camera, options), 0, 0, 8, 8);
    EXPECT_GT(a, 0.01);
    EXPECT_NEAR(b, a, 0.01 * a);
    EXPECT_NEAR(c, a, 0.02 * a);
}

/// How much of a disc of diameter 1 lies on one side of a line through it, \p at from its middle.
double shareOfDisc(double at) {
    const double x = std::clamp(2.0 * at, -1.0, 1.0);
    return 0.5 + (x * std::sqrt(1.0 - x * x) + std::asin(x)) / double{pi};
}

TEST(SoftShadow, PenumbraIsAsWideAsTheLightIsLarge) {
    // The edge of a plate at height h throws a penumbra of 2 h tan(angle / 2), in which as much of
    // the light's disc is seen as the edge leaves.
    constexpr float height = 2.0F;
    constexpr int columns = 128;
    for (const float angle : {0.01F, 0.1F, 0.5F}) {
        Scene scene = sceneOf({floorMesh(), quad({-20, -20, height}, {20, 0, 0}, {0, 40, 0})},
                              {diffuse(white), diffuse(white)});
        scene.lights = {DirectionalLight{{0, 0, -1}, {1, 1, 1}, angle, true}};
        const double width = 2.0 * double{height} * std::tan(double{angle} / 2.0);
        Camera camera;
        camera.eye = {0, 0, 1};
        camera.target = {0, 0, 0};
        camera.projection = Projection::parallel;
        camera.viewHeight = static_cast<float>(1.25 * width);
        const Image image =
            rendered(scene, camera, plainOptions(columns, unlessSanitized(1024, 4)));
        for (int x = 0; x < columns && !isSanitized; ++x) {
            const double at = ((x + 0.5) / columns - 0.5) * 1.25;
            EXPECT_NEAR(meanOf(image, x, 0, x + 1, columns) * double{pi}, shareOfDisc(at), 0.005)
                << angle << " column " << x;
        }
    }
}

TEST(Mirror, ShowsWhatItReflectsTimesItsColour) {
    Scene scene = sceneOf({floorMesh()}, {mirror({0.9F, 0.5F, 0.2F})});
    scene.environment = constant(2.0F);
    const Image image = rendered(scene, lookFrom({0, 0, 5}, 20.0F), plainOptions(8, 4));
    EXPECT_NEAR(meanOf(image, 0, 0, 8, 8, 0), 1.8, 0.01);
    EXPECT_NEAR(meanOf(image, 0, 0, 8, 8, 1), 1.0, 0.02);
}

TEST(Mirror, BringsNoMoreThanTheOptionsAllow) {
    Scene scene =
        sceneOf({quad({-5, -5, 0}, {10, 0, 0}, {0, 10, 0})}, {mirror({0.5F, 0.5F, 0.5F})});
    scene.environment = constant(10.0F);
    RenderOptions options = plainOptions(4, 4);
    const Camera above = lookFrom({0.1F, 0.0F, 8.0F}, 20.0F);
    EXPECT_NEAR(rendered(scene, above, options).pixel(2, 2)[0], 5.0F, 0.1F);
    options.brightestIndirect = 2.0F;
    EXPECT_NEAR(rendered(scene, above, options).pixel(2, 2)[0], 2.0F, 1e-4F);
}

TEST(Bounces, ClosedDiffuseBoxReachesTheGeometricSeries) {
    // Inside a closed box whose walls shine with 1 and reflect a, the light is 1 + a + a² + …
    Material wall = diffuse({0.5F, 0.5F, 0.5F});
    wall.emission = white;
    Scene scene = sceneOf({box({-1, -1, -1}, {1, 1, 1})}, {wall});
    for (const int bounces : {0, 1, 3}) {
        RenderOptions options = plainOptions(16, 256);
        options.depth = {0, 0, 10, bounces};
        const Image image = rendered(scene, lookFrom({0.1F, 0.2F, 0.3F}, 60.0F), options);
        double wanted = 1.0;
        for (int i = 0; i <= bounces; ++i)
            wanted += std::pow(0.5, i + 1);
        EXPECT_NEAR(meanOf(image, 0, 0, 16, 16), wanted, 0.01 * wanted) << bounces;
    }
}

TEST(Camera, ParallelProjectionStaysParallel) {
    // Two equal plates, one far behind: both have the same width.
    Scene scene =
        sceneOf({quad({-1, -2, 0}, {2, 0, 0}, {0, 2, 0}), quad({-1, 0, -30}, {2, 0, 0}, {0, 2, 0})},
                {diffuse(white), diffuse(white)});
    Camera camera = lookFrom({0, 0, 10});
    camera.projection = Projection::parallel;
    camera.viewHeight = 4.0F;
    const Image image = rendered(scene, camera, plainOptions(64, 16));
    for (const int y : {8, 24, 40, 56})
        for (int x = 0; x < 64; ++x)
            EXPECT_EQ(image.pixel(x, y)[3], x >= 16 && x < 48 ? 1.0F : 0.0F) << x << ", " << y;
}

TEST(Camera, TheTopRowIsUp) {
    Scene scene = sceneOf({quad({-5, 0, 0}, {10, 0, 0}, {0, 5, 0})}, {diffuse(white)});
    const Image image = rendered(scene, lookFrom({0, 0, 5}, 60.0F), plainOptions(16, 4));
    EXPECT_EQ(image.pixel(8, 0)[3], 1.0F);
    EXPECT_EQ(image.pixel(8, 15)[3], 0.0F);
}

TEST(Ground, IsLitEvenlyAndShadowsFallOnIt) {
    Scene scene = sceneOf({sphere(1.0F, 64)}, {diffuse({0.5F, 0.5F, 0.5F})});
    scene.lights = {DirectionalLight{{0.5F, 0.7F, -1}, {3, 3, 3}, 0.0F, true}};
    scene.ground = {true, {0, 0, -1}, {0, 0, 1}, 400.0F, {0.6F, 0.6F, 0.6F}, 0.0F, 0.0F};
    const Image image = rendered(scene, lookFrom({0, -12, 5}), plainOptions(64, 4));
    const double wanted = 0.6 / pi * 3.0 / std::sqrt(1.0 + 0.25 + 0.49);
    int lit = 0;
    int dark = 0;
    for (int x = 0; x < 64; ++x)
        for (int y = 56; y < 64; ++y)
            lit += std::abs(image.pixel(x, y)[0] - wanted) < 1e-4 ? 1 : 0;
    for (int x = 0; x < 64; ++x)
        for (int y = 0; y < 64; ++y)
            dark += image.pixel(x, y)[0] == 0.0F && image.pixel(x, y)[3] == 1.0F ? 1 : 0;
    EXPECT_EQ(lit, 64 * 8);
    EXPECT_GT(dark, 20);
}

TEST(Ground, SeeThroughOneShowsShadowsOnTheBackground) {
    Scene scene = sceneOf({sphere(1.0F, 64)}, {diffuse({0.5F, 0.5F, 0.5F})});
    scene.lights = {DirectionalLight{{0, 0, -1}, {3, 3, 3}, 0.0F, true}};
    scene.background = {
        Background::Kind::gradient, {0.25F, 0.25F, 0.25F}, {0.25F, 0.25F, 0.25F}, nullptr, true};
    scene.ground = {true, {0, 0, -3}, {0, 0, 1}, 40.0F, {0.6F, 0.6F, 0.6F}, 1.0F, 0.0F};
    const Image image = rendered(scene, lookFrom({0, -8, 4}), plainOptions(64, 4));
    int shadow = 0;
    int untouched = 0;
    for (int i = 48 * 64; i < 64 * 64; ++i) { // below the ball
        const float* pixel = image.pixel(i % 64, i / 64);
        shadow += pixel[3] == 1.0F && pixel[0] == 0.0F ? 1 : 0;
        untouched += pixel[3] < 1e-6F && std::abs(pixel[0] - 0.25F) < 1e-6F ? 1 : 0;
    }
    EXPECT_GT(shadow, 50);
    EXPECT_GT(untouched, 500);
}

TEST(Ground, MirrorsObjectsOnly) {
    Scene scene = sceneOf({box({-1, -1, 0.5F}, {1, 1, 2})}, {diffuse({0, 0, 0})});
    scene.materials[0].emission = {1, 0, 0};
    scene.background = {Background::Kind::gradient, {0, 0, 0.5F}, {0, 0, 0.5F}, nullptr, true};
    scene.ground = {true, {0, 0, 0}, {0, 0, 1}, 40.0F, {0, 0, 0}, 0.0F, 0.5F};
    const Image image = rendered(scene, lookFrom({0, -8, 2}), plainOptions(65, 1));
    EXPECT_NEAR(image.pixel(32, 44)[0], 0.5F, 1e-5F);
    EXPECT_EQ(image.pixel(2, 60)[0], 0.0F);
    EXPECT_EQ(image.pixel(2, 60)[2], 0.0F);
}

TEST(Background, PictureIsStretchedOrCoversKeepingItsShape) {
    // Four columns: red, green, green, blue; the picture is twice as wide as high, the render
    // square.
    std::vector<std::uint8_t> texels;
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 4; ++x)
            for (const bool channel : {x == 0, x == 1 || x == 2, x == 3, true})
                texels.push_back(channel ? 255 : 0);
    Scene scene;
    scene.background.kind = Background::Kind::picture;
    scene.background.picture = Picture::create(4, 2, texels, PictureEncoding::srgb).value();
    const Camera camera = lookFrom({0, 0, 5});
    const Image stretched = rendered(scene, camera, plainOptions(64, 1));
    EXPECT_NEAR(stretched.pixel(2, 32)[0], 1.0F, 1e-3F);
    EXPECT_NEAR(stretched.pixel(61, 32)[2], 1.0F, 1e-3F);
    scene.background.stretch = false;
    const Image covering = rendered(scene, camera, plainOptions(64, 1));
    EXPECT_NEAR(covering.pixel(32, 32)[1], 1.0F, 1e-3F);
    EXPECT_LT(covering.pixel(2, 32)[0], 0.6F);
}

TEST(Ambient, AddsConstantLightWithoutShadows) {
    Scene scene = sceneOf({floorMesh()}, {diffuse({0.5F, 0.5F, 0.5F})});
    scene.ambient = {0.4F, 0.4F, 0.4F};
    RenderOptions options = plainOptions(8, 1);
    EXPECT_NEAR(meanOf(rendered(scene, lookFrom({0, 0, 5}), options), 0, 0, 8, 8), 0.2, 1e-6);
    options.ambientFactor = 0.0F;
    EXPECT_EQ(meanOf(rendered(scene, lookFrom({0, 0, 5}), options), 0, 0, 8, 8), 0.0);
}

} // namespace
} // namespace qor::engine::testing
