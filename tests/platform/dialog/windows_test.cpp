// Windows: their buttons and sizes, and what visibility, sensitivity and places mean in them.
#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgLabel.h"
#include "tests/platform/dialog/DialogTest.h"

namespace {

constexpr QorUserResult Done = QorUserResult::Done;
constexpr QorUserResult Insensitive = QorUserResult::Insensitive;
constexpr QorUserResult Impossible = QorUserResult::Impossible;
constexpr QorUserResult OutOfRange = QorUserResult::OutOfRange;

class Windows : public DialogTest {};

QorInstantiateDialogTests(Windows);

TEST_P(Windows, AWindowOffersTheButtonsOfItsStyle) {
    struct Row {
        const char* sentence;
        QorDlgStyle style;
        std::function<QorUserResult(QorDlgDialog&)> act;
        QorUserResult result;
        Heard heard;
    };

    const auto ok = [](QorDlgDialog& iOne) {
        return iOne.UserOK();
    };
    const auto cancel = [](QorDlgDialog& iOne) {
        return iOne.UserCancel();
    };
    const auto apply = [](QorDlgDialog& iOne) {
        return iOne.UserApply();
    };
    const auto close = [](QorDlgDialog& iOne) {
        return iOne.UserClose();
    };
    const std::vector<Row> rows = {
        {"OK", QorDlgWndOK, ok, Done, {"window DiaOK"}},
        {"no OK", QorDlgWndCANCEL, ok, Impossible, {}},
        {"Cancel", QorDlgWndOKCancel, cancel, Done, {"window DiaCANCEL"}},
        {"no Cancel", QorDlgWndOK, cancel, Impossible, {}},
        {"Apply", QorDlgWndAPPLY, apply, Done, {"window DiaAPPLY"}},
        {"no Apply", QorDlgWndOKCancel, apply, Impossible, {}},
        {"every window has a close box", QorDlgDefaultStyle, close, Done, {"window WindClose"}},
        {"hidden",
         QorDlgWndOKCancel,
         [](QorDlgDialog& iOne) {
             iOne.SetVisibility(QorDlgHIDE);
             return iOne.UserOK();
         },
         Insensitive,
         {}},
        {"disabled",
         QorDlgWndOKCancel,
         [](QorDlgDialog& iOne) {
             iOne.SetSensitivity(QorDlgDISABLE);
             return iOne.UserClose();
         },
         Insensitive,
         {}},
        {"dying",
         QorDlgWndOKCancel,
         [](QorDlgDialog& iOne) {
             iOne.RequestDelayedDestruction();
             return iOne.UserOK();
         },
         Insensitive,
         {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sentence);
        auto* window = new QorDlgDialog(dialog, "window", row.style);
        dialog->Listen(window, window->GetDiaOKNotification(), window->GetDiaCANCELNotification(),
                       window->GetDiaAPPLYNotification(), window->GetWindCloseNotification());
        EXPECT_EQ(window->UserClose(), Insensitive) << "a window is hidden at first";
        window->SetVisibility(QorDlgSHOW);
        EXPECT_EQ(row.act(*window), row.result);
        EXPECT_EQ(dialog->TakeHeard(), row.heard);
        if (row.result == Done) {
            EXPECT_TRUE(window->CanAct()) << "a window does not close itself";
        }
        window->RequestDelayedDestruction();
        loop.RunPosted();
    }
}

TEST_P(Windows, AWindowKnowsItsSizeAndTellsOfChanges) {
    dialog->Listen(dialog, dialog->GetWindSizeNotification());
    const Heard sized{"dialog WindSize"};
    int width = -1;
    int height = -1;
    dialog->GetSize(width, height);
    EXPECT_EQ(width, 0);
    EXPECT_EQ(height, 0);
    EXPECT_EQ(dialog->UserResize(640, 480), Done);
    dialog->GetSize(width, height);
    EXPECT_EQ(width, 640);
    EXPECT_EQ(height, 480);
    EXPECT_EQ(dialog->TakeHeard(), sized);
    EXPECT_EQ(dialog->UserResize(640, 480), Done);
    EXPECT_EQ(dialog->TakeHeard(), Heard{});
    EXPECT_EQ(dialog->UserResize(0, 480), OutOfRange);
    EXPECT_EQ(dialog->UserResize(640, -1), OutOfRange);
    dialog->SetSensitivity(QorDlgDISABLE);
    EXPECT_EQ(dialog->UserResize(800, 600), Done);
    EXPECT_EQ(dialog->TakeHeard(), sized);
    dialog->SetVisibility(QorDlgHIDE);
    EXPECT_EQ(dialog->UserResize(1, 1), Insensitive);
}

TEST_P(Windows, VisibilityAndSensitivityReachDownToTheNextWindow) {
    struct Row {
        const char* sentence;
        std::function<void(QorDialog& iDialog, QorDialog& iFrame, QorDialog& iButton)> act;
        bool shown;
        bool canAct;
    };

    const std::vector<Row> rows = {
        {"as made", [](QorDialog&, QorDialog&, QorDialog&) {}, true, true},
        {"the button hidden",
         [](QorDialog&, QorDialog&, QorDialog& iButton) { iButton.SetVisibility(QorDlgHIDE); },
         false, false},
        {"the frame hidden",
         [](QorDialog&, QorDialog& iFrame, QorDialog&) { iFrame.SetVisibility(QorDlgHIDE); }, false,
         false},
        {"the window hidden",
         [](QorDialog& iDialog, QorDialog&, QorDialog&) { iDialog.SetVisibility(QorDlgHIDE); },
         false, false},
        {"the button disabled",
         [](QorDialog&, QorDialog&, QorDialog& iButton) { iButton.SetSensitivity(QorDlgDISABLE); },
         true, false},
        {"the frame disabled",
         [](QorDialog&, QorDialog& iFrame, QorDialog&) { iFrame.SetSensitivity(QorDlgDISABLE); },
         true, false},
        {"the window disabled",
         [](QorDialog& iDialog, QorDialog&, QorDialog&) { iDialog.SetSensitivity(QorDlgDISABLE); },
         true, false},
        {"the frame dying",
         [](QorDialog&, QorDialog& iFrame, QorDialog&) { iFrame.RequestDelayedDestruction(); },
         true, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sentence);
        auto* frame = new QorDlgFrame(dialog, "frame");
        auto* button = new QorDlgPushButton(frame, "button");
        row.act(*dialog, *frame, *button);
        EXPECT_EQ(button->IsShown(), row.shown);
        EXPECT_EQ(button->CanAct(), row.canAct);
        dialog->SetVisibility(QorDlgSHOW);
        dialog->SetSensitivity(QorDlgENABLE);
    }
}

TEST_P(Windows, AChildWindowIsShownAndActsWhateverItsFatherIs) {
    auto* child = new QorDlgDialog(new QorDlgFrame(dialog, "frame"), "child");
    child->SetVisibility(QorDlgSHOW);
    dialog->SetVisibility(QorDlgHIDE);
    dialog->SetSensitivity(QorDlgDISABLE);
    EXPECT_TRUE(child->IsShown());
    EXPECT_TRUE(child->CanAct());
    EXPECT_EQ(child->GetWindow(), child);
    EXPECT_EQ(child->GetFatherDialog()->GetWindow(), dialog);
    dialog->RequestDelayedDestruction();
    EXPECT_FALSE(child->CanAct()) << "it dies with its father";
    dialog = nullptr;
}

TEST_P(Windows, GetWidgetsGivesChildrenInOrderAndNoWindows) {
    auto* label = new QorDlgLabel(dialog, "label");
    new QorDlgDialog(dialog, "child");
    new QorCommand(dialog, "command");
    auto* line = new QorDlgSeparator(dialog, "line");
    EXPECT_EQ(dialog->GetWidgets(), (std::vector<QorDialog*>{label, line}));
    EXPECT_EQ(dialog->GetChildren().size(), 4U);
}

TEST_P(Windows, GetAllGivesTheLivingInTheOrderOfTheirMaking) {
    auto* first = new QorDlgDialog(dialog, "first");
    auto* second = new QorDlgFile(nullptr, "second");
    EXPECT_EQ(QorDlgDialog::GetAll(), (std::vector<QorDlgDialog*>{dialog, first, second}));
    second->RequestDelayedDestruction();
    EXPECT_EQ(QorDlgDialog::GetAll(), (std::vector<QorDlgDialog*>{dialog, first}));
    dialog->RequestDelayedDestruction();
    EXPECT_TRUE(QorDlgDialog::GetAll().empty()) << "the children of the dying are dying";
    dialog = nullptr;
}

TEST_P(Windows, PlacesAreKeptForTheHost) {
    auto* frame = new QorDlgFrame(dialog, "frame", QorDlgGridLayout);
    auto* label = new QorDlgLabel(frame, "label");
    EXPECT_EQ(label->GetPlacement(), QorPlacement{});
    label->SetGridConstraints(3, 2, 1, 4, QorHoldNatural);
    EXPECT_EQ(label->GetPlacement().cell,
              (QorGridCell{.row = 3, .column = 2, .width = 1, .height = 4, .justification = 30}));
    label->SetGridConstraints(-1, -1, 0, -7);
    EXPECT_EQ(label->GetPlacement().cell, QorGridCell{}) << "a cell is somewhere and not empty";
    label->SetAttachment(QorSideLeft | QorSideTop);
    EXPECT_EQ(label->GetPlacement().sides, QorSideLeft | QorSideTop);
    dialog->Attach4Sides(frame);
    EXPECT_EQ(frame->GetPlacement().sides, QorSideAll);
    dialog->Attach4Sides(label);
    dialog->Attach4Sides(nullptr);
    EXPECT_EQ(label->GetPlacement().sides, QorSideLeft | QorSideTop) << "not a child of the dialog";
    frame->SetGridRowResizable(2, true);
    frame->SetGridRowResizable(0, true);
    frame->SetGridRowResizable(2, true);
    frame->SetGridRowResizable(1, false);
    EXPECT_EQ(frame->GetLayout().stretchedRows, (std::vector<int>{0, 2}));
    frame->SetGridRowResizable(2, false);
    EXPECT_EQ(frame->GetLayout().stretchedRows, std::vector<int>{0});
    frame->SetGridColumnResizable(5, true);
    EXPECT_EQ(frame->GetLayout().stretchedColumns, std::vector<int>{5});
    frame->SetStackOrientation(QorOrientation::Horizontal);
    EXPECT_EQ(frame->GetLayout().stack, QorOrientation::Horizontal);
    label->SetVisibleTextWidth(9);
    EXPECT_EQ(label->GetVisibleTextWidth(), 9);
    label->SetVisibleTextWidth(-2);
    EXPECT_EQ(label->GetVisibleTextWidth(), 0);
}

} // namespace
