#include "platform/vis/QorBoundingBox.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

void ExpectNear(const QorMathVector& iFirst,
                const QorMathVector& iSecond,
                double iTolerance = 1.0e-12) {
    EXPECT_NEAR(iFirst.x, iSecond.x, iTolerance);
    EXPECT_NEAR(iFirst.y, iSecond.y, iTolerance);
    EXPECT_NEAR(iFirst.z, iSecond.z, iTolerance);
}

TEST(Math, AnInverseTakesBack) {
    QorMathTransformation transformation = QorMathTransformation::Rotation({1.0, 2.0, 3.0}, 0.7);
    transformation.axes[1] = transformation.axes[1] * 2.5;
    transformation.origin = {4.0, -5.0, 6.0};
    const QorMathPoint point{7.0, 8.0, -9.0};
    ExpectNear(transformation.Inverse().Apply(transformation.Apply(point)), point);
    ExpectNear((transformation * transformation.Inverse()).Apply(point), point);
}

TEST(Math, ASingularTransformationInvertsToTheIdentity) {
    QorMathTransformation flat;
    flat.axes[2] = {};
    EXPECT_EQ(flat.Inverse(), QorMathTransformation());
}

TEST(Math, FromZToTurnsZToEveryDirection) {
    for (const QorMathVector& direction :
         {QorMathVector{0, 0, 1}, {0, 0, -1}, {1, 0, 0}, {0, -3, 0}, {1, 1, 1}, {1.0e-9, 0, -1}}) {
        const QorMathTransformation turn = QorMathTransformation::FromZTo(direction);
        ExpectNear(turn.ApplyToVector({0, 0, 1}), direction.Normalized());
        EXPECT_NEAR(turn.Determinant(), 1.0, 1.0e-12);
    }
}

TEST(Math, WhatHasNoDirectionNormalizesToTheDefault) {
    const QorMathVector fallback{1.0, 0.0, 0.0};
    EXPECT_EQ(QorMathVector().NormalizedOr(fallback), fallback);
    EXPECT_EQ((QorMathVector{std::nan(""), 0.0, 0.0}.NormalizedOr(fallback)), fallback);
    EXPECT_EQ(
        (QorMathVector{std::numeric_limits<double>::infinity(), 0.0, 0.0}.NormalizedOr(fallback)),
        fallback);
}

TEST(BoundingBox, GrowsByPointsThatAreNumbers) {
    Qor3DBoundingBox box;
    EXPECT_TRUE(box.IsEmpty());
    box.Add(QorMathPoint{std::nan(""), 0.0, 0.0});
    EXPECT_TRUE(box.IsEmpty());
    EXPECT_EQ(box.Extent(), QorMathVector());
    box.Add(QorMathPoint{1.0, 2.0, 3.0});
    box.Add(QorMathPoint{-1.0, 5.0, 0.0});
    EXPECT_EQ(box.low, (QorMathPoint{-1.0, 2.0, 0.0}));
    EXPECT_EQ(box.high, (QorMathPoint{1.0, 5.0, 3.0}));
}

TEST(BoundingBox, AnEmptyOneStaysEmptyWhenItIsMoved) {
    EXPECT_TRUE(
        Qor3DBoundingBox().Transformed(QorMathTransformation::Translation({1, 2, 3})).IsEmpty());
}

} // namespace
