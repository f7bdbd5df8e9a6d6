#include "workbench/import/scene/MeshShape.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace qor::import {

using document::Mesh;

namespace {

constexpr Float3 agreeing{1e3F, 1e3F,
                          1e3F}; ///< stands for the normal of a triangle without an area
constexpr std::uint32_t empty = 0xFFFFFFFFU;

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

} // namespace

std::vector<std::uint32_t> weldedVertices(const Mesh& mesh) {
    return Welder(mesh).weld();
}

std::vector<Float3> faceNormalsOf(const Mesh& mesh) {
    std::vector<Float3> normals(mesh.triangleCount());
    for (std::size_t i = 0; i < normals.size(); ++i)
        normals[i] = faceNormalOf(mesh, i);
    return normals;
}

float bendOf(const Float3& a, const Float3& b) {
    return a == agreeing || b == agreeing ? 1.F : dot(a, b);
}

} // namespace qor::import
