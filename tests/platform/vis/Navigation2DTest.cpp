#include "platform/vis/QorNavigation2DViewer.h"
#include "tests/platform/vis/VisTest.h"

namespace {

using Action = QorMouseEvent::Action;
using Button = QorMouseEvent::Button;

class Navigation2D
    : public VisTest
    , public QorEventSubscriber {
public:
    void
    EventCB(QorEventName, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {
        ++modified;
    }

protected:
    static constexpr double near = 1.0e-3;

    template <class Viewer>
    Viewer* MakeViewer() {
        auto* viewer = new Viewer(dialog, "viewer", QorDlgDefaultStyle, width, height);
        viewer->SetViewBox(0, 400, -300, 0);
        viewer->GetMain2DViewpoint()->GetCallbackManager()->AddCallback(
            this, QorViewpoint::VIEWPOINT_MODIFIED, &Navigation2D::EventCB);
        return viewer;
    }

    static bool Do(QorViewer& ioViewer,
                   Action iAction,
                   Button iButton,
                   double iX,
                   double iY,
                   double iSteps = 0.0) {
        QorMouseEvent event;
        event.action = iAction;
        event.button = iButton;
        event.pixel = {iX, iY};
        event.wheelSteps = iSteps;
        return ioViewer.HandleMouse(event);
    }

    struct Box {
        double left;
        double right;
        double bottom;
        double top;
    };

    static void ExpectBox(const Qor2DViewer& iViewer, const Box& iBox) {
        Box box{};
        iViewer.GetViewBox(box.left, box.right, box.bottom, box.top);
        EXPECT_NEAR(box.left, iBox.left, near);
        EXPECT_NEAR(box.right, iBox.right, near);
        EXPECT_NEAR(box.bottom, iBox.bottom, near);
        EXPECT_NEAR(box.top, iBox.top, near);
    }

    int modified = 0;
};

TEST_F(Navigation2D, ADragMovesThePlaneWithThePointer) {
    auto* viewer = MakeViewer<QorNavigation2DViewer>();
    for (const Button button : {Button::Left, Button::Middle, Button::Right}) {
        modified = 0;
        viewer->GetMain2DViewpoint()->SetWindow(
            width, height, viewer->GetSupport()->GetMMInSupportUnit(), 0, 400, 0);
        EXPECT_TRUE(Do(*viewer, Action::Press, button, 100, 100));
        EXPECT_EQ(modified, 0);
        EXPECT_TRUE(Do(*viewer, Action::Move, button, 130, 90));
        EXPECT_EQ(modified, 1);
        EXPECT_TRUE(Do(*viewer, Action::Release, button, 130, 90));
        ExpectBox(*viewer, {-30, 370, -310, -10});
        EXPECT_EQ(modified, 1);
        EXPECT_FALSE(Do(*viewer, Action::Move, Button::None, 10, 10));
    }
}

TEST_F(Navigation2D, TheWheelBringsNearerWhatIsUnderThePointer) {
    auto* viewer = MakeViewer<QorNavigation2DViewer>();
    EXPECT_TRUE(Do(*viewer, Action::Wheel, Button::None, 100, 0, 1.0));
    EXPECT_EQ(modified, 1);
    const double w = 400 / 1.2;
    const double h = 300 / 1.2;
    ExpectBox(*viewer, {100 - 100 / 1.2, 100 - 100 / 1.2 + w, -h, 0});
    EXPECT_TRUE(Do(*viewer, Action::Wheel, Button::None, 100, 0, -1.0));
    ExpectBox(*viewer, {0, 400, -300, 0});
}

TEST_F(Navigation2D, ReframingShowsAllAsLargeAsItGoes) {
    auto* viewer = MakeViewer<QorNavigation2DViewer>();
    viewer->Reframe();
    EXPECT_EQ(modified, 0) << "nothing to show";
    const Qor2DRep_var line = QorMake<Qor2DLineRep>(
        std::vector<QorMathPoint2D>{{100, 100}, {180, 220}}); // 80 by 120 in 400 by 300
    viewer->AddRep(line);
    viewer->Reframe();
    EXPECT_EQ(modified, 1);
    ExpectBox(*viewer, {140 - 80, 140 + 80, 100, 220});
    viewer->UserResizeViewer(100, 300);
    viewer->Reframe();
    ExpectBox(*viewer, {100, 180, 160 - 120, 160 + 120});
}

TEST_F(Navigation2D, TheViewerIsItsOwnMotif) {
    auto* viewer = MakeViewer<QorNavigation2DViewer>();
    EXPECT_EQ(viewer->GetMotif(), viewer);
    EXPECT_EQ(viewer->GetFrameStyle(), QorDlgDefaultStyle);
}

TEST_F(Navigation2D, APlainViewerOnlyScrolls) {
    auto* viewer = MakeViewer<Qor2DViewer>();
    EXPECT_TRUE(Do(*viewer, Action::Wheel, Button::None, 100, 0, -1.0));
    ExpectBox(*viewer, {0, 400, -348, -48});
    EXPECT_EQ(modified, 1);
    EXPECT_FALSE(Do(*viewer, Action::Press, Button::Left, 100, 100));
    EXPECT_FALSE(Do(*viewer, Action::Move, Button::Left, 200, 100));
    ExpectBox(*viewer, {0, 400, -348, -48});
}

} // namespace
