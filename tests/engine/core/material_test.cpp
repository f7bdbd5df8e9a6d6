#include "tests/engine/core/TestScenes.h"
#include "tests/support/Sanitized.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>

namespace qor::engine::testing {
namespace {

const Color white{1.0F, 1.0F, 1.0F};

using Bytes = std::array<std::uint8_t, 4>;

PicturePtr pictureOf(int width,
                     const std::vector<Bytes>& texels,
                     PictureEncoding encoding = PictureEncoding::linear) {
    std::vector<std::uint8_t> bytes;
    for (const Bytes& texel : texels)
        bytes.insert(bytes.end(), texel.begin(), texel.end());
    const int height = static_cast<int>(texels.size()) / width;
    return Picture::create(width, height, std::move(bytes), encoding).value();
}

/// A picture of one colour.
Texture constantTexture(const Bytes& texel, PictureEncoding encoding = PictureEncoding::linear) {
    Texture texture;
    texture.picture = pictureOf(1, {texel}, encoding);
    return texture;
}

/// A square of side 2 in the plane z = 0, its picture upright when seen from +z, with free choice
/// of what else it has.
MeshPtr plate(const std::function<void(MeshData&)>& change = {}) {
    MeshData data;
    data.positions = {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}};
    data.textureCoordinates = {{0, 1}, {1, 1}, {1, 0}, {0, 0}};
    data.triangles = {{0, 1, 2}, {0, 2, 3}};
    if (change)
        change(data);
    return Mesh::create(std::move(data)).value();
}

Image fromAbove(const Scene& scene, int size = 16, int samples = 4) {
    return rendered(scene, lookFrom({0, 0, 4}, 20.0F), plainOptions(size, samples));
}

TEST(Wrap, EachModeGoesOnAsItSays) {
    const auto picture =
        pictureOf(4, {{0, 0, 0, 255}, {50, 0, 0, 255}, {100, 0, 0, 255}, {200, 0, 0, 255}});
    const auto at = [&](float u, TextureWrap wrap) {
        return 255.0F * picture->lookup(u, 0.5F, 0.0F, wrap, TextureWrap::clamp).color.x;
    };

    struct Row {
        float u;
        float repeat, mirrored, clamp;
    };

    for (const Row& row :
         {Row{0.375F, 50, 50, 50}, Row{1.375F, 50, 100, 200}, Row{2.375F, 50, 50, 200},
          Row{-0.125F, 200, 0, 0}, Row{-0.375F, 100, 50, 0}, Row{0.0F, 100, 0, 0},
          Row{1.0F, 100, 200, 200}}) {
        EXPECT_NEAR(at(row.u, TextureWrap::repeat), row.repeat, 0.01F) << row.u;
        EXPECT_NEAR(at(row.u, TextureWrap::mirrored), row.mirrored, 0.01F) << row.u;
        EXPECT_NEAR(at(row.u, TextureWrap::clamp), row.clamp, 0.01F) << row.u;
    }
}

TEST(MipLevels, KeepTheMeanOfPicturesOfAnySize) {
    for (const auto& [width, height] :
         {std::pair{7, 5}, std::pair{13, 1}, std::pair{1, 9}, std::pair{64, 3}}) {
        std::vector<float> texels;
        double mean = 0.0;
        for (int i = 0; i < width * height; ++i) {
            const float value = static_cast<float>(i * i % 17) / 16.0F;
            texels.insert(texels.end(), {value, value, value, 1.0F});
            mean += value;
        }
        mean /= width * height;
        const auto picture = Picture::create(width, height, texels).value();
        EXPECT_NEAR(picture->lookup(0.3F, 0.7F, 1.0F).color.x, mean, 1e-5) << width << height;
    }
}

TEST(MipLevels, FarAwayAFineGridIsEvenWithASingleSample) {
    std::vector<Bytes> texels;
    for (int i = 0; i < 256 * 256; ++i)
        texels.push_back((i + i / 256) % 2 == 0 ? Bytes{255, 255, 255, 255} : Bytes{0, 0, 0, 255});
    Material m = diffuse(white);
    m.baseTexture.picture = pictureOf(256, texels);
    m.baseTexture.scale = {16, 16};
    Scene scene = sceneOf({plate()}, {m});
    scene.ambient = white;
    const Image image = fromAbove(scene, 32, 1);
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 32; ++x)
            EXPECT_NEAR(image.pixel(x, y)[0], 0.5F, 0.02F);
}

