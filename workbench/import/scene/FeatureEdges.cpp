#include "workbench/import/scene/FeatureEdges.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cmath>
#include <thread>

namespace qor::import {

using document::Mesh;

namespace {

using Float3 = std::array<float, 3>;

constexpr float smoothCosine =
    0.906F;                          ///< of 25 degrees: normals of the sides that differ less agree
constexpr float strongCosine = 0.5F; ///< of 60 degrees: a bend that no shading hides
constexpr Float3 agreeing{1e3F, 1e3F, 1e3F};
constexpr std::uint32_t empty = 0xFFFFFFFFU;

Float3 at(const std::vector<float>& values, std::uint32_t vertex) {
    return {values[3 * std::size_t{vertex}], values[3 * std::size_t{vertex} + 1],
            values[3 * std::size_t{vertex} + 2]};
}

float dot(const Float3& a, const Float3& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

/// The cosine of the bend between two triangles.
float bendOf(const Float3& a, const Float3& b) {
    return a == agreeing || b == agreeing ? 1.F : dot(a, b);
}

/// Of length 1; that of a triangle without an area agrees with all.
Float3 faceNormalOf(const Mesh& mesh, std::size_t triangle) {
    const std::uint32_t* corners = mesh.indices.data() + 3 * triangle;
    const Float3 a = at(mesh.positions, corners[0]);
    const Float3 b = at(mesh.positions, corners[1]);
    const Float3 c = at(mesh.positions, corners[2]);
    const std::array<double, 3> u{double{b[0]} - a[0], double{b[1]} - a[1], double{b[2]} - a[2]};
    const std::array<double, 3> v{double{c[0]} - a[0], double{c[1]} - a[1], double{c[2]} - a[2]};
    const std::array<double, 3> n{u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2],
                                  u[0] * v[1] - u[1] * v[0]};
    const double length = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
    if (!(length > 0))
        return agreeing;
    return {static_cast<float>(n[0] / length), static_cast<float>(n[1] / length),
            static_cast<float>(n[2] / length)};
}

std::vector<Float3> faceNormalsOf(const Mesh& mesh) {
    std::vector<Float3> normals(mesh.triangleCount());
    for (std::size_t i = 0; i < normals.size(); ++i)
        normals[i] = faceNormalOf(mesh, i);
    return normals;
}

/// Gives each vertex the number of the first one at its place.
class Welder {
public:
    explicit Welder(const Mesh& mesh)
        : mesh_(mesh)
        , mask_(std::bit_ceil(2 * std::max<std::size_t>(1, mesh.vertexCount())) - 1)
        , slots_(mask_ + 1, empty) {}

    std::vector<std::uint32_t> weld() {
        std::vector<std::uint32_t> first(mesh_.vertexCount());
        for (std::uint32_t vertex = 0; vertex < first.size(); ++vertex)
            first[vertex] = firstAt(vertex);
        return first;
    }

private:
    std::uint32_t firstAt(std::uint32_t vertex) {
        const Float3 place = at(mesh_.positions, vertex);
        for (std::size_t slot = hashOf(place) & mask_;; slot = (slot + 1) & mask_) {
            if (slots_[slot] == empty)
                slots_[slot] = vertex;
            if (at(mesh_.positions, slots_[slot]) == place)
                return slots_[slot];
        }
    }

    static std::size_t hashOf(const Float3& place) {
        std::uint64_t hash = 0;
        for (const float number : place) // 0 and -0 are equal
            hash = (hash ^ std::bit_cast<std::uint32_t>(number + 0.0F)) * 0x9E3779B97F4A7C15U;
        return static_cast<std::size_t>(hash ^ (hash >> 29));
    }

    const Mesh& mesh_;
    std::size_t mask_;
    std::vector<std::uint32_t> slots_;
};

/// A side of a triangle, from the corner at place `corner` of the indices to the next one.
struct Side {
    std::uint32_t farEnd; ///< the higher of its welded ends
    std::uint32_t corner;
};

class EdgeFinder {
public:
    explicit EdgeFinder(const Mesh& mesh)
        : mesh_(mesh), first_(Welder(mesh).weld()), faceNormals_(faceNormalsOf(mesh)) {}

