#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qor::document {

/// Index of "no such thing" in every reference of a product.
inline constexpr std::int32_t none = -1;

/// A run of triangles of a mesh with one material.
struct MeshGroup {
    std::uint32_t firstIndex = 0; ///< into Mesh::indices, a multiple of 3
    std::uint32_t indexCount = 0; ///< a multiple of 3
    /// Index into Product::materials; `none` takes the material of the node or part that shows it.
    std::int32_t material = none;

    bool operator==(const MeshGroup&) const = default;
};

/// Triangles of one part, in millimetres in the part's own axes. Stored once, however often the
/// part is used. A per-vertex array is either empty or has an entry for each vertex.
struct Mesh {
    std::string name;
    std::vector<float> positions; ///< x, y, z
    std::vector<float> normals;   ///< unit length, outward
    std::vector<float> uv0;       ///< u, v; v = 0 is the top row of a texture
    std::vector<float> uv1;       ///< second set, as uv0
    std::vector<std::uint8_t>
        colors; ///< red, green, blue, alpha; sRGB-coded, multiplies the base colour
    std::vector<std::uint32_t> indices;
    std::vector<MeshGroup> groups;    ///< in order, cover all indices without overlap
    std::vector<std::uint32_t> edges; ///< pairs of vertices: the part's own edges, for drawing

    [[nodiscard]] std::size_t vertexCount() const { return positions.size() / 3; }

    [[nodiscard]] std::size_t triangleCount() const { return indices.size() / 3; }

    bool operator==(const Mesh&) const = default;
};

} // namespace qor::document