TEST(Textures, AreMovedScaledAndTurnedCounterClockwise) {
    // Four quarters: red, green over blue, white.
    const auto quarters =
        pictureOf(2, {{255, 0, 0, 255}, {0, 255, 0, 255}, {0, 0, 255, 255}, {255, 255, 255, 255}});
    const auto topLeft = [&](const std::function<void(Texture&)>& change) {
        Material m = diffuse(white);
        m.baseTexture.picture = quarters;
        change(m.baseTexture);
        Scene scene = sceneOf({plate()}, {m});
        scene.ambient = white;
        const Image image = rendered(scene, lookFrom({0, 0, 4}, 28.0F), plainOptions(4, 1));
        const float* p = image.pixel(0, 0);
        return std::array{p[0] > 0.5F, p[1] > 0.5F, p[2] > 0.5F};
    };
    using Rgb = std::array<bool, 3>;
    const Rgb red{true, false, false};
    const Rgb green{false, true, false};
    const Rgb blue{false, false, true};
    EXPECT_EQ(topLeft([](Texture&) {}), red);
    EXPECT_EQ(topLeft([](Texture& t) { t.offset = {0.5F, 0}; }), green);
    EXPECT_EQ(topLeft([](Texture& t) { t.offset = {0, 0.5F}; }), blue);
    EXPECT_EQ(topLeft([](Texture& t) { t.scale = {-1, 1}; }), green);
    // A quarter turn carries the coordinates of the top left corner, (0, 0) at the origin, to where
    // v is negative for growing u: the first row comes to stand upright.
    EXPECT_EQ(topLeft([](Texture& t) {
                  t.rotationRad = 0.5F * pi;
                  t.offset = {0.0F, 1.0F};
              }),
              blue);
}

TEST(Textures, UseTheSecondCoordinatesIfToldTo) {
    const auto mesh = plate([](MeshData& data) {
        data.secondTextureCoordinates.assign(4, {0.75F, 0.5F});
    });
    Material m = diffuse(white);
    m.baseTexture.picture = pictureOf(2, {{0, 0, 0, 255}, {255, 0, 0, 255}});
    m.baseTexture.uvSet = 1;
    Scene scene = sceneOf({mesh}, {m});
    scene.ambient = white;
    EXPECT_NEAR(meanOf(fromAbove(scene), 0, 0, 16, 16), 1.0, 1e-5);
    m.baseTexture.uvSet = 0;
    scene.materials = {m};
    EXPECT_NEAR(meanOf(fromAbove(scene), 0, 0, 16, 16), 0.5, 1e-3);
}

TEST(CornerColors, MultiplyTheBaseColourAndTheOpacity) {
    const auto mesh = plate([](MeshData& data) {
        data.colors.assign(4, std::array<std::uint8_t, 4>{188, 0, 255, 51});
    });
    Scene scene = sceneOf({mesh}, {diffuse({0.5F, 0.5F, 0.5F})});
    scene.ambient = white;
    const Image image = fromAbove(scene, 16, 64);
    EXPECT_NEAR(meanOf(image, 0, 0, 16, 16, 3), 0.2, 0.01);
    EXPECT_NEAR(meanOf(image, 0, 0, 16, 16, 0) / meanOf(image, 0, 0, 16, 16, 2), 0.503, 0.005);
    EXPECT_NEAR(meanOf(image, 0, 0, 16, 16, 2), 0.1, 0.005);
    scene.materials[0].alphaMode = AlphaMode::opaque;
    EXPECT_EQ(meanOf(fromAbove(scene), 0, 0, 16, 16, 3), 1.0);
}

