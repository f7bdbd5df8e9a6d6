#include "tests/quickrender/ViewerAdapterTest.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

constexpr const char* begin = "QorRdgAreaSelectorBEGIN_AREAEvt";
constexpr const char* end = "QorRdgAreaSelectorEND_AREAEvt";

class Area : public ViewerAdapterTest {
protected:
    void SetUp() override {
        area = QorQuery<QorIRdgArea>(viewer);
        ASSERT_TRUE(area);
        for (const char* event : {begin, end})
            area->GetAreaPublisher()->AddCallback(this, event, &ViewerAdapterTest::EventCB);
    }

    void TearDown() override {
        area.Reset();
        ViewerAdapterTest::TearDown();
    }

    std::vector<int> Get() const {
        std::vector<int> pixels(4);
        if (area->GetArea(pixels[0], pixels[1], pixels[2], pixels[3]) != S_OK)
            pixels.clear();
        return pixels;
    }

    void Begin(int iX1, int iY1, int iX2, int iY2) {
        EXPECT_EQ(area->SetAreaMode(true), S_OK);
        EXPECT_EQ(area->SetArea(iX1, iY1, iX2, iY2), S_OK);
        loop.RunPosted();
    }

    QorIRdgArea_var area;
};

TEST_F(Area, IsOffUntilItIsSwitchedOn) {
    int on = 7;
    EXPECT_EQ(area->GetAreaMode(on), S_OK);
    EXPECT_EQ(on, 0);
    EXPECT_EQ(area->SetArea(1, 2, 30, 40), E_FAIL);
    EXPECT_TRUE(Get().empty());
    EXPECT_EQ(area->SetAreaMode(true), S_OK);
    area->GetAreaMode(on);
    EXPECT_EQ(on, 1);
    EXPECT_TRUE(Get().empty()) << "nothing has been drawn yet";
    EXPECT_EQ(area->SetAreaMode(false), S_OK);
    area->GetAreaMode(on);
    EXPECT_EQ(on, 0);
    EXPECT_TRUE(viewer->GetAddedViewpoints().empty());
}

TEST_F(Area, DrawsARectangleAndReportsBeginAndEnd) {
    area->SetAreaMode(true);
    Drag(100, 200, 250, 50);
    EXPECT_THAT(Get(), ElementsAre(100, 100, 250, 250));
    EXPECT_THAT(events, ElementsAre(begin, end));
    EXPECT_EQ(viewer->GetForegroundIndicator(), nullptr);
}

TEST_F(Area, AClickMakesTheLeastRectangleAtTheClick) {
    area->SetAreaMode(true);
    Drag(100, 200, 100, 200);
    EXPECT_THAT(Get(), ElementsAre(100, 100, 110, 110));
}

TEST_F(Area, DrawnBackwardsItIsPutInOrderAndBeyondTheViewerItIsClamped) {
    area->SetAreaMode(true);
    Drag(250, 50, -100, 900);
    EXPECT_THAT(Get(), ElementsAre(0, 0, 250, 250));
}

TEST_F(Area, InTheLastUnitsAtTheEdgeTheLeastRectangleSticksOut) {
    area->SetAreaMode(true);
    Drag(397, 200, 450, 100);
    EXPECT_THAT(Get(), ElementsAre(397, 100, 407, 200));
}

TEST_F(Area, SetAndGetGoRoundExactlyAtEverySize) {
    for (const float side : {301.0F, 302.0F, 1279.0F, 1920.0F}) {
        viewer->UserResizeViewer(side, side - 100.0F);
        for (const int x : {0, 1, 37, 150}) {
            Begin(x, x + 3, x + 60, x + 41);
            EXPECT_THAT(Get(), ElementsAre(x, x + 3, x + 60, x + 41)) << side;
        }
    }
}

TEST_F(Area, AHandleDraggedInPartsOfPixelsLosesNone) {
    viewer->UserResizeViewer(200.0F, 120.0F);
    Begin(20, 10, 80, 50);
    for (int n = 0; n < 12; ++n) {
        const double x = 50.0 + 5 * n;
        const double y = 90.0 - 2 * n;
        viewer->HandleMouse(Mouse(QorMouseEvent::Action::Press, x, y));
        for (int step = 1; step <= 3; ++step)
            viewer->HandleMouse(
                Mouse(QorMouseEvent::Action::Move, x + step * 5.0 / 3.0, y - step * 2.0 / 3.0));
        viewer->HandleMouse(Mouse(QorMouseEvent::Action::Release, x + 5.0, y - 2.0));
        EXPECT_THAT(Get(), ElementsAre(25 + 5 * n, 12 + 2 * n, 85 + 5 * n, 52 + 2 * n));
    }
}

