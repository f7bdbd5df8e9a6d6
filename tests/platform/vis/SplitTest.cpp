#include "platform/vis/QorNavigation3DViewer.h"
#include "platform/vis/QorViewerClickNotification.h"
#include "tests/platform/vis/VisTest.h"

namespace {

using Action = QorMouseEvent::Action;
using Button = QorMouseEvent::Button;

/// A viewer of 400 by 300 pixels with the square from -1 to 1, seen from above.
class SplitViewers
    : public VisTest
    , public QorEventSubscriber {
public:
    void EventCB(
        QorEventName iEvent, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {
        events.push_back(iEvent.GetText());
    }

protected:
    SplitViewers()
        : viewer(new QorNavigation3DViewer(dialog, "viewer", QorDlgDefaultStyle, width, height)) {
        Main().SetView({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
        viewer->AddRep(QorMake<Qor3DMeshRep>(MakeSquare().Get(), nullptr));
    }

    Qor3DViewpoint& Main() { return *viewer->GetMain3DViewpoint(); }

    Qor3DViewpoint_var At(std::size_t iIndex) {
        const auto several = QorQuery<QorI3DMultiViewpointViewer>(viewer);
        return dynamic_cast<Qor3DViewpoint*>(several->GetViewpoints().at(iIndex).Get());
    }

    /// The parts of all viewpoints, as GetGLViewport gives them.
    std::vector<std::array<float, 4>> Parts() {
        std::vector<std::array<float, 4>> parts;
        for (const QorVar<QorViewpoint>& one :
             QorQuery<QorI3DMultiViewpointViewer>(viewer)->GetViewpoints()) {
            std::array<float, 4>& part = parts.emplace_back();
            one->GetGLViewport(part[0], part[1], part[2], part[3]);
        }
        return parts;
    }

    static QorMathPoint2D Project(const Qor3DViewpoint& iViewpoint, const QorMathPoint& iPoint) {
        QorMathPoint2D pixel;
        EXPECT_TRUE(iViewpoint.Project(iPoint, width, height, pixel));
        return pixel;
    }

    bool Do(Action iAction, Button iButton, const QorMathPoint2D& iPixel) {
        QorMouseEvent event;
        event.action = iAction;
        event.button = iButton;
        event.pixel = iPixel;
        event.wheelSteps = 1.0;
        return viewer->HandleMouse(event);
    }

    using Events = std::vector<std::string>;
    QorNavigation3DViewer* viewer;
    Events events;
};

TEST_F(SplitViewers, TileThemselvesFromTheMainViewpointOn) {
    using Parts4 = std::vector<std::array<float, 4>>;
    const auto several = QorQuery<QorI3DMultiViewpointViewer>(viewer);
    ASSERT_TRUE(several);
    EXPECT_FALSE(several->HasSeveralViewpoints());
    EXPECT_EQ(Parts(), (Parts4{{0, 0, 0, 0}}));
    viewer->UserResizeViewer(401, 301); // odd: no pixel is in two parts or in none
    viewer->SplitViewpoints(2);
    EXPECT_EQ(Parts(), (Parts4{{0, 0, 200, 301}, {200, 0, 201, 301}}));
    viewer->SplitViewpoints(3);
    EXPECT_EQ(Parts(), (Parts4{{0, 0, 200, 301}, {200, 151, 201, 150}, {200, 0, 201, 151}}));
    viewer->SplitViewpoints(4);
    EXPECT_EQ(
        Parts(),
        (Parts4{{0, 151, 200, 150}, {200, 151, 201, 150}, {0, 0, 200, 151}, {200, 0, 201, 151}}));
    EXPECT_TRUE(several->HasSeveralViewpoints());
    EXPECT_EQ(At(0).Get(), &Main());
    viewer->UserResizeViewer(200, 100);
    EXPECT_EQ(Parts().at(3), (std::array<float, 4>{100, 0, 100, 50}));
    viewer->SplitViewpoints(1);
    EXPECT_EQ(Parts(), (Parts4{{0, 0, 0, 0}}));
    EXPECT_FALSE(several->HasSeveralViewpoints());
    viewer->SplitViewpoints(9);
    EXPECT_EQ(Parts().size(), 4U);
    viewer->SplitViewpoints(-2);
    EXPECT_EQ(Parts().size(), 1U);
}

TEST_F(SplitViewers, ShareTheProductAndSeeItFromSeveralSides) {
    viewer->SplitViewpoints(4);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(&At(i)->GetRoot(), &Main().GetRoot());
    EXPECT_EQ(At(0)->GetSight(), (QorMathVector{0, 0, -1}));
    EXPECT_EQ(At(1)->GetSight(), (QorMathVector{0, 1, 0}));
    EXPECT_EQ(At(2)->GetSight(), (QorMathVector{0, 0, -1}));
    EXPECT_EQ(At(3)->GetSight(), (QorMathVector{-1, 0, 0}));
    // Each shows the middle of the product in the middle of its part, all of it inside.
    const QorMathPoint2D middles[] = {{100, 75}, {300, 75}, {100, 225}, {300, 225}};
    for (std::size_t i = 0; i < 4; ++i) {
        const QorMathPoint2D pixel = Project(*At(i), {0, 0, 0});
        EXPECT_NEAR(pixel.x, middles[i].x, 1.0e-6);
        EXPECT_NEAR(pixel.y, middles[i].y, 1.0e-6);
        EXPECT_EQ(viewer->Get3DViewpointAt(pixel), At(i).Get());
    }
    EXPECT_EQ(viewer->Get3DViewpointAt({-5, -5}), &Main());
    EXPECT_NEAR(Project(*At(2), {1, 1, 0}).y, 225 - 75 / 1.05, 1.0e-3);
}

TEST_F(SplitViewers, KeepTheOthersWhenMoreOrFewerAreAskedFor) {
    viewer->SplitViewpoints(3);
    const Qor3DViewpoint_var second = At(1);
    second->SetView({5, 5, 5}, {0, 0, 0}, {0, 0, 1});
    viewer->SplitViewpoints(4);
    EXPECT_EQ(At(1).Get(), second.Get());
    EXPECT_EQ(second->GetEye(), (QorMathPoint{5, 5, 5}));
    viewer->SplitViewpoints(2);
    EXPECT_EQ(At(1).Get(), second.Get());
    EXPECT_EQ(At(0)->GetEye(), (QorMathPoint{0, 0, 10}));
}

TEST_F(SplitViewers, AreMovedThroughThePartUnderThePointer) {
    viewer->SplitViewpoints(4);
    for (const auto& one : viewer->Get3DViewpoints())
        one->GetCallbackManager()->AddCallback(this, QorViewpoint::VIEWPOINT_MODIFIED,
                                               &SplitViewers::EventCB);
    const Qor3DViewpoint_var third = At(2);
    // Half the height of the part to the left is a quarter of a turn, here about the vertical.
    Do(Action::Press, Button::Left, {20, 160});
    EXPECT_EQ(viewer->GetActive3DViewpoint(), third.Get());
    Do(Action::Move, Button::Left, {45, 160});
    EXPECT_TRUE(third->IsAnimated());
    EXPECT_FALSE(Main().IsAnimated());
    Do(Action::Move, Button::Left, {350, 20}); // over another part, the drag goes on
    Do(Action::Release, Button::Left, {45, 160});
    EXPECT_FALSE(third->IsAnimated());
    EXPECT_EQ(Main().GetEye(), (QorMathPoint{0, 0, 10}));
    EXPECT_EQ(events.size(), 1U);
    // Panning keeps the point under the pointer.
    viewer->SplitViewpoints(1);
    viewer->SplitViewpoints(4);
    const QorMathPoint point{0.5, 0.25, 0.0};
    const QorMathPoint2D from = Project(*At(2), point);
    Do(Action::Press, Button::Right, from);
    Do(Action::Move, Button::Right, from + QorMathPoint2D{20, -10});
    Do(Action::Release, Button::Right, from + QorMathPoint2D{20, -10});
    EXPECT_NEAR(Project(*At(2), point).x, from.x + 20, 1.0e-6);
    EXPECT_NEAR(Project(*At(2), point).y, from.y - 10, 1.0e-6);
    // So does zooming.
    const QorMathPoint2D before = Project(*At(2), point);
    Do(Action::Wheel, Button::None, before);
    EXPECT_NEAR(Project(*At(2), point).x, before.x, 1.0e-6);
    EXPECT_EQ(Main().GetEye(), (QorMathPoint{0, 0, 10}));
}

TEST_F(SplitViewers, TellOfClicksInEveryPart) {
    viewer->SplitViewpoints(4);
    for (const QorEventName& event : {QorNavigation3DViewer::VIEWER_PART_CLICKED,
                                      QorNavigation3DViewer::VIEWER_NOTHING_CLICKED})
        viewer->GetCallbackManager()->AddCallback(this, event, &SplitViewers::EventCB);
    // The middles of the parts: from above the square is hit, edge on it is not.
    for (const QorMathPoint2D& pixel : {QorMathPoint2D{100, 75}, QorMathPoint2D{100, 225},
                                        QorMathPoint2D{300, 80}, QorMathPoint2D{10, 290}}) {
        Do(Action::Press, Button::Left, pixel);
        Do(Action::Release, Button::Left, pixel);
    }
    EXPECT_EQ(events, (Events{"VIEWER_PART_CLICKED", "VIEWER_PART_CLICKED",
                              "VIEWER_NOTHING_CLICKED", "VIEWER_NOTHING_CLICKED"}));
}

TEST_F(SplitViewers, ChangeTheLookOfTheActiveViewpoint) {
    viewer->SplitViewpoints(2);
    Do(Action::Press, Button::Left, {390, 10});
    Do(Action::Release, Button::Left, {390, 10});
    viewer->ShowStandardView(QorStandardView::Top);
    EXPECT_EQ(viewer->GetView().eye.x, 0.0);
    loop.Advance(QorViewAnimation::duration);
    EXPECT_NEAR(At(1)->GetSight().z, -1.0, 1.0e-9);
    EXPECT_EQ(Main().GetEye(), (QorMathPoint{0, 0, 10}));
    // As wide as its part: 200 by 300 pixels.
    EXPECT_NEAR(Project(*At(1), {1, 0, 0}).x, 300 + 100 / 1.05, 1.0e-3);
    // One change does not end the other's.
    viewer->FitAll();
    Do(Action::Press, Button::Left, {10, 10});
    Do(Action::Move, Button::Left, {30, 10});
    EXPECT_TRUE(At(1)->IsAnimated());
    loop.Advance(QorViewAnimation::duration);
    EXPECT_FALSE(At(1)->IsAnimated());
    EXPECT_TRUE(Main().IsAnimated());
}

TEST_F(SplitViewers, EndWhatMovesWhenTheirPartsChange) {
    viewer->SplitViewpoints(2);
    Do(Action::Press, Button::Left, {390, 10});
    Do(Action::Move, Button::Left, {350, 10});
    const Qor3DViewpoint_var second = At(1);
    EXPECT_TRUE(second->IsAnimated());
    for (const QorEventName& event :
         {QorViewpoint::VIEWPOINT_ANIMATION_STARTED, QorViewpoint::VIEWPOINT_MODIFIED})
        Main().GetCallbackManager()->AddCallback(this, event, &SplitViewers::EventCB);
    viewer->SplitViewpoints(1);
    EXPECT_FALSE(second->IsAnimated());
    EXPECT_EQ(viewer->GetActive3DViewpoint(), &Main());
    EXPECT_FALSE(Do(Action::Move, Button::Left, {300, 10}));
    // Whoever laid a picture over the main part takes it away.
    EXPECT_EQ(events, (Events{"VIEWPOINT_ANIMATION_STARTED", "VIEWPOINT_MODIFIED"}));
    viewer->ShowStandardView(QorStandardView::Front);
    viewer->SplitViewpoints(2);
    EXPECT_EQ(loop.CountTimers(), 0U);
}

TEST_F(SplitViewers, TurnManipulatorsInThePartWhereTheyWereTaken) {
    const Qor3DRep_var part = Main().GetRoot().GetChildren().front();
    auto* manipulator = new Qor3DManipulator(dialog, "handle", viewer, part, QorMathAxis());
    manipulator->SetMode(Qor3DManipulator::Mode::Translation);
    viewer->SplitViewpoints(4);
    const Qor3DViewpoint_var third = At(2);
    const QorMathPoint2D from = Project(*third, {0, 0, 0});
    const QorMathPoint2D to = Project(*third, {0.5, 0.25, 0});
    Do(Action::Press, Button::Left, from);
    Do(Action::Move, Button::Left, to);
    Do(Action::Release, Button::Left, to);
    EXPECT_NEAR(manipulator->GetPosition().GetOrigin().x, 0.5, 1.0e-6);
    EXPECT_NEAR(manipulator->GetPosition().GetOrigin().y, 0.25, 1.0e-6);
}

TEST_F(SplitViewers, LoseLightsThatWerePutIntoAViewpointWithTheirSuccessors) {
    const auto make = [] {
        return QorMake<Qor3DLightSourceRep>(QorLightType::Directional, QorLightMode::Model,
                                            QorMathPoint{}, QorMathVector{0, 0, -1}, 180.0F);
    };
    auto first = make();
    Qor3DLightSourceRep* light = first.Get();
    viewer->SetLightSourceReps(first.Detach(), nullptr);
    Main().AddRep(light);
    EXPECT_EQ(Main().GetRoot().GetChildren().size(), 2U);
    viewer->SetLightSourceReps(make().Detach(), nullptr);
    EXPECT_EQ(Main().GetRoot().GetChildren().size(), 1U);
    viewer->SetLightSourceReps(nullptr, nullptr);
}

} // namespace
