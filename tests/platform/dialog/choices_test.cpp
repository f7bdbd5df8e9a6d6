// Combos and editors, by table.
#include "tests/platform/dialog/DialogTest.h"

namespace {

constexpr QorUserResult Done = QorUserResult::Done;

class Choices : public DialogTest {};

QorInstantiateDialogTests(Choices);

TEST_P(Choices, ACombosSelectionIsOneOfItsLines) {
    struct Row {
        const char* sentence;
        int lines;
        std::function<QorUserResult(QorDlgCombo&)> act;
        QorUserResult result;
        int after;
        Heard heard;
    };

    const auto user = [](int iLine) {
        return [=](QorDlgCombo& iOne) {
            return iOne.UserSelect(iLine);
        };
    };
    const auto set = [](int iLine, QorDlgNotifyFlag iFlag = QorDlgNoNotify) {
        return [=](QorDlgCombo& iOne) {
            iOne.SetSelect(iLine, iFlag);
            return Done;
        };
    };
    const auto nothing = [](QorDlgCombo&) {
        return Done;
    };
    const Heard selected{"combo ComboSelect"};
    const std::vector<Row> rows = {
        {"without lines nothing is selected", 0, nothing, Done, -1, {}},
        {"the first line becomes the selection", 3, nothing, Done, 0, {}},
        {"a person chooses", 3, user(2), Done, 2, selected},
        {"a person chooses what is chosen", 3, user(0), Done, 0, {}},
        {"beyond the end", 3, user(3), QorUserResult::OutOfRange, 0, {}},
        {"before the beginning", 3, user(-1), QorUserResult::OutOfRange, 0, {}},
        {"of an empty combo", 0, user(0), QorUserResult::OutOfRange, -1, {}},
        {"a program selects silently", 3, set(1), Done, 1, {}},
        {"a program asks to notify", 3, set(1, QorDlgDoNotify), Done, 1, selected},
        {"a program asks to notify of no change", 3, set(0, QorDlgDoNotify), Done, 0, {}},
        {"a program selects no line", 3, set(7, QorDlgDoNotify), Done, 0, {}},
        {"a program selects before the beginning", 3, set(-1), Done, 0, {}},
        {"cleared",
         3,
         [](QorDlgCombo& iOne) {
             iOne.ClearLine();
             return Done;
         },
         Done,
         -1,
         {}},
        {"cleared and filled again",
         3,
         [](QorDlgCombo& iOne) {
             iOne.SetSelect(2);
             iOne.ClearLine();
             iOne.SetLine("new");
             return Done;
         },
         Done,
         0,
         {}},
        {"disabled",
         3,
         [](QorDlgCombo& iOne) {
             iOne.SetSensitivity(QorDlgDISABLE);
             return iOne.UserSelect(1);
         },
         QorUserResult::Insensitive,
         0,
         {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sentence);
        auto* combo = new QorDlgCombo(dialog, "combo");
        dialog->Listen(combo, combo->GetComboSelectNotification());
        for (int i = 0; i < row.lines; ++i)
            combo->SetLine("line");
        EXPECT_EQ(row.act(*combo), row.result);
        EXPECT_EQ(combo->GetSelect(), row.after);
        EXPECT_EQ(dialog->TakeHeard(), row.heard);
    }
}

TEST_P(Choices, ACombosLinesAreAppendedAndReplaced) {
    auto* combo = new QorDlgCombo(dialog, "combo");
    combo->SetLine("one");
    combo->SetLine("two");
    combo->SetLine("zwei", 1);
    combo->SetLine("never", 2);
    combo->SetLine("never", -1);
    EXPECT_EQ(combo->GetLines(), (std::vector<QorUnicodeString>{"one", "zwei"}));
}

TEST_P(Choices, AnEditorNotifiesWhenItsTextHasChanged) {
    auto* editor = new QorDlgEditor(dialog, "editor");
    dialog->Listen(editor, editor->GetEditModifyNotification());
    const Heard modified{"editor EditModify"};
    editor->SetText("shelf");
    EXPECT_EQ(dialog->TakeHeard(), Heard{});
    EXPECT_EQ(editor->UserSetText("shelf"), Done);
    EXPECT_EQ(dialog->TakeHeard(), Heard{});
    EXPECT_EQ(editor->UserSetText("Étagère"), Done);
    EXPECT_EQ(editor->GetText(), "Étagère");
    EXPECT_EQ(dialog->TakeHeard(), modified);
    EXPECT_EQ(editor->UserSetText(""), Done);
    EXPECT_EQ(dialog->TakeHeard(), modified);
    editor->SetText("", QorDlgDoNotify);
    EXPECT_EQ(dialog->TakeHeard(), Heard{});
    editor->SetText("rack", QorDlgDoNotify);
    EXPECT_EQ(dialog->TakeHeard(), modified);
    editor->SetSensitivity(QorDlgDISABLE);
    EXPECT_EQ(editor->UserSetText("x"), QorUserResult::Insensitive);
    EXPECT_EQ(editor->GetText(), "rack");
}

} // namespace
