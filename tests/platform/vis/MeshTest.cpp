#include "platform/vis/QorMeshTree.h"
#include "tests/platform/vis/VisTest.h"

#include <random>
#include <thread>

namespace {

constexpr double far = 1.0e30;

/// A bumpy surface over the unit square, iSide × iSide vertices.
QorMesh::Data MakeTerrain(std::uint32_t iSide) {
    QorMesh::Data data;
    std::mt19937 random(1);
    std::uniform_real_distribution<float> bump(0.0F, 0.1F);
    for (std::uint32_t row = 0; row < iSide; ++row)
        for (std::uint32_t column = 0; column < iSide; ++column)
            data.positions.insert(data.positions.end(),
                                  {static_cast<float>(column) / static_cast<float>(iSide - 1),
                                   static_cast<float>(row) / static_cast<float>(iSide - 1),
                                   bump(random)});
    for (std::uint32_t row = 0; row + 1 < iSide; ++row)
        for (std::uint32_t column = 0; column + 1 < iSide; ++column) {
            const std::uint32_t at = row * iSide + column;
            data.indices.insert(data.indices.end(),
                                {at, at + 1, at + iSide, at + 1, at + iSide + 1, at + iSide});
        }
    return data;
}

TEST(Mesh, TheNearestTriangleIsFoundAsByLookingAtAll) {
    const QorMesh::Data terrain = MakeTerrain(40);
    const QorMesh_var mesh = QorMake<QorMesh>(terrain);
    // Each triangle as a mesh of its own answers without help of a hierarchy worth the name.
    std::vector<QorMesh_var> singles;
    for (std::size_t i = 0; i < terrain.indices.size(); i += 3) {
        QorMesh::Data one;
        one.positions = terrain.positions;
        one.indices.assign(terrain.indices.begin() + static_cast<std::ptrdiff_t>(i),
                           terrain.indices.begin() + static_cast<std::ptrdiff_t>(i + 3));
        singles.push_back(QorMake<QorMesh>(one));
    }
    std::mt19937 random(2);
    std::uniform_real_distribution<double> position(-0.2, 1.2);
    std::uniform_real_distribution<double> slope(-1.0, 1.0);
    int hits = 0;
    for (int i = 0; i < 200; ++i) {
        const QorMathRay ray{{position(random), position(random), 0.5},
                             QorMathVector{slope(random), slope(random), -0.5}.Normalized()};
        double expected = -1.0;
        for (const QorMesh_var& single : singles) {
            const double distance = single->Intersect(ray, expected < 0.0 ? far : expected);
            if (distance >= 0.0)
                expected = distance;
        }
        EXPECT_DOUBLE_EQ(mesh->Intersect(ray, far), expected);
        hits += expected >= 0.0 ? 1 : 0;
    }
    EXPECT_GT(hits, 50);
    EXPECT_LT(hits, 200);
}

TEST(Mesh, NothingIsFoundBeyondTheFarthestDistance) {
    const QorMathRay ray{{0.2, 0.1, 5.0}, {0.0, 0.0, -1.0}};
    EXPECT_DOUBLE_EQ(MakeSquare()->Intersect(ray, far), 5.0);
    EXPECT_LT(MakeSquare()->Intersect(ray, 5.0), 0.0);
    EXPECT_LT(MakeSquare()->Intersect({{0.2, 0.1, -5.0}, {0.0, 0.0, -1.0}}, far), 0.0);
}

TEST(Mesh, DropsWhatIsNoTriangle) {
    QorMesh::Data data;
    data.positions = {0, 0, 0, 1, 0, 0, 0, 1, 0, std::nanf(""), 0, 0};
    data.indices = {0, 1, 2, 0, 1, 9, 0, 1, 3, 0, 1};
    data.normals = {1, 0, 0};
    const QorMesh_var mesh = QorMake<QorMesh>(data);
    EXPECT_EQ(mesh->CountTriangles(), 1U);
    EXPECT_TRUE(mesh->GetData().normals.empty());
    EXPECT_EQ(mesh->GetBoundingBox().high, (QorMathPoint{1, 1, 0}));
}

TEST(Mesh, AnEmptyOneHasNoBoxAndIsNeverHit) {
    const QorMesh_var mesh = QorMake<QorMesh>(QorMesh::Data());
    EXPECT_TRUE(mesh->GetBoundingBox().IsEmpty());
    EXPECT_LT(mesh->Intersect({{0, 0, 1}, {0, 0, -1}}, far), 0.0);
}

TEST(Mesh, TrianglesOnTopOfEachOtherDoNotMakeTheTreeEndless) {
    QorMesh::Data data;
    data.positions = {0, 0, 0, 1, 0, 0, 0, 1, 0};
    for (int i = 0; i < 10000; ++i)
        data.indices.insert(data.indices.end(), {0, 1, 2});
    EXPECT_DOUBLE_EQ(QorMake<QorMesh>(data)->Intersect({{0.2, 0.2, 1}, {0, 0, -1}}, far), 1.0);
}

TEST(Mesh, PickingALargeOneNeverWaitsForItsTreeAndFindsTheSame) {
    auto data = std::make_shared<const QorMesh::Data>(MakeTerrain(200)); // 79,202 triangles
    ASSERT_GE(data->indices.size() / 3, QorMeshTree::large);
    const auto tree = std::make_shared<const QorMeshTree>(data);
    const QorMeshHierarchy hierarchy(*data);
    std::mt19937 random(4);
    std::uniform_real_distribution<double> position(0.0, 1.0);
    const auto next = [&] {
        return QorMathRay{{position(random), position(random), 1.0}, {0.0, 0.0, -1.0}};
    };
    EXPECT_FALSE(tree->HasTree());
    const QorMathRay first = next();
    const double found = tree->Intersect(first, far); // before there can be a tree
    EXPECT_DOUBLE_EQ(found, hierarchy.Intersect(first, far));
    EXPECT_GT(found, 0.0);
    while (!tree->HasTree())
        std::this_thread::yield();
    for (int i = 0; i < 100; ++i) {
        const QorMathRay ray = next();
        EXPECT_DOUBLE_EQ(tree->Intersect(ray, far),
                         QorMeshHierarchy::IntersectAll(*data, ray, far));
        EXPECT_DOUBLE_EQ(tree->Intersect(ray, 0.9),
                         QorMeshHierarchy::IntersectAll(*data, ray, 0.9));
    }
}

TEST(Mesh, AMeshMayGoWhileItsTreeIsMade) {
    for (int i = 0; i < 3; ++i) {
        const QorMesh_var mesh = QorMake<QorMesh>(MakeTerrain(200));
        EXPECT_GT(mesh->Intersect({{0.5, 0.5, 1.0}, {0.0, 0.0, -1.0}}, far), 0.0);
    }
}

TEST(Mesh, ATreeThatIsStoppedIsNotKept) {
    const auto tree =
        std::make_shared<const QorMeshTree>(std::make_shared<const QorMesh::Data>(MakeTerrain(40)));
    const std::atomic<bool> stop = true;
    tree->MakeTree(&stop);
    EXPECT_FALSE(tree->HasTree());
    EXPECT_GT(tree->Intersect({{0.5, 0.5, 1.0}, {0.0, 0.0, -1.0}}, far), 0.0);
    EXPECT_TRUE(tree->HasTree());
}

TEST(Mesh, SeveralThreadsMayPickAtOnce) {
    const QorMesh_var mesh = QorMake<QorMesh>(MakeTerrain(60));
    std::vector<std::thread> threads;
    std::atomic<int> hits = 0;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            hits += mesh->Intersect({{0.5, 0.5, 1}, {0, 0, -1}}, far) > 0.0 ? 1 : 0;
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(hits, 4);
}

} // namespace
