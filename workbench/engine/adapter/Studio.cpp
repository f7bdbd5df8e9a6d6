#include "workbench/engine/adapter/Studio.h"

#include "workbench/engine/core/Sampling.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qor::adapter {

namespace {

using engine::Vec3;

constexpr int columns = 256;
constexpr int rows = 128;

/// A rectangular soft box. Directions: x away from the photographer, y to the left, z up.
struct SoftBox {
    Vec3 towards;
    float halfWidth; ///< as a slope seen from the product
    float halfHeight;
    float radiance; ///< beyond the wall's
};

constexpr std::array<SoftBox, 3> softBoxes{{
    {{-0.45F, 0.75F, 0.80F}, 0.55F, 0.42F, 2.8F},
    {{-0.25F, -1.00F, 0.30F}, 0.16F, 0.75F, 1.6F},
    {{0.80F, 0.10F, 0.85F}, 0.75F, 0.22F, 0.8F},
}};

float smooth(float from, float to, float value) {
    const float t = std::clamp((value - from) / (to - from), 0.0F, 1.0F);
    return t * t * (3.0F - 2.0F * t);
}

/// 1 well inside \p half, 0 outside, soft in between.
float inside(float value, float half) {
    constexpr float edge = 0.08F;
    return 1.0F - smooth(half - edge, half + edge, std::abs(value));
}

float shineOf(const SoftBox& box, const Vec3& direction) {
    const Vec3 forward = normalize(box.towards);
    const float ahead = dot(direction, forward);
    if (ahead <= 0.05F)
        return 0.0F;
    const Vec3 right = normalize(cross(forward, Vec3{0.0F, 0.0F, 1.0F}));
    const Vec3 up = cross(right, forward);
    return box.radiance * inside(dot(direction, right) / ahead, box.halfWidth) *
           inside(dot(direction, up) / ahead, box.halfHeight);
}

float wall(float height) {
    constexpr float floor = 0.18F;
    constexpr float horizon = 0.45F;
    constexpr float ceiling = 0.62F;
    return height < 0.0F ? floor + (horizon - floor) * smooth(-0.45F, 0.02F, height)
                         : horizon + (ceiling - horizon) * smooth(0.0F, 1.0F, height);
}

float radianceAt(const Vec3& direction) {
    float sum = wall(direction.z);
    for (const SoftBox& box : softBoxes)
        sum += shineOf(box, direction);
    return sum;
}

/// The direction of a texel; the middle of the picture lies away from the photographer.
Vec3 directionOf(int column, int row) {
    const float phi = (0.5F - (static_cast<float>(column) + 0.5F) / columns) * 2.0F * engine::pi;
    const float theta = (static_cast<float>(row) + 0.5F) / rows * engine::pi;
    return {std::sin(theta) * std::cos(phi), std::sin(theta) * std::sin(phi), std::cos(theta)};
}

engine::PicturePtr makePicture() {
    std::vector<float> values;
    values.reserve(std::size_t{columns} * rows);
    double sum = 0.0;
    double weights = 0.0;
    for (int row = 0; row < rows; ++row) {
        const double weight = std::sin((row + 0.5) / rows * static_cast<double>(engine::pi));
        for (int column = 0; column < columns; ++column) {
            values.push_back(radianceAt(directionOf(column, row)));
            sum += weight * static_cast<double>(values.back());
            weights += weight;
        }
    }
    const auto toMeanOne = static_cast<float>(weights / sum);
    std::vector<float> rgba;
    rgba.reserve(values.size() * 4);
    for (const float value : values)
        rgba.insert(rgba.end(), {value * toMeanOne, value * toMeanOne, value * toMeanOne, 1.0F});
    auto picture = engine::Picture::create(columns, rows, std::move(rgba));
    return picture ? picture.value() : nullptr;
}

} // namespace

engine::Environment
studio(const engine::Color& radiance, const Vec3& vertical, const engine::Camera& camera) {
    static const engine::PicturePtr picture = makePicture();
    engine::Environment environment;
    environment.radiance = radiance;
    environment.picture = picture;
    environment.up = vertical;
    environment.smooth = true;
    const engine::Frame level(normalize(vertical));
    const Vec3 sight = camera.target - camera.eye;
    environment.rotationRad = std::atan2(dot(sight, level.y), dot(sight, level.x));
    return environment;
}

} // namespace qor::adapter
