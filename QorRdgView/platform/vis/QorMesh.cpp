#include "platform/vis/QorMesh.h"

#include "platform/vis/QorContentId.h"
#include "platform/vis/QorMeshTree.h"

#include <atomic>
#include <cmath>
#include <mutex>

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

} // namespace

QorMesh::QorMesh(Data iData) : data(std::move(iData)), contentId(QorNewContentId()) {
    KeepSound(data, data.indices, 3);
    KeepSound(data, data.edges, 2);
    const std::size_t vertices = data.positions.size() / 3;
    if (data.normals.size() != 3 * vertices)
        data.normals.clear();
    if (data.textureUv.size() != 2 * vertices)
        data.textureUv.clear();
    for (const std::uint32_t index : data.indices) {
        const std::size_t at = 3 * static_cast<std::size_t>(index);
        box.Add(QorMathPoint{data.positions[at], data.positions[at + 1], data.positions[at + 2]});
    }
}

QorMesh::~QorMesh() = default;

double QorMesh::Intersect(const QorMathRay& iRay, double iFarthest) const {
    static std::mutex building; // one tree at a time: picking is rare, and memory for two is not
    std::shared_ptr<const QorMeshTree> built = std::atomic_load(&tree);
    if (!built) {
        const std::scoped_lock lock(building);
        built = std::atomic_load(&tree);
        if (!built) {
            built = std::make_shared<const QorMeshTree>(data);
            std::atomic_store(&tree, built);
        }
    }
    return built->Intersect(iRay, iFarthest);
}
