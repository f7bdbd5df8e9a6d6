#pragma once

#include "workbench/engine/core/Lanes.h"

#include <vector>

namespace qor::engine {

/// Light gathered at one point of a surface.
struct GatherPoint {
    /// Walls near a point behind which it is not used.
    static constexpr std::size_t mostBarriers = 2;

    Vec3 position;
    Vec3 normal;
    Color irradiance;
    float reach = 0.0F;  ///< farthest that it is used at
    float least = 0.0F;  ///< neighbours do not bound the reach below this
    float steady = 0.0F; ///< distance within which light changes little, as far as it is known
    bool rough = false;  ///< light changes too quickly around it to be interpolated: to be traced
    /// Each points straight at a wall; what lies farther along it than one by its length is behind
    /// that wall. Zero where there is none.
    std::array<Vec3, mostBarriers> barriers{};

    /// Whether there is no wall.
    bool isOpen() const;
};

/// Points of gathered light, and the light between them by interpolation. Filled in rounds: points
/// are added, then index() makes them visible; while it is read nobody writes, so that the result
/// does not depend on threads. Method: irradiance caching, Ward et al. 1988, with the points found
/// beforehand, reaches that neighbours bound (Křivánek et al., "Making Radiance and Irradiance
/// Caching Practical", 2006), and a fit of all points in reach.
class GatherCache {
public:
    /// Points cover places up to this share of their reach, so that many reach every place.
    static constexpr float coveringShare = 0.6F;

    // Made and unmade inside the room, where alone lanes have their full alignment.
    GatherCache();
    ~GatherCache();
    GatherCache(const GatherCache&) = delete;
    GatherCache& operator=(const GatherCache&) = delete;
    GatherCache(GatherCache&&) = delete;
    GatherCache& operator=(GatherCache&&) = delete;

    /// Adds points; they count after the next index().
    void add(const std::vector<GatherPoint>& points);
    void index();

    std::size_t size() const { return points_.size(); }

    /// Share of the points around which light changes within less than their least reach.
    double crampedShare() const;

    std::size_t memory() const;

    /// Whether points are dense enough around a place.
    bool covers(const Vec3& position, const Vec3& normal) const;
    /// Irradiance at \p position under \p normal, without light that is sampled; false where points
    /// are too sparse, or light changes too quickly, to tell.
    bool irradiance(const Vec3& position, const Vec3& normal, Color& result) const;

private:
    /// Eight points as looking up needs them; where there are fewer, the others lie too far away.
    struct Group {
        Vec3x8 position;
        Vec3x8 normal;
        Vec3x8 irradiance;
        Float8 perReach;
        Int8 rough{};
        Int8 number{};    ///< in `points_`
        bool open = true; ///< there are no barriers
        std::array<Vec3x8, GatherPoint::mostBarriers> barriers;

        Group();
        void set(std::size_t lane, const GatherPoint& point, std::uint32_t itsNumber);
        /// Of points \p away from a place, in this direction, those with no wall between.
        Int8 reaching(const Vec3x8& away) const;
    };

    /// Cells of one size in a hash table; a point stands in every cell that it could be used in.
    struct Level {
        float cellSize = 0.0F;
        std::uint32_t mask = 0;            ///< table size - 1
        std::vector<std::uint32_t> starts; ///< of each table entry in `groups`, one more at the end
        std::vector<Group> groups;
    };

    static Level buildLevel(float cellSize,
                            const std::vector<GatherPoint>& points,
                            const std::vector<std::uint32_t>& members);
    void buildLevels();
    bool boundReaches();
    template <typename Visit>
    void visit(const Vec3& position, const Vec3& normal, Visit&& visit) const;

    std::vector<GatherPoint> points_;
    std::vector<Level> levels_;
};

} // namespace qor::engine
