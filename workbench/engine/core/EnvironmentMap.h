#pragma once

#include "workbench/engine/core/Sampling.h"
#include "workbench/engine/core/Scene.h"

#include <vector>

namespace qor::engine {

/// An environment as rays see it, with a distribution over the directions of its picture by
/// brightness.
class EnvironmentMap {
public:
    explicit EnvironmentMap(const Environment& environment);

    bool isBlack() const { return black_; }

    /// Whether it has a picture, which is then sampled like a light; a constant one is better found
    /// by the surface's own directions.
    bool isSampled() const { return !black_ && picture_ != nullptr && !smooth_; }

    /// Whether all directions show mean().
    bool isConstant() const { return black_ || picture_ == nullptr; }

    /// What surfaces scatter of it, 0..1.
    float diffuseShare() const { return black_ ? 0.0F : diffuseShare_; }

    /// Radiance from the unit direction \p d, blurred over about \p spread radians.
    Color radiance(const Vec3& d, float spread) const;
    /// A direction with density by brightness; returns that density, 0 if there is none.
    float sample(const Vec2& u, Vec3& direction) const;
    float pdf(const Vec3& d) const;

    /// Mean over the sphere.
    const Color& mean() const { return mean_; }

private:
    Vec2 coordinates(const Vec3& d) const;
    Color look(float u, float v, float footprint) const;
    void buildDistribution();
    void measureCells();

    Color factor_;
    PicturePtr picture_;
    Frame frame_;
    bool black_;
    bool smooth_;
    float diffuseShare_;
    Color mean_;
    int columns_ = 0;
    int rows_ = 0;
    std::vector<float> density_;    ///< of each cell, mean 1 over the unit square
    std::vector<float> columnSums_; ///< running sums in each row, columns_ + 1 each
    std::vector<float> rowSums_;    ///< running sums of rows, rows_ + 1
};

} // namespace qor::engine
