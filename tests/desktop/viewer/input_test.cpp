// What a person does with a viewer's control, and what the viewer is told.
#include "tests/desktop/viewer/ViewerTest.h"
#include "workbench/desktop/viewer/ViewerInput.h"

namespace qor::desktop::tests {

namespace {

/// Writes down what it is told; uses it all.
class ToldViewer : public Qor3DViewer {
public:
    using Qor3DViewer::Qor3DViewer;

    bool HandleMouse(const QorMouseEvent& iMouse) override {
        told.push_back(iMouse);
        if (reaction)
            reaction();
        return used;
    }

    std::vector<QorMouseEvent> told;
    bool used = true;
    std::function<void()> reaction;

protected:
    ~ToldViewer() override = default;
};

class ViewerInput : public ViewerTest {
protected:
    ToldViewer& showTold() { return *showViewer<ToldViewer>(); }

    /// Turns a wheel over the middle; whether it was used.
    bool turnWheel(const QPoint& angle, Qt::KeyboardModifiers modifiers = {}) {
        const QPointF at = QRectF(control().rect()).center();
        QWheelEvent event(at, control().mapToGlobal(at), QPoint(), angle, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        event.ignore();
        QApplication::sendEvent(&control(), &event);
        return event.isAccepted();
    }
};

using Action = QorMouseEvent::Action;
using Button = QorMouseEvent::Button;

TEST_F(ViewerInput, ComesInDevicePixels) {
    ToldViewer& told = showTold();
    const double ratio = control().devicePixelRatioF();
    QTest::mousePress(&control(), Qt::LeftButton, Qt::ShiftModifier, QPoint(20, 30));
    ASSERT_FALSE(told.told.empty());
    const QorMouseEvent press = told.told.back();
    EXPECT_EQ(press.action, Action::Press);
    EXPECT_EQ(press.button, Button::Left);
    EXPECT_EQ(press.pixel, (QorMathPoint2D{20 * ratio, 30 * ratio}));
    EXPECT_TRUE(press.shift);
    EXPECT_FALSE(press.control);
    QTest::mouseRelease(&control(), Qt::LeftButton, Qt::ControlModifier, QPoint(20, 30));
    EXPECT_EQ(told.told.back().action, Action::Release);
    EXPECT_TRUE(told.told.back().control);
}

TEST_F(ViewerInput, KeepsThePartsOfPositionsThatQtRoundsOnItsWay) {
    ToldViewer& told = showTold();
    const double ratio = control().devicePixelRatioF();
    const QPointF inWindow = control().mapTo(control().window(), QPointF());
    const QPointF exact(20.5, 30.25);
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(21.0, 30.0), exact + inWindow,
                      control().mapToGlobal(exact), Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(&control(), &press);
    ASSERT_FALSE(told.told.empty());
    EXPECT_EQ(told.told.back().pixel, (QorMathPoint2D{20.5 * ratio, 30.25 * ratio}));
}

TEST_F(ViewerInput, GoesOnOutsideWhileAButtonIsHeld) {
    ToldViewer& told = showTold();
    const double ratio = control().devicePixelRatioF();
    QTest::mousePress(&control(), Qt::RightButton, {}, QPoint(5, 5));
    const QPointF outside(-40.0, 1000.0);
    QMouseEvent move(QEvent::MouseMove, outside, control().mapToGlobal(outside), Qt::NoButton,
                     Qt::RightButton, {});
    QApplication::sendEvent(&control(), &move);
    EXPECT_EQ(told.told.back().action, Action::Move);
    EXPECT_EQ(told.told.back().button, Button::Right);
    EXPECT_EQ(told.told.back().pixel, (QorMathPoint2D{-40.0 * ratio, 1000.0 * ratio}));
    QTest::mouseRelease(&control(), Qt::RightButton, {}, QPoint(5, 5));
    EXPECT_EQ(told.told.back().button, Button::Right);
}

TEST_F(ViewerInput, KnowsDoubleClicksAndLeavesOutStrangeButtons) {
    ToldViewer& told = showTold();
    QTest::mouseDClick(&control(), Qt::MiddleButton, {}, QPoint(9, 9));
    ASSERT_FALSE(told.told.empty());
    EXPECT_EQ(told.told.back().action, Action::DoubleClick);
    EXPECT_EQ(told.told.back().button, Button::Middle);
    told.told.clear();
    QTest::mouseClick(&control(), Qt::BackButton, {}, QPoint(9, 9));
    for (const QorMouseEvent& event : told.told)
        EXPECT_EQ(event.action, Action::Move);
}

TEST_F(ViewerInput, TurnsWheelsInStepsAndPartsOfSteps) {
    ToldViewer& told = showTold();
    EXPECT_TRUE(turnWheel({0, 240}));
    EXPECT_EQ(told.told.back().wheelSteps, 2.0);
    EXPECT_TRUE(turnWheel({0, -30}));
    EXPECT_EQ(told.told.back().wheelSteps, -0.25);
    EXPECT_TRUE(turnWheel({120, 0}, Qt::AltModifier)) << "Qt turns the wheel sideways with Alt";
    EXPECT_EQ(told.told.back().wheelSteps, 1.0);
    EXPECT_FALSE(turnWheel({120, 0})) << "sideways";
    told.used = false;
    EXPECT_FALSE(turnWheel({0, 120})) << "what a viewer does not use, others may have";
}

TEST_F(ViewerInput, StopsForAViewerThatIsSwitchedOff) {
    ToldViewer& told = showTold();
    told.SetSensitivity(QorDlgDISABLE);
    EXPECT_FALSE(turnWheel({0, 120}));
    EXPECT_TRUE(told.told.empty());
}

TEST_F(ViewerInput, MayDestroyTheViewerAndItsWindow) {
    ToldViewer& told = showTold();
    told.reaction = [&] {
        std::exchange(window, nullptr)->RequestDelayedDestruction();
    };
    QTest::mouseClick(&control(), Qt::LeftButton, {}, QPoint(9, 9));
    viewer = nullptr;
    settle();
}

TEST_F(ViewerInput, ChangesTheViewByKeys) {
    auto* space = showSpace();
    space->AddRep(boxRep(plainMaterial(1, 1, 1).Get()).Get());

    struct Row {
        Qt::Key key;
        QorMathVector sight;
    };

    for (const Row& row :
         {Row{Qt::Key_1, {0, 1, 0}}, Row{Qt::Key_2, {0, -1, 0}}, Row{Qt::Key_3, {1, 0, 0}},
          Row{Qt::Key_4, {-1, 0, 0}}, Row{Qt::Key_5, {0, 0, -1}}, Row{Qt::Key_6, {0, 0, 1}}}) {
        key(&control(), row.key);
        const QorView view = space->GetView();
        const QorMathVector sight = (view.target - view.eye).Normalized();
        EXPECT_NEAR(sight * row.sight, 1.0, 1e-9) << row.key;
    }
    const double distance = space->GetView().Distance();
    space->ChangeView(space->GetView().Zoomed({}, 5.0));
    key(&control(), Qt::Key_F);
    EXPECT_LT(space->GetView().Distance(), 2.0 * distance);
    const QorView before = space->GetView();
    key(&control(), Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(space->GetView(), before) << "a shortcut of somebody else";
    ASSERT_TRUE(QTest::qWaitFor([&] { return !space->GetMain3DViewpoint()->IsAnimated(); }));
}

TEST_F(ViewerInput, ShowsThePointerOfWhatADragWouldTake) {
    auto* space = showSpace();
    auto plane = QorMake<Qor2DViewpoint>();
    space->AddViewpoint(plane.Get());
    auto* handle = new Qor2DManipulator(window, "handle", space, plane.Get());
    handle->SetCursor(QorCursor::SizeFalling);
    const QPoint center = control().rect().center();
    QTest::mouseMove(&control(), QPoint(3, 3));
    EXPECT_EQ(control().cursor().shape(), Qt::ArrowCursor);
    QTest::mouseMove(&control(), center);
    EXPECT_EQ(control().cursor().shape(), Qt::SizeFDiagCursor);
    QTest::mousePress(&control(), Qt::LeftButton, {}, center);
    QTest::mouseMove(&control(), center + QPoint(60, 20));
    EXPECT_EQ(control().cursor().shape(), Qt::SizeFDiagCursor) << "while it is dragged";
    QTest::mouseRelease(&control(), Qt::LeftButton, {}, center + QPoint(60, 20));
    auto* indicator = new Qor2DIndicator(window, "indicator", space, plane.Get());
    space->SetForegroundIndicator(indicator);
    QTest::mouseMove(&control(), QPoint(3, 3));
    EXPECT_EQ(control().cursor().shape(), Qt::CrossCursor);
    space->RemoveViewpoint(plane.Get());
}

TEST(ViewerInputTables, EveryCursorHasAShapeOfItsOwn) {
    std::set<Qt::CursorShape> shapes;
    for (int cursor = 0; cursor <= static_cast<int>(QorCursor::SizeRising); ++cursor)
        shapes.insert(shapeOf(static_cast<QorCursor>(cursor)));
    EXPECT_EQ(shapes.size(), 8U);
}

TEST(ViewerInputTables, PositionsAreTheDevicesOwnAtEveryScale) {
    for (const double ratio : {1.0, 1.25, 1.5, 2.0})
        for (int pixel = 0; pixel < 2000; ++pixel) {
            const double position = static_cast<float>(pixel / ratio); // what a display may deliver
            EXPECT_EQ(devicePixel({position, position}, ratio).x, pixel) << ratio;
        }
}

} // namespace

} // namespace qor::desktop::tests
