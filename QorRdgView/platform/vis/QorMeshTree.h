#pragma once

#include "platform/vis/QorMesh.h"

#include <array>

/// A bounding-volume hierarchy over the triangles of a mesh, for picking.
/// Method: binned surface-area heuristic, Wald 2007, "On fast Construction of SAH-based Bounding
/// Volume Hierarchies". Intersection of a triangle: Möller and Trumbore 1997.
class QorMeshTree {
public:
    /// \p iData outlives the tree.
    explicit QorMeshTree(const QorMesh::Data& iData);

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
    [[nodiscard]] double IntersectTriangle(std::uint32_t iTriangle, const QorMathRay& iRay) const;
    [[nodiscard]] QorMathPoint Corner(std::uint32_t iTriangle, std::uint32_t iCorner) const;

    const QorMesh::Data& data;
    std::vector<Node> nodes;
    std::vector<Item> items;
};
