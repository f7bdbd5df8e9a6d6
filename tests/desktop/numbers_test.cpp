#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgProgress.h"
#include "platform/dialog/QorDlgScrollBar.h"
#include "platform/dialog/QorDlgSlider.h"
#include "platform/dialog/QorDlgSpinner.h"
#include "tests/desktop/DesktopTest.h"
#include "workbench/desktop/peers/Controls.h"

#include <QLineEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QSlider>
#include <QStyleOptionSpinBox>

namespace qor::desktop::tests {

namespace {

class Numbers : public DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        spinner = new QorDlgSpinner(window, "spinner");
        spinner->SetRange(10.0, 2000.0, 1990);
        spinner->SetFormat("%4.0f");
        spinner->SetValue(299.7);
        slider = new QorDlgSlider(window, "slider");
        slider->SetRange(0.0, 1.0, 100);
        slider->SetValue(0.333);
        bar = new QorDlgScrollBar(window, "bar", QorDlgDefaultStyle);
        bar->SetScrollRange(0, 100);
        bar->SetScrollBoxSize(20);
        other = new QorDlgPushButton(window, "other");
        window->Listen(spinner, spinner->GetSpinnerModifyNotification());
        window->Listen(slider, slider->GetSliderDragNotification(),
                       slider->GetSliderModifyNotification());
        window->Listen(bar, bar->GetScrollBarDragNotification(),
                       bar->GetScrollBarModifyNotification());
        show();
    }

    [[nodiscard]] QLineEdit* text() const { return controlFor(spinner)->findChild<QLineEdit*>(); }

    void enter(const QString& typed) {
        text()->setFocus();
        text()->selectAll();
        type(text(), typed);
    }

    /// The middle of the slider's handle when it stands at \p part of the way.
    [[nodiscard]] QPoint handleAt(double part) const {
        constexpr int handle = 16;
        const QWidget* control = controlFor(slider);
        const int travel = control->width() - handle;
        return {handle / 2 + qRound(part * travel), control->height() / 2};
    }

    QorDlgSpinner* spinner = nullptr;
    QorDlgSlider* slider = nullptr;
    QorDlgScrollBar* bar = nullptr;
    QorDlgPushButton* other = nullptr;
};

TEST_F(Numbers, ASpinnerKeepsTheExactValueThoughItShowsAnother) {
    EXPECT_EQ(text()->text(), "300");
    text()->setFocus();
    controlFor(other)->setFocus();
    settle();
    EXPECT_DOUBLE_EQ(spinner->GetValue(), 299.7);
    EXPECT_EQ(window->TakeHeard(), Heard{});
    text()->setFocus();
    key(text(), Qt::Key_Return);
    EXPECT_DOUBLE_EQ(spinner->GetValue(), 299.7);
}

TEST_F(Numbers, TypedTextIsToldOfOnceOnEnter) {
    enter("450");
    EXPECT_EQ(window->TakeHeard(), Heard{});
    key(text(), Qt::Key_Return);
    EXPECT_DOUBLE_EQ(spinner->GetValue(), 450.0);
    EXPECT_EQ(window->TakeHeard().front(), "spinner SpinnerModify");
    controlFor(other)->setFocus();
    settle();
    EXPECT_EQ(window->TakeHeard(), Heard{});
}

TEST_F(Numbers, TypedTextIsToldOfOnLeaving) {
    enter("451");
    key(text(), Qt::Key_Tab);
    EXPECT_DOUBLE_EQ(spinner->GetValue(), 451.0);
    EXPECT_EQ(window->TakeHeard(), Heard{"spinner SpinnerModify"});
}

TEST_F(Numbers, WhatIsNoNumberGivesTheOldTextBack) {
    enter("abc");
    key(text(), Qt::Key_Tab);
    EXPECT_EQ(text()->text(), "300");
    EXPECT_DOUBLE_EQ(spinner->GetValue(), 299.7);
    EXPECT_EQ(window->TakeHeard(), Heard{});
}

TEST_F(Numbers, AValueOutOfRangeIsShownClamped) {
    enter("99999");
    key(text(), Qt::Key_Tab);
    EXPECT_EQ(text()->text(), "2000");
    EXPECT_DOUBLE_EQ(spinner->GetValue(), 2000.0);
}

