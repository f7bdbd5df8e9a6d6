#include "workbench/document/ProductReps.h"

#include "tests/document/DocumentTest.h"
#include "workbench/document/product/ProductQuery.h"

#include <set>

using namespace qor::document;
using namespace qor::document::testing;

namespace {

const Qor3DMeshRep& meshRep(const ProductNode& node, std::size_t place) {
    return dynamic_cast<const Qor3DMeshRep&>(*node.bag()->GetChildren()[place]);
}

Product namedRoot(const std::string& name) {
    Product product;
    product.materials.emplace_back().name = "steel";
    product.meshes.push_back(gridMesh(1, 10));
    product.meshes[0].groups[0].material = 0;
    product.parts = {{"part", 0, none}};
    product.nodes = {{name, none, 0, none, identityTransform, true}};
    return product;
}

} // namespace

TEST(ProductReps, InstancesShareTheMeshesOfTheirPartOneAMaterialGroup) {
    const ProductReps reps(sampleProduct());
    const ProductNode& first = *reps.nodes()[1];
    const ProductNode& second = *reps.nodes()[2];
    ASSERT_EQ(first.bag()->GetChildren().size(), 2U);
    ASSERT_EQ(second.bag()->GetChildren().size(), 2U);
    EXPECT_EQ(meshRep(first, 0).GetMesh(), meshRep(second, 0).GetMesh());
    EXPECT_EQ(meshRep(first, 1).GetMesh(), meshRep(second, 1).GetMesh());
    EXPECT_EQ(meshRep(first, 0).GetMesh()->CountTriangles(), 2U);
    EXPECT_EQ(meshRep(first, 1).GetMesh()->CountTriangles(), 16U);
    EXPECT_EQ(reps.countInstances(1), 2);
    EXPECT_EQ(reps.countTriangles(), 36U);
}

