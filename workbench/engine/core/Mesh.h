#pragma once

#include "workbench/engine/core/Result.h"
#include "workbench/engine/core/Vec.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace qor::engine {

class MeshStructure;

/// What a mesh is made from. Lengths in any one unit; angles and sides follow the order of corners
/// (counter-clockwise seen from outside), which only matters to glass: opaque surfaces have two
/// sides.
struct MeshData {
    std::vector<Vec3> positions;
    std::vector<Vec3> normals; ///< one a position, or empty: flat triangles
    std::vector<Vec2>
        textureCoordinates; ///< one a position, or empty; (0, 0) is a picture's top left
    std::vector<std::array<std::uint32_t, 3>> triangles; ///< indices of positions
    std::vector<std::uint16_t> slots; ///< material slot of each triangle, or empty: all in slot 0
    std::vector<Vec2> secondTextureCoordinates; ///< one a position, or empty: as the first
    /// sRGB-coded red, green, blue and linear alpha, one a position, or empty: white. They multiply
    /// the material's base colour and opacity.
    std::vector<std::array<std::uint8_t, 4>> colors;
};

/// A triangle mesh that never changes, shared by any number of instances and scenes. It owns its
/// ray tracing structure, which is built once, on first use or by Assembly::prepare, and lives as
/// long as the mesh. All functions may be called from any thread.
class Mesh {
public:
    /// Takes \p data over. Fails with invalidInput when an index or a count is wrong. Triangles
    /// with a corner that is not finite, or without an area, are kept but never hit; normals that
    /// are not finite or zero give way to the flat one.
    static Result<std::shared_ptr<const Mesh>> create(MeshData data);

    ~Mesh();
    Mesh(const Mesh&) = delete;
    Mesh(Mesh&&) = delete;
    Mesh& operator=(const Mesh&) = delete;
    Mesh& operator=(Mesh&&) = delete;

    /// Different for every mesh made by this process.
    std::uint64_t identity() const { return identity_; }

    const MeshData& data() const { return data_; }

    /// One more than the largest slot of its triangles.
    std::size_t slotCount() const { return slotCount_; }

    /// Corners of the box around all triangles that can be hit; lower above upper when there are
    /// none.
    const Vec3& lower() const { return lower_; }

    const Vec3& upper() const { return upper_; }

    /// True when every triangle was usable.
    bool isClean() const { return clean_; }

    /// Bytes of its arrays, without the ray tracing structure.
    std::size_t memory() const;

    /// The ray tracing structure, built by the first caller while others wait.
    const MeshStructure& structure() const;

private:
    explicit Mesh(MeshData data);
    void inspect();

    MeshData data_;
    std::uint64_t identity_;
    std::size_t slotCount_ = 1;
    Vec3 lower_;
    Vec3 upper_;
    bool clean_ = true;
    struct Lazy;
    std::unique_ptr<Lazy> lazy_;
};

using MeshPtr = std::shared_ptr<const Mesh>;

} // namespace qor::engine