TEST(AlphaMask, CutsSharplyAtTheCutoff) {
    Material m = diffuse(white);
    m.alphaMode = AlphaMode::mask;
    for (const auto& [alpha, cutoff, there] :
         {std::tuple{100, 0.5F, 0.0}, std::tuple{150, 0.5F, 1.0}, std::tuple{100, 0.3F, 1.0}}) {
        m.baseTexture = constantTexture({255, 255, 255, static_cast<std::uint8_t>(alpha)});
        m.alphaCutoff = cutoff;
        const Scene scene = sceneOf({plate()}, {m});
        EXPECT_EQ(meanOf(fromAbove(scene), 0, 0, 16, 16, 3), there) << alpha << ' ' << cutoff;
    }
}

TEST(AlphaMask, LetsLightThroughItsHoles) {
    Material m = diffuse(white);
    m.alphaMode = AlphaMode::mask;
    m.baseTexture.picture = pictureOf(2, {{255, 255, 255, 0}, {255, 255, 255, 255}});
    m.baseTexture.wrapU = TextureWrap::clamp;
    Scene scene = sceneOf({plate(), quad({-3, -3, -1}, {6, 0, 0}, {0, 6, 0})},
                          {m, diffuse({0.5F, 0.5F, 0.5F})});
    scene.lights = {DirectionalLight{{0, 0, -1}, {pi, pi, pi}, 0, true}};
    Camera below = lookFrom({0, 0, -0.5F}, 20.0F);
    below.target = {0, 0, -1};
    below.up = {0, 1, 0};
    for (const auto& [x, wanted] : {std::pair{-0.6F, 0.5}, std::pair{0.6F, 0.0}}) {
        below.eye.x = below.target.x = x;
        EXPECT_NEAR(meanOf(rendered(scene, below, plainOptions(8, 1)), 0, 0, 8, 8), wanted, 1e-5);
    }
}

TEST(Blend, ShowsAndShadowsInProportion) {
    Material m = diffuse({0, 0, 0});
    m.opacity = 0.25F;
    Scene scene = sceneOf({plate(), quad({-3, -3, -1}, {6, 0, 0}, {0, 6, 0})}, {m, diffuse(white)});
    scene.lights = {DirectionalLight{{0, 0, -1}, {pi, pi, pi}, 0, true}};
    // Three quarters of the light come down, three quarters of it up again.
    EXPECT_NEAR(meanOf(fromAbove(scene, 16, 64), 2, 2, 14, 14), 0.5625, 0.005);
}

TEST(Attenuation, TakesItsColourAfterItsDistance) {
    Material m = glass(1.0F); // bends and reflects nothing
    m.attenuationDistance = 0.5F;
    m.attenuationColor = {0.5F, 0.25F, 1.0F};
    Scene scene = sceneOf({box({-1, -1, -0.5F}, {1, 1, 0.5F})}, {m});
    scene.background = {Background::Kind::gradient, white, white, nullptr, true};
    const Image image = rendered(scene, lookFrom({0, 0, 40}, 0.5F), plainOptions(4, 1));
    EXPECT_NEAR(image.pixel(2, 2)[0], 0.25F, 1e-3F);
    EXPECT_NEAR(image.pixel(2, 2)[1], 0.0625F, 1e-3F);
    EXPECT_NEAR(image.pixel(2, 2)[2], 1.0F, 1e-3F);
}

TEST(Attenuation, ColoursShadows) {
    Material m = glass(1.0F);
    m.attenuationDistance = 0.5F;
    m.attenuationColor = {0.5F, 0.25F, 1.0F};
    Scene scene = sceneOf({box({-9, -9, 2.5F}, {9, 9, 3.0F}), plate()}, {m, diffuse(white)});
    scene.lights = {DirectionalLight{{0, 0, -1}, {pi, pi, pi}, 0, true}};
    const Image image = rendered(scene, lookFrom({0, 0, 2}, 20.0F), plainOptions(4, 1));
    EXPECT_NEAR(image.pixel(2, 2)[0], 0.5F, 1e-3F);
    EXPECT_NEAR(image.pixel(2, 2)[1], 0.25F, 1e-3F);
}