TEST(ProductReps, MaterialsAndPicturesAreShared) {
    const ProductReps reps(sampleProduct());
    ASSERT_EQ(reps.materials().size(), 1U);
    const QorGraphicMaterial* paint = reps.materials()[0].Get();
    EXPECT_EQ(meshRep(*reps.nodes()[1], 0).GetMaterial(), paint);
    EXPECT_EQ(meshRep(*reps.nodes()[2], 1).GetMaterial(), paint) << "the instance names it";
    EXPECT_EQ(paint->GetTexture(QorTextureSlot::ClearcoatNormal).image.Get(),
              reps.images()[0].Get());
    EXPECT_EQ(*reps.images()[0]->GetPixels(), (QorPixelImage::Pixels{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(ProductReps, TheTreeIsThatOfTheProduct) {
    const ProductReps reps(sampleProduct());
    ASSERT_EQ(reps.roots().size(), 1U);
    const ProductNode& root = *reps.roots()[0];
    EXPECT_EQ(root.name(), "root");
    EXPECT_EQ(root.parent(), nullptr);
    ASSERT_EQ(root.children().size(), 2U);
    EXPECT_EQ(root.children()[1]->name(), "plate:2");
    EXPECT_EQ(root.children()[1]->parent(), &root);
    EXPECT_FALSE(root.children()[1]->isVisible());
    EXPECT_TRUE(root.children()[0]->isShown());
}

TEST(ProductReps, ANodeIsFoundFromAnyOfItsRepsAndFromAPickedPath) {
    const ProductReps reps(sampleProduct());
    const ProductNode& plate = *reps.nodes()[1];
    EXPECT_EQ(reps.nodeOf(plate.bag()), &plate);
    EXPECT_EQ(reps.nodeOf(&meshRep(plate, 1)), &plate);
    EXPECT_EQ(reps.nodeOf(reps.root()), nullptr);
    EXPECT_EQ(reps.nodeOf(nullptr), nullptr);
    const QorMathRay ray{{5.0, 5.0, 100.0}, {0.0, 0.0, -1.0}};
    const QorPicker::Hit hit = QorPicker::Pick(*reps.root(), ray, 1000.0);
    EXPECT_EQ(reps.nodeOn(hit.path), &plate);
    EXPECT_EQ(reps.nodeOn({}), nullptr);
}

TEST(ProductReps, WorldBoxesAreExactAndCountWhatIsHidden) {
    const Product product = sampleProduct();
    const auto known = boundingBox(product);
    const ProductReps reps(product);
    const Qor3DBoundingBox box = reps.worldBox();
    EXPECT_EQ(box.low, (QorMathPoint{known->low[0], known->low[1], known->low[2]}));
    EXPECT_EQ(box.high, (QorMathPoint{known->high[0], known->high[1], known->high[2]}));
    const Qor3DBoundingBox second = reps.worldBox(*reps.nodes()[2]);
    EXPECT_EQ(second.low, (QorMathPoint{100.0, 0.0, 5.0}));
    EXPECT_EQ(second.high, (QorMathPoint{130.0, 0.0, 35.0}));
}

TEST(ProductReps, AMeshComesBackFromItsPiecesWithTheSameTriangles) {
    const Mesh mesh = sampleProduct().meshes[0];
    const Mesh once = meshOf(piecesOf(mesh));
    EXPECT_EQ(once.indices.size(), mesh.indices.size());
    EXPECT_EQ(once.groups, mesh.groups);
    for (std::size_t i = 0; i < mesh.indices.size(); ++i)
        for (std::size_t axis = 0; axis < 3; ++axis)
            ASSERT_EQ(once.positions[3 * once.indices[i] + axis],
                      mesh.positions[3 * mesh.indices[i] + axis]);
    EXPECT_EQ(once.edges.size(), mesh.edges.size());
    EXPECT_EQ(meshOf(piecesOf(once)), once) << "and is the same from then on";
}

TEST(ProductReps, AMeshOfOneGroupIsMovedNotCopied) {
    Mesh mesh = gridMesh(3, 30);
    const float* positions = mesh.positions.data();
    const MeshPieces pieces = piecesOf(std::move(mesh));
    EXPECT_EQ(pieces.pieces[0].mesh->GetData().positions.data(), positions);
}

TEST(ProductReps, WhatIsAppendedKeepsItsReferencesAndGetsFreeNames) {
    ProductReps reps(namedRoot("gear"));
    reps.append(ProductReps(namedRoot("gear")));
    reps.append(ProductReps(namedRoot("gear")));
    reps.append(ProductReps(namedRoot("shaft")));
    ASSERT_EQ(reps.roots().size(), 4U);
    std::vector<std::string> names;
    for (const ProductNode* root : reps.roots())
        names.push_back(root->name());
    EXPECT_EQ(names, (std::vector<std::string>{"gear", "gear.2", "gear.3", "shaft"}));
    EXPECT_EQ(reps.facts().nodes[2].name, "gear.3");
    EXPECT_EQ(reps.facts().materials[3].name, "steel.4");
    for (int i = 0; i < 4; ++i) {
        const ProductNode& node = *reps.nodes()[static_cast<std::size_t>(i)];
        EXPECT_EQ(node.id(), i);
        EXPECT_EQ(node.part(), i);
        EXPECT_EQ(meshRep(node, 0).GetMaterial(),
                  reps.materials()[static_cast<std::size_t>(i)].Get());
        EXPECT_EQ(reps.meshes()[static_cast<std::size_t>(i)].pieces[0].material, i);
    }
    EXPECT_EQ(reps.root()->GetChildren().size(), 4U);
}

TEST(ProductReps, ManyRootsOfOneNameAreNumberedInATurn) {
    Product many;
    for (int i = 0; i < 20000; ++i)
        many.nodes.push_back({"bolt", none, none, none, identityTransform, true});
    ProductReps reps(namedRoot("bolt"));
    reps.append(ProductReps(std::move(many)));
    std::set<std::string> names;
    for (const ProductNode* root : reps.roots())
        names.insert(root->name());
    EXPECT_EQ(names.size(), 20001U);
}

TEST(ProductReps, AnEmptyProductTakesTheUnitOfTheFirstOne) {
    ProductReps reps;
    EXPECT_TRUE(reps.worldBox().IsEmpty());
    reps.append(ProductReps(sampleProduct()));
    EXPECT_EQ(reps.facts().unit.name, "inch");
    reps.append(ProductReps(namedRoot("metric")));
    EXPECT_EQ(reps.facts().unit.name, "inch");
}
