#pragma once

#include "platform/component/QorBaseUnknown.h"
#include "platform/component/QorHandle.h"
#include "platform/vis/QorBoundingBox.h"

#include <cstdint>
#include <memory>
#include <vector>

class QorMeshTree;

/// The triangles of one shape, shared by its instances. Immutable once made, so that workers may
/// read it on any thread; its identity is never used again.
class QorMesh : public QorBaseUnknown {
    QorDeclareClass(QorMesh)

    struct Data {
        std::vector<float> positions;       ///< three a vertex, millimetres
        std::vector<float> normals;         ///< three a vertex, or none
        std::vector<float> textureUv;       ///< two a vertex, or none
        std::vector<float> textureUv2;      ///< the second set, as the first
        std::vector<std::uint8_t> colors;   ///< RGBA a vertex, sRGB-coded factors, or none
        std::vector<std::uint32_t> indices; ///< three a triangle
        std::vector<std::uint32_t> edges;   ///< two a line of the edge display, or none
    };

    /// Triangles with an index beyond the vertices, and vertices that are no numbers, are dropped.
    explicit QorMesh(Data iData);

    [[nodiscard]] const Data& GetData() const { return *data; }

    /// The same, for workers that may outlive the mesh.
    [[nodiscard]] const std::shared_ptr<const Data>& GetSharedData() const { return data; }

    [[nodiscard]] std::size_t CountTriangles() const { return data->indices.size() / 3; }

    [[nodiscard]] const Qor3DBoundingBox& GetBoundingBox() const { return box; }

    [[nodiscard]] std::uint64_t GetContentId() const { return contentId; }

    /// Distance from the ray's origin to the nearest triangle it meets before \p iFarthest,
    /// negative for none. First uses of a large mesh look at all its triangles while a thread of
    /// the library's makes a tree; concurrent calls are safe.
    [[nodiscard]] double Intersect(const QorMathRay& iRay, double iFarthest) const;

protected:
    ~QorMesh() override;

private:
    std::shared_ptr<const Data> data;
    Qor3DBoundingBox box;
    std::uint64_t contentId;
    mutable std::shared_ptr<const QorMeshTree> tree;
};

QorDeclareHandle(QorMesh);
