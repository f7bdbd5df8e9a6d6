#include "workbench/import/scene/SceneMeshes.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qor::import {

using document::Mesh;
using document::none;

namespace {

bool isFinite(const aiVector3D& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

std::array<float, 3> asFloats(const document::Vector3& v) {
    return {static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])};
}

document::Vector3 asVector(const aiVector3D& v) {
    return {v.x, v.y, v.z};
}

// sRGB-codes a linear channel to 8 bits.
std::uint8_t codedChannel(float linear) {
    const double x = std::isfinite(linear) ? std::clamp(static_cast<double>(linear), 0.0, 1.0) : 0;
    const double coded = x <= 0.0031308 ? 12.92 * x : 1.055 * std::pow(x, 1 / 2.4) - 0.055;
    return static_cast<std::uint8_t>(std::lround(coded * 255));
}

std::uint8_t plainChannel(float value) {
    return static_cast<std::uint8_t>(std::lround(
        255 * (std::isfinite(value) ? std::clamp(static_cast<double>(value), 0.0, 1.0) : 0)));
}

class MeshJoiner {
public:
    MeshJoiner(std::span<const aiMesh* const> parts, const MeshRules& rules) : rules_(rules) {
        for (const aiMesh* part : parts) {
            hasNormals_ = hasNormals_ || part->HasNormals() || rules.gltf;
            hasUv_[0] = hasUv_[0] || part->HasTextureCoords(0);
            hasUv_[1] = hasUv_[1] || part->HasTextureCoords(1);
            hasColors_ = hasColors_ || part->HasVertexColors(0);
        }
        reserve(parts);
    }

    void add(const aiMesh& part, std::int32_t material) {
        const bool flat = rules_.gltf && !part.HasNormals();
        const std::size_t first = mesh_.indices.size();
        if (flat)
            addFlat(part);
        else
            addShared(part);
        if (mesh_.indices.size() > first)
            mesh_.groups.push_back({static_cast<std::uint32_t>(first),
                                    static_cast<std::uint32_t>(mesh_.indices.size() - first),
                                    material});
    }

    [[nodiscard]] std::uint64_t dropped() const { return dropped_; }

    [[nodiscard]] Mesh take() { return std::move(mesh_); }

private:
    void reserve(std::span<const aiMesh* const> parts) {
        std::size_t vertices = 0;
        std::size_t faces = 0;
        for (const aiMesh* part : parts) {
            const bool flat = rules_.gltf && !part->HasNormals();
            vertices += flat ? std::size_t{3} * part->mNumFaces : part->mNumVertices;
            faces += part->mNumFaces;
        }
        mesh_.positions.reserve(3 * vertices);
        mesh_.normals.reserve(hasNormals_ ? 3 * vertices : 0);
        mesh_.uv0.reserve(hasUv_[0] ? 2 * vertices : 0);
        mesh_.uv1.reserve(hasUv_[1] ? 2 * vertices : 0);
        mesh_.colors.reserve(hasColors_ ? 4 * vertices : 0);
        mesh_.indices.reserve(3 * faces);
    }

    static bool areFinite(const aiMesh& part) {
        return std::all_of(part.mVertices, part.mVertices + part.mNumVertices, isFinite);
    }

    /// \p finite: all vertices of the part are.
    static bool isUsable(const aiMesh& part, const aiFace& face, bool finite) {
        if (face.mNumIndices != 3)
            return false;
        for (unsigned i = 0; i < 3; ++i)
            if (face.mIndices[i] >= part.mNumVertices ||
                (!finite && !isFinite(part.mVertices[face.mIndices[i]])))
                return false;
        return true;
    }

    void addShared(const aiMesh& part) {
        const auto base = static_cast<std::uint32_t>(mesh_.vertexCount());
        for (unsigned i = 0; i < part.mNumVertices; ++i)
            addVertex(part, i, part.HasNormals() ? part.mNormals[i] : aiVector3D(0, 0, 1));
        const bool finite = areFinite(part);
        for (unsigned f = 0; f < part.mNumFaces; ++f) {
            const aiFace& face = part.mFaces[f];
            if (!isUsable(part, face, finite)) {
                ++dropped_;
                continue;
            }
            for (unsigned i = 0; i < 3; ++i)
                mesh_.indices.push_back(base + face.mIndices[i]);
        }
    }

