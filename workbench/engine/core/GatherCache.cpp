#include "workbench/engine/core/GatherCache.h"

#include "workbench/engine/core/Sampler.h"

#include <map>

namespace qor::engine {

namespace {

/// A point is used, if need be, as far as this share of its radius.
constexpr float farthestShare = 2.0F * GatherCache::allowedError;

std::uint32_t cellHash(int x, int y, int z) {
    return hashPair(hashPair(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y)),
                    static_cast<std::uint32_t>(z));
}

int cellOf(float coordinate, float cellSize) {
    // Beyond this all cells are one, which is slow but right.
    constexpr float limit = 1e9F;
    return static_cast<int>(std::floor(std::clamp(coordinate / cellSize, -limit, limit)));
}

/// Calls \p visit with the hash of each cell that the cube around a point touches, each hash once.
template <typename Visit>
void forCells(const GatherPoint& point, float cellSize, Visit&& visit) {
    const float reach = point.radius * farthestShare;
    const Vec3 low = point.position - Vec3{reach, reach, reach};
    const Vec3 high = point.position + Vec3{reach, reach, reach};
    std::vector<std::uint32_t> hashes;
    for (int x = cellOf(low.x, cellSize); x <= cellOf(high.x, cellSize); ++x)
        for (int y = cellOf(low.y, cellSize); y <= cellOf(high.y, cellSize); ++y)
            for (int z = cellOf(low.z, cellSize); z <= cellOf(high.z, cellSize); ++z)
                hashes.push_back(cellHash(x, y, z));
    std::sort(hashes.begin(), hashes.end());
    hashes.erase(std::unique(hashes.begin(), hashes.end()), hashes.end());
    for (const std::uint32_t hash : hashes)
        visit(hash);
}

} // namespace

void GatherCache::add(const std::vector<GatherPoint>& points) {
    points_.insert(points_.end(), points.begin(), points.end());
}

void GatherCache::index() {
    // A point's cells are twice to four times as large as its reach, so that it stands in eight at
    // most.
    std::map<int, std::vector<std::uint32_t>> byScale;
    for (std::uint32_t i = 0; i < points_.size(); ++i)
        byScale[std::ilogb(points_[i].radius * farthestShare) + 2].push_back(i);
    levels_.clear();
    for (const auto& [scale, members] : byScale)
        levels_.push_back(buildLevel(std::ldexp(1.0F, scale), points_, members));
}

GatherCache::Level GatherCache::buildLevel(float cellSize,
                                           const std::vector<GatherPoint>& points,
                                           const std::vector<std::uint32_t>& members) {
    Level level;
    level.cellSize = cellSize;
    std::uint32_t size = 16;
    while (size < members.size() * 4)
        size *= 2;
    level.mask = size - 1;
    level.starts.assign(size + 1, 0);
    for (const std::uint32_t m : members)
        forCells(points[m], cellSize,
                 [&](std::uint32_t hash) { ++level.starts[(hash & level.mask) + 1]; });
    for (std::size_t i = 1; i < level.starts.size(); ++i)
        level.starts[i] += level.starts[i - 1];
    level.members.resize(level.starts.back());
    std::vector<std::uint32_t> next(level.starts.begin(), level.starts.end() - 1);
    for (const std::uint32_t m : members)
        forCells(points[m], cellSize,
                 [&](std::uint32_t hash) { level.members[next[hash & level.mask]++] = m; });
    return level;
}

std::size_t GatherCache::memory() const {
    std::size_t bytes = points_.size() * sizeof(GatherPoint);
    for (const Level& level : levels_)
        bytes += (level.starts.size() + level.members.size()) * sizeof(std::uint32_t);
    return bytes;
}

/// Calls \p visit(point, error) for every point that may be used, errors up to twice the allowed
/// one.
template <typename Visit>
void GatherCache::visit(const Vec3& position, const Vec3& normal, Visit&& visit) const {
    for (const Level& level : levels_) {
        const std::uint32_t entry =
            cellHash(cellOf(position.x, level.cellSize), cellOf(position.y, level.cellSize),
                     cellOf(position.z, level.cellSize)) &
            level.mask;
        std::uint32_t last = ~0U;
        for (std::uint32_t i = level.starts[entry]; i < level.starts[entry + 1]; ++i) {
            const std::uint32_t member = level.members[i];
            // Two cells of a point may share a table entry; it then stands there twice in a row.
            if (member == last)
                continue;
            last = member;
            const GatherPoint& point = points_[member];
            const Vec3 away = position - point.position;
            const float turn = std::max(0.0F, 1.0F - dot(normal, point.normal));
            const float error = length(away) / point.radius + std::sqrt(turn);
            // What lies in front of a place sees what the place does not.
            if (error < 2.0F * allowedError &&
                dot(away, normal + point.normal) > -0.1F * point.radius)
                visit(point, error);
        }
    }
}

bool GatherCache::covers(const Vec3& position, const Vec3& normal) const {
    bool covered = false;
    visit(position, normal,
          [&](const GatherPoint&, float error) { covered = covered || error < allowedError; });
    return covered;
}

bool GatherCache::irradiance(const Vec3& position, const Vec3& normal, Color& result) const {
    Color sum;
    Color wideSum;
    float weights = 0.0F;
    float wideWeights = 0.0F;
    visit(position, normal, [&](const GatherPoint& point, float error) {
        const float weight = std::max(0.0F, 1.0F - error / allowedError);
        const float wide = 1.0F - error / (2.0F * allowedError);
        sum += point.irradiance * weight;
        weights += weight;
        wideSum += point.irradiance * (wide * wide);
        wideWeights += wide * wide;
    });
    if (wideWeights <= 0.0F)
        return false;
    // Near points count most, but never so much alone that their borders could be seen.
    constexpr float trust = 8.0F;
    result = (sum * trust + wideSum) / (weights * trust + wideWeights);
    return true;
}

} // namespace qor::engine
