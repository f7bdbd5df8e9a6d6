// Starting renders, their ends, and rendering again and again.
#include "tests/quickrender/EasyRenderTest.h"

namespace {

class EasyRender : public EasyRenderTest {
protected:
    static QorRdgEngineManager& Manager() { return *QorRdgEngineManager::GetManager(); }

    /// Lets the engine show a picture and go on.
    void Show(int iPercent = 50) {
        QorRdgProgress progress;
        progress.percent = iPercent;
        progress.picture = MakePicture(400, 300);
        script.progress.push_back(progress);
        Pump();
    }
};

TEST_F(EasyRender, StartsWithTheViewersWorldAndTheQuickOptions) {
    Open();
    Check("renderCheck");
    ASSERT_EQ(script.requests.size(), 1U);
    const QorRdgRequest& asked = script.requests.front();
    EXPECT_EQ(asked.world, QorQuery<QorIRdgWorld>(viewer).Get());
    EXPECT_STREQ(asked.options->GetImplementation()->IsA(), "QorRdgEasyOptionsDefaults");
    EXPECT_TRUE(asked.interactive);
    EXPECT_EQ(asked.width, 400);
    EXPECT_EQ(asked.height, 300);
    EXPECT_EQ(Enabled(), "r");
    Show();
    EXPECT_TRUE(HasOverlay(*viewer));
    EXPECT_EQ(Enabled(), "r");
    EXPECT_TRUE(IsChecked("renderCheck"));
    Finish();
    EXPECT_EQ(Enabled(), "soarS");
    EXPECT_FALSE(IsChecked("renderCheck"));
    EXPECT_EQ(Manager().GetCallbackManager()->CountCallbacks(), 0U);
}

TEST_F(EasyRender, TracesARender) {
    Open();
    QorTraceChannel::StartRecording(4);
    Check("renderCheck");
    Finish();
    QorTraceChannel::StopRecording();
    std::vector<std::string> own;
    for (const std::string& line : QorTraceChannel::TakeRecorded())
        if (line.starts_with("(QorRdgEasyRenderDialog::"))
            own.push_back(line);
    EXPECT_EQ(own, (std::vector<std::string>{"(QorRdgEasyRenderDialog::RenderCB) \n",
                                             "(QorRdgEasyRenderDialog::Render) \n",
                                             "(QorRdgEasyRenderDialog::GetSize) \n",
                                             "(QorRdgEasyRenderDialog::RenderDoneCB) \n"}));
}

TEST_F(EasyRender, UncheckingAborts) {
    Open();
    Check("renderCheck");
    Check("renderCheck", false);
    EXPECT_EQ(Enabled(), "r") << "until the engine says so";
    loop.RunPosted();
    EXPECT_EQ(Enabled(), "soar") << "no whole picture, so nothing to save";
    Check("renderCheck");
    Show();
    Check("renderCheck", false);
    loop.RunPosted();
    EXPECT_EQ(Enabled(), "soarS");
    EXPECT_EQ(Manager().GetRecord().status, QorRdgEngineManager::Status::Aborted);
}

TEST_F(EasyRender, MovingTheViewAborts) {
    Open();
    Check("renderCheck");
    Show();
    viewer->GetMain3DViewpoint()->SetAnimated(true);
    Pump();
    EXPECT_EQ(Enabled(), "soarS");
    EXPECT_FALSE(IsChecked("renderCheck"));
    viewer->GetMain3DViewpoint()->SetAnimated(false);
    EXPECT_EQ(script.requests.size(), 1U) << "a fresh tool bar does not render again by itself";
}

TEST_F(EasyRender, PressingTwiceQuicklyRendersAgain) {
    Open();
    Check("renderCheck");
    Check("renderCheck", false);
    Check("renderCheck");
    loop.RunPosted(); // the first one's end is heard only now
    EXPECT_TRUE(IsChecked("renderCheck"));
    EXPECT_EQ(Enabled(), "r");
    EXPECT_EQ(script.requests.size(), 2U);
    Finish();
    EXPECT_EQ(Manager().GetRecord().status, QorRdgEngineManager::Status::Done);
    EXPECT_EQ(Enabled(), "soarS");
    EXPECT_FALSE(IsChecked("renderCheck"));
}

TEST_F(EasyRender, TakesThePlaceOfSomebodyElsesRender) {
    const auto world = QorMake<FakeWorld>();
    const auto other = QorMake<FakeDisplay>();
    const auto choices = QorMake<QorRdgPreviewOptionsDefaults>();
    Open();
    Manager().StartRender(world, other, choices, true, 10, 10, nullptr, false, true);
    Check("renderCheck");
    loop.RunPosted(); // the end of the other one
    EXPECT_EQ(Enabled(), "r");
    Finish();
    EXPECT_EQ(Manager().GetRecord().status, QorRdgEngineManager::Status::Done);
    EXPECT_EQ(Enabled(), "soarS");
}

TEST_F(EasyRender, ARefusalIsToldInTheStatusBar) {
    Open();
    RenderOnce();
    script.refusal = "the model is too large";
    Check("renderCheck");
    EXPECT_EQ(Enabled(), "r");
    loop.RunPosted();
    EXPECT_EQ(Enabled(), "soar") << "the picture before is gone";
    EXPECT_FALSE(IsChecked("renderCheck"));
    EXPECT_EQ(frame->GetStatus(), "the model is too large");
}

TEST_F(EasyRender, DoesNothingWithoutAnEngine) {
    QorRdgEngineManager::SetEngine(nullptr);
    Open();
    Check("renderCheck");
    EXPECT_EQ(Enabled(), "soar");
    EXPECT_TRUE(IsChecked("renderCheck"));
    EXPECT_EQ(frame->GetStatus(), "There is no render engine.");
    Check("renderCheck", false);
    Person::Close("renderToolbar");
}

TEST_F(EasyRender, ClosingDuringARenderEndsItThoughOthersListen) {
    struct Listener : QorEventSubscriber {
        void
        DoneCB(QorEventName, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {
            ++heard;
        }

        int heard = 0;
    } listener;

    Manager().GetCallbackManager()->AddCallback(&listener, QorRdgEngineManager::RENDER_DONE,
                                                &Listener::DoneCB);
    Open();
    Check("renderCheck");
    Show();
    Person::Close("renderToolbar");
    EXPECT_EQ(script.detached, 1);
    EXPECT_FALSE(HasOverlay(*viewer));
    Show();
    EXPECT_FALSE(HasOverlay(*viewer));
    EXPECT_EQ(listener.heard, 1);
    EXPECT_EQ(Manager().GetRecord().status, QorRdgEngineManager::Status::Aborted);
}

TEST_F(EasyRender, ClosingDuringARenderLeavesSomebodyElsesAlone) {
    Open();
    Check("renderCheck");
    Show();
    const auto world = QorMake<FakeWorld>();
    const auto other = QorMake<FakeDisplay>();
    const auto choices = QorMake<QorRdgPreviewOptionsDefaults>();

    struct Listener : QorEventSubscriber {
        void
        DoneCB(QorEventName, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {}
    } listener;

    Manager().GetCallbackManager()->AddCallback(&listener, QorRdgEngineManager::RENDER_DONE,
                                                &Listener::DoneCB);
    Manager().StartRender(world, other, choices, true, 10, 10, nullptr, false, true);
    Person::Close("renderToolbar");
    loop.RunPosted();
    Finish(10, 10);
    EXPECT_EQ(Manager().GetRecord().status, QorRdgEngineManager::Status::Done);
}

TEST_F(EasyRender, DeletingTheWindowDuringARenderEndsItAndTheNextRenders) {
    QorFrmWindow* second = OpenWindow(layout->GetCurrentEditor(), "second");
    Open();
    Check("renderCheck");
    Show();
    layout->CloseWindow(second);
    EXPECT_EQ(script.detached, 1);
    loop.RunPosted();
    EXPECT_EQ(Enabled(), "soar");
    EXPECT_FALSE(IsChecked("renderCheck"));
    Check("renderCheck");
    EXPECT_EQ(script.requests.back().world, QorQuery<QorIRdgWorld>(viewer).Get());
    Finish();
    EXPECT_TRUE(HasOverlay(*viewer));
    EXPECT_EQ(Enabled(), "soarS");
}

TEST_F(EasyRender, ClosingTheDocumentDuringARenderLeavesNothing) {
    Open();
    Check("renderCheck");
    Show();
    layout->CloseEditor(layout->GetCurrentEditor());
    loop.RunPosted();
    EXPECT_EQ(script.detached, 1);
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_EQ(Header("EasyRender")->GetCheckState(), QorDlgUncheck);
}

TEST_F(EasyRender, AFreshToolBarNeverRendersAgainByItself) {
    auto* probe = new EasyRenderProbe(*frame);
    Check("renderCheck");
    EXPECT_EQ(Find<QorDlgCheckButton>("renderCheck")->UserDoubleClick(), QorUserResult::Done);
    EXPECT_FALSE(probe->IsLooping());
    OpenWindow(layout->GetCurrentEditor(), "second");
    Find<QorDlgCheckButton>("renderCheck")->UserDoubleClick();
    EXPECT_FALSE(probe->IsLooping()) << "nor after another viewer's activation";
    EXPECT_EQ(probe->GetRenderViewer(), viewer);
    Person::Close("renderToolbar");
}

class EasyRenderLoop : public EasyRender {
protected:
    void SetUp() override {
        EasyRender::SetUp();
        probe = new EasyRenderProbe(*frame);
        probe->KnowView(viewer->GetMain3DViewpoint());
    }

    void TearDown() override {
        if (Dialog() != nullptr)
            Person::Close("renderToolbar");
        EasyRender::TearDown();
    }

    void EnterLoop() {
        Check("renderCheck");
        Find<QorDlgCheckButton>("renderCheck")->UserDoubleClick();
        ASSERT_TRUE(probe->IsLooping());
        ASSERT_TRUE(probe->WatchesView());
    }

    EasyRenderProbe* probe = nullptr;
};

TEST_F(EasyRenderLoop, RendersAfterEveryChangeOfViewAndSize) {
    EnterLoop();
    Finish();
    EXPECT_TRUE(IsChecked("renderCheck")) << "it stays checked while it renders again and again";
    EXPECT_EQ(Enabled(), "soarS");
    viewer->GetMain3DViewpoint()->Modified();
    EXPECT_EQ(script.requests.size(), 2U);
    Finish();
    viewer->UserResizeViewer(500, 200);
    ASSERT_EQ(script.requests.size(), 3U);
    EXPECT_EQ(script.requests.back().width, 500);
    Finish();
    EXPECT_TRUE(IsChecked("renderCheck"));
}

TEST_F(EasyRenderLoop, WaitsForTheEndOfAnAnimation) {
    EnterLoop();
    Finish();
    viewer->GetMain3DViewpoint()->SetAnimated(true);
    viewer->GetMain3DViewpoint()->Modified();
    EXPECT_EQ(script.requests.size(), 1U);
    viewer->GetMain3DViewpoint()->SetAnimated(false);
    EXPECT_EQ(script.requests.size(), 2U);
    Finish();
}

TEST_F(EasyRenderLoop, AChangeDuringARenderBeginsAnew) {
    EnterLoop();
    Show();
    for (int i = 0; i < 3; ++i)
        viewer->GetMain3DViewpoint()->Modified();
    EXPECT_EQ(script.requests.size(), 4U);
    EXPECT_EQ(Enabled(), "r");
    loop.RunPosted();
    EXPECT_EQ(Enabled(), "r");
    Finish();
    EXPECT_EQ(Manager().GetRecord().status, QorRdgEngineManager::Status::Done);
    EXPECT_EQ(Enabled(), "soarS");
}

TEST_F(EasyRenderLoop, UncheckingLeavesItAndStops) {
    EnterLoop();
    Check("renderCheck", false);
    EXPECT_FALSE(probe->IsLooping());
    EXPECT_FALSE(probe->WatchesView());
    EXPECT_EQ(probe->GetKnownViewpoint(), nullptr);
    loop.RunPosted();
    EXPECT_EQ(Manager().GetRecord().status, QorRdgEngineManager::Status::Aborted);
    viewer->GetMain3DViewpoint()->Modified();
    EXPECT_EQ(script.requests.size(), 1U);
    Find<QorDlgCheckButton>("renderCheck")->UserDoubleClick(); // unchecked: leaves once more
    EXPECT_FALSE(probe->IsLooping());
}

TEST_F(EasyRenderLoop, TakesTheViewersPresentViewpoint) {
    const auto other = QorMake<Qor3DViewpoint>();
    probe->KnowView(other.Get());
    EnterLoop();
    EXPECT_EQ(probe->GetKnownViewpoint(), viewer->GetMain3DViewpoint());
    Finish();
    other->Modified();
    EXPECT_EQ(script.requests.size(), 1U);
}

TEST_F(EasyRenderLoop, GoesOnInAnotherViewer) {
    EnterLoop();
    Finish();
    QorFrmWindow* second = OpenWindow(layout->GetCurrentEditor(), "second");
    EXPECT_EQ(probe->GetRenderViewer(), second->GetViewer());
    EXPECT_TRUE(probe->WatchesView());
    viewer->GetMain3DViewpoint()->Modified();
    EXPECT_EQ(script.requests.size(), 1U);
    ViewerOf(second)->GetMain3DViewpoint()->Modified();
    ASSERT_EQ(script.requests.size(), 2U);
    EXPECT_EQ(script.requests.back().world, QorQuery<QorIRdgWorld>(ViewerOf(second)).Get());
    Finish();
    layout->SetCurrentWindow(window);
    EXPECT_EQ(probe->GetRenderViewer(), viewer);
}

TEST_F(EasyRenderLoop, LosingOneWindowAfterAnotherEndsTheWatch) {
    for (const char* name : {"second", "third"})
        OpenWindow(layout->GetCurrentEditor(), name);
    layout->SetCurrentWindow(window);
    EnterLoop();
    Finish();
    for (int i = 0; i < 2; ++i) {
        layout->CloseWindow(layout->GetCurrentWindow());
        loop.RunPosted();
        EXPECT_FALSE(probe->WatchesView());
        viewer = ViewerOf(layout->GetCurrentWindow());
        EXPECT_EQ(probe->GetRenderViewer(), viewer);
        // It watches again, as a program may let it.
        probe->KnowView(viewer->GetMain3DViewpoint());
        Check("renderCheck", false);
        loop.RunPosted();
    }
    viewer->GetMain3DViewpoint()->Modified();
    viewer->UserResizeViewer(500, 200);
    EXPECT_EQ(script.requests.size(), 1U);
}

TEST_F(EasyRenderLoop, ClosingEndsTheWatch) {
    EnterLoop();
    Finish();
    Person::Close("renderToolbar");
    viewer->GetMain3DViewpoint()->Modified();
    viewer->UserResizeViewer(500, 200);
    EXPECT_EQ(script.requests.size(), 1U);
}

TEST_F(EasyRenderLoop, AViewerThatIsDestroyedEndsTheWatch) {
    EnterLoop();
    Finish();
    window->SetViewer(nullptr);
    viewer->RequestDelayedDestruction();
    loop.RunPosted();
    EXPECT_EQ(probe->GetRenderViewer(), nullptr);
    EXPECT_FALSE(probe->WatchesView());
}

} // namespace