    void addFlat(const aiMesh& part) {
        const bool finite = areFinite(part);
        for (unsigned f = 0; f < part.mNumFaces; ++f) {
            const aiFace& face = part.mFaces[f];
            if (!isUsable(part, face, finite)) {
                ++dropped_;
                continue;
            }
            const aiVector3D& a = part.mVertices[face.mIndices[0]];
            const aiVector3D normal =
                (part.mVertices[face.mIndices[1]] - a) ^ (part.mVertices[face.mIndices[2]] - a);
            for (unsigned i = 0; i < 3; ++i) {
                mesh_.indices.push_back(static_cast<std::uint32_t>(mesh_.vertexCount()));
                addVertex(part, face.mIndices[i], normal);
            }
        }
    }

    void addVertex(const aiMesh& part, unsigned index, const aiVector3D& normal) {
        const aiVector3D& position = part.mVertices[index];
        // An unusable vertex keeps its place, so that the others keep their numbers.
        append(mesh_.positions, isFinite(position) ? asFloats(rules_.axes.point(asVector(position)))
                                                   : std::array<float, 3>{});
        if (hasNormals_)
            addNormal(normal);
        addCoordinates(part, index, 0, mesh_.uv0);
        addCoordinates(part, index, 1, mesh_.uv1);
        if (hasColors_)
            addColor(part, index);
    }

    void addNormal(const aiVector3D& normal) {
        const double length = std::sqrt(asSquare(normal));
        const bool usable = std::isfinite(length) && length > 0;
        const document::Vector3 unit =
            usable ? document::Vector3{normal.x / length, normal.y / length, normal.z / length}
                   : document::Vector3{0, 0, 1};
        append(mesh_.normals, asFloats(rules_.axes.direction(unit)));
    }

    static double asSquare(const aiVector3D& v) {
        return double{v.x} * v.x + double{v.y} * v.y + double{v.z} * v.z;
    }

    void addCoordinates(const aiMesh& part, unsigned index, unsigned set, std::vector<float>& out) {
        if (!hasUv_[set])
            return;
        aiVector3D uv;
        if (part.HasTextureCoords(set))
            uv = part.mTextureCoords[set][index];
        // Assimp counts v from the bottom of a picture, a product from the top.
        const bool usable = std::isfinite(uv.x) && std::isfinite(uv.y);
        append(out, usable ? std::array<float, 2>{uv.x, 1 - uv.y} : std::array<float, 2>{});
    }

    void addColor(const aiMesh& part, unsigned index) {
        aiColor4D color(1, 1, 1, 1);
        if (part.HasVertexColors(0))
            color = part.mColors[0][index];
        const auto coded = rules_.gltf ? codedChannel : plainChannel;
        append(mesh_.colors, std::array<std::uint8_t, 4>{coded(color.r), coded(color.g),
                                                         coded(color.b), plainChannel(color.a)});
    }

    template <typename T, std::size_t count>
    static void append(std::vector<T>& out, const std::array<T, count>& values) {
        out.insert(out.end(), values.begin(), values.end());
    }

    const MeshRules& rules_;
    Mesh mesh_;
    bool hasNormals_ = false;
    std::array<bool, 2> hasUv_{};
    bool hasColors_ = false;
    std::uint64_t dropped_ = 0;
};

} // namespace

Mesh joinMeshes(std::span<const aiMesh* const> parts,
                const MeshRules& rules,
                std::span<const std::int32_t> materials,
                ImportReport& report) {
    MeshJoiner joiner(parts, rules);
    for (const aiMesh* part : parts)
        if ((part->mPrimitiveTypes & aiPrimitiveType_TRIANGLE) != 0)
            joiner.add(*part, part->mMaterialIndex < materials.size()
                                  ? materials[part->mMaterialIndex]
                                  : none);
    if (joiner.dropped() > 0)
        report.warn(std::to_string(joiner.dropped()) +
                    " triangles with coordinates that are no numbers were left out");
    return joiner.take();
}

} // namespace qor::import