TEST(Attenuation, LeavesThinWallsAlone) {
    Material m = glass(1.0F);
    m.thinWalled = true;
    m.attenuationDistance = 0.01F;
    m.attenuationColor = {0, 0, 0};
    Scene scene = sceneOf({plate()}, {m});
    scene.background = {Background::Kind::gradient, white, white, nullptr, true};
    EXPECT_NEAR(meanOf(fromAbove(scene), 4, 4, 12, 12), 1.0, 1e-4);
}

TEST(TransmissionTexture, SaysWhereGlassIs) {
    Material m = glass(1.0F);
    m.specular = 0.0F;
    m.thinWalled = true;
    m.baseColor = {0.5F, 0.5F, 0.5F};
    m.transmissionTexture.picture = pictureOf(2, {{0, 0, 0, 255}, {255, 0, 0, 255}});
    m.transmissionTexture.wrapU = TextureWrap::clamp;
    Scene scene = sceneOf({plate()}, {m});
    scene.background = {Background::Kind::gradient, white, white, nullptr, true};
    const Image image = rendered(scene, lookFrom({0, 0, 4}, 26.0F), plainOptions(16, 16));
    EXPECT_NEAR(meanOf(image, 0, 0, 2, 16), 0.0, 0.02); // unlit and opaque
    EXPECT_NEAR(meanOf(image, 14, 0, 16, 16), 0.5, 0.02);
}

TEST(Occlusion, DarkensAmbientLightOnly) {
    Material m = diffuse(white);
    m.occlusionTexture = constantTexture({102, 255, 255, 255});
    m.occlusionStrength = 0.5F;
    Scene scene = sceneOf({plate()}, {m});
    scene.ambient = white;
    EXPECT_NEAR(meanOf(fromAbove(scene), 0, 0, 16, 16), 0.7, 1e-4);
    scene.ambient = {};
    scene.lights = {DirectionalLight{{0, 0, -1}, {pi, pi, pi}, 0, true}};
    EXPECT_NEAR(meanOf(fromAbove(scene), 0, 0, 16, 16), 1.0, 1e-4);
}

/// Light along \p direction on a white plate whose normal map leans by \p x and \p y.
double litPlate(
    const MeshPtr& mesh, const Vec3& direction, float x, float y, const Vec3& eye = {0, 0, 4}) {
    Material m = diffuse(white);
    const auto coded = [](float v) {
        return static_cast<std::uint8_t>(std::lround(127.5F + 127.5F * v));
    };
    m.normalTexture =
        constantTexture({coded(x), coded(y), coded(std::sqrt(1.0F - x * x - y * y)), 255});
    Scene scene = sceneOf({mesh}, {m});
    scene.lights = {DirectionalLight{direction, {pi, pi, pi}, 0, true}};
    return meanOf(rendered(scene, lookFrom(eye, 20.0F), plainOptions(8, 1)), 0, 0, 8, 8);
}

TEST(NormalMap, LeansRightwardsForRedAndUpwardsForGreen) {
    constexpr float lean = 0.5F;
    const float c = std::sqrt(0.75F);
    EXPECT_NEAR(litPlate(plate(), {-lean, 0, -c}, lean, 0), 1.0, 0.01);
    EXPECT_NEAR(litPlate(plate(), {lean, 0, -c}, lean, 0), 0.5, 0.01);
    EXPECT_NEAR(litPlate(plate(), {0, -lean, -c}, 0, lean), 1.0, 0.01);
    EXPECT_NEAR(litPlate(plate(), {0, lean, -c}, 0, lean), 0.5, 0.01);
}

