#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgFrame.h"
#include "tests/desktop/DesktopTest.h"
#include "workbench/desktop/theme/Theme.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <QToolButton>

namespace qor::desktop::tests {

namespace {

class Buttons : public DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        push = new QorDlgPushButton(window, "push");
        check = new QorDlgCheckButton(window, "check");
        first = new QorDlgRadioButton(window, "first");
        second = new QorDlgRadioButton(window, "second");
        third = new QorDlgRadioButton(window, "third");
        for (QorDialog* button :
             std::initializer_list<QorDialog*>{push, check, first, second, third})
            button->SetTitle(QorUnicodeString(button->GetName().Str()));
        window->Listen(push, push->GetPushBActivateNotification());
        window->Listen(check, check->GetChkBModifyNotification(),
                       check->GetChkBDoubleClickNotification());
        for (QorDlgRadioButton* radio : {first, second, third})
            window->Listen(radio, radio->GetRadBModifyNotification());
        show();
    }

    /// Where a person clicks a button with a mark: on the mark.
    void clickMark(const QorDialog* button) {
        click(button, QPoint(8, controlFor(button)->height() / 2));
    }

    QorDlgPushButton* push = nullptr;
    QorDlgCheckButton* check = nullptr;
    QorDlgRadioButton* first = nullptr;
    QorDlgRadioButton* second = nullptr;
    QorDlgRadioButton* third = nullptr;
};

TEST_F(Buttons, APushButtonIsPressedByMouseSpaceAndEnter) {
    click(push);
    EXPECT_EQ(window->TakeHeard(), Heard{"push PushBActivate"});
    controlFor(push)->setFocus();
    key(Qt::Key_Space);
    EXPECT_EQ(window->TakeHeard(), Heard{"push PushBActivate"});
    key(Qt::Key_Return);
    EXPECT_EQ(window->TakeHeard(), Heard{"push PushBActivate"});
}

TEST_F(Buttons, ADisabledButtonDoesNothing) {
    push->SetSensitivity(QorDlgDISABLE);
    click(push);
    EXPECT_EQ(window->TakeHeard(), Heard{});
    push->SetSensitivity(QorDlgENABLE);
    click(push);
    EXPECT_EQ(window->TakeHeard(), Heard{"push PushBActivate"});
}

TEST_F(Buttons, ACheckButtonChangesBelowAndShowsIt) {
    auto* box = controlFor<QCheckBox>(check);
    clickMark(check);
    EXPECT_EQ(check->GetState(), QorDlgCheck);
    EXPECT_TRUE(box->isChecked());
    EXPECT_EQ(window->TakeHeard(), Heard{"check ChkBModify"});
    box->setFocus();
    key(Qt::Key_Space);
    EXPECT_EQ(check->GetState(), QorDlgUncheck);
    EXPECT_FALSE(box->isChecked());
    EXPECT_EQ(window->TakeHeard(), Heard{"check ChkBModify"});
}

TEST_F(Buttons, SettingByProgramIsDrawnAndSendsNothing) {
    check->SetState(QorDlgCheck);
    second->SetState(QorDlgCheck);
    settle();
    EXPECT_TRUE(controlFor<QAbstractButton>(check)->isChecked());
    EXPECT_TRUE(controlFor<QAbstractButton>(second)->isChecked());
    EXPECT_EQ(window->TakeHeard(), Heard{});
}

TEST_F(Buttons, ACallbackThatPutsTheStateBackIsSeen) {
    window->reaction = [&](QorCommand&) {
        check->SetState(QorDlgUncheck);
    };
    clickMark(check);
    EXPECT_EQ(check->GetState(), QorDlgUncheck);
    EXPECT_FALSE(controlFor<QAbstractButton>(check)->isChecked());
}

TEST_F(Buttons, ADoubleClickFollowsItsTwoClicks) {
    QWidget* box = controlFor(check);
    const QPoint at(8, box->height() / 2);
    QTest::mouseClick(box, Qt::LeftButton, {}, at);
    QMouseEvent secondPress(QEvent::MouseButtonDblClick, at, box->mapToGlobal(at), Qt::LeftButton,
                            Qt::LeftButton, {});
    QApplication::sendEvent(box, &secondPress);
    QTest::mouseRelease(box, Qt::LeftButton, {}, at);
    settle();
    EXPECT_EQ(check->GetState(), QorDlgUncheck);
    EXPECT_EQ(window->TakeHeard(),
              (Heard{"check ChkBModify", "check ChkBModify", "check ChkBDoubleClick"}));
    clickMark(check);
    EXPECT_EQ(window->TakeHeard(), Heard{"check ChkBModify"});
}

