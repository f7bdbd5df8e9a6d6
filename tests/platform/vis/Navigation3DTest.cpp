#include "platform/vis/QorNavigation3DViewer.h"
#include "platform/vis/QorViewerClickNotification.h"
#include "tests/platform/vis/VisTest.h"

#include <utility>

namespace {

using Action = QorMouseEvent::Action;
using Button = QorMouseEvent::Button;
using namespace std::chrono_literals;

class Navigation3D
    : public VisTest
    , public QorEventSubscriber {
public:
    void EventCB(
        QorEventName iEvent, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {
        events.push_back(iEvent.GetText());
    }

    void ClickCB(QorEventName iEvent,
                 QorBaseUnknown* /*iPublisher*/,
                 QorNotification* iNotification,
                 QorSubscriberData /*iData*/,
                 QorCallbackId /*iCookie*/) {
        clicks.push_back(iEvent.GetText());
        const auto* click = dynamic_cast<QorViewerClickNotification*>(iNotification);
        ASSERT_NE(click, nullptr);
        clickedPath = click->GetPickPath();
        clickedWithControl = click->GetMouse().control;
    }

protected:
    using Events = std::vector<std::string>;
    static constexpr double near = 1.0e-6;

    Navigation3D()
        : viewer(new QorNavigation3DViewer(dialog, "viewer", QorDlgDefaultStyle, width, height)) {
        Viewpoint().SetView({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
        viewer->SetVertical({0, 1, 0});
        for (const QorEventName& event :
             {QorViewpoint::VIEWPOINT_ANIMATION_STARTED, QorViewpoint::VIEWPOINT_MODIFIED})
            Viewpoint().GetCallbackManager()->AddCallback(this, event, &Navigation3D::EventCB);
    }

    Qor3DViewpoint& Viewpoint() { return *viewer->GetMain3DViewpoint(); }

    /// The square from -1 to 1 in the middle of the viewer.
    void AddProduct() { viewer->AddRep(QorMake<Qor3DMeshRep>(MakeSquare().Get(), nullptr)); }

    bool Do(Action iAction, Button iButton, double iX, double iY, bool iShift = false) {
        QorMouseEvent event;
        event.action = iAction;
        event.button = iButton;
        event.pixel = {iX, iY};
        event.shift = iShift;
        return viewer->HandleMouse(event);
    }

    bool Wheel(double iSteps, double iX, double iY) {
        QorMouseEvent event;
        event.action = Action::Wheel;
        event.wheelSteps = iSteps;
        event.pixel = {iX, iY};
        return viewer->HandleMouse(event);
    }

    void Drag(Button iButton,
              const QorMathPoint2D& iFrom,
              const QorMathPoint2D& iTo,
              bool iShift = false) {
        EXPECT_TRUE(Do(Action::Press, iButton, iFrom.x, iFrom.y, iShift));
        EXPECT_TRUE(Do(Action::Move, iButton, iTo.x, iTo.y, iShift));
        EXPECT_TRUE(Do(Action::Release, iButton, iTo.x, iTo.y, iShift));
    }

    QorMathPoint2D PixelOf(const QorMathPoint& iPoint) {
        QorMathPoint2D pixel;
        EXPECT_TRUE(Viewpoint().Project(iPoint, width, height, pixel));
        return pixel;
    }

    void ListenToClicks() {
        for (const QorEventName& event : {QorNavigation3DViewer::VIEWER_PART_CLICKED,
                                          QorNavigation3DViewer::VIEWER_NOTHING_CLICKED})
            viewer->GetCallbackManager()->AddCallback(this, event, &Navigation3D::ClickCB);
    }

    Events TakeEvents() { return std::exchange(events, {}); }

    QorNavigation3DViewer* viewer;
    Events events;
    Events clicks;
    QorPickPath clickedPath;
    bool clickedWithControl = false;
    const Events wholeChange{"VIEWPOINT_ANIMATION_STARTED", "VIEWPOINT_MODIFIED"};
};

TEST_F(Navigation3D, TheLeftAndTheMiddleButtonTurnTheProduct) {
    for (const Button button : {Button::Left, Button::Middle}) {
        Viewpoint().SetView({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
        // Half the viewer's height to the left: a quarter of a turn to the right.
        Drag(button, {200, 20}, {50, 20});
        EXPECT_NEAR(Viewpoint().GetEye().x, 10.0, near);
        EXPECT_NEAR(Viewpoint().GetEye().z, 0.0, near);
        EXPECT_EQ(Viewpoint().GetUp(), (QorMathVector{0, 1, 0}));
        EXPECT_EQ(TakeEvents(), wholeChange);
    }
    Drag(Button::Left, {200, 20}, {200, 45}); // downwards: seen from higher up
    EXPECT_GT(Viewpoint().GetEye().y, 1.0);
}

TEST_F(Navigation3D, AProductTurnsAboutThePointThatWasTakenHoldOf) {
    AddProduct();
    const QorMathPoint point{0.5, 0.5, 0.0};
    const QorMathPoint2D pixel = PixelOf(point);
    Drag(Button::Middle, pixel, pixel + QorMathPoint2D{30, 10});
    EXPECT_NEAR((Viewpoint().GetEye() - point).Norm(), QorMathVector({-0.5, -0.5, 10}).Norm(),
                near);
    EXPECT_GT((Viewpoint().GetTarget() - QorMathPoint{}).Norm(), 0.01);
}

TEST_F(Navigation3D, TheRightButtonMovesTheProductWithThePointer) {
    AddProduct();
    const QorMathPoint point{0.5, -0.25, 0.0};
    for (const bool shift : {false, true}) {
        const QorMathPoint2D from = PixelOf(point);
        const QorMathPoint2D to = from + QorMathPoint2D{40, -25};
        Drag(shift ? Button::Middle : Button::Right, from, to, shift);
        EXPECT_NEAR(PixelOf(point).x, to.x, near);
        EXPECT_NEAR(PixelOf(point).y, to.y, near);
        EXPECT_EQ(Viewpoint().GetSight(), (QorMathVector{0, 0, -1}));
        EXPECT_EQ(TakeEvents(), wholeChange);
    }
}

TEST_F(Navigation3D, TheViewpointIsAnimatedFromTheFirstMovementToTheRelease) {
    Do(Action::Press, Button::Left, 100, 100);
    Do(Action::Move, Button::Left, 101, 101);
    EXPECT_FALSE(Viewpoint().IsAnimated());
    Do(Action::Move, Button::Left, 110, 100);
    EXPECT_TRUE(Viewpoint().IsAnimated());
    Do(Action::Move, Button::Left, 500, -20); // outside, while the button is held
    EXPECT_EQ(events, Events{"VIEWPOINT_ANIMATION_STARTED"});
    Do(Action::Release, Button::Right, 110, 100);
    EXPECT_TRUE(Viewpoint().IsAnimated());
    EXPECT_TRUE(Do(Action::Release, Button::Left, 110, 100));
    EXPECT_FALSE(Viewpoint().IsAnimated());
    EXPECT_EQ(events, wholeChange);
}

TEST_F(Navigation3D, AClickDispatchesNothingAndItsReleaseIsLeftToOthers) {
    for (const Button button : {Button::Left, Button::Middle, Button::Right}) {
        EXPECT_TRUE(Do(Action::Press, button, 100, 100));
        EXPECT_FALSE(Do(Action::Release, button, 100, 100));
    }
    EXPECT_FALSE(Do(Action::Move, Button::None, 200, 200));
    EXPECT_TRUE(events.empty());
    EXPECT_EQ(Viewpoint().GetEye(), (QorMathPoint{0, 0, 10}));
}

TEST_F(Navigation3D, AClickTellsWhichPartItHit) {
    AddProduct();
    const Qor3DRep* part = Viewpoint().GetRoot().GetChildren().front();
    ListenToClicks();
    Do(Action::Press, Button::Left, 200, 150);
    EXPECT_TRUE(clicks.empty()); // at the release
    QorMouseEvent release;
    release.action = Action::Release;
    release.button = Button::Left;
    release.pixel = {201, 149}; // a hand that trembles
    release.control = true;
    EXPECT_FALSE(viewer->HandleMouse(release));
    EXPECT_EQ(clicks, Events{"VIEWER_PART_CLICKED"});
    ASSERT_EQ(clickedPath.size(), 2U);
    EXPECT_EQ(clickedPath.front().Get(), &Viewpoint().GetRoot());
    EXPECT_EQ(clickedPath.back().Get(), part);
    EXPECT_TRUE(clickedWithControl);
    clickedPath.clear();
}

TEST_F(Navigation3D, AClickBesideTheProductOrOnWhatIsHiddenHitsNothing) {
    AddProduct();
    ListenToClicks();
    Do(Action::Press, Button::Left, 5, 5);
    Do(Action::Release, Button::Left, 5, 5);
    Viewpoint().GetRoot().GetChildren().front()->SetShown(false);
    Do(Action::Press, Button::Left, 200, 150);
    Do(Action::Release, Button::Left, 200, 150);
    EXPECT_EQ(clicks, (Events{"VIEWER_NOTHING_CLICKED", "VIEWER_NOTHING_CLICKED"}));
    EXPECT_TRUE(clickedPath.empty());
}

TEST_F(Navigation3D, DragsOtherButtonsAndSecondClicksTellOfNoClick) {
    AddProduct();
    ListenToClicks();
    Drag(Button::Left, {200, 150}, {230, 150});
    for (const Button button : {Button::Middle, Button::Right}) {
        Do(Action::Press, button, 200, 150);
        Do(Action::Release, button, 200, 150);
    }
    Do(Action::DoubleClick, Button::Left, 200, 150);
    Do(Action::Release, Button::Left, 200, 150);
    EXPECT_TRUE(clicks.empty());
}

TEST_F(Navigation3D, TheWheelBringsNearerWhatIsUnderThePointer) {
    AddProduct();
    const QorMathPoint point{0.5, 0.5, 0.0};
    const QorMathPoint2D pixel = PixelOf(point);
    EXPECT_TRUE(Wheel(2.0, pixel.x, pixel.y));
    EXPECT_NEAR(PixelOf(point).x, pixel.x, near);
    EXPECT_NEAR(PixelOf(point).y, pixel.y, near);
    EXPECT_LT(Viewpoint().GetEye().z, 8.0);
    EXPECT_TRUE(Wheel(-2.0, pixel.x, pixel.y));
    EXPECT_NEAR(Viewpoint().GetEye().z, 10.0, near);
    EXPECT_FALSE(Viewpoint().IsAnimated());
    EXPECT_EQ(events.size(), 4U);
    EXPECT_FALSE(Wheel(0.0, 1, 1));
}

TEST_F(Navigation3D, ADoubleClickOnNothingShowsAllAndOnTheProductNothingMore) {
    AddProduct();
    Do(Action::DoubleClick, Button::Left, 200, 150);
    Do(Action::Release, Button::Left, 200, 150);
    EXPECT_TRUE(events.empty());
    Do(Action::DoubleClick, Button::Left, 5, 5);
    Do(Action::Release, Button::Left, 5, 5);
    EXPECT_TRUE(Viewpoint().IsAnimated());
    loop.Advance(QorViewAnimation::duration);
    EXPECT_EQ(events, wholeChange);
    EXPECT_NEAR(PixelOf({1, 1, 0}).y, 150.0 - 150.0 / 1.05, near);
}

TEST_F(Navigation3D, ViewChangesTakeAMomentAndEndWhereTheyShould) {
    AddProduct();
    const unsigned long drawn = viewer->GetDrawCount();
    viewer->ShowStandardView(QorStandardView::Right);
    const QorMathPoint goal = viewer->GetView().eye;
    EXPECT_EQ(Viewpoint().GetEye(), (QorMathPoint{0, 0, 10}));
    loop.Advance(60ms);
    const double first = (Viewpoint().GetEye() - goal).Norm();
    loop.Advance(60ms);
    const double second = (Viewpoint().GetEye() - goal).Norm();
    EXPECT_LT(second, first);
    EXPECT_GT(second, 0.0);
    EXPECT_EQ(events, Events{"VIEWPOINT_ANIMATION_STARTED"});
    loop.Advance(130ms);
    EXPECT_EQ(events, wholeChange);
    EXPECT_EQ(Viewpoint().GetEye(), goal);
    EXPECT_GT(goal.x, 1.0);
    EXPECT_EQ(viewer->GetDrawCount(), drawn + 3);
}

TEST_F(Navigation3D, ANewChangeTakesThePlaceOfTheOneThatRuns) {
    AddProduct();
    viewer->ShowStandardView(QorStandardView::Right);
    loop.Advance(100ms);
    viewer->ShowStandardView(QorStandardView::Top);
    loop.Advance(200ms);
    EXPECT_TRUE(Viewpoint().IsAnimated());
    loop.Advance(50ms);
    EXPECT_EQ(events, wholeChange);
    EXPECT_NEAR(Viewpoint().GetSight().y, -1.0, near);
}

TEST_F(Navigation3D, AGestureTakesTheViewFromTheChangeThatRuns) {
    AddProduct();
    viewer->ShowStandardView(QorStandardView::Right);
    loop.Advance(100ms);
    Drag(Button::Right, {10, 10}, {60, 10});
    const QorMathPoint eye = Viewpoint().GetEye();
    EXPECT_FALSE(Viewpoint().IsAnimated());
    loop.Advance(500ms);
    EXPECT_EQ(Viewpoint().GetEye(), eye);
    EXPECT_EQ(events, wholeChange);
}

TEST_F(Navigation3D, WithoutAnApplicationAChangeIsDoneAtOnce) {
    AddProduct();
    application.reset();
    viewer->ShowProjection(Qor3DViewpoint::Projection::Parallel);
    viewer->FitAll();
    EXPECT_EQ(events.size(), 4U);
    EXPECT_EQ(Viewpoint().GetProjection(), Qor3DViewpoint::Projection::Parallel);
    EXPECT_NEAR(PixelOf({1, 1, 0}).y, 150.0 - 150.0 / 1.05, near);
    application = std::make_unique<QorInteractiveApplication>(loop);
}

TEST_F(Navigation3D, AViewerMayGoWhileItsViewChanges) {
    viewer->ShowStandardView(QorStandardView::Right);
    EXPECT_EQ(loop.CountTimers(), 1U);
    viewer->RequestDelayedDestruction();
    loop.RunPosted();
    EXPECT_EQ(loop.CountTimers(), 0U);
}

TEST_F(Navigation3D, FitsNothingWithoutAProduct) {
    viewer->FitAll();
    EXPECT_TRUE(events.empty());
    EXPECT_EQ(loop.CountTimers(), 0U);
}

TEST_F(Navigation3D, TheTreeIsAnnouncedWhenItComesAndGoes) {
    for (const QorEventName& event : {Qor3DViewer::TREE_DISPLAY_ON, Qor3DViewer::TREE_DISPLAY_OFF})
        viewer->GetCallbackManager()->AddCallback(this, event, &Navigation3D::EventCB);
    viewer->SetTreeDisplay(false);
    viewer->SetTreeDisplay(true);
    viewer->SetTreeDisplay(true);
    EXPECT_TRUE(viewer->IsTreeDisplayed());
    viewer->SetTreeDisplay(false);
    EXPECT_EQ(events, (Events{"TREE_DISPLAY_ON", "TREE_DISPLAY_OFF"}));
}

TEST_F(Navigation3D, AWheelDoesNotEndTheDragOfAManipulator) {
    auto* manipulator = new Qor2DManipulator(dialog, "handle", viewer, QorMake<Qor2DViewpoint>());
    Do(Action::Press, Button::Left, 200, 150);
    Do(Action::Move, Button::Left, 220, 150);
    EXPECT_TRUE(manipulator->IsDragging());
    EXPECT_FALSE(Wheel(1.0, 220, 150));
    Do(Action::Press, Button::Right, 220, 150);
    Do(Action::Release, Button::Right, 220, 150);
    EXPECT_TRUE(manipulator->IsDragging());
    Do(Action::Release, Button::Left, 220, 150);
    EXPECT_FALSE(manipulator->IsDragging());
    EXPECT_TRUE(events.empty());
}

} // namespace
