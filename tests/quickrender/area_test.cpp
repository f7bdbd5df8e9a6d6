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

TEST_F(Area, TheEdgesCanBeDraggedAlongAllOfTheirLength) {
    Begin(100, 100, 200, 180);
    Drag(123, 120, 123, 110); // the upper edge, away from its middle
    EXPECT_THAT(Get(), ElementsAre(100, 100, 200, 190));
    Drag(200, 185, 220, 185); // the right one
    EXPECT_THAT(Get(), ElementsAre(100, 100, 220, 190));
}

TEST_F(Area, EveryHandleCanBeHitSixPixelsAwayAtEveryScale) {
    for (const float ratio : {1.0F, 1.5F, 2.0F}) {
        viewer->GetSupport()->SetPixelRatio(ratio);
        const double off = 6.0 * static_cast<double>(ratio);
        for (const double x : {100.0, 150.0, 200.0})
            for (const double y : {200.0, 160.0, 120.0}) {
                Begin(100, 100, 200, 180);
                const QorCursor cursor = viewer->GetCursor({x, y});
                EXPECT_NE(cursor, QorCursor::Arrow) << x << "," << y;
                for (const double dx : {-off, off})
                    for (const double dy : {-off, off})
                        EXPECT_EQ(viewer->GetCursor({x + dx, y + dy}), cursor)
                            << x + dx << "," << y + dy << " at " << ratio;
            }
    }
}

TEST_F(Area, ShowsThePointerOfWhatEachHandleDoes) {
    Begin(100, 100, 200, 180);

    struct Row {
        double x, y;
        QorCursor cursor;
    };

    for (const Row& row :
         {Row{100, 160, QorCursor::SizeHorizontal}, Row{200, 160, QorCursor::SizeHorizontal},
          Row{150, 120, QorCursor::SizeVertical}, Row{150, 200, QorCursor::SizeVertical},
          Row{150, 160, QorCursor::Move}, Row{100, 200, QorCursor::SizeRising},
          Row{200, 120, QorCursor::SizeRising}, Row{200, 200, QorCursor::SizeFalling},
          Row{100, 120, QorCursor::SizeFalling}, Row{300, 50, QorCursor::Arrow}})
        EXPECT_EQ(viewer->GetCursor({row.x, row.y}), row.cursor) << row.x << "," << row.y;
}

TEST_F(Area, IsDrawnOverAGroundThatCouldBeDraggedToo) {
    AddBox({-1, -1, 0}, {1, 1, 1});
    viewer->GetMain3DViewpoint()->SetView({0, -20, 10}, {0, 0, 0}, {0, 0, 1});
    QorQuery<QorIRdgGround>(viewer)->SetGroundOn(1);
    QorMathPoint2D onGround;
    viewer->GetMain3DViewpoint()->Project({1.3, -1.2, 0}, width, height, onGround);
    EXPECT_EQ(viewer->GetCursor(onGround), QorCursor::Hand);
    const QorMathPoint before = viewer->GetGround()->GetOrigin();
    area->SetAreaMode(true);
    EXPECT_EQ(viewer->GetCursor(onGround), QorCursor::Cross);
    Drag(onGround.x, onGround.y, onGround.x + 60, onGround.y - 50);
    EXPECT_EQ(viewer->GetGround()->GetOrigin(), before);
    EXPECT_THAT(events, ElementsAre(begin, end));
    EXPECT_FALSE(Get().empty());
    EXPECT_EQ(viewer->GetCursor({onGround.x - 30.0, onGround.y}), QorCursor::Hand)
        << "with the rectangle drawn the ground can be dragged again";
}

TEST_F(Area, OfNothingButZerosIsNone) {
    Begin(0, 0, 0, 0);
    EXPECT_TRUE(Get().empty());
}

TEST_F(Area, TheEditGestureIsTheLeftButtons) {
    Begin(100, 100, 200, 180);
    QorMouseEvent right = Mouse(QorMouseEvent::Action::DoubleClick, 200, 120);
    right.button = QorMouseEvent::Button::Right;
    viewer->HandleMouse(right);
    EXPECT_THAT(Get(), ElementsAre(100, 100, 200, 180));
}

TEST_F(Area, StaysInASmallerViewerAndComesBackWithTheLargerOne) {
    Begin(10, 60, 390, 240);
    viewer->UserResizeViewer(200, 200);
    EXPECT_THAT(Get(), ElementsAre(0, 10, 200, 190)) << "as wide as the viewer";
    EXPECT_THAT(events, ElementsAre(end));
    viewer->UserResizeViewer(400, 300);
    EXPECT_THAT(Get(), ElementsAre(10, 60, 390, 240));
    EXPECT_THAT(events, ElementsAre(end, end));
    viewer->UserResizeViewer(600, 400);
    EXPECT_THAT(Get(), ElementsAre(110, 110, 490, 290)) << "around the same middle";
    EXPECT_THAT(events, ElementsAre(end, end)) << "it has the same size";
}

TEST_F(Area, DimsAllOfTheViewerAroundItAfterAResize) {
    Begin(100, 100, 200, 180);
    viewer->UserResizeViewer(600, 500);
    const auto* viewpoint =
        dynamic_cast<Qor2DViewpoint*>(viewer->GetAddedViewpoints().front().Get());
    const auto* shade =
        dynamic_cast<Qor2DBagRep*>(viewpoint->GetRoot().GetChildren().front().Get());
    const Qor2DBoundingBox box = shade->GetChildren().front()->GetBoundingBox();
    EXPECT_NEAR(box.low.x, -300, 1.0e-3);
    EXPECT_NEAR(box.high.y, 250, 1.0e-3);
}

TEST_F(Area, KeepsItsSmallMarksToItselfWhereThereIsNoRoom) {
    const auto marks = [&] {
        const auto* viewpoint =
            dynamic_cast<Qor2DViewpoint*>(viewer->GetAddedViewpoints().front().Get());
        return dynamic_cast<Qor2DBagRep*>(viewpoint->GetRoot().GetChildren().back().Get())
            ->GetChildren()
            .size();
    };
    Begin(100, 100, 200, 180);
    EXPECT_EQ(marks(), 5U);
    Begin(100, 100, 200, 130);
    EXPECT_EQ(marks(), 2U) << "on the long edges";
    Begin(100, 100, 120, 130);
    EXPECT_EQ(marks(), 0U);
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
