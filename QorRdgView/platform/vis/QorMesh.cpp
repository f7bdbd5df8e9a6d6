#include "platform/vis/QorMesh.h"

#include "platform/vis/QorContentId.h"
#include "platform/vis/QorMeshTree.h"

#include <cmath>

QorImplementClass(QorMesh, QorBaseUnknown)

namespace {

bool IsVertex(const QorMesh::Data& iData, std::uint32_t iIndex) {
    const std::size_t at = 3 * static_cast<std::size_t>(iIndex);
    return at + 2 < iData.positions.size() && std::isfinite(iData.positions[at]) &&
           std::isfinite(iData.positions[at + 1]) && std::isfinite(iData.positions[at + 2]);
}

/// Keeps the groups of \p iSize indices whose vertices all exist.
void KeepSound(const QorMesh::Data& iData,
               std::vector<std::uint32_t>& ioIndices,
               std::size_t iSize) {
    std::size_t kept = 0;
    for (std::size_t group = 0; group + iSize <= ioIndices.size(); group += iSize) {
        bool sound = true;
        for (std::size_t i = 0; i < iSize; ++i)
            sound = sound && IsVertex(iData, ioIndices[group + i]);
        for (std::size_t i = 0; sound && i < iSize; ++i)
            ioIndices[kept++] = ioIndices[group + i];
    }
    ioIndices.resize(kept);
}

void KeepSound(QorMesh::Data& ioData) {
    KeepSound(ioData, ioData.indices, 3);
    KeepSound(ioData, ioData.edges, 2);
    const std::size_t vertices = ioData.positions.size() / 3;
    if (ioData.normals.size() != 3 * vertices)
        ioData.normals.clear();
    if (ioData.textureUv.size() != 2 * vertices)
        ioData.textureUv.clear();
    if (ioData.textureUv2.size() != 2 * vertices)
        ioData.textureUv2.clear();
    if (ioData.colors.size() != 4 * vertices)
        ioData.colors.clear();
}

} // namespace

QorMesh::QorMesh(Data iData) : contentId(QorNewContentId()) {
    KeepSound(iData);
    data = std::make_shared<const Data>(std::move(iData));
    tree = std::make_shared<const QorMeshTree>(data);
    for (const std::uint32_t index : data->indices) {
        const std::size_t at = 3 * static_cast<std::size_t>(index);
        box.Add(
            QorMathPoint{data->positions[at], data->positions[at + 1], data->positions[at + 2]});
    }
}

QorMesh::~QorMesh() = default;

double QorMesh::Intersect(const QorMathRay& iRay, double iFarthest) const {
    return tree->Intersect(iRay, iFarthest);
}