TEST(NormalMap, TurnsWithMirroredAndTurnedCoordinates) {
    constexpr float lean = 0.5F;
    const float c = std::sqrt(0.75F);
    const auto mirrored = plate([](MeshData& data) {
        for (Vec2& uv : data.textureCoordinates)
            uv.x = 1.0F - uv.x;
    });
    EXPECT_NEAR(litPlate(mirrored, {lean, 0, -c}, lean, 0), 1.0, 0.01);
    EXPECT_NEAR(litPlate(mirrored, {0, -lean, -c}, 0, lean), 1.0, 0.01);
    const auto turned = plate([](MeshData& data) { // the picture's right is up
        data.textureCoordinates = {{0, 0}, {0, 1}, {1, 1}, {1, 0}};
    });
    EXPECT_NEAR(litPlate(turned, {0, -lean, -c}, lean, 0), 1.0, 0.01);
    EXPECT_NEAR(litPlate(turned, {lean, 0, -c}, 0, lean), 1.0, 0.01);
}

TEST(NormalMap, DoesNotDependOnTheOrderOfCorners) {
    constexpr float lean = 0.5F;
    const float c = std::sqrt(0.75F);
    // Corners the other way round, with normals that say where outside is: seen from behind by
    // winding, and the bumps of behind are dents.
    const auto inverted = plate([](MeshData& data) { data.triangles = {{0, 2, 1}, {0, 3, 2}}; });
    EXPECT_NEAR(litPlate(inverted, {lean, 0, -c}, lean, 0), 1.0, 0.01);
    // Seen from behind: the same surface, its bumps now dents, lit from behind.
    EXPECT_NEAR(litPlate(plate(), {lean, 0, c}, lean, 0, {0, 0, -4}), 1.0, 0.01);
}

TEST(NormalMap, LeavesNoBlackPixelsAtGrazingAngles) {
    // Bumps as steep as maps hold, on a metal ball in an even sky.
    std::vector<Bytes> bumps;
    for (int i = 0; i < 32 * 32; ++i)
        bumps.push_back(Bytes{static_cast<std::uint8_t>(i * 37 % 2 == 0 ? 240 : 15),
                              static_cast<std::uint8_t>(i / 32 % 2 == 0 ? 230 : 25), 140, 255});
    for (const float metallic : {0.0F, 1.0F}) {
        Material m;
        m.baseColor = white;
        m.metallic = metallic;
        m.roughness = 0.3F;
        m.normalTexture.picture = pictureOf(32, bumps);
        m.clearcoat = 0.5F;
        m.clearcoatNormalTexture.picture = m.normalTexture.picture;
        Scene scene = sceneOf({sphere(1.0F, 96)}, {m});
        scene.environment = constant(1.0F);
        const Image image =
            rendered(scene, lookFrom({0, -4, 0}), plainOptions(96, unlessSanitized(64, 4)));
        double sum = 0.0;
        int inside = 0;
        for (int y = 0; y < 96; ++y)
            for (int x = 0; x < 96; ++x)
                if (image.pixel(x, y)[3] >= 1.0F) {
                    ASSERT_GT(image.pixel(x, y)[0], unlessSanitized(0.35F, 0.0F))
                        << x << ' ' << y << ' ' << metallic;
                    sum += image.pixel(x, y)[0];
                    ++inside;
                }
        EXPECT_LT(sum / inside, unlessSanitized(1.0, 1.1)) << metallic;
        EXPECT_GT(sum / inside, 0.8) << metallic;
    }
}

TEST(ClearcoatTextures, SayHowMuchAndHowRough) {
    Material m = diffuse({0, 0, 0});
    m.clearcoat = 1.0F;
    const auto shown = [&] {
        Scene scene = sceneOf({plate()}, {m});
        scene.environment = constant(1.0F);
        return meanOf(fromAbove(scene, 8, 64), 0, 0, 8, 8);
    };
    const double whole = shown();
    EXPECT_NEAR(whole, 0.04, 0.003);
    m.clearcoatTexture = constantTexture({128, 0, 0, 255});
    EXPECT_NEAR(shown(), 0.5 * whole, 0.003);
    m.clearcoatTexture = {};
    // A smooth coat mirrors a lamp into one place, a rough one spreads it.
    m.clearcoatRoughness = 1.0F;
    m.clearcoatRoughnessTexture = constantTexture({0, 0, 0, 255});
    Scene scene = sceneOf({plate()}, {m});
    scene.lights = {DirectionalLight{{0, 0, -1}, {1, 1, 1}, 0.0F, true}};
    EXPECT_EQ(meanOf(fromAbove(scene, 8, 16), 0, 0, 8, 8), 0.0);
    scene.materials[0].clearcoatRoughnessTexture = {};
    EXPECT_GT(meanOf(fromAbove(scene, 8, 16), 0, 0, 8, 8), 0.001);
}