TEST_F(Area, ARectangleOfOneOrLessLeavesItEmptyAndHidden) {
    Begin(10, 10, 60, 60);
    const auto* viewpoint =
        dynamic_cast<Qor2DViewpoint*>(viewer->GetAddedViewpoints().front().Get());
    EXPECT_FALSE(viewpoint->GetRoot().GetChildren().empty());
    area->SetArea(10, 10, 11, 60);
    EXPECT_TRUE(viewpoint->GetRoot().GetChildren().empty());
}

struct HandleRow {
    int number;
    double x, y;             ///< where it lies: pixels from the top left
    std::vector<int> result; ///< after a drag by 20 to the right and 10 up
};

class AreaHandles
    : public Area
    , public testing::WithParamInterface<HandleRow> {};

TEST_P(AreaHandles, MoveTheirSides) {
    Begin(100, 100, 200, 180);
    const HandleRow& row = GetParam();
    Drag(row.x, row.y, row.x + 20, row.y - 10);
    EXPECT_EQ(Get(), row.result);
    EXPECT_THAT(events, ElementsAre(end));
}

INSTANTIATE_TEST_SUITE_P(Nine,
                         AreaHandles,
                         testing::Values(HandleRow{1, 100, 160, {120, 100, 200, 180}},
                                         HandleRow{2, 150, 120, {100, 100, 200, 190}},
                                         HandleRow{3, 200, 160, {100, 100, 220, 180}},
                                         HandleRow{4, 150, 200, {100, 110, 200, 180}},
                                         HandleRow{5, 150, 160, {120, 110, 220, 190}},
                                         HandleRow{6, 100, 200, {120, 110, 200, 180}},
                                         HandleRow{7, 200, 200, {100, 110, 220, 180}},
                                         HandleRow{8, 200, 120, {100, 100, 220, 190}},
                                         HandleRow{9, 100, 120, {120, 100, 200, 190}}),
                         [](const auto& iInfo) {
                             return "Handle" + std::to_string(iInfo.param.number);
                         });

TEST_F(Area, AHandleDraggedPastTheOtherSideSwapsThem) {
    Begin(100, 100, 200, 180);
    Drag(100, 160, 300, 160);
    EXPECT_THAT(Get(), ElementsAre(200, 100, 300, 180));
}

TEST_F(Area, MovedAgainstTheEdgeOnlyTheCornersThatCrossItAreClamped) {
    Begin(100, 100, 200, 180);
    Drag(150, 160, 380, 160);
    EXPECT_THAT(Get(), ElementsAre(330, 100, 400, 180));
}

TEST_F(Area, TheEditGestureOnAnyHandleTakesTheWholeViewer) {
    Begin(100, 100, 200, 180);
    viewer->HandleMouse(Mouse(QorMouseEvent::Action::DoubleClick, 200, 120));
    viewer->HandleMouse(Mouse(QorMouseEvent::Action::Release, 200, 120));
    EXPECT_THAT(Get(), ElementsAre(0, 0, 400, 300));
    EXPECT_THAT(events, ElementsAre(end));
}

TEST_F(Area, OnASmallRectangleCornersWinOverEdgesAndEdgesOverTheCentre) {
    Begin(100, 100, 112, 112);
    Drag(111, 189, 151, 149); // near the upper right corner, and within reach of four others
    EXPECT_THAT(Get(), ElementsAre(100, 100, 152, 152));
}

TEST_F(Area, SwitchedOnTwiceItKeepsItsRectangle) {
    Begin(100, 100, 200, 180);
    EXPECT_EQ(area->SetAreaMode(true), S_OK);
    EXPECT_THAT(Get(), ElementsAre(100, 100, 200, 180));
}

TEST_F(Area, GoesWithItsWindowAndDoesNothingAfterwards) {
    Begin(100, 100, 200, 180);
    layout->CloseWindow(window);
    EXPECT_TRUE(viewer->GetAddedViewpoints().empty());
    EXPECT_EQ(area->GetAreaPublisher(), nullptr);
    EXPECT_EQ(area->SetAreaMode(true), E_FAIL);
}

TEST_F(Area, MayBeSwitchedOffWhileItIsDrawn) {
    area->SetAreaMode(true);
    viewer->HandleMouse(Mouse(QorMouseEvent::Action::Press, 100, 100));
    viewer->HandleMouse(Mouse(QorMouseEvent::Action::Move, 150, 150));
    area->SetAreaMode(false);
    viewer->HandleMouse(Mouse(QorMouseEvent::Action::Move, 180, 150));
    viewer->HandleMouse(Mouse(QorMouseEvent::Action::Release, 180, 150));
    EXPECT_THAT(events, ElementsAre(begin));
    EXPECT_TRUE(viewer->GetAddedViewpoints().empty());
    EXPECT_EQ(viewer->GetForegroundIndicator(), nullptr);
}

} // namespace
