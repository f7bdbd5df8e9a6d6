#include "workbench/import/scene/FeatureEdges.h"

#include "workbench/import/scene/MeshShape.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <thread>
#include <unordered_map>

namespace qor::import {

using document::Mesh;

namespace {

constexpr float smoothCosine =
    0.906F;                          ///< of 25 degrees: normals of the sides that differ less agree
constexpr float strongCosine = 0.5F; ///< of 60 degrees: a bend that no shading hides

/// A side of a triangle, from the corner at place `corner` of the indices to the next one.
struct Side {
    std::uint32_t farEnd; ///< the higher of its welded ends
    std::uint32_t corner;
};

class EdgeFinder {
public:
    explicit EdgeFinder(const Mesh& mesh)
        : mesh_(mesh), first_(weldedVertices(mesh)), faceNormals_(faceNormalsOf(mesh)) {}

    std::vector<std::uint32_t> find() {
        sortSides();
        for (std::size_t vertex = 0; vertex + 1 < begins_.size(); ++vertex)
            addEdgesOf({sides_.data() + begins_[vertex], sides_.data() + begins_[vertex + 1]});
        addBorders();
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
            const std::span<const Side> meeting = sides.subspan(begin, end - begin);
            if (meeting.size() == 1)
                borders_.push_back(meeting[0].corner);
            else if (isFeature(meeting))
                add(meeting[0].corner);
        }
    }

    void add(std::uint32_t corner) {
        edges_.push_back(mesh_.indices[corner]);
        edges_.push_back(mesh_.indices[nextCorner(corner)]);
    }

    /// Where the surface ends; but not along a seam of two patches whose triangles do not match.
    void addBorders() {
        BorderEnds ends;
        for (std::uint32_t border = 0; border < borders_.size(); ++border)
            for (const bool atBegin : {true, false})
                ends.emplace(welded(cornerAt({border, atBegin})), BorderEnd{border, atBegin});
        std::vector<bool> isSeam(borders_.size(), false);
        std::vector<std::uint32_t> open;
        for (std::uint32_t border = 0; border < borders_.size(); ++border)
            spreadSeam(border, ends, sameWay, isSeam, open);
        while (!open.empty()) {
            const std::uint32_t border = open.back();
            open.pop_back();
            spreadSeam(border, ends, straightOn, isSeam, open);
        }
        for (std::uint32_t border = 0; border < borders_.size(); ++border)
            if (!isSeam[border])
                add(borders_[border]);
    }

    struct BorderEnd {
        std::uint32_t border;
        bool atBegin;
    };

    using BorderEnds = std::unordered_multimap<std::uint32_t, BorderEnd>; ///< by welded vertex

    /// How a border may lie to another one, by the cosine between them where they meet.
    static bool sameWay(double cosine) { return cosine > 0.98; }

    static bool straightOn(double cosine) { return cosine < -0.94; }

    /// Borders that leave a vertex the same way are the two sides of a seam, and what goes straight
    /// on from a seam is seam too, as long as the surface stays smooth.
    template <typename Lies>
    void spreadSeam(std::uint32_t border,
                    const BorderEnds& ends,
                    const Lies& lies,
                    std::vector<bool>& isSeam,
                    std::vector<std::uint32_t>& open) const {
        for (const bool atBegin : {true, false}) {
            const BorderEnd here{border, atBegin};
            const auto [first, last] = ends.equal_range(welded(cornerAt(here)));
            for (auto other = first; other != last; ++other) {
                const BorderEnd& there = other->second;
                if (there.border == border || isSeam[there.border] ||
                    !lies(cosineBetween(here, there)) || !agree(here, there))
                    continue;
                isSeam[there.border] = true;
                open.push_back(there.border);
            }
        }
    }

    [[nodiscard]] std::uint32_t cornerAt(const BorderEnd& end) const {
        const std::uint32_t corner = borders_[end.border];
        return end.atBegin ? corner : nextCorner(corner);
    }

    [[nodiscard]] std::array<double, 3> wayFrom(const BorderEnd& end) const {
        const Float3 from = at(mesh_.positions, mesh_.indices[cornerAt(end)]);
        const Float3 to = at(mesh_.positions, mesh_.indices[cornerAt({end.border, !end.atBegin})]);
        return {double{to[0]} - from[0], double{to[1]} - from[1], double{to[2]} - from[2]};
    }

    [[nodiscard]] double cosineBetween(const BorderEnd& one, const BorderEnd& other) const {
        const std::array<double, 3> a = wayFrom(one);
        const std::array<double, 3> b = wayFrom(other);
        const auto product = [](const auto& u, const auto& v) {
            return u[0] * v[0] + u[1] * v[1] + u[2] * v[2];
        };
        return product(a, b) / std::sqrt(product(a, a) * product(b, b));
    }

    [[nodiscard]] bool agree(const BorderEnd& one, const BorderEnd& other) const {
        const std::uint32_t a = cornerAt(one);
        const std::uint32_t b = cornerAt(other);
        return mesh_.normals.empty() ? bendOf(faceNormal(a), faceNormal(b)) > smoothCosine
                                     : !differ(a, b);
    }

    /// \p sides: of the triangles that meet in one edge.
    [[nodiscard]] bool isFeature(std::span<const Side> sides) const {
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
    std::vector<std::uint32_t> borders_; ///< corners of the sides that meet no other
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
