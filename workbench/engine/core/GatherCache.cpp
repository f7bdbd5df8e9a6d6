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

/// Calls \p visit with the table entry of each cell that the cube around a point touches, each
/// entry once.
template <typename Visit>
void forCells(const GatherPoint& point, float cellSize, std::uint32_t mask, Visit&& visit) {
    const float reach = point.radius * farthestShare;
    const Vec3 low = point.position - Vec3{reach, reach, reach};
    const Vec3 high = point.position + Vec3{reach, reach, reach};
    std::array<std::uint32_t, 27> entries{}; // the cube is no larger than a cell: two an axis
    std::size_t count = 0;
    for (int x = cellOf(low.x, cellSize); x <= cellOf(high.x, cellSize); ++x)
        for (int y = cellOf(low.y, cellSize); y <= cellOf(high.y, cellSize); ++y)
            for (int z = cellOf(low.z, cellSize); z <= cellOf(high.z, cellSize); ++z) {
                const std::uint32_t entry = cellHash(x, y, z) & mask;
                const auto last = entries.begin() + static_cast<std::ptrdiff_t>(count);
                if (count == entries.size() || std::find(entries.begin(), last, entry) != last)
                    continue;
                entries[count++] = entry;
                visit(entry);
            }
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

GatherCache::GatherCache() = default;

GatherCache::~GatherCache() = default;

GatherCache::Group::Group() : perRadius(eight(1.0F)) {
    constexpr float farAway = 1e18F;
    position.x = eight(farAway);
}

void GatherCache::Group::set(std::size_t lane, const GatherPoint& point) {
    position.set(lane, point.position);
    normal.set(lane, point.normal);
    irradiance.set(lane, point.irradiance);
    perRadius[lane] = 1.0F / point.radius;
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
    std::vector<std::uint32_t> counts(size);
    for (const std::uint32_t m : members)
        forCells(points[m], cellSize, level.mask, [&](std::uint32_t entry) { ++counts[entry]; });
    level.starts.push_back(0);
    for (const std::uint32_t count : counts)
        level.starts.push_back(level.starts.back() + (count + packetWidth - 1) / packetWidth);
    level.groups.resize(level.starts.back());
    std::fill(counts.begin(), counts.end(), 0);
    for (const std::uint32_t m : members)
        forCells(points[m], cellSize, level.mask, [&](std::uint32_t entry) {
            const std::uint32_t at = counts[entry]++;
            level.groups[level.starts[entry] + at / packetWidth].set(at % packetWidth, points[m]);
        });
    return level;
}

std::size_t GatherCache::memory() const {
    std::size_t bytes = points_.size() * sizeof(GatherPoint);
    for (const Level& level : levels_)
        bytes += level.starts.size() * sizeof(std::uint32_t) + level.groups.size() * sizeof(Group);
    return bytes;
}

/// Calls \p visit(group, errors, usable) for every eight points that may be used, errors up to
/// twice the allowed one.
template <typename Visit>
void GatherCache::visit(const Vec3& position, const Vec3& normal, Visit&& visit) const {
    const Vec3x8 here(position);
    const Vec3x8 up(normal);
    for (const Level& level : levels_) {
        const std::uint32_t entry =
            cellHash(cellOf(position.x, level.cellSize), cellOf(position.y, level.cellSize),
                     cellOf(position.z, level.cellSize)) &
            level.mask;
        for (std::uint32_t i = level.starts[entry]; i < level.starts[entry + 1]; ++i) {
            const Group& group = level.groups[i];
            const Vec3x8 away = (here - group.position) * group.perRadius;
            const Float8 turn = greatest(1.0F - dot(up, group.normal), Float8{});
            const Float8 error = length(away) + squareRoot(turn);
            // What lies in front of a place sees what the place does not.
            const Int8 usable =
                (error < 2.0F * allowedError) & (dot(away, up + group.normal) > -0.1F);
            if (bitsOf(usable) != 0)
                visit(group, error, usable);
        }
    }
}

bool GatherCache::covers(const Vec3& position, const Vec3& normal) const {
    bool covered = false;
    visit(position, normal, [&](const Group&, const Float8& error, const Int8& usable) {
        covered = covered || bitsOf(usable & (error < allowedError)) != 0;
    });
    return covered;
}

bool GatherCache::irradiance(const Vec3& position, const Vec3& normal, Color& result) const {
    // Near points count most, but never so much alone that their borders could be seen.
    constexpr float trust = 8.0F;
    Vec3x8 sum;
    Float8 weights{};
    visit(position, normal, [&](const Group& group, const Float8& error, const Int8& usable) {
        const Float8 near = greatest(1.0F - error * (1.0F / allowedError), Float8{});
        const Float8 wide = 1.0F - error * (0.5F / allowedError);
        const Float8 weight = usable ? near * trust + wide * wide : Float8{};
        sum += group.irradiance * weight;
        weights += weight;
    });
    const float whole = sumOf(weights);
    if (!(whole > 0.0F))
        return false;
    result = Vec3{sumOf(sum.x), sumOf(sum.y), sumOf(sum.z)} / whole;
    return true;
}

} // namespace qor::engine