TEST(ClearcoatNormal, BendsTheCoatAloneAndTheBaseMapLeavesTheCoatFlat) {
    Material m = diffuse({0, 0, 0});
    m.clearcoat = 1.0F;
    m.clearcoatRoughness = 0.3F;
    const Texture leaning = constantTexture({128 + 64, 128, 238, 255});
    const auto highlight = [&](const Vec3& direction) {
        Scene scene = sceneOf({plate()}, {m});
        scene.lights = {DirectionalLight{direction, {1, 1, 1}, 0.0F, true}};
        return meanOf(fromAbove(scene, 8, 4), 0, 0, 8, 8);
    };
    const Vec3 straight{0, 0, -1};
    const Vec3 slanted{-std::sin(pi / 3), 0, -std::cos(pi / 3)}; // by twice the lean of 30°
    const double peak = highlight(straight);
    m.normalTexture = leaning;
    EXPECT_NEAR(highlight(straight), peak, 0.01 * peak);
    m.clearcoatNormalTexture = leaning;
    EXPECT_LT(highlight(straight), 0.3 * peak);
    EXPECT_GT(highlight(slanted), 0.5 * peak);
}

TEST(WhiteFurnace, FrostedGlassBallVanishes) {
    for (const float roughness : {0.2F, 0.5F, 1.0F}) {
        Material m = glass(1.5F);
        m.roughness = roughness;
        Scene scene = sceneOf({sphere(1.0F, 96)}, {m});
        scene.environment = constant(1.0F);
        RenderOptions options = plainOptions(24, unlessSanitized(2048, 8));
        options.depth = {200, 200, 200, 0};
        const Image image = rendered(scene, lookFrom({0, -4, 0}), options);
        if (!isSanitized) {
            EXPECT_NEAR(meanOf(image, 8, 8, 16, 16), 1.0, 0.015) << roughness;
        }
    }
}

TEST(LightThroughGlass, IsCountedOnceWhateverTheSurfaceBelow) {
    // A pane that does nothing changes nothing: lights with an extent, seen by any kind of surface.
    Material pane = glass(1.0F);
    pane.thinWalled = true;
    Material shiny;
    shiny.metallic = 1.0F;
    shiny.roughness = 0.4F;
    Material frosted = glass(1.5F);
    frosted.roughness = 0.5F;
    Material satin;
    satin.roughness = 0.3F;
    for (const Material& below : {diffuse(white), shiny, satin, frosted}) {
        Scene bare = sceneOf({plate()}, {below});
        bare.lights = {AreaLight{{-2, 3, 1}, {4, 0, 0}, {0, 0, 3}, {3, 3, 3}, true, true, true}};
        Scene covered = bare;
        covered.assembly = assemblyOf({plate(), quad({-9, 2, -9}, {18, 0, 0}, {0, 0, 18})});
        covered.materials.push_back(pane);
        const Camera camera = lookFrom({0, -3, 3}, 15.0F);
        const RenderOptions options = plainOptions(16, unlessSanitized(1024, 8));
        const double a = meanOf(rendered(bare, camera, options), 0, 0, 16, 16);
        const double b = meanOf(rendered(covered, camera, options), 0, 0, 16, 16);
        EXPECT_GT(a, 0.01);
        EXPECT_NEAR(b, a, unlessSanitized(0.015, 0.5) * a);
    }
}

} // namespace
} // namespace qor::engine::testing
