#include "tests/platform/frame/QorFrameTest.h"

namespace {

using FrmLayout = QorFrameTest;

TEST_F(FrmLayout, IsTheCurrentOneWhileItLives) {
    EXPECT_EQ(QorFrmLayout::GetCurrentLayout(), layout.Get());
    layout.Reset();
    EXPECT_EQ(QorFrmLayout::GetCurrentLayout(), nullptr);
    EXPECT_EQ(QorFrmEditor::GetCurrentEditor(), nullptr);
}

TEST_F(FrmLayout, OpeningADocumentDoesNotYetActivateIt) {
    QorFrmEditor* gear = Open("gear");
    AddWindow(gear, "gear:1");
    EXPECT_EQ(layout->GetEditorCount(), 1);
    EXPECT_EQ(layout->GetCurrentWindow(), nullptr);
    EXPECT_EQ(recorder.Take(), Lines{});
}

TEST_F(FrmLayout, TurningToAWindowActivatesItsEditorThenItsViewer) {
    QorFrmEditor* gear = Open("gear");
    QorFrmWindow* window = AddWindow(gear, "gear:1");
    window->SetViewer(SomeViewer(&window));
    layout->SetCurrentWindow(window);
    EXPECT_EQ(recorder.Take(), (Lines{"EDITOR_ACTIVATED gear", "VIEWER_ACTIVATED gear:1"}));
    EXPECT_EQ(QorFrmEditor::GetCurrentEditor(), gear);
    EXPECT_EQ(layout->GetCurrentWindow(), window);
}

TEST_F(FrmLayout, TurningToTheCurrentWindowDoesNothing) {
    QorFrmWindow* window = AddWindow(Open("gear"), "gear:1");
    layout->SetCurrentWindow(window);
    (void)recorder.Take();
    layout->SetCurrentWindow(window);
    layout->SetCurrentEditor(window->GetEditor());
    EXPECT_EQ(recorder.Take(), Lines{});
}

TEST_F(FrmLayout, TurningToAWindowOfTheSameEditorActivatesTheViewerAlone) {
    QorFrmEditor* gear = Open("gear");
    QorFrmWindow* first = AddWindow(gear, "gear:1");
    QorFrmWindow* second = AddWindow(gear, "gear:2");
    second->SetViewer(SomeViewer(&second));
    layout->SetCurrentWindow(first);
    (void)recorder.Take();
    layout->SetCurrentWindow(second);
    EXPECT_EQ(recorder.Take(), Lines{"VIEWER_ACTIVATED gear:2"});
}

TEST_F(FrmLayout, ChangingTheEditorDeactivatesTheOldOneWhileItIsStillCurrent) {
    QorFrmWindow* gear = AddWindow(Open("gear"), "gear:1");
    QorFrmWindow* pump = AddWindow(Open("pump"), "pump:1");
    layout->SetCurrentWindow(gear);
    (void)recorder.Take();
    recorder.inside = [&](QorEventName iEvent, QorBaseUnknown*, QorNotification*) {
        const bool leaving = iEvent == QorFrmEditor::EDITOR_DEACTIVATED;
        EXPECT_EQ(layout->GetCurrentWindow(), leaving ? gear : pump);
    };
    layout->SetCurrentWindow(pump);
    EXPECT_EQ(recorder.Take(), (Lines{"EDITOR_DEACTIVATED gear", "EDITOR_ACTIVATED pump"}));
}

TEST_F(FrmLayout, NotificationsCarryEditorWindowAndViewer) {
    QorFrmWindow* window = AddWindow(Open("gear"), "gear:1");
    window->SetViewer(SomeViewer(&window));
    int seen = 0;
    recorder.inside = [&](QorEventName, QorBaseUnknown* iPublisher,
                          QorNotification* iNotification) {
        if (auto* ofEditor = dynamic_cast<QorFrmEditorNotification*>(iNotification)) {
            EXPECT_EQ(ofEditor->GetEditor(), iPublisher);
            ++seen;
        }
        if (auto* ofWindow = dynamic_cast<QorFrmWindowNotification*>(iNotification)) {
            EXPECT_EQ(ofWindow->GetWindow(), iPublisher);
            EXPECT_EQ(ofWindow->GetViewer(), SomeViewer(&window));
            ++seen;
        }
    };
    layout->SetCurrentWindow(window);
    EXPECT_EQ(seen, 2);
}

TEST_F(FrmLayout, AViewerGivenToTheCurrentWindowIsActivated) {
    QorFrmWindow* current = AddWindow(Open("gear"), "gear:1");
    QorFrmWindow* other = AddWindow(Open("pump"), "pump:1");
    layout->SetCurrentWindow(current);
    (void)recorder.Take();
    other->SetViewer(SomeViewer(&other));
    EXPECT_EQ(recorder.Take(), Lines{});
    current->SetViewer(SomeViewer(&current));
    EXPECT_EQ(recorder.Take(), Lines{"VIEWER_ACTIVATED gear:1"});
    current->SetViewer(nullptr);
    EXPECT_EQ(recorder.Take(), Lines{});
}

TEST_F(FrmLayout, APersonTurnsToAWindow) {
    QorFrmWindow* window = AddWindow(Open("gear"), "gear:1");
    EXPECT_EQ(window->UserActivate(), QorUserResult::Done);
    EXPECT_EQ(layout->GetCurrentWindow(), window);
    window->SetSensitivity(QorDlgDISABLE);
    EXPECT_EQ(window->UserActivate(), QorUserResult::Insensitive);
}

TEST_F(FrmLayout, WindowsOfOtherLayoutsAreRefused) {
    const auto other = QorMake<QorFrmLayout>(nullptr, "other");
    const auto editor = new QorFrmEditor(other.Get(), "stranger", nullptr);
    const auto window = QorMake<QorFrmWindow>(nullptr, "stranger:1", editor);
    layout->SetCurrentWindow(window.Get());
    layout->SetCurrentEditor(editor);
    layout->CloseWindow(window.Get());
    EXPECT_EQ(layout->GetCurrentEditor(), nullptr);
    EXPECT_EQ(other->GetEditorCount(), 1);
    EXPECT_EQ(recorder.Take(), Lines{});
}

TEST_F(FrmLayout, AnEditorMayHaveNoDocumentAndNoWindow) {
    auto* editor = new QorFrmEditor(layout.Get(), "empty", nullptr);
    layout->SetCurrentEditor(editor);
    EXPECT_EQ(editor->GetDocument(), nullptr);
    EXPECT_EQ(editor->GetCSO()->GetSize(), 0);
    EXPECT_EQ(QorFrmEditor::GetCurrentEditor(), editor);
    EXPECT_EQ(layout->GetCurrentWindow(), nullptr);
    layout->SetCurrentEditor(nullptr);
    EXPECT_EQ(recorder.Take(), (Lines{"EDITOR_ACTIVATED empty", "EDITOR_DEACTIVATED empty"}));
}

} // namespace
