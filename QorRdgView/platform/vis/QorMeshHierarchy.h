#pragma once

#include "platform/vis/QorMesh.h"

#include <array>
#include <atomic>

/// A bounding-volume hierarchy over the triangles of a mesh, for picking.
/// Method: binned surface-area heuristic, Wald 2007, "On fast Construction of SAH-based Bounding
/// Volume Hierarchies". Intersection of a triangle: Möller and Trumbore 1997.
class QorMeshHierarchy {
public:
    /// \p iData outlives the tree. Once \p iStop is set what is left of the work is skipped, and
    /// the tree is slow.
    explicit QorMeshHierarchy(const QorMesh::Data& iData, const std::atomic<bool>* iStop = nullptr);

    /// Without any tree: looks at every triangle. Finds the same.
    [[nodiscard]] static double
    IntersectAll(const QorMesh::Data& iData, const QorMathRay& iRay, double iFarthest);

    /// As QorMesh::Intersect.
    [[nodiscard]] double Intersect(const QorMathRay& iRay, double iFarthest) const;

private:
    struct Box {
        std::array<float, 3> low;
        std::array<float, 3> high;
    };

    /// Inner nodes have their children at `first` and `first + 1`; leaves have `count` triangles
    /// from `first`.
    struct Node {
        Box box;
        std::uint32_t first;
        std::uint32_t count;
    };

    struct Item {
        Box box;
        std::array<float, 3> center;
        std::uint32_t triangle;
    };

    static void Grow(Box& ioBox, const Box& iOther);
    [[nodiscard]] Box BoxOf(std::uint32_t iTriangle) const;
    void Build(std::uint32_t iNode, std::uint32_t iBegin, std::uint32_t iEnd, int iDepth);
    /// Where to part the items of a node; iEnd when they are better kept together.
    [[nodiscard]] std::uint32_t Split(const Box& iBox, std::uint32_t iBegin, std::uint32_t iEnd);

    const QorMesh::Data& data;
    std::vector<Node> nodes;
    std::vector<std::uint32_t> triangles; ///< in the order of the leaves
    std::vector<Item> items;              ///< while it is built
    const std::atomic<bool>* stop;
};