TEST_F(Numbers, KeysWheelAndButtonsStepFromTheExactValue) {
    text()->setFocus();
    key(text(), Qt::Key_Up);
    EXPECT_DOUBLE_EQ(spinner->GetValue(), 300.7);
    EXPECT_EQ(text()->text(), "301");
    EXPECT_EQ(window->TakeHeard(), Heard{"spinner SpinnerModify"});
    key(text(), Qt::Key_PageDown);
    EXPECT_DOUBLE_EQ(spinner->GetValue(), 290.7);
    wheel(*controlFor(spinner), 1);
    EXPECT_DOUBLE_EQ(spinner->GetValue(), 291.7);
    QWidget* control = controlFor(spinner);
    click(spinner, QPoint(control->width() - 10, control->height() / 4));
    EXPECT_DOUBLE_EQ(spinner->GetValue(), 292.7);
    click(spinner, QPoint(control->width() - 10, control->height() * 3 / 4));
    EXPECT_DOUBLE_EQ(spinner->GetValue(), 291.7);
}

TEST_F(Numbers, AStepAfterTypingStartsFromWhatWasTyped) {
    enter("500");
    key(text(), Qt::Key_Up);
    EXPECT_DOUBLE_EQ(spinner->GetValue(), 501.0);
    EXPECT_EQ(window->TakeHeard(), (Heard{"spinner SpinnerModify", "spinner SpinnerModify"}));
}

TEST_F(Numbers, SettingByProgramSendsNothing) {
    spinner->SetValue(123.4);
    slider->SetValue(0.8);
    bar->SetScrollPos(40);
    settle();
    EXPECT_EQ(text()->text(), "123");
    EXPECT_EQ(controlFor<QSlider>(slider)->value(), 80);
    EXPECT_EQ(controlFor<QScrollBar>(bar)->value(), 40);
    EXPECT_EQ(window->TakeHeard(), Heard{});
}

TEST_F(Numbers, ASliderSendsDragWhileItIsHeldAndModifyAtTheRelease) {
    QWidget* control = controlFor(slider);
    QTest::mousePress(control, Qt::LeftButton, {}, handleAt(0.33));
    QTest::mouseMove(control, handleAt(0.5));
    QTest::mouseMove(control, handleAt(0.6));
    settle();
    EXPECT_EQ(window->TakeHeard(), (Heard{"slider SliderDrag", "slider SliderDrag"}));
    EXPECT_NEAR(slider->GetValue(), 0.6, 0.02);
    QTest::mouseRelease(control, Qt::LeftButton, {}, handleAt(0.6));
    settle();
    EXPECT_EQ(window->TakeHeard(), Heard{"slider SliderModify"});
}

TEST_F(Numbers, AClickOnTheHandleKeepsTheExactValue) {
    click(slider, handleAt(0.33));
    EXPECT_DOUBLE_EQ(slider->GetValue(), 0.333);
    EXPECT_EQ(window->TakeHeard(), Heard{});
}

TEST_F(Numbers, KeysAndWheelOfASliderSendDragThenModify) {
    QWidget* control = controlFor(slider);
    control->setFocus();
    key(control, Qt::Key_Right);
    EXPECT_NEAR(slider->GetValue(), 0.34, 1e-9);
    EXPECT_EQ(window->TakeHeard(), (Heard{"slider SliderDrag", "slider SliderModify"}));
    key(control, Qt::Key_End);
    EXPECT_DOUBLE_EQ(slider->GetValue(), 1.0);
    EXPECT_EQ(window->TakeHeard(), (Heard{"slider SliderDrag", "slider SliderModify"}));
    wheel(*control, -1);
    EXPECT_LT(slider->GetValue(), 1.0);
    EXPECT_EQ(window->TakeHeard(), (Heard{"slider SliderDrag", "slider SliderModify"}));
}

TEST_F(Numbers, AScrollBarIsDraggedByItsHandle) {
    auto* control = controlFor<QScrollBar>(bar);
    const int middle = control->height() / 2;
    QTest::mousePress(control, Qt::LeftButton, {}, QPoint(5, middle));
    QTest::mouseMove(control, QPoint(control->width() / 2, middle));
    settle();
    EXPECT_EQ(window->TakeHeard(), Heard{"bar ScrollBarDrag"});
    EXPECT_GT(bar->GetScrollPos(), 20);
    QTest::mouseRelease(control, Qt::LeftButton, {}, QPoint(control->width() / 2, middle));
    settle();
    EXPECT_EQ(window->TakeHeard(), Heard{"bar ScrollBarModify"});
    EXPECT_EQ(control->value(), bar->GetScrollPos());
}

TEST_F(Numbers, AProgressBarShowsItsPositionClamped) {
    auto* progress = new QorDlgProgress(window, "progress");
    progress->SetRange(0, 10);
    progress->SetPos(25);
    settle();
    EXPECT_EQ(controlFor<QProgressBar>(progress)->value(), 10);
    EXPECT_EQ(progress->GetPos(), 25);
}

} // namespace

} // namespace qor::desktop::tests
