#include "workbench/engine/core/GatherCache.h"

#include "workbench/engine/core/GatherFit.h"
#include "workbench/engine/core/Sampler.h"

#include <map>

namespace qor::engine {

namespace {

/// A point is used up to a turn of 30 degrees.
constexpr float perTurn = 2.73F;
/// Farthest that a point may lie above or below a place, as a share of its reach.
constexpr float levelShare = 0.05F;
/// Points together have to weigh as much as one at this share of its reach.
constexpr float leastSupport = 0.5F;
/// Reaches grow no faster than this with the distance from a place of shorter ones.
constexpr float reachSlope = 1.0F;

/// What a point counts at \p error, 0..1, of its reach.
template <typename Number>
constexpr Number weightAt(const Number& error) {
    const Number inside = 1.0F - error * error;
    return inside * inside;
}

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
    const float reach = point.reach;
    const Vec3 low = point.position - Vec3{reach, reach, reach};
    const Vec3 high = point.position + Vec3{reach, reach, reach};
    std::array<std::uint32_t, 27> entries{}; // the cube is no larger than two cells: three an axis
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
    buildLevels();
    if (boundReaches())
        buildLevels();
}

void GatherCache::buildLevels() {
    // A point's cells are once to twice as large as its reach, so that it stands in 27 at most.
    std::map<int, std::vector<std::uint32_t>> byScale;
    for (std::uint32_t i = 0; i < points_.size(); ++i)
        byScale[std::ilogb(points_[i].reach) + 1].push_back(i);
    levels_.clear();
    for (const auto& [scale, members] : byScale)
        levels_.push_back(buildLevel(std::ldexp(1.0F, scale), points_, members));
}

/// What one point has seen nearby, its neighbours may have missed. True if any reach has changed.
bool GatherCache::boundReaches() {
    std::vector<float> bounds(points_.size(), std::numeric_limits<float>::infinity());
    for (const GatherPoint& point : points_)
        visit(point.position, point.normal,
              [&](const Group& group, const Float8& error, const Int8& usable) {
                  const Float8 distance = length(group.position - Vec3x8(point.position));
                  for (unsigned bits = bitsOf(usable); bits != 0; bits &= bits - 1) {
                      const auto lane = static_cast<std::size_t>(std::countr_zero(bits));
                      float& bound = bounds[static_cast<std::size_t>(group.number[lane])];
                      bound = std::min(bound, point.steady + reachSlope * distance[lane]);
                  }
                  static_cast<void>(error);
              });
    bool changed = false;
    for (std::size_t i = 0; i < points_.size(); ++i) {
        GatherPoint& point = points_[i];
        point.steady = std::min(point.steady, bounds[i]);
        const float bound = std::max(bounds[i], point.least);
        if (point.rough || point.reach <= bound)
            continue;
        point.reach = bound;
        changed = true;
    }
    return changed;
}

bool GatherPoint::isOpen() const {
    return std::all_of(barriers.begin(), barriers.end(),
                       [](const Vec3& barrier) { return barrier == Vec3{}; });
}

GatherCache::GatherCache() = default;

GatherCache::~GatherCache() = default;

GatherCache::Group::Group() : perReach(eight(1.0F)) {
    constexpr float farAway = 1e18F;
    position.x = eight(farAway);
}

void GatherCache::Group::set(std::size_t lane, const GatherPoint& point, std::uint32_t itsNumber) {
    position.set(lane, point.position);
    normal.set(lane, point.normal);
    irradiance.set(lane, point.irradiance);
    perReach[lane] = 1.0F / point.reach;
    rough[lane] = point.rough ? -1 : 0;
    number[lane] = static_cast<std::int32_t>(itsNumber);
    open = open && point.isOpen();
    for (std::size_t i = 0; i < barriers.size(); ++i)
        barriers[i].set(lane, point.barriers[i]);
}

Int8 GatherCache::Group::reaching(const Vec3x8& away) const {
    Int8 result{-1, -1, -1, -1, -1, -1, -1, -1};
    for (const Vec3x8& barrier : barriers)
        result &= dot(away, barrier) < 1.0F;
    return result;
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
            level.groups[level.starts[entry] + at / packetWidth].set(at % packetWidth, points[m],
                                                                     m);
        });
    return level;
}

double GatherCache::crampedShare() const {
    const auto cramped =
        std::count_if(points_.begin(), points_.end(),
                      [](const GatherPoint& point) { return point.steady < point.least; });
    return points_.empty() ? 0.0
                           : static_cast<double>(cramped) / static_cast<double>(points_.size());
}

std::size_t GatherCache::memory() const {
    std::size_t bytes = points_.size() * sizeof(GatherPoint);
    for (const Level& level : levels_)
        bytes += level.starts.size() * sizeof(std::uint32_t) + level.groups.size() * sizeof(Group);
    return bytes;
}

/// Calls \p visit(group, errors, usable) for every eight points of which some reach a place.
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
            const Vec3x8 fromPoint = here - group.position;
            const Vec3x8 away = fromPoint * group.perReach;
            const Float8 square = dot(away, away);
            if (bitsOf(square < 1.0F) == 0)
                continue;
            const Float8 turn = greatest(1.0F - dot(up, group.normal), Float8{});
            const Float8 error = squareRoot(square) + perTurn * squareRoot(turn);
            // What lies in front of a place sees what the place does not, and the other way round.
            // On a round surface both lie at the same height, as their mean normal has it.
            Int8 usable =
                (error < 1.0F) & (magnitude(dot(away, up + group.normal)) < 2.0F * levelShare);
            if (bitsOf(usable) == 0)
                continue;
            if (!group.open)
                usable &= group.reaching(fromPoint);
            visit(group, error, usable);
        }
    }
}

bool GatherCache::covers(const Vec3& position, const Vec3& normal) const {
    bool covered = false;
    visit(position, normal, [&](const Group&, const Float8& error, const Int8& usable) {
        covered = covered || bitsOf(usable & (error < coveringShare)) != 0;
    });
    return covered;
}

bool GatherCache::irradiance(const Vec3& position, const Vec3& normal, Color& result) const {
    GatherFit fit(position, normal);
    Float8 roughness{};
    visit(position, normal, [&](const Group& group, const Float8& error, const Int8& usable) {
        const Float8 weight = usable ? weightAt(error) : Float8{};
        fit.add(group.position, group.irradiance, group.rough ? Float8{} : weight);
        roughness += group.rough ? weight : Float8{};
    });
    const float weight = fit.weight();
    if (weight < weightAt(leastSupport) || weight < sumOf(roughness))
        return false;
    result = fit.value();
    return true;
}

} // namespace qor::engine