    std::vector<std::uint32_t> find() {
        sortSides();
        for (std::size_t vertex = 0; vertex + 1 < begins_.size(); ++vertex)
            addEdgesOf({sides_.data() + begins_[vertex], sides_.data() + begins_[vertex + 1]});
        return std::move(edges_);
    }

private:
    static std::uint32_t nextCorner(std::uint32_t corner) {
        return corner % 3 == 2 ? corner - 2 : corner + 1;
    }

    [[nodiscard]] std::uint32_t welded(std::uint32_t corner) const {
        return first_[mesh_.indices[corner]];
    }

    /// Sides by their lower end; those without a length are left out.
    void sortSides() {
        begins_.assign(mesh_.vertexCount() + 1, 0);
        const auto corners = static_cast<std::uint32_t>(mesh_.indices.size());
        const auto visit = [&](const auto& take) {
            for (std::uint32_t corner = 0; corner < corners; ++corner) {
                const std::uint32_t a = welded(corner);
                const std::uint32_t b = welded(nextCorner(corner));
                if (a != b)
                    take(std::min(a, b), Side{std::max(a, b), corner});
            }
        };
        visit([&](std::uint32_t nearEnd, const Side&) { ++begins_[nearEnd + 1]; });
        for (std::size_t i = 1; i < begins_.size(); ++i)
            begins_[i] += begins_[i - 1];
        sides_.resize(begins_.back());
        std::vector<std::uint32_t> next(begins_.begin(), begins_.end() - 1);
        visit([&](std::uint32_t nearEnd, const Side& side) { sides_[next[nearEnd]++] = side; });
    }

    void addEdgesOf(std::span<Side> sides) {
        std::sort(sides.begin(), sides.end(), [](const Side& a, const Side& b) {
            return a.farEnd != b.farEnd ? a.farEnd < b.farEnd : a.corner < b.corner;
        });
        for (std::size_t begin = 0, end = 0; begin < sides.size(); begin = end) {
            while (end < sides.size() && sides[end].farEnd == sides[begin].farEnd)
                ++end;
            if (isFeature(sides.subspan(begin, end - begin)))
                add(sides[begin].corner);
        }
    }

    void add(std::uint32_t corner) {
        edges_.push_back(mesh_.indices[corner]);
        edges_.push_back(mesh_.indices[nextCorner(corner)]);
    }

    /// \p sides: of the triangles that meet in one edge.
    [[nodiscard]] bool isFeature(std::span<const Side> sides) const {
        if (sides.size() == 1)
            return true;
        if (sides.size() == 2)
            return isCrease(sides[0].corner, sides[1].corner);
        // Triangles that lie on one another are still one surface.
        const Float3 one = faceNormal(sides[0].corner);
        return std::any_of(sides.begin() + 1, sides.end(), [&](const Side& side) {
            return std::abs(bendOf(one, faceNormal(side.corner))) < smoothCosine;
        });
    }

    [[nodiscard]] bool isCrease(std::uint32_t one, std::uint32_t other) const {
        const bool turned = welded(one) != welded(other);
        const float bend = bendOf(faceNormal(one), faceNormal(other));
        if (turned && bend < strongCosine)
            return true;
        if (mesh_.normals.empty())
            return turned && bend < smoothCosine;
        const std::uint32_t begin = turned ? nextCorner(other) : other;
        const std::uint32_t end = turned ? other : nextCorner(other);
        return differ(one, begin) && differ(nextCorner(one), end);
    }

    [[nodiscard]] bool differ(std::uint32_t one, std::uint32_t other) const {
        return dot(at(mesh_.normals, mesh_.indices[one]), at(mesh_.normals, mesh_.indices[other])) <
               smoothCosine;
    }

    [[nodiscard]] const Float3& faceNormal(std::uint32_t corner) const {
        return faceNormals_[corner / 3];
    }

    const Mesh& mesh_;
    std::vector<std::uint32_t> first_;
    std::vector<Float3> faceNormals_;
    std::vector<std::uint32_t> begins_; ///< of the sides of each vertex
    std::vector<Side> sides_;
    std::vector<std::uint32_t> edges_;
};

} // namespace

void addFeatureEdges(std::span<Mesh> meshes) {
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < meshes.size(); i = next++)
            meshes[i].edges = EdgeFinder(meshes[i]).find();
    };
    std::vector<std::jthread> others(
        std::min<std::size_t>(meshes.size(), std::thread::hardware_concurrency()) / 2);
    for (std::jthread& other : others)
        other = std::jthread(work);
    work();
}

} // namespace qor::import
