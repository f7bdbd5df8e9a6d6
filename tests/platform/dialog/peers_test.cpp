// When peers are made, told and taken away.
#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgLabel.h"
#include "tests/platform/dialog/DialogTest.h"

namespace {

using Log = std::vector<std::string>;

class Peers : public QorTestApplication {
protected:
    void TearDown() override {
        if (dialog != nullptr)
            std::exchange(dialog, nullptr)->RequestDelayedDestruction();
        loop.RunPosted();
        host.reset();
        QorTestApplication::TearDown();
    }

    std::unique_ptr<RecordingHost> host = std::make_unique<RecordingHost>();
    ListeningDialog* dialog = new ListeningDialog;
};

TEST_F(Peers, AreMadeFromTheOutsideInwardsAndDrawnFromTheInsideOutwards) {
    auto* frame = new QorDlgFrame(dialog, "frame");
    new QorDlgLabel(frame, "label");
    new QorDlgSeparator(dialog, "line");
    loop.RunPosted();
    EXPECT_EQ(host->TakeLog(), Log{}) << "a hidden window has no peers";
    dialog->SetVisibility(QorDlgSHOW);
    EXPECT_EQ(host->TakeLog(),
              (Log{"create dialog", "create frame", "create label", "update label everything",
                   "update frame everything", "create line", "update line everything",
                   "update dialog everything", "update dialog visibility"}));
    RecordingHost::ExpectDrawn(*dialog);
}

TEST_F(Peers, OfWidgetsMadeLaterComeInAPostedTurn) {
    dialog->SetVisibility(QorDlgSHOW);
    (void)host->TakeLog();
    auto* frame = new QorDlgFrame(dialog, "frame");
    auto* label = new QorDlgLabel(frame, "label");
    EXPECT_EQ(label->GetPeer(), nullptr);
    EXPECT_EQ(host->TakeLog(), Log{});
    loop.RunPosted();
    EXPECT_EQ(host->TakeLog(), (Log{"create frame", "create label", "update label everything",
                                    "update frame everything", "update dialog layout|children"}));
    RecordingHost::ExpectDrawn(*dialog);
}

TEST_F(Peers, OfADialogThatDiesBeforeThatTurnAreNeverMade) {
    dialog->SetVisibility(QorDlgSHOW);
    new QorDlgLabel(dialog, "label");
    std::exchange(dialog, nullptr)->Release();
    (void)host->TakeLog();
    loop.RunPosted();
    EXPECT_EQ(host->TakeLog(), Log{});
}

TEST_F(Peers, AreToldOfEveryAspectThatChanges) {
    struct Row {
        std::function<void(ListeningDialog&)> act;
        const char* update;
    };

    auto* check = new QorDlgCheckButton(dialog, "check");
    auto* spinner = new QorDlgSpinner(dialog, "spinner");
    auto* slider = new QorDlgSlider(dialog, "slider");
    auto* combo = new QorDlgCombo(dialog, "combo");
    auto* editor = new QorDlgEditor(dialog, "editor");
    auto* progress = new QorDlgProgress(dialog, "progress");
    auto* bar = new QorDlgScrollBar(dialog, "bar");
    const std::vector<Row> rows = {
        {[](auto& iDialog) { iDialog.SetTitle("T"); }, "dialog title"},
        {[](auto& iDialog) { iDialog.SetShortHelp("S"); }, "dialog help"},
        {[](auto& iDialog) { iDialog.SetLongHelp("L"); }, "dialog help"},
        {[](auto& iDialog) { iDialog.SetIconName("I"); }, "dialog icon"},
        {[](auto& iDialog) { iDialog.SetSensitivity(QorDlgDISABLE); }, "dialog sensitivity"},
        {[](auto& iDialog) { iDialog.SetSensitivity(QorDlgENABLE); }, "dialog sensitivity"},
        {[](auto& iDialog) { iDialog.SetGridRowResizable(0, true); }, "dialog layout"},
        {[](auto& iDialog) { iDialog.SetStackOrientation(QorOrientation::Horizontal); },
         "dialog layout"},
        {[=](auto&) { check->SetVisibility(QorDlgHIDE); }, "check visibility"},
        {[=](auto&) { check->SetVisibility(QorDlgSHOW); }, "check visibility"},
        {[=](auto&) { check->SetGridConstraints(1, 2, 1, 1); }, "check layout"},
        {[=](auto&) { check->SetAttachment(QorSideTop); }, "check layout"},
        {[=](auto&) { check->SetState(QorDlgCheck); }, "check checked"},
        {[=](auto&) { check->UserCheck(false); }, "check checked"},
        {[=](auto&) { spinner->SetVisibleTextWidth(3); }, "spinner layout"},
        {[=](auto&) { spinner->SetRange(0, 10, 10); }, "spinner value|range"},
        {[=](auto&) { spinner->SetFormat("%4.0f"); }, "spinner value|range"},
        {[=](auto&) { spinner->UserStep(2); }, "spinner value"},
        {[=](auto&) { slider->UserDrag(3.0); }, "slider value"},
        {[=](auto&) { slider->SetValue(4.0); }, "slider value"},
        {[=](auto&) { combo->SetLine("a"); }, "combo lines|selection"},
        {[=](auto&) { combo->SetLine("b"); }, "combo lines|selection"},
        {[=](auto&) { combo->SetLine("c", 0); }, "combo lines"},
        {[=](auto&) { combo->UserSelect(1); }, "combo selection"},
        {[=](auto&) { combo->ClearLine(); }, "combo lines|selection"},
        {[=](auto&) { editor->UserSetText("x"); }, "editor value"},
        {[=](auto&) { progress->SetRange(0, 7); }, "progress range"},
        {[=](auto&) { progress->SetPos(5); }, "progress value"},
        {[=](auto&) { bar->SetScrollRange(0, 7); }, "bar value|range"},
        {[=](auto&) { bar->SetScrollBoxSize(5); }, "bar range"},
        {[=](auto&) { bar->UserDrag(5); }, "bar value"},
    };
    dialog->SetVisibility(QorDlgSHOW);
    (void)host->TakeLog();
    for (const Row& row : rows) {
        row.act(*dialog);
        EXPECT_EQ(host->TakeLog(), Log{std::string("update ") + row.update});
        RecordingHost::ExpectDrawn(*dialog);
    }
    spinner->SetValue(spinner->GetValue());
    check->SetVisibility(QorDlgSHOW);
    check->SetState(QorDlgUncheck);
    EXPECT_EQ(host->TakeLog(), Log{}) << "nothing is drawn that has not changed";
}

TEST_F(Peers, GoBeforeTheirWidgetsAndTheirFathersPeer) {
    auto* frame = new QorDlgFrame(dialog, "frame");
    const QorVar<QorDlgLabel> label(new QorDlgLabel(frame, "label"));
    auto* child = new QorDlgDialog(dialog, "child");
    dialog->SetVisibility(QorDlgSHOW);
    child->SetVisibility(QorDlgSHOW);
    (void)host->TakeLog();
    std::exchange(dialog, nullptr)->Release();
    EXPECT_EQ(host->TakeLog(),
              (Log{"destroy label", "destroy frame", "destroy child", "destroy dialog"}));
    EXPECT_EQ(label->GetPeer(), nullptr);
    EXPECT_EQ(label->GetFatherDialog(), nullptr);
    EXPECT_EQ(label->GetWindow(), nullptr);
    label->SetTitle("still whole");
    EXPECT_EQ(label->GetTitle(), "still whole");
}

TEST_F(Peers, OfARemovedWidgetGoAtOnceThoughSomebodyHoldsIt) {
    const QorVar<QorDlgLabel> label(new QorDlgLabel(dialog, "label"));
    dialog->SetVisibility(QorDlgSHOW);
    label->RequestDelayedDestruction();
    (void)host->TakeLog();
    loop.RunPosted();
    EXPECT_EQ(host->TakeLog(), (Log{"destroy label", "update dialog layout|children"}));
    RecordingHost::ExpectDrawn(*dialog);
}

TEST_F(Peers, ADyingWindowVanishesAtOnce) {
    dialog->SetVisibility(QorDlgSHOW);
    (void)host->TakeLog();
    dialog->RequestDelayedDestruction();
    EXPECT_EQ(host->TakeLog(), Log{"update dialog visibility"});
    EXPECT_FALSE(dialog->IsShown());
    dialog = nullptr;
}

TEST_F(Peers, AWindowThatIsShownAgainIsRaised) {
    dialog->SetVisibility(QorDlgSHOW);
    (void)host->TakeLog();
    dialog->SetVisibility(QorDlgSHOW);
    EXPECT_EQ(host->TakeLog(), Log{"raise dialog"});
    dialog->SetVisibility(QorDlgHIDE);
    dialog->SetVisibility(QorDlgSHOW);
    EXPECT_EQ(host->TakeLog(), (Log{"update dialog visibility", "update dialog visibility"}));
}

TEST_F(Peers, AWidgetThatTheHostDoesNotDrawHidesWhatIsInIt) {
    host->DoNotDraw("frame");
    auto* frame = new QorDlgFrame(dialog, "frame");
    auto* label = new QorDlgLabel(frame, "label");
    dialog->SetVisibility(QorDlgSHOW);
    EXPECT_NE(dialog->GetPeer(), nullptr);
    EXPECT_EQ(frame->GetPeer(), nullptr);
    EXPECT_EQ(label->GetPeer(), nullptr);
}

TEST_F(Peers, CanBeTakenAwayAndMadeAgain) {
    new QorDlgLabel(dialog, "label");
    dialog->SetVisibility(QorDlgSHOW);
    (void)host->TakeLog();
    dialog->Unrealize();
    EXPECT_EQ(host->TakeLog(), (Log{"destroy label", "destroy dialog"}));
    dialog->SetTitle("unseen");
    dialog->Realize();
    EXPECT_EQ(host->TakeLog(), (Log{"create dialog", "create label", "update label everything",
                                    "update dialog everything"}));
    RecordingHost::ExpectDrawn(*dialog);
}

TEST_F(Peers, AreMissingWithoutAToolkitAndWithoutAWindow) {
    QorToolkit::Install(nullptr);
    dialog->SetVisibility(QorDlgSHOW);
    EXPECT_EQ(dialog->GetPeer(), nullptr);
    QorToolkit::Install(host.get());
    const auto label = QorMake<QorDlgLabel>(nullptr, "label");
    label->Realize();
    EXPECT_EQ(label->GetPeer(), nullptr);
}

TEST_F(Peers, OfWidgetsMadeBelowABoxAreMadeThere) {
    dialog->SetVisibility(QorDlgSHOW);
    auto* label = new QorDlgLabel(dialog, "label");
    bool made = false;
    loop.RunNested([&] { return made = label->GetPeer() != nullptr; });
    EXPECT_TRUE(made);
}

} // namespace
