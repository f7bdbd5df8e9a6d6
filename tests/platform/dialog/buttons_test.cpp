// Push, check and radio buttons: state and notifications, by table.
#include "platform/dialog/QorDlgFrame.h"
#include "tests/platform/dialog/DialogTest.h"

namespace {

constexpr QorUserResult Done = QorUserResult::Done;
constexpr QorUserResult Insensitive = QorUserResult::Insensitive;
constexpr QorUserResult Impossible = QorUserResult::Impossible;

class Buttons : public DialogTest {};

QorInstantiateDialogTests(Buttons);

TEST_P(Buttons, APressIsHeardOnceAndOnlyWhenAPersonCanPress) {
    auto* button = new QorDlgPushButton(dialog, "button");
    dialog->Listen(button, button->GetPushBActivateNotification());
    EXPECT_EQ(button->UserPress(), Done);
    EXPECT_EQ(dialog->TakeHeard(), Heard{"button PushBActivate"});
    button->SetSensitivity(QorDlgDISABLE);
    EXPECT_EQ(button->UserPress(), Insensitive);
    button->SetSensitivity(QorDlgENABLE);
    button->SetVisibility(QorDlgHIDE);
    EXPECT_EQ(button->UserPress(), Insensitive);
    EXPECT_EQ(dialog->TakeHeard(), Heard{});
}

TEST_P(Buttons, ACheckButtonNotifiesForAPersonsChangeAndOtherwiseWhenAsked) {
    struct Row {
        const char* sentence;
        QorDlgCheckState before;
        std::function<QorUserResult(QorDlgCheckButton&)> act;
        QorUserResult result;
        QorDlgCheckState after;
        Heard heard;
    };

    const auto set = [](QorDlgCheckState iState, QorDlgNotifyFlag iFlag) {
        return [=](QorDlgCheckButton& iButton) {
            iButton.SetState(iState, iFlag);
            return Done;
        };
    };
    const auto user = [](bool iChecked) {
        return [=](QorDlgCheckButton& iButton) {
            return iButton.UserCheck(iChecked);
        };
    };
    const Heard modified{"button ChkBModify"};
    const std::vector<Row> rows = {
        {"a person checks it", QorDlgUncheck, user(true), Done, QorDlgCheck, modified},
        {"a person unchecks it", QorDlgCheck, user(false), Done, QorDlgUncheck, modified},
        {"checking the checked one is nothing", QorDlgCheck, user(true), Done, QorDlgCheck, {}},
        {"unchecking the unchecked one is nothing",
         QorDlgUncheck,
         user(false),
         Done,
         QorDlgUncheck,
         {}},
        {"a program checks it silently",
         QorDlgUncheck,
         set(QorDlgCheck, QorDlgNoNotify),
         Done,
         QorDlgCheck,
         {}},
        {"a program asks to notify", QorDlgUncheck, set(QorDlgCheck, QorDlgDoNotify), Done,
         QorDlgCheck, modified},
        {"a program asks to notify of no change",
         QorDlgCheck,
         set(QorDlgCheck, QorDlgDoNotify),
         Done,
         QorDlgCheck,
         {}},
        {"a double click alone changes nothing",
         QorDlgCheck,
         [](QorDlgCheckButton& iButton) { return iButton.UserDoubleClick(); },
         Done,
         QorDlgCheck,
         {"button ChkBDoubleClick"}},
        {"hidden, it cannot be checked",
         QorDlgUncheck,
         [](QorDlgCheckButton& iButton) {
             iButton.SetVisibility(QorDlgHIDE);
             return iButton.UserCheck(true);
         },
         Insensitive,
         QorDlgUncheck,
         {}},
        {"disabled, it cannot be double clicked",
         QorDlgUncheck,
         [](QorDlgCheckButton& iButton) {
             iButton.SetSensitivity(QorDlgDISABLE);
             return iButton.UserDoubleClick();
         },
         Insensitive,
         QorDlgUncheck,
         {}},
        {"disabled, a program still sets it", QorDlgUncheck,
         [](QorDlgCheckButton& iButton) {
             iButton.SetSensitivity(QorDlgDISABLE);
             iButton.SetState(QorDlgCheck, QorDlgDoNotify);
             return Done;
         },
         Done, QorDlgCheck, modified},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sentence);
        auto* button = new QorDlgCheckButton(dialog, "button");
        dialog->Listen(button, button->GetChkBModifyNotification(),
                       button->GetChkBDoubleClickNotification());
        button->SetState(row.before);
        EXPECT_EQ(row.act(*button), row.result);
        EXPECT_EQ(button->GetState(), row.after);
        EXPECT_EQ(dialog->TakeHeard(), row.heard);
    }
}

