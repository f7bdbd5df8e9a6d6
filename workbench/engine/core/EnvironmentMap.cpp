#include "workbench/engine/core/EnvironmentMap.h"

namespace qor::engine {

namespace {

constexpr int maxColumns = 512;

/// Turns \p sums (n + 1 running sums) into the cell of \p u and moves \p u to its place in the
/// cell, 0..1.
int findCell(const float* sums, int n, float& u) {
    const float wanted = u * sums[n];
    const float* above = std::upper_bound(sums + 1, sums + n + 1, wanted);
    const int cell = std::min(static_cast<int>(above - sums) - 1, n - 1);
    const float width = sums[cell + 1] - sums[cell];
    u = width > 0.0F ? std::clamp((wanted - sums[cell]) / width, 0.0F, 0.999999F) : 0.5F;
    return cell;
}

} // namespace

EnvironmentMap::EnvironmentMap(const Environment& environment)
    : factor_(environment.radiance)
    , picture_(environment.picture)
    , frame_(normalize(environment.up))
    , black_(environment.isBlack())
    , smooth_(environment.smooth)
    , diffuseShare_(environment.diffuseShare)
    , mean_(environment.radiance) {
    const Frame base = frame_;
    const float c = std::cos(environment.rotationRad);
    const float s = std::sin(environment.rotationRad);
    frame_.x = base.x * c + base.y * s;
    frame_.y = base.y * c - base.x * s;
    if (isSampled())
        buildDistribution();
}

Vec2 EnvironmentMap::coordinates(const Vec3& d) const {
    const Vec3 local = frame_.toLocal(d);
    const float phi = std::atan2(local.y, local.x);
    const float theta = std::acos(std::clamp(local.z, -1.0F, 1.0F));
    return {0.5F - phi / (2.0F * pi), theta / pi};
}

Color EnvironmentMap::look(float u, float v, float footprint) const {
    return picture_->lookup(u, v, footprint, TextureWrap::repeat, TextureWrap::clamp).color;
}

Color EnvironmentMap::radiance(const Vec3& d, float spread) const {
    if (picture_ == nullptr || black_)
        return factor_;
    const Vec2 at = coordinates(d);
    return factor_ * look(at.x, at.y, spread / (2.0F * pi));
}

void EnvironmentMap::buildDistribution() {
    columns_ = std::min(maxColumns, picture_->width());
    rows_ = std::max(1, std::min(maxColumns / 2, picture_->height()));
    const auto cells = static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_);
    density_.resize(cells);
    columnSums_.assign(static_cast<std::size_t>(columns_ + 1) * static_cast<std::size_t>(rows_),
                       0.0F);
    rowSums_.assign(static_cast<std::size_t>(rows_) + 1, 0.0F);
    measureCells();
    for (int y = 0; y < rows_; ++y) {
        const float* density =
            density_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(columns_);
        float* sums = columnSums_.data() +
                      static_cast<std::size_t>(y) * static_cast<std::size_t>(columns_ + 1);
        for (int x = 0; x < columns_; ++x)
            sums[x + 1] = sums[x] + density[x];
        rowSums_[static_cast<std::size_t>(y) + 1] =
            rowSums_[static_cast<std::size_t>(y)] + sums[columns_];
    }
    const float total = rowSums_.back();
    for (float& d : density_)
        d = black_ ? 0.0F : d * static_cast<float>(cells) / total;
}

/// Brightness of each cell times its size, and a little everywhere: a cell whose middle is black
/// may have a bright corner.
void EnvironmentMap::measureCells() {
    constexpr float everywhere = 0.01F;
    mean_ = {};
    float weight = 0.0F;
    const float footprint = 1.0F / static_cast<float>(columns_);
    const auto sinTheta = [&](int y) {
        return std::sin(pi * (static_cast<float>(y) + 0.5F) / static_cast<float>(rows_));
    };
    std::size_t cell = 0;
    for (int y = 0; y < rows_; ++y)
        for (int x = 0; x < columns_; ++x, ++cell) {
            const float v = (static_cast<float>(y) + 0.5F) / static_cast<float>(rows_);
            const float u = (static_cast<float>(x) + 0.5F) * footprint;
            const Color c = factor_ * look(u, v, footprint);
            mean_ += c * sinTheta(y);
            weight += sinTheta(y);
            density_[cell] = luminance(c);
        }
    mean_ = mean_ / weight;
    black_ = !(luminance(mean_) > 0.0F);
    cell = 0;
    for (int y = 0; y < rows_; ++y)
        for (int x = 0; x < columns_; ++x, ++cell)
            density_[cell] = (density_[cell] + everywhere * luminance(mean_)) * sinTheta(y);
}

float EnvironmentMap::sample(const Vec2& u, Vec3& direction) const {
    Vec2 rest = u;
    const int y = findCell(rowSums_.data(), rows_, rest.y);
    const int x = findCell(columnSums_.data() +
                               static_cast<std::size_t>(y) * static_cast<std::size_t>(columns_ + 1),
                           columns_, rest.x);
    const float phi =
        (0.5F - (static_cast<float>(x) + rest.x) / static_cast<float>(columns_)) * 2.0F * pi;
    const float theta = (static_cast<float>(y) + rest.y) / static_cast<float>(rows_) * pi;
    const float sinTheta = std::sin(theta);
    direction =
        frame_.toWorld({sinTheta * std::cos(phi), sinTheta * std::sin(phi), std::cos(theta)});
    return sinTheta > 0.0F
               ? density_[static_cast<std::size_t>(y) * static_cast<std::size_t>(columns_) +
                          static_cast<std::size_t>(x)] /
                     (2.0F * pi * pi * sinTheta)
               : 0.0F;
}

float EnvironmentMap::pdf(const Vec3& d) const {
    const Vec2 at = coordinates(d);
    const int x =
        std::clamp(static_cast<int>(at.x * static_cast<float>(columns_)), 0, columns_ - 1);
    const int y = std::clamp(static_cast<int>(at.y * static_cast<float>(rows_)), 0, rows_ - 1);
    const float sinTheta = std::sin(at.y * pi);
    return sinTheta > 0.0F
               ? density_[static_cast<std::size_t>(y) * static_cast<std::size_t>(columns_) +
                          static_cast<std::size_t>(x)] /
                     (2.0F * pi * pi * sinTheta)
               : 0.0F;
}

} // namespace qor::engine
