#include "tests/platform/vis/VisTest.h"

#include <random>

namespace {

class Reps : public QorTestApplication {};

TEST_F(Reps, ABagMovesItsBoxAndHoldsItsChildren) {
    const QorVar<Qor2DBagRep> bag = QorMake<Qor2DBagRep>();
    bag->AddChild(QorMake<Qor2DLineRep>(std::vector<QorMathPoint2D>{{0, 0}, {4, 2}}));
    bag->SetTranslation({10, 20});
    EXPECT_EQ(bag->GetBoundingBox().low, (QorMathPoint2D{10, 20}));
    EXPECT_EQ(bag->GetBoundingBox().high, (QorMathPoint2D{14, 22}));
}

TEST_F(Reps, AddingAChildAgainMovesItToTheEnd) {
    const QorVar<Qor2DBagRep> bag = QorMake<Qor2DBagRep>();
    const Qor2DRep_var first = QorMake<Qor2DPointRep>(QorMathPoint2D{1, 1});
    const Qor2DRep_var second = QorMake<Qor2DPointRep>(QorMathPoint2D{2, 2});
    bag->AddChild(first);
    bag->AddChild(second);
    bag->AddChild(first);
    ASSERT_EQ(bag->GetChildren().size(), 2U);
    EXPECT_EQ(bag->GetChildren()[1], first);
}

TEST_F(Reps, PickingFindsWhatIsDrawnLastThroughTheBags) {
    const QorVar<Qor2DBagRep> root = QorMake<Qor2DBagRep>();
    const QorVar<Qor2DBagRep> below = QorMake<Qor2DBagRep>();
    const QorVar<Qor2DBagRep> above = QorMake<Qor2DBagRep>();
    const auto square = [] {
        QorVar<Qor2DCustomRep> rep = QorMake<Qor2DCustomRep>();
        rep->AddPrimitive(Qor2DRectangleGP{{0, 0}, {10, 10}});
        return rep;
    };
    below->AddChild(square());
    above->AddChild(square());
    above->SetTranslation({5, 5});
    root->AddChild(below);
    root->AddChild(above);
    QorPickPath path = QorPicker::Pick(*root, {7, 7}, 0.0);
    ASSERT_EQ(path.size(), 3U);
    EXPECT_EQ(path[1].Get(), above.Get());
    path = QorPicker::Pick(*root, {2, 2}, 0.0);
    EXPECT_EQ(path.at(1).Get(), below.Get());
    EXPECT_TRUE(QorPicker::Pick(*root, {30, 2}, 0.0).empty());
    above->SetPickable(false);
    EXPECT_EQ(QorPicker::Pick(*root, {7, 7}, 0.0).at(1).Get(), below.Get());
}

TEST_F(Reps, AGivenBoxIsPickedWhateverIsDrawn) {
    const QorVar<Qor2DCustomRep> title = QorMake<Qor2DCustomRep>();
    title->AddPrimitive(Qor2DAnnotationTextGP{{0, 0}, "title", 7, 15});
    Qor2DBoundingBox box;
    box.Add(QorMathPoint2D{-20, -15});
    box.Add(QorMathPoint2D{20, 0});
    title->SetBoundingBox(box);
    EXPECT_FALSE(QorPicker::Pick(*title, {15, -8}, 0.0).empty());
}

TEST_F(Reps, TheBoxInAFrameIsExactNotTheBoxOfABox) {
    const QorVar<Qor3DBagRep> root = QorMake<Qor3DBagRep>();
    const QorVar<Qor3DBagRep> turned = QorMake<Qor3DBagRep>();
    turned->SetMatrix(QorMathTransformation::Rotation({0, 0, 1}, std::acos(-1.0) / 4));
    const QorMesh_var square = MakeSquare();
    turned->AddChild(QorMake<Qor3DMeshRep>(square.Get(), nullptr));
    root->AddChild(turned);
    const QorMathTransformation back =
        QorMathTransformation::Rotation({0, 0, 1}, -std::acos(-1.0) / 4);
    const Qor3DBoundingBox box = Qor3DBoundingBoxRender(back).Render(*root);
    EXPECT_NEAR(box.Extent().x, 2.0, 1.0e-12);
    EXPECT_NEAR(root->GetBoundingBox().Transformed(back).Extent().x, 4.0, 1.0e-6);
    turned->SetShown(false);
    EXPECT_TRUE(Qor3DBoundingBoxRender(back).Render(*root).IsEmpty());
}

TEST_F(Reps, PickingInSpaceFindsTheNearestThroughScaledBags) {
    const QorVar<Qor3DBagRep> root = QorMake<Qor3DBagRep>();
    const QorMesh_var square = MakeSquare();
    for (const double z : {0.0, 3.0}) {
        const QorVar<Qor3DBagRep> bag = QorMake<Qor3DBagRep>();
        QorMathTransformation place = QorMathTransformation::Translation({0, 0, z});
        place.axes[0] = {2, 0, 0};
        place.axes[2] = {0, 0, 0.5};
        bag->SetMatrix(place);
        bag->AddChild(QorMake<Qor3DMeshRep>(square.Get(), nullptr));
        root->AddChild(bag);
    }
    const QorPicker::Hit hit = QorPicker::Pick(*root, {{1.5, 0, 10}, {0, 0, -1}}, 1.0e30);
    EXPECT_DOUBLE_EQ(hit.distance, 7.0);
    ASSERT_EQ(hit.path.size(), 3U);
    EXPECT_EQ(hit.path[1].Get(), root->GetChildren()[1].Get());
}

TEST_F(Reps, TheGroundIsASquareAcrossItsVertical) {
    const QorRsc3DGroundRep_var ground =
        QorMake<QorRsc3DGroundRep>(QorMathPoint{0, 0, -1}, QorMathVector{0, 0, 5}, 4.0);
    EXPECT_EQ(ground->GetVertical(), (QorMathVector{0, 0, 1}));
    ground->Translate(3.0);
    EXPECT_EQ(ground->GetOrigin(), (QorMathPoint{0, 0, 2}));
    EXPECT_DOUBLE_EQ(QorPicker::Pick(*ground, {{1.9, 0, 10}, {0, 0, -1}}, 1.0e30).distance, 8.0);
    EXPECT_LT(QorPicker::Pick(*ground, {{2.1, 0, 10}, {0, 0, -1}}, 1.0e30).distance, 0.0);
    ground->SetTransparency(3.0F);
    EXPECT_EQ(ground->GetTransparency(), 1.0F);
}

/// Looks at every mesh of a tree of bags, without boxes.
double PickAll(const Qor3DBagRep& iBag, const QorMathRay& iRay) {
    const QorMathTransformation inverse = iBag.GetMatrix().Inverse();
    const QorMathRay ray{inverse.Apply(iRay.origin), inverse.ApplyToVector(iRay.direction)};
    double nearest = -1.0;
    for (const Qor3DRep_var& child : iBag.GetChildren()) {
        if (!child->IsShown() || !child->IsPickable())
            continue;
        const auto* bag = dynamic_cast<const Qor3DBagRep*>(child.Get());
        const auto* part = dynamic_cast<const Qor3DMeshRep*>(child.Get());
        const double found =
            bag != nullptr ? PickAll(*bag, ray) : part->GetMesh()->Intersect(ray, 1.0e30);
        if (found >= 0.0 && (nearest < 0.0 || found < nearest))
            nearest = found;
    }
    return nearest;
}

TEST_F(Reps, PickingInAnAssemblyLeavesOutNothingThatLooksAtAllOfItFind) {
    const QorMesh_var square = MakeSquare(); // flat: its boxes are, too
    const auto root = QorMake<Qor3DBagRep>();
    std::mt19937 random(5);
    std::uniform_real_distribution<double> at(-1.0, 1.0);
    for (int group = 0; group < 10; ++group) {
        const auto assembly = QorMake<Qor3DBagRep>();
        for (int i = 0; i < 30; ++i) {
            const auto instance = QorMake<Qor3DBagRep>();
            instance->AddChild(QorMake<Qor3DMeshRep>(square.Get(), nullptr));
            QorMathTransformation matrix = QorMathTransformation::Rotation(
                {at(random), at(random), at(random)}, i % 3 == 0 ? 0.0 : at(random));
            matrix.axes[0] = matrix.axes[0] * 0.3;
            matrix.axes[1] = matrix.axes[1] * 0.2;
            matrix.origin = {2 * at(random), 2 * at(random), 2 * at(random)};
            instance->SetMatrix(matrix);
            instance->SetShown(i % 7 != 0);
            instance->SetPickable(i % 11 != 0);
            assembly->AddChild(instance);
        }
        assembly->SetMatrix(QorMathTransformation::Translation({at(random), at(random), 0.0}));
        root->AddChild(assembly);
    }
    int hits = 0;
    for (int i = 0; i < 500; ++i) {
        const QorMathRay ray{
            {2 * at(random), 2 * at(random), 10.0},
            i % 2 == 0 ? QorMathVector{0.0, 0.0, -1.0}
                       : QorMathVector{0.1 * at(random), 0.1 * at(random), -1.0}.Normalized()};
        const QorPicker::Hit hit = QorPicker::Pick(*root, ray, 1.0e30);
        EXPECT_DOUBLE_EQ(hit.distance, PickAll(*root, ray));
        EXPECT_EQ(hit.path.size(), hit.distance < 0.0 ? 0U : 4U);
        hits += hit.distance >= 0.0 ? 1 : 0;
    }
    EXPECT_GT(hits, 100);
    EXPECT_LT(hits, 500);
}

} // namespace
