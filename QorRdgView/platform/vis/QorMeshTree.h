#pragma once

#include "platform/vis/QorMeshHierarchy.h"

/// A mesh's triangles and, once it is made, their tree. Small trees are made on first use, large
/// ones on a thread of this library's own, so that nobody waits: until then every triangle is
/// looked at. Thread-safe.
class QorMeshTree : public std::enable_shared_from_this<QorMeshTree> {
public:
    /// From so many triangles on making a tree takes longer than a frame.
    static constexpr std::size_t large = 30000;

    explicit QorMeshTree(std::shared_ptr<const QorMesh::Data> iData) : data(std::move(iData)) {}

    /// As QorMesh::Intersect.
    [[nodiscard]] double Intersect(const QorMathRay& iRay, double iFarthest) const;

    [[nodiscard]] bool HasTree() const { return std::atomic_load(&tree) != nullptr; }

    /// Makes the tree unless it is there, or \p iStop is set meanwhile.
    void MakeTree(const std::atomic<bool>* iStop = nullptr) const;

private:
    const std::shared_ptr<const QorMesh::Data> data;
    mutable std::shared_ptr<const QorMeshHierarchy> tree;
    mutable std::atomic<bool> isWanted = false;
};