TEST_P(Buttons, ARadioGroupHoldsAtMostOneAndTellsTheReleasedButtonFirst) {
    struct Row {
        const char* sentence;
        int checked; ///< before; -1 for none
        std::function<QorUserResult(const std::vector<QorDlgRadioButton*>&)> act;
        QorUserResult result;
        int after;
        Heard heard;
    };

    using Group = std::vector<QorDlgRadioButton*>;
    const auto user = [](std::size_t iButton, bool iChecked) {
        return [=](const Group& iGroup) {
            return iGroup[iButton]->UserCheck(iChecked);
        };
    };
    const auto set = [](std::size_t iButton, QorDlgCheckState iState, QorDlgNotifyFlag iFlag) {
        return [=](const Group& iGroup) {
            iGroup[iButton]->SetState(iState, iFlag);
            return Done;
        };
    };
    const std::vector<Row> rows = {
        {"the first check of a group", -1, user(1, true), Done, 1, {"b RadBModify"}},
        {"a person moves the check", 0, user(2, true), Done, 2, {"a RadBModify", "c RadBModify"}},
        {"released first, whatever the order of making",
         2,
         user(0, true),
         Done,
         0,
         {"c RadBModify", "a RadBModify"}},
        {"the checked one again is nothing", 1, user(1, true), Done, 1, {}},
        {"nobody unchecks the checked one", 1, user(1, false), Impossible, 1, {}},
        {"unchecking an unchecked one is nothing", 1, user(0, false), Done, 1, {}},
        {"a program moves the check silently", 0, set(1, QorDlgCheck, QorDlgNoNotify), Done, 1, {}},
        {"a program asks to notify",
         0,
         set(1, QorDlgCheck, QorDlgDoNotify),
         Done,
         1,
         {"a RadBModify", "b RadBModify"}},
        {"a program may leave none",
         0,
         set(0, QorDlgUncheck, QorDlgDoNotify),
         Done,
         -1,
         {"a RadBModify"}},
        {"a program sets what is so already", 0, set(0, QorDlgCheck, QorDlgDoNotify), Done, 0, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sentence);
        auto* frame = new QorDlgFrame(dialog, "frame");
        Group group;
        for (const char* name : {"a", "b", "c"})
            group.push_back(new QorDlgRadioButton(frame, name));
        for (QorDlgRadioButton* button : group)
            dialog->Listen(button, button->GetRadBModifyNotification());
        if (row.checked >= 0)
            group[static_cast<std::size_t>(row.checked)]->SetState(QorDlgCheck);
        EXPECT_EQ(row.act(group), row.result);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(group[static_cast<std::size_t>(i)]->GetState(),
                      i == row.after ? QorDlgCheck : QorDlgUncheck)
                << i;
        EXPECT_EQ(dialog->TakeHeard(), row.heard);
    }
}

TEST_P(Buttons, BothRadioButtonsHaveTheirNewStateWhenTheFirstNotificationComes) {
    auto* screen = new QorDlgRadioButton(dialog, "screen");
    auto* custom = new QorDlgRadioButton(dialog, "custom");
    dialog->Listen(screen, screen->GetRadBModifyNotification());
    dialog->Listen(custom, custom->GetRadBModifyNotification());
    screen->SetState(QorDlgCheck);
    int calls = 0;
    dialog->reaction = [&](QorCommand&) {
        ++calls;
        EXPECT_EQ(screen->GetState(), QorDlgUncheck);
        EXPECT_EQ(custom->GetState(), QorDlgCheck);
    };
    custom->UserCheck(true);
    EXPECT_EQ(calls, 2);
}

TEST_P(Buttons, RadioButtonsOfAnotherFatherAreAnotherGroup) {
    auto* one = new QorDlgRadioButton(new QorDlgFrame(dialog, "left"), "button");
    auto* other = new QorDlgRadioButton(new QorDlgFrame(dialog, "right"), "button");
    one->UserCheck(true);
    other->UserCheck(true);
    EXPECT_EQ(one->GetState(), QorDlgCheck);
    EXPECT_EQ(other->GetState(), QorDlgCheck);
}

TEST_P(Buttons, ARadioButtonWithoutFatherIsAGroupOfItsOwn) {
    const auto button = QorMake<QorDlgRadioButton>(nullptr, "alone");
    EXPECT_EQ(button->UserCheck(true), Done);
    EXPECT_EQ(button->GetState(), QorDlgCheck);
}

} // namespace
