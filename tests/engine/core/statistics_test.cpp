// The mean of many short renders against one long one, pixel by pixel: whatever is sampled, and
// however samples are shared out, the expected picture is the same.
#include "tests/engine/core/TestScenes.h"
#include "tests/support/Sanitized.h"

#include <gtest/gtest.h>

#include <cmath>

namespace qor::engine::testing {
namespace {

constexpr int seeds = unlessSanitized(24, 2);
/// Enough for what lights a pixel by chance to happen in most seeds: the test takes errors to be
/// normally distributed.
constexpr int samples = unlessSanitized(128, 8);
/// The long render, in those of a seed.
constexpr int length = 16;
constexpr int width = 40;
constexpr int height = width * 3 / 4;

Texture checkers() {
    std::vector<std::uint8_t> texels;
    for (int i = 0; i < 64 * 64; ++i) {
        const bool light = (i % 64 / 8 + i / 64 / 8) % 2 == 0;
        for (const int value : {light ? 230 : 40, light ? 230 : 80, light ? 230 : 120, 255})
            texels.push_back(static_cast<std::uint8_t>(value));
    }
    Texture texture;
    texture.picture = Picture::create(64, 64, texels, PictureEncoding::srgb).value();
    texture.scale = {6, 6};
    return texture;
}

Material metal(float roughness) {
    Material m;
    m.baseColor = {0.9F, 0.7F, 0.3F};
    m.metallic = 1.0F;
    m.roughness = roughness;
    return m;
}

Material lacquer() {
    Material m;
    m.baseColor = {0.7F, 0.1F, 0.1F};
    m.clearcoat = 1.0F;
    m.clearcoatRoughness = 0.1F;
    return m;
}

Material frosted() {
    Material m = glass(1.5F);
    m.roughness = 0.4F;
    return m;
}

std::vector<Light> twoLights(float sunAngle) {
    return {DirectionalLight{{0.3F, 0.5F, -1}, {2, 2, 2}, sunAngle, true},
            PointLight{{-3, -3, 3}, {8, 8, 9}, 0.0F, true}};
}

struct Case {
    std::string name;
    Material ball;
    Material floor;
    std::vector<Light> lights;
    float sky;
    int bounces;
};

std::vector<Case> cases() {
    const Material grey = diffuse({0.6F, 0.6F, 0.6F});
    Material patterned = grey;
    patterned.baseTexture = checkers();
    const std::vector<Light> panel = {
        AreaLight{{-2, -2, 3}, {0, 2, 0}, {2, 0, 0}, {6, 6, 6}, false, true, true}};
    return {
        {"direct light", diffuse({0.7F, 0.5F, 0.2F}), grey, twoLights(0.05F), 0.0F, 0},
        {"one bounce", diffuse({0.7F, 0.5F, 0.2F}), grey, twoLights(0.05F), 0.2F, 1},
        {"three bounces", diffuse({0.7F, 0.5F, 0.2F}), grey, twoLights(0.05F), 0.2F, 3},
        {"metal", metal(0.3F), grey, twoLights(0.05F), 0.2F, 1},
        {"rough metal", metal(0.7F), grey, twoLights(0.05F), 0.2F, 2},
        {"glass", glass(1.5F), grey, twoLights(0.0F), 0.2F, 1},
        {"frosted glass", frosted(), grey, panel, 0.2F, 1},
        {"area light", metal(0.3F), grey, panel, 0.2F, 2},
        {"lacquer", lacquer(), grey, twoLights(0.05F), 0.2F, 1},
        {"textured", metal(0.3F), patterned, panel, 0.2F, 1},
    };
}

Scene sceneOf(const Case& c) {
    Material plastic;
    plastic.baseColor = {0.7F, 0.1F, 0.1F};
    plastic.roughness = 0.4F;
    Scene scene = testing::sceneOf({sphere(1.0F, 48), box({1.2F, -0.6F, -1.0F}, {2.4F, 0.6F, 0.4F}),
                                    quad({-6, -6, -1}, {12, 0, 0}, {0, 12, 0})},
                                   {c.ball, plastic, c.floor});
    scene.lights = c.lights;
    scene.environment = constant(c.sky);
    return scene;
}

/// Quantile of the normal distribution for \p p close to 0, by bisection of its integral.
double quantile(double p) {
    double low = -40.0;
    double high = 0.0;
    for (int i = 0; i < 200; ++i) {
        const double middle = 0.5 * (low + high);
        (0.5 * std::erfc(-middle / std::sqrt(2.0)) < p ? low : high) = middle;
    }
    return low;
}

/// Sums over seeds.
struct Moments {
    std::vector<double> sum;
    std::vector<double> squares;

    void add(const Image& image) {
        sum.resize(image.rgba.size());
        squares.resize(image.rgba.size());
        for (std::size_t i = 0; i < image.rgba.size(); ++i) {
            sum[i] += image.rgba[i];
            squares[i] += double{image.rgba[i]} * image.rgba[i];
        }
    }
};

/// Whether Welch's Z, kept below \p limit, finds a channel of a pixel the same.
bool isAlike(const Moments& short_, const Image& long_, std::size_t i, double limit) {
    const double mean = short_.sum[i] / seeds;
    const double variance = std::max(0.0, (short_.squares[i] - seeds * mean * mean) / (seeds - 1));
    const double rounding = 2e-5 * (mean + 0.01);
    const double deviation = std::sqrt(variance * (1.0 / seeds + 1.0 / length)) + rounding;
    return std::abs(mean - long_.rgba[i]) <= limit * deviation;
}

/// Share of pixels that are the same in every colour; significance 0.01 for the whole picture by
/// Sidak's correction.
double sharesAlike(const Moments& short_, const Image& long_) {
    const std::size_t pixels = long_.rgba.size() / 4;
    const double perTest = 1.0 - std::pow(0.99, 1.0 / static_cast<double>(3 * pixels));
    const double limit = -quantile(0.5 * perTest);
    std::size_t alike = 0;
    for (std::size_t i = 0; i < long_.rgba.size(); i += 4)
        alike += isAlike(short_, long_, i, limit) && isAlike(short_, long_, i + 1, limit) &&
                         isAlike(short_, long_, i + 2, limit)
                     ? 1
                     : 0;
    return static_cast<double>(alike) / static_cast<double>(pixels);
}

TEST(Statistics, ManySeedsAgreeWithOneLongRender) {
    RenderOptions options = plainOptions(width, samples);
    options.height = height;
    const Camera camera = lookFrom({2, -6, 2.5F}, 45.0F);
    for (const Case& c : cases()) {
        const Scene scene = sceneOf(c);
        options.depth.diffuseBounces = c.bounces;
        options.samples.minimum = options.samples.maximum = samples;
        Moments moments;
        for (int seed = 0; seed < seeds; ++seed) {
            options.seed = 100 + static_cast<std::uint32_t>(seed);
            moments.add(rendered(scene, camera, options));
        }
        options.seed = 1;
        options.samples.minimum = options.samples.maximum = samples * length;
        const Image longRender = rendered(scene, camera, options);
        if (!isSanitized) {
            EXPECT_GE(sharesAlike(moments, longRender), 0.9975) << c.name;
        }
    }
}

} // namespace
} // namespace qor::engine::testing