TEST_F(Buttons, TheReleasedRadioButtonIsToldBeforeThePressedOne) {
    first->SetState(QorDlgCheck);
    bool bothChanged = false;
    window->reaction = [&](QorCommand& sender) {
        if (&sender == first)
            bothChanged = first->GetState() == QorDlgUncheck && second->GetState() == QorDlgCheck;
    };
    clickMark(second);
    EXPECT_EQ(window->TakeHeard(), (Heard{"first RadBModify", "second RadBModify"}));
    EXPECT_TRUE(bothChanged);
    EXPECT_FALSE(controlFor<QAbstractButton>(first)->isChecked());
    EXPECT_TRUE(controlFor<QAbstractButton>(second)->isChecked());
}

TEST_F(Buttons, ClickingTheCheckedRadioButtonLeavesItChecked) {
    first->SetState(QorDlgCheck);
    clickMark(first);
    EXPECT_EQ(first->GetState(), QorDlgCheck);
    EXPECT_TRUE(controlFor<QAbstractButton>(first)->isChecked());
    EXPECT_EQ(window->TakeHeard(), Heard{});
}

TEST_F(Buttons, ArrowsGoThroughTheRadioButtonsThatCanBeUsed) {
    first->SetState(QorDlgCheck);
    second->SetSensitivity(QorDlgDISABLE);
    controlFor(first)->setFocus();
    key(Qt::Key_Down);
    EXPECT_EQ(third->GetState(), QorDlgCheck);
    EXPECT_TRUE(controlFor(third)->hasFocus());
    EXPECT_EQ(window->TakeHeard(), (Heard{"first RadBModify", "third RadBModify"}));
    key(Qt::Key_Right);
    EXPECT_EQ(first->GetState(), QorDlgCheck);
    key(Qt::Key_Up);
    EXPECT_EQ(third->GetState(), QorDlgCheck);
}

TEST_F(Buttons, RadioButtonsOfOtherFramesAreAnotherGroup) {
    auto* frame = new QorDlgFrame(window, "frame");
    auto* other = new QorDlgRadioButton(frame, "other");
    settle();
    first->SetState(QorDlgCheck);
    clickMark(other);
    EXPECT_EQ(first->GetState(), QorDlgCheck);
    EXPECT_EQ(other->GetState(), QorDlgCheck);
}

TEST_F(Buttons, InAFrameOfToolsTheyAreIconsWithNames) {
    auto* tools = new ListeningDialog(window, "tools", QorDlgWndToolBar | QorDlgGridLayout);
    auto* render = new QorDlgCheckButton(tools, "render");
    render->SetTitle("Render");
    render->SetIconName("render");
    tools->Listen(render, render->GetChkBModifyNotification());
    show(*tools);
    auto* button = controlFor<QToolButton>(render);
    EXPECT_FALSE(button->icon().isNull());
    EXPECT_EQ(button->accessibleName(), "Render");
    EXPECT_EQ(button->toolTip(), "Render");
    click(render);
    EXPECT_TRUE(button->isChecked());
    EXPECT_EQ(tools->TakeHeard(), Heard{"render ChkBModify"});
}

TEST_F(Buttons, AnIconThatHasTheKeyboardHasARing) {
    auto* tools = new ListeningDialog(window, "tools", QorDlgWndToolBar | QorDlgGridLayout);
    auto* render = new QorDlgCheckButton(tools, "render");
    render->SetIconName("render");
    show(*tools);
    QToolButton& button = *controlFor<QToolButton>(render);
    const auto isRinged = [&](QStyle::State state) {
        QStyleOptionToolButton option;
        option.initFrom(&button);
        option.subControls = QStyle::SC_ToolButton;
        option.state = QStyle::State_Enabled | QStyle::State_AutoRaise | state;
        QImage image(button.size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        button.style()->drawComplexControl(QStyle::CC_ToolButton, &option, &painter, &button);
        painter.end();
        return image.pixelColor(button.width() / 2, 1) == Theme::colors().accent;
    };
    EXPECT_FALSE(isRinged({}));
    EXPECT_FALSE(isRinged(QStyle::State_HasFocus)) << "by the mouse";
    EXPECT_TRUE(isRinged(QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange));
    EXPECT_TRUE(
        isRinged(QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange | QStyle::State_On));
    EXPECT_FALSE(isRinged(QStyle::State_KeyboardFocusChange | QStyle::State_On));
}

} // namespace

} // namespace qor::desktop::tests
