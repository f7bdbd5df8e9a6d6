#include "workbench/document/product/ProductQuery.h"

#include "tests/document/product/SampleProduct.h"

#include <gtest/gtest.h>

using namespace qor::document;
using namespace qor::document::testing;

TEST(ProductQuery, TheBoxCoversEveryInstance) {
    const auto box = boundingBox(sampleProduct());
    ASSERT_TRUE(box);
    // The second plate stands upright: its y goes to z, five above, a hundred to the side.
    EXPECT_EQ(box->low, (Vector3{0, 0, 0}));
    EXPECT_EQ(box->high, (Vector3{130, 30, 35}));
}

TEST(ProductQuery, AProductWithoutShapesHasNoBox) {
    EXPECT_FALSE(boundingBox(Product()));
}

TEST(ProductQuery, TrianglesCountForEveryInstance) {
    EXPECT_EQ(instancedTriangleCount(sampleProduct()), 36U);
}

TEST(ProductQuery, TransformsAreCombinedDownTheTree) {
    Product product;
    product.nodes.resize(2);
    product.nodes[0].transform = {0, -1, 0, 10, 1, 0, 0, 0, 0, 0, 1, 0};
    product.nodes[1].parent = 0;
    product.nodes[1].transform = {1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3};
    EXPECT_EQ(transformPoint(worldTransforms(product)[1], {1, 0, 0}), (Vector3{8, 2, 3}));
}

TEST(ProductQuery, TheNearestMaterialWins) {
    Product product = sampleProduct();
    product.materials.resize(4);
    const MeshGroup own{0, 3, 3};
    const MeshGroup inherits{0, 3, none};
    EXPECT_EQ(effectiveMaterial(product, 1, own), 3);
    product.parts[1].material = 1;
    EXPECT_EQ(effectiveMaterial(product, 1, inherits), 1);
    product.nodes[1].material = 2;
    EXPECT_EQ(effectiveMaterial(product, 1, inherits), 2);
    product.nodes[1].material = product.parts[1].material = none;
    product.nodes[0].material = 3;
    EXPECT_EQ(effectiveMaterial(product, 1, inherits), 3);
    product.nodes[0].material = none;
    EXPECT_EQ(effectiveMaterial(product, 1, inherits), none);
}
