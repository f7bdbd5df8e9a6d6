#include "tests/platform/vis/VisTest.h"

namespace {

class Viewpoints
    : public QorTestApplication
    , public QorEventSubscriber {
public:
    void EventCB(
        QorEventName iEvent, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {
        events.push_back(iEvent.GetText());
    }

protected:
    std::vector<std::string> events;
};

TEST_F(Viewpoints, OneModelUnitIsOnePixelAtTheScaleOfTheSupport) {
    const float unit = 3.78F;
    const Qor2DViewpoint_var view =
        QorMake<Qor2DViewpoint>(QorMathPoint2D{0, 0}, 1.0 / static_cast<double>(unit));
    const QorMathPoint2D corner = view->PixelToModel({0, 0}, 400, 300, unit);
    EXPECT_NEAR(corner.x, -200.0, 1.0e-9);
    EXPECT_NEAR(corner.y, 150.0, 1.0e-9);
    const QorMathPoint2D pixel = view->ModelToPixel(corner, 400, 300, unit);
    EXPECT_NEAR(pixel.x, 0.0, 1.0e-9);
    EXPECT_NEAR(pixel.y, 0.0, 1.0e-9);
}

TEST_F(Viewpoints, AWindowComesBackAsItWasSet) {
    const Qor2DViewpoint_var view = QorMake<Qor2DViewpoint>();
    view->SetWindow(232, 523, 3.78F, 0.0, 232.0, 0.0);
    double left = 1;
    double right = 0;
    double bottom = 0;
    double top = 1;
    view->GetWindow(232, 523, 3.78F, left, right, bottom, top);
    EXPECT_NEAR(left, 0.0, 1.0e-9);
    EXPECT_NEAR(right, 232.0, 1.0e-9);
    EXPECT_NEAR(bottom, -523.0, 1.0e-9);
    EXPECT_NEAR(top, 0.0, 1.0e-9);
    view->SetWindow(232, 523, 3.78F, 5.0, 5.0, 0.0);
    view->GetWindow(232, 523, 3.78F, left, right, bottom, top);
    EXPECT_NEAR(right, 232.0, 1.0e-9);
}

TEST_F(Viewpoints, WhatIsProjectedLiesOnItsEyeRay) {
    const Qor3DViewpoint_var view = QorMake<Qor3DViewpoint>();
    view->SetView({30, -40, 25}, {1, 2, 3}, {0, 0, 1});
    view->SetFieldOfView(45.0);
    for (const auto projection :
         {Qor3DViewpoint::Projection::Perspective, Qor3DViewpoint::Projection::Parallel}) {
        view->SetProjection(projection);
        const QorMathPoint point{4, 5, -6};
        QorMathPoint2D pixel;
        ASSERT_TRUE(view->Project(point, 640, 480, pixel));
        const QorMathRay ray = view->GetEyeRay(pixel, 640, 480);
        const QorMathVector offset = point - ray.origin;
        EXPECT_NEAR((offset ^ ray.direction).Norm(), 0.0, 1.0e-9);
        QorMathPoint2D center;
        ASSERT_TRUE(view->Project({1, 2, 3}, 640, 480, center));
        EXPECT_NEAR(center.x, 320.0, 1.0e-9);
        EXPECT_NEAR(center.y, 240.0, 1.0e-9);
    }
}

TEST_F(Viewpoints, BothProjectionsShowTheSameHeightAtTheTarget) {
    const Qor3DViewpoint_var view = QorMake<Qor3DViewpoint>();
    view->SetView({0, -100, 0}, {0, 0, 0}, {0, 0, 1});
    const double half = 0.5 * view->GetViewHeight();
    for (const auto projection :
         {Qor3DViewpoint::Projection::Perspective, Qor3DViewpoint::Projection::Parallel}) {
        view->SetProjection(projection);
        QorMathPoint2D pixel;
        ASSERT_TRUE(view->Project({0, 0, half}, 640, 480, pixel));
        EXPECT_NEAR(pixel.y, 0.0, 1.0e-9);
    }
}

TEST_F(Viewpoints, WhatMakesNoViewIsBroughtToOneThatDoes) {
    const Qor3DViewpoint_var view = QorMake<Qor3DViewpoint>();
    view->SetView({0, 0, 10}, {0, 0, 0}, {0, 0, 1}); // up along the sight
    EXPECT_GT((view->GetUp() ^ view->GetSight()).Norm(), 0.5);
    const QorMathPoint eye = view->GetEye();
    view->SetView({1, 2, 3}, {1, 2, 3}, {0, 0, 1});
    EXPECT_EQ(view->GetEye(), eye);
    view->SetView({std::nan(""), 2, 3}, {0, 0, 0}, {0, 0, 1});
    EXPECT_EQ(view->GetEye(), eye);
    view->SetFieldOfView(500.0);
    EXPECT_EQ(view->GetFieldOfView(), 170.0);
    QorMathPoint2D pixel;
    EXPECT_FALSE(view->Project({0, 0, 20}, 640, 480, pixel)); // behind the eye
}

TEST_F(Viewpoints, AnAnimationIsAnnouncedOnceAndEndsInAModification) {
    const Qor3DViewpoint_var view = QorMake<Qor3DViewpoint>();
    for (const QorEventName& event :
         {QorViewpoint::VIEWPOINT_ANIMATION_STARTED, QorViewpoint::VIEWPOINT_MODIFIED})
        view->GetCallbackManager()->AddCallback(this, event, &Viewpoints::EventCB);
    view->SetAnimated(true);
    view->SetAnimated(true);
    view->SetAnimated(false);
    view->SetAnimated(false);
    EXPECT_EQ(events,
              (std::vector<std::string>{"VIEWPOINT_ANIMATION_STARTED", "VIEWPOINT_MODIFIED"}));
}

} // namespace
