#include "platform/vis/QorView.h"
#include "tests/platform/vis/VisTest.h"

#include <numbers>
#include <random>

namespace {

constexpr double tolerance = 1.0e-9;
constexpr QorMathVector zUp{0, 0, 1};

void ExpectNear(const QorMathVector& iA, const QorMathVector& iB, double iTolerance = tolerance) {
    EXPECT_NEAR(iA.x, iB.x, iTolerance);
    EXPECT_NEAR(iA.y, iB.y, iTolerance);
    EXPECT_NEAR(iA.z, iB.z, iTolerance);
}

QorView Front() {
    return {{0, -100, 0}, {0, 0, 0}, zUp, 40.0, Qor3DViewpoint::Projection::Perspective};
}

QorMathPoint2D PixelOf(const QorView& iView, const QorMathPoint& iPoint) {
    const Qor3DViewpoint_var viewpoint = QorMake<Qor3DViewpoint>();
    iView.ApplyTo(*viewpoint);
    QorMathPoint2D pixel;
    EXPECT_TRUE(viewpoint->Project(iPoint, 400.0F, 300.0F, pixel));
    return pixel;
}

TEST(Views, AnOrbitKeepsThePivotOnItsPixelAndTheVerticalUpwards) {
    const QorMathPoint pivot{10, 5, -3};
    const QorView view = Front().Orbited(pivot, zUp, 0.7, 0.4);
    EXPECT_NEAR((view.eye - pivot).Norm(), (Front().eye - pivot).Norm(), tolerance);
    EXPECT_NEAR(view.Distance(), 100.0, tolerance);
    ExpectNear(view.up, zUp);
    EXPECT_NEAR(view.Frame().axes[2].z, std::sin(0.4), tolerance);
    // The horizontal of the screen stays level.
    EXPECT_NEAR(view.Frame().axes[0].z, 0.0, tolerance);
}

TEST(Views, AnOrbitEndsAtLookingAlongTheVertical) {
    const QorView top = Front().Orbited({}, zUp, 0.0, 10.0);
    ExpectNear(top.eye, {0, 0, 100}, 1.0e-6);
    ExpectNear(top.up, {0, 1, 0}, 1.0e-6);
    const QorView back = top.Orbited({}, zUp, 0.0, -0.5 * std::numbers::pi);
    ExpectNear(back.eye, {0, -100, 0}, 1.0e-6);
    ExpectNear(back.up, zUp, 1.0e-6);
}

TEST(Views, AZoomKeepsItsPointOnItsPixel) {
    for (const auto projection :
         {Qor3DViewpoint::Projection::Perspective, Qor3DViewpoint::Projection::Parallel}) {
        QorView view = Front();
        view.projection = projection;
        const QorMathPoint point{12, -20, 7};
        const QorMathPoint2D before = PixelOf(view, point);
        const QorView zoomed = view.Zoomed(point, 0.5);
        EXPECT_NEAR(zoomed.Distance(), 50.0, tolerance);
        EXPECT_NEAR(PixelOf(zoomed, point).x, before.x, 1.0e-6);
        EXPECT_NEAR(PixelOf(zoomed, point).y, before.y, 1.0e-6);
    }
}

TEST(Views, AZoomStopsBeforeTheViewIsLost) {
    EXPECT_NEAR(Front().Zoomed({}, 1.0e-30).Distance(), 1.0e-3, 1.0e-12);
    EXPECT_NEAR(Front().Zoomed({}, 1.0e30).Distance(), 1.0e9, 1.0);
}

TEST(Views, AFitShowsAllCornersAndTouchesTheMargin) {
    Qor3DBoundingBox box;
    box.Add(QorMathPoint{-5, -40, 2});
    box.Add(QorMathPoint{60, 10, 30});
    for (const auto projection :
         {Qor3DViewpoint::Projection::Perspective, Qor3DViewpoint::Projection::Parallel})
        for (const QorMathVector& sight : {QorMathVector{0, 1, 0}, QorMathVector{-1, 1, -1}}) {
            QorView view = Front().Seen(sight, zUp);
            view.projection = projection;
            view = view.Fitted(box, 400.0 / 300.0);
            double reach = 0.0; // 1 at the viewer's edge
            for (const double x : {box.low.x, box.high.x})
                for (const double y : {box.low.y, box.high.y})
                    for (const double z : {box.low.z, box.high.z}) {
                        const QorMathPoint2D pixel = PixelOf(view, {x, y, z});
                        reach = std::max({reach, std::abs(pixel.x - 200.0) / 200.0,
                                          std::abs(pixel.y - 150.0) / 150.0});
                    }
            EXPECT_NEAR(reach, 1.0 / 1.05, 1.0e-6);
            ExpectNear(view.target, box.Center());
            ExpectNear((view.target - view.eye).Normalized(), sight.Normalized());
        }
}

TEST(Views, EveryFitHoldsAllCornersAndWastesNoRoom) {
    std::mt19937 random(6);
    std::uniform_real_distribution<double> at(-1.0, 1.0);
    std::uniform_real_distribution<double> size(-3.0, 4.0); // powers of ten
    std::uniform_real_distribution<double> angle(2.0, 120.0);
    std::uniform_real_distribution<double> side(50.0, 3000.0);
    const auto vector = [&] {
        return QorMathVector{at(random), at(random), at(random)};
    };
    for (int i = 0; i < 2000; ++i) {
        const QorMathVector extent{std::pow(10.0, size(random)), std::pow(10.0, size(random)),
                                   std::pow(10.0, size(random))};
        const QorMathPoint low = vector() * std::pow(10.0, size(random));
        Qor3DBoundingBox box;
        box.Add(low);
        box.Add(low + extent);
        QorView view = Front().Seen(vector(), vector());
        view.fieldOfView = angle(random);
        if (i % 2 == 0)
            view.projection = Qor3DViewpoint::Projection::Parallel;
        const auto width = static_cast<float>(std::round(side(random)));
        const auto height = static_cast<float>(std::round(side(random)));
        const Qor3DViewpoint_var viewpoint = QorMake<Qor3DViewpoint>();
        view.Fitted(box, static_cast<double>(width) / static_cast<double>(height))
            .ApplyTo(*viewpoint);
        double reach = 0.0; // 1 at the viewer's edge
        for (const double x : {box.low.x, box.high.x})
            for (const double y : {box.low.y, box.high.y})
                for (const double z : {box.low.z, box.high.z}) {
                    QorMathPoint2D pixel;
                    ASSERT_TRUE(viewpoint->Project({x, y, z}, width, height, pixel)) << i;
                    const double halfWidth = 0.5 * static_cast<double>(width);
                    const double halfHeight = 0.5 * static_cast<double>(height);
                    reach = std::max({reach, std::abs(pixel.x - halfWidth) / halfWidth,
                                      std::abs(pixel.y - halfHeight) / halfHeight});
                }
        ASSERT_LE(reach, 1.0 / 1.05 + 1.0e-6) << i;
        // A parallel view stays in front of a box that is deep along the sight; nothing else does.
        if (view.projection == Qor3DViewpoint::Projection::Perspective) {
            ASSERT_NEAR(reach, 1.0 / 1.05, 1.0e-6) << i;
        }
    }
}

TEST(Views, AFitOfNothingChangesNothingAndOfAPointKeepsTheDistance) {
    EXPECT_EQ(Front().Fitted({}, 1.0), Front());
    Qor3DBoundingBox point;
    point.Add(QorMathPoint{1, 2, 3});
    const QorView view = Front().Fitted(point, 1.0);
    EXPECT_NEAR(view.Distance(), 100.0, tolerance);
    ExpectNear(view.target, {1, 2, 3});
}

TEST(Views, StandardViewsLookFromTheirSides) {
    struct Row {
        QorStandardView view;
        QorMathVector right;
        QorMathVector up;
    };

    const Row rows[] = {
        {QorStandardView::Front, {1, 0, 0}, {0, 0, 1}},
        {QorStandardView::Back, {-1, 0, 0}, {0, 0, 1}},
        {QorStandardView::Left, {0, -1, 0}, {0, 0, 1}},
        {QorStandardView::Right, {0, 1, 0}, {0, 0, 1}},
        {QorStandardView::Top, {1, 0, 0}, {0, 1, 0}},
        {QorStandardView::Bottom, {1, 0, 0}, {0, -1, 0}},
        {QorStandardView::Isometric, QorMathVector{1, 1, 0}.Normalized(),
         QorMathVector{-1, 1, 2}.Normalized()},
    };
    for (const Row& row : rows) {
        const QorView view = QorSeenFrom(row.view, zUp, Front());
        ExpectNear(view.Frame().axes[0], row.right);
        ExpectNear(view.Frame().axes[1], row.up);
        EXPECT_NEAR(view.Distance(), 100.0, tolerance);
    }
    // With Y up, front looks along -Z.
    const QorView front = QorSeenFrom(QorStandardView::Front, {0, 1, 0}, Front());
    ExpectNear(front.eye, {0, 0, 100});
    ExpectNear(front.up, {0, 1, 0});
}

TEST(Views, AWayBetweenTwoViewsBeginsAndEndsThere) {
    const QorView from = Front();
    for (const auto side : {QorStandardView::Back, QorStandardView::Top, QorStandardView::Front,
                            QorStandardView::Isometric}) {
        QorView to = QorSeenFrom(side, zUp, from).Moved({5, 6, 7}).Zoomed({}, 0.25);
        to.fieldOfView = 20.0;
        ExpectNear(from.Towards(to, 0.0).eye, from.eye, 1.0e-6);
        ExpectNear(from.Towards(to, 1.0).eye, to.eye, 1.0e-6);
        ExpectNear(from.Towards(to, 1.0).Frame().axes[1], to.Frame().axes[1], 1.0e-6);
        const QorView half = from.Towards(to, 0.5);
        EXPECT_NEAR(half.Distance(), 50.0, 1.0e-6); // halfway by ratio between 100 and 25
        EXPECT_NEAR(half.fieldOfView, 30.0, tolerance);
    }
}

} // namespace
