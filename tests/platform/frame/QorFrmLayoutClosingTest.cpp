#include "tests/platform/frame/QorFrameTest.h"

namespace {

using Closing = QorFrameTest;

TEST_F(Closing, OneOfSeveralWindowsSendsWindowDeletedAlone) {
    QorFrmEditor* gear = Open("gear");
    QorFrmWindow* first = AddWindow(gear, "gear:1");
    QorFrmWindow* second = AddWindow(gear, "gear:2");
    second->SetViewer(SomeViewer(&second));
    layout->SetCurrentWindow(first);
    (void)recorder.Take();
    recorder.inside = [&](QorEventName, QorBaseUnknown* iPublisher, QorNotification*) {
        EXPECT_EQ(iPublisher, first);
        EXPECT_EQ(layout->GetCurrentWindow(), second) << "subscribers attach to the next window";
        EXPECT_EQ(first->GetEditor(), gear) << "the window is still whole";
    };
    layout->CloseWindow(first);
    EXPECT_EQ(recorder.Take(), Lines{"WINDOW_DELETED gear:1"});
    EXPECT_TRUE(first->IsDying());
    EXPECT_EQ(layout->GetEditorCount(), 1);
}

TEST_F(Closing, AWindowThatIsNotCurrentLeavesTheCurrentOne) {
    QorFrmEditor* gear = Open("gear");
    QorFrmWindow* first = AddWindow(gear, "gear:1");
    QorFrmWindow* second = AddWindow(gear, "gear:2");
    layout->SetCurrentWindow(second);
    layout->CloseWindow(first);
    EXPECT_EQ(layout->GetCurrentWindow(), second);
}

TEST_F(Closing, ADocumentSendsDeactivatedThenItsWindowsThenCloseEnded) {
    QorFrmEditor* gear = Open("gear");
    QorFrmWindow* window = AddWindow(gear, "gear:1");
    AddWindow(gear, "gear:2");
    layout->SetCurrentWindow(window);
    (void)recorder.Take();
    layout->CloseEditor(gear);
    EXPECT_EQ(recorder.Take(), (Lines{"EDITOR_DEACTIVATED gear", "WINDOW_DELETED gear:1",
                                      "WINDOW_DELETED gear:2", "EDITOR_CLOSE_ENDED gear"}));
}

TEST_F(Closing, TheLastWindowClosesItsDocument) {
    QorFrmEditor* gear = Open("gear");
    QorFrmWindow* window = AddWindow(gear, "gear:1");
    layout->SetCurrentWindow(window);
    (void)recorder.Take();
    layout->CloseWindow(window);
    EXPECT_EQ(recorder.Take(), (Lines{"EDITOR_DEACTIVATED gear", "WINDOW_DELETED gear:1",
                                      "EDITOR_CLOSE_ENDED gear"}));
}

TEST_F(Closing, TheNextDocumentIsEnteredAtTheEnd) {
    QorFrmEditor* gear = Open("gear");
    QorFrmWindow* gearWindow = AddWindow(gear, "gear:1");
    QorFrmWindow* pumpWindow = AddWindow(Open("pump"), "pump:1");
    pumpWindow->SetViewer(SomeViewer(&pumpWindow));
    layout->SetCurrentWindow(gearWindow);
    (void)recorder.Take();
    recorder.inside = [&](QorEventName iEvent, QorBaseUnknown*, QorNotification*) {
        const bool isPump =
            iEvent == QorFrmEditor::EDITOR_ACTIVATED || iEvent == QorFrmWindow::VIEWER_ACTIVATED;
        const bool isGear = iEvent == QorFrmEditor::EDITOR_DEACTIVATED;
        EXPECT_EQ(layout->GetCurrentWindow(), isGear ? gearWindow : isPump ? pumpWindow : nullptr);
    };
    layout->CloseEditor(gear);
    EXPECT_EQ(recorder.Take(),
              (Lines{"EDITOR_DEACTIVATED gear", "WINDOW_DELETED gear:1", "EDITOR_CLOSE_ENDED gear",
                     "EDITOR_ACTIVATED pump", "VIEWER_ACTIVATED pump:1"}));
}

TEST_F(Closing, ADocumentInTheBackgroundIsNotDeactivated) {
    QorFrmEditor* gear = Open("gear");
    AddWindow(gear, "gear:1");
    QorFrmWindow* pump = AddWindow(Open("pump"), "pump:1");
    layout->SetCurrentWindow(pump);
    (void)recorder.Take();
    layout->CloseEditor(gear);
    EXPECT_EQ(recorder.Take(), (Lines{"WINDOW_DELETED gear:1", "EDITOR_CLOSE_ENDED gear"}));
    EXPECT_EQ(layout->GetCurrentWindow(), pump);
}

TEST_F(Closing, CloseEndedSeesHowManyEditorsAreLeft) {
    QorFrmEditor* gear = Open("gear");
    QorFrmEditor* pump = Open("pump");
    std::vector<int> left;
    recorder.inside = [&](QorEventName iEvent, QorBaseUnknown* iPublisher, QorNotification*) {
        if (iEvent == QorFrmEditor::EDITOR_CLOSE_ENDED) {
            left.push_back(layout->GetEditorCount());
            EXPECT_NE(static_cast<QorFrmEditor*>(iPublisher)->GetDocument(), nullptr);
        }
    };
    layout->CloseEditor(gear);
    layout->CloseEditor(pump);
    EXPECT_EQ(left, (std::vector<int>{1, 0}));
}

TEST_F(Closing, TwiceIsOnce) {
    QorFrmEditor* gear = Open("gear");
    QorFrmWindow* window = AddWindow(gear, "gear:1");
    layout->SetCurrentWindow(window);
    recorder.inside = [&](QorEventName, QorBaseUnknown*, QorNotification*) {
        layout->CloseWindow(window);
        layout->CloseEditor(gear);
    };
    (void)recorder.Take();
    layout->CloseEditor(gear);
    EXPECT_EQ(recorder.Take(), (Lines{"EDITOR_DEACTIVATED gear", "WINDOW_DELETED gear:1",
                                      "EDITOR_CLOSE_ENDED gear"}));
}

TEST_F(Closing, ADocumentThatACallbackClosesIsNotEntered) {
    QorFrmWindow* gear = AddWindow(Open("gear"), "gear:1");
    QorFrmEditor* pump = Open("pump");
    QorFrmWindow* pumpWindow = AddWindow(pump, "pump:1");
    layout->SetCurrentWindow(gear);
    (void)recorder.Take();
    recorder.inside = [&](QorEventName iEvent, QorBaseUnknown*, QorNotification*) {
        if (iEvent == QorFrmEditor::EDITOR_DEACTIVATED)
            layout->CloseEditor(pump);
    };
    layout->SetCurrentWindow(pumpWindow);
    EXPECT_EQ(recorder.Take(), (Lines{"EDITOR_DEACTIVATED gear", "WINDOW_DELETED pump:1",
                                      "EDITOR_CLOSE_ENDED pump"}));
    EXPECT_EQ(layout->GetCurrentEditor(), nullptr);
}

TEST_F(Closing, TheCloseBoxOnlyTells) {
    QorFrmWindow* window = AddWindow(Open("gear"), "gear:1");

    struct Owner : QorCommand {
        Owner() : QorCommand(nullptr, "owner") {}

        void CloseCB(QorCommand* iSender, QorNotification*, QorSubscriberData) { asked = iSender; }

        QorCommand* asked = nullptr;
    };

    const auto owner = QorMake<Owner>();
    auto* owned = new QorFrmWindow(owner.Get(), "gear:2", window->GetEditor());
    QorCommand::AddAnalyseNotificationCB(owner.Get(), owned, owned->GetWindCloseNotification(),
                                         &Owner::CloseCB);
    EXPECT_EQ(owned->UserClose(), QorUserResult::Done);
    EXPECT_EQ(owner->asked, owned);
    EXPECT_EQ(layout->GetWindows().size(), 2U);
    EXPECT_EQ(recorder.Take(), Lines{});
}

TEST_F(Closing, DestroyedWithoutClosingTheyLeaveInSilence) {
    QorFrmEditor* gear = Open("gear");
    layout->SetCurrentWindow(AddWindow(gear, "gear:1"));
    (void)recorder.Take();
    frame.Reset();
    EXPECT_TRUE(layout->GetWindows().empty());
    EXPECT_EQ(layout->GetCurrentWindow(), nullptr);
    frame = QorMake<QorDialog>(nullptr, "frame");
    QorFrmWindow* left = AddWindow(gear, "gear:2");
    gear->RequestDelayedDestruction();
    loop.RunPosted();
    EXPECT_EQ(layout->GetEditorCount(), 0);
    EXPECT_EQ(left->GetEditor(), nullptr);
    EXPECT_EQ(recorder.Take(), Lines{});
}

TEST_F(Closing, EditorAndWindowsAreDestroyedAfterwards) {
    QorFrmEditor* gear = Open("gear");
    AddWindow(gear, "gear:1");
    layout->CloseEditor(gear);
    EXPECT_EQ(QorFrmWindow::MetaObject().GetLiveCount(), 1);
    loop.RunPosted();
    EXPECT_EQ(QorFrmWindow::MetaObject().GetLiveCount(), 0);
    EXPECT_EQ(QorFrmEditor::MetaObject().GetLiveCount(), 0);
    EXPECT_EQ(QorDocument::MetaObject().GetLiveCount(), 0);
}

} // namespace
