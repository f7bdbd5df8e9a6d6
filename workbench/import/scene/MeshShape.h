#pragma once

#include "workbench/document/product/Mesh.h"

#include <array>

namespace qor::import {

using Float3 = std::array<float, 3>;

/// The three numbers of a vertex.
[[nodiscard]] inline Float3 at(const std::vector<float>& values, std::uint32_t vertex) {
    return {values[3 * std::size_t{vertex}], values[3 * std::size_t{vertex} + 1],
            values[3 * std::size_t{vertex} + 2]};
}

[[nodiscard]] inline float dot(const Float3& a, const Float3& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

/// For each vertex the number of the first one at its place.
[[nodiscard]] std::vector<std::uint32_t> weldedVertices(const document::Mesh& mesh);

/// The normal of each triangle, of length 1; see bendOf for those without an area.
[[nodiscard]] std::vector<Float3> faceNormalsOf(const document::Mesh& mesh);

/// The cosine of the bend between triangles of such normals; one without an area bends nowhere.
[[nodiscard]] float bendOf(const Float3& a, const Float3& b);

} // namespace qor::import
