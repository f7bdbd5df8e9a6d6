#include "workbench/session/ClickSelection.h"

#include "tests/session/SessionTest.h"

namespace qor::session::tests {

namespace {

/// A viewer that looks at the bench from above; its parts lie in a row.
class Clicks : public SessionTest {
protected:
    void SetUp() override {
        SessionTest::SetUp();
        viewer = new QorNavigation3DViewer(nullptr, "viewer", QorDlgDefaultStyle, 1000.0F, 500.0F);
        viewer->AddRep(document->root());
        viewer->GetMain3DViewpoint()->SetView({500, 0, 3000}, {500, 0, 0}, {0, 1, 0});
        clicks = std::make_unique<ClickSelection>(*viewer, *editor);
    }

    void TearDown() override {
        clicks.reset();
        viewer->RequestDelayedDestruction();
        SessionTest::TearDown();
    }

    /// A click on a point of the product.
    void click(const QorMathPoint& point, bool control = false) {
        QorMathPoint2D pixel;
        ASSERT_TRUE(viewer->GetMain3DViewpoint()->Project(point, 1000.0F, 500.0F, pixel));
        QorMouseEvent mouse;
        mouse.action = QorMouseEvent::Action::Press;
        mouse.button = QorMouseEvent::Button::Left;
        mouse.pixel = pixel;
        mouse.control = control;
        viewer->HandleMouse(mouse);
        mouse.action = QorMouseEvent::Action::Release;
        viewer->HandleMouse(mouse);
    }

    static constexpr QorMathPoint onFrame{102, 2, 0};
    static constexpr QorMathPoint onJaw{902, 2, 0};
    static constexpr QorMathPoint besideAll{600, 300, 0};

    QorNavigation3DViewer* viewer = nullptr;
    std::unique_ptr<ClickSelection> clicks;
};

TEST_F(Clicks, SelectAPartAlone) {
    click(onFrame);
    EXPECT_EQ(selected(), std::vector<int>{frame});
    click(onJaw);
    EXPECT_EQ(selected(), std::vector<int>{jaw});
}

TEST_F(Clicks, WithControlAddAPartAndTakeItOut) {
    click(onFrame);
    click(onJaw, true);
    EXPECT_EQ(selected(), (std::vector<int>{frame, jaw}));
    click(onFrame, true);
    EXPECT_EQ(selected(), std::vector<int>{jaw});
}

TEST_F(Clicks, BesideTheProductSelectNothing) {
    click(onFrame);
    click(besideAll, true);
    EXPECT_EQ(selected(), std::vector<int>{frame}) << "who adds does not want to begin anew";
    click(besideAll);
    EXPECT_EQ(selected(), std::vector<int>{});
}

TEST_F(Clicks, GoThroughWhatIsHidden) {
    document->setVisible(*node(frame), false);
    click(onFrame);
    EXPECT_EQ(selected(), std::vector<int>{});
}

} // namespace

} // namespace qor::session::tests
