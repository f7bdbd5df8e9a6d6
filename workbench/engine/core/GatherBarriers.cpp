#include "workbench/engine/core/GatherBarriers.h"

namespace qor::engine {

namespace {

/// Looks go up a little, by this share of their length: lower steps are no walls.
constexpr float rise = 0.02F;
/// What a look meets is a wall if it is turned farther than this cosine; before that it is the
/// same surface, which goes on in a bow.
constexpr float leastTurn = 0.85F;
/// Walls whose directions have a larger cosine than this are one.
constexpr float sameWall = 0.95F;
/// No point gets a shorter reach than this share of its least.
constexpr float leastShare = 0.25F;

/// A wall as a look has met it: the way to it along the surface, and how far it is.
struct Wall {
    Vec3 direction;
    float distance = 0.0F;
};

/// The walls that looks have met, nearest first.
class Walls {
public:
    void add(const Wall& wall) {
        for (std::size_t i = 0; i < count_; ++i)
            if (dot(walls_[i].direction, wall.direction) > sameWall) {
                walls_[i].distance = std::min(walls_[i].distance, wall.distance);
                return;
            }
        walls_[count_++] = wall;
    }

    void sort() {
        std::sort(walls_.begin(), walls_.begin() + static_cast<std::ptrdiff_t>(count_),
                  [](const Wall& a, const Wall& b) { return a.distance < b.distance; });
    }

    std::size_t count() const { return count_; }

    const Wall& operator[](std::size_t i) const { return walls_[i]; }

private:
    std::array<Wall, looksAround> walls_;
    std::size_t count_ = 0;
};

Walls wallsAround(const CompiledScene& scene, const Surface& spot, float reach) {
    const Frame frame(spot.normal);
    const Vec3 origin = spot.origin(spot.normal);
    Walls walls;
    for (int i = 0; i < looksAround; ++i) {
        const float angle = 2.0F * pi * static_cast<float>(i) / looksAround;
        const Vec3 direction = normalize(frame.toWorld({std::cos(angle), std::sin(angle), rise}));
        const Hit hit = scene.structure().intersect({origin, direction, 0.0F, reach});
        if (!hit)
            continue;
        const Surface wall = surfaceAt(scene, hit, direction, {});
        const float turn = dot(wall.geometricNormal, spot.normal);
        if (turn > leastTurn)
            continue;
        const Vec3 along = wall.geometricNormal - spot.normal * turn;
        const float size = length(along);
        if (!(size > 0.0F))
            continue;
        const Vec3 towards = along * (-1.0F / size);
        walls.add({towards, std::max(dot(wall.position - spot.position, towards), spot.offset)});
    }
    walls.sort();
    return walls;
}

} // namespace

float findBarriers(const CompiledScene& scene, const Surface& spot, GatherPoint& point) {
    const Walls walls = wallsAround(scene, spot, point.reach);
    for (std::size_t i = 0; i < std::min(walls.count(), point.barriers.size()); ++i)
        point.barriers[i] = walls[i].direction * (1.0F / walls[i].distance);
    if (walls.count() > point.barriers.size())
        point.reach = std::min(
            point.reach, std::max(walls[point.barriers.size()].distance, leastShare * point.least));
    return walls.count() > 0 ? walls[0].distance : std::numeric_limits<float>::infinity();
}

} // namespace qor::engine
