#include "workbench/import/scene/FeatureEdges.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using qor::document::Mesh;
using qor::import::addFeatureEdges;

namespace {

std::size_t edgeCount(Mesh mesh) {
    addFeatureEdges({&mesh, 1});
    return mesh.edges.size() / 2;
}

void addQuad(Mesh& mesh, std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    mesh.indices.insert(mesh.indices.end(), {a, b, c, a, c, d});
}

Mesh sharedBox() {
    Mesh mesh;
    for (int corner = 0; corner < 8; ++corner)
        for (int axis = 0; axis < 3; ++axis)
            mesh.positions.push_back(static_cast<float>(corner >> axis & 1));
    addQuad(mesh, 0, 2, 3, 1);
    addQuad(mesh, 4, 5, 7, 6);
    addQuad(mesh, 0, 1, 5, 4);
    addQuad(mesh, 2, 6, 7, 3);
    addQuad(mesh, 0, 4, 6, 2);
    addQuad(mesh, 1, 3, 7, 5);
    return mesh;
}

/// Every triangle with vertices of its own, as formats without indices have them.
Mesh spread(const Mesh& from) {
    Mesh mesh;
    for (const std::uint32_t index : from.indices) {
        mesh.indices.push_back(static_cast<std::uint32_t>(mesh.indices.size()));
        for (std::size_t axis = 0; axis < 3; ++axis)
            mesh.positions.push_back(from.positions[3 * index + axis]);
    }
    return mesh;
}

/// The side of a cylinder of so many flat strips, open at both ends. \p smooth: its normals are
/// those of the round surface.
Mesh tube(int strips, bool smooth) {
    Mesh mesh;
    for (int i = 0; i < strips; ++i) {
        const double angle = 2 * std::numbers::pi * i / strips;
        for (const float z : {0.F, 1.F}) {
            const auto x = static_cast<float>(std::cos(angle));
            const auto y = static_cast<float>(std::sin(angle));
            mesh.positions.insert(mesh.positions.end(), {x, y, z});
            if (smooth)
                mesh.normals.insert(mesh.normals.end(), {x, y, 0});
        }
    }
    const auto count = static_cast<std::uint32_t>(2 * strips);
    for (std::uint32_t i = 0; i < count; i += 2)
        addQuad(mesh, i, (i + 2) % count, (i + 3) % count, i + 1);
    return mesh;
}

} // namespace

TEST(FeatureEdges, ABoxHasTwelveHoweverItsVerticesAreShared) {
    EXPECT_EQ(edgeCount(sharedBox()), 12U);
    EXPECT_EQ(edgeCount(spread(sharedBox())), 12U);
}

TEST(FeatureEdges, ARoundSurfaceHasThoseOfItsEnds) {
    EXPECT_EQ(edgeCount(tube(36, false)), 72U);
    EXPECT_EQ(edgeCount(tube(36, true)), 72U);
}

TEST(FeatureEdges, NormalsSayWhatIsMeantToBeSmooth) {
    EXPECT_EQ(edgeCount(tube(10, true)), 20U);  // bends by 36 degrees
    EXPECT_EQ(edgeCount(tube(10, false)), 30U); // the strips meet in edges
    EXPECT_EQ(edgeCount(tube(4, true)), 12U);   // nobody takes that for round
}

TEST(FeatureEdges, TrianglesThatLieOnOneAnotherAreOneSurface) {
    Mesh mesh;
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 3; ++x)
            mesh.positions.insert(mesh.positions.end(),
                                  {static_cast<float>(x), static_cast<float>(y), 0});
    for (const std::uint32_t corner : {0U, 1U, 3U, 4U})
        addQuad(mesh, corner, corner + 1, corner + 4, corner + 3);
    EXPECT_EQ(edgeCount(mesh), 8U);
    std::vector<std::uint32_t> back(mesh.indices.rbegin(), mesh.indices.rend());
    mesh.indices.insert(mesh.indices.end(), back.begin(), back.end());
    EXPECT_EQ(edgeCount(mesh), 8U); // where it turns round
}

TEST(FeatureEdges, ASeamOfPatchesThatDoNotMatchIsNoEdge) {
    // Two squares side by side: the first has one edge on the seam, the second three.
    Mesh mesh;
    const auto add = [&mesh](float x, float y) {
        mesh.positions.insert(mesh.positions.end(), {x, y, 0});
        return static_cast<std::uint32_t>(mesh.vertexCount() - 1);
    };
    const std::uint32_t left[4] = {add(0, 0), add(3, 0), add(3, 3), add(0, 3)};
    addQuad(mesh, left[0], left[1], left[2], left[3]);
    const std::uint32_t outer[2] = {add(6, 0), add(6, 3)};
    std::uint32_t below = add(3, 0);
    for (const float y : {1.F, 2.F, 3.F}) {
        const std::uint32_t above = add(3, y);
        mesh.indices.insert(mesh.indices.end(), {below, outer[0], above});
        below = above;
    }
    mesh.indices.insert(mesh.indices.end(), {outer[0], outer[1], below});
    EXPECT_EQ(edgeCount(mesh), 6U); // the outline
    // The same with the second square upright is a sharp edge, drawn from both sides.
    for (std::size_t vertex = 4; vertex < mesh.vertexCount(); ++vertex) {
        mesh.positions[3 * vertex + 2] = mesh.positions[3 * vertex] - 3;
        mesh.positions[3 * vertex] = 3;
    }
    EXPECT_EQ(edgeCount(mesh), 10U);
}

TEST(FeatureEdges, TrianglesWithoutAnAreaDrawNothing) {
    Mesh mesh = sharedBox();
    mesh.indices.insert(mesh.indices.end(), {0, 0, 1, 3, 3, 3});
    EXPECT_GE(edgeCount(mesh), 12U);
    EXPECT_LE(edgeCount(mesh), 13U);
    EXPECT_EQ(edgeCount(Mesh()), 0U);
}
