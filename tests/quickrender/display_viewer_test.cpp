#include "platform/engine/QorRdgEngineManager.h"
#include "platform/system/QorTrace.h"
#include "tests/quickrender/ViewerAdapterTest.h"

namespace {

class NoEngine : public QorRdgEngine {
public:
    std::unique_ptr<QorRdgRender> Start(const QorRdgRequest&, QorUnicodeString& oReason) override {
        oReason = "this engine renders nothing";
        return nullptr;
    }
};

class DisplayViewer : public ViewerAdapterTest {
protected:
    void SetUp() override {
        display = QorQuery<QorIRdgDisplay>(viewer);
        ASSERT_TRUE(display);
        QorSetClock([this] { return now; });
        QorRdgEngineManager::SetEngine(std::make_unique<NoEngine>());
        application->SetDisplayUpdater([this] { ++updates; });
    }

    void TearDown() override {
        QorRdgEngineManager::SetEngine(nullptr);
        application->SetDisplayUpdater({});
        display.Reset();
        ViewerAdapterTest::TearDown();
    }

    void Progress(int iPercent) { EXPECT_EQ(display->SetProgress(iPercent), S_OK); }

    bool IsAborted() {
        unsigned char abort = 0;
        EXPECT_EQ(display->CheckAbort(abort), S_OK);
        return abort != 0;
    }

    void Draw(int iWidth = 400, int iHeight = 300) {
        EXPECT_EQ(display->Draw(MakeGrey(iWidth, iHeight)), S_OK);
    }

    /// The picture over the viewer, or null.
    const Qor2DImagePixelRep* Picture() const {
        for (const QorVar<QorViewpoint>& viewpoint : viewer->GetAddedViewpoints())
            if (const auto* flat = dynamic_cast<Qor2DViewpoint*>(viewpoint.Get());
                flat != nullptr && flat->GetPriority() == 6 &&
                !flat->GetRoot().GetChildren().empty())
                return dynamic_cast<Qor2DImagePixelRep*>(
                    flat->GetRoot().GetChildren().front().Get());
        return nullptr;
    }

    QorIRdgDisplay_var display;
    QorTimeStamp now{100, 500000};
    int updates = 0;
};

TEST_F(DisplayViewer, ShowsThePictureOverTheWholeViewerAndWipesIt) {
    Draw();
    ASSERT_NE(Picture(), nullptr);
    EXPECT_EQ(Picture()->GetPosition(), (QorMathPoint2D{-200, -150}));
    EXPECT_EQ(Picture()->GetSize(), (QorMathPoint2D{400, 300}));
    EXPECT_NE(Picture()->GetAlphaMode(), 0);
    Draw();
    EXPECT_NE(Picture(), nullptr);
    EXPECT_EQ(display->Clear(), S_OK);
    EXPECT_EQ(Picture(), nullptr);
    EXPECT_EQ(display->Draw(nullptr), E_FAIL);
}

TEST_F(DisplayViewer, FillsTheViewportWhateverThePicturesSize) {
    viewer->GetMain3DViewpoint()->SetGLViewport(200, 0, 200, 300);
    Draw(1000, 1500);
    EXPECT_EQ(Picture()->GetPosition(), (QorMathPoint2D{0, -150}));
    EXPECT_NEAR(Picture()->GetSize().x, 200, 1.0e-9);
    EXPECT_NEAR(Picture()->GetSize().y, 300, 1.0e-9);
}

TEST_F(DisplayViewer, LiesOnWholePixelsAtOddSizes) {
    viewer->UserResizeViewer(401, 299);
    Draw(401, 299);
    const auto* overlay = dynamic_cast<Qor2DViewpoint*>(viewer->GetAddedViewpoints().front().Get());
    const QorMathPoint2D pixel = overlay->ModelToPixel(Picture()->GetPosition(), 401, 299,
                                                       viewer->GetSupport()->GetMMInSupportUnit());
    EXPECT_NEAR(pixel.x, 0.0, 1.0e-4);
    EXPECT_NEAR(pixel.y, 299.0, 1.0e-4);
}

TEST_F(DisplayViewer, StaysOverTheSceneItShowsAtAnotherSizeOfTheViewer) {
    Draw();
    viewer->UserResizeViewer(600, 600);
    EXPECT_EQ(Picture()->GetSize(), (QorMathPoint2D{800, 600})) << "as high as the viewer";
    EXPECT_EQ(Picture()->GetPosition(), (QorMathPoint2D{-400, -300})) << "around its middle";
    Draw();
    EXPECT_EQ(Picture()->GetSize(), (QorMathPoint2D{600, 600})) << "a new one covers it";
    display->Clear();
    viewer->UserResizeViewer(400, 300);
    EXPECT_EQ(Picture(), nullptr);
}

TEST_F(DisplayViewer, KeepsAnAbortRequestUntilTheRenderEnds) {
    unsigned char abort = 1;
    EXPECT_FALSE(IsAborted());
    display->CheckAbort(abort);
    EXPECT_TRUE(IsAborted());
    Progress(50);
    EXPECT_TRUE(IsAborted());
    Progress(100);
    EXPECT_FALSE(IsAborted());
    display->CheckAbort(abort);
    Progress(-1);
    EXPECT_FALSE(IsAborted());
}

TEST_F(DisplayViewer, ShowsNoText) {
    QorUnicodeString text = "half way";
    EXPECT_EQ(display->SetMessage(text), E_FAIL);
}

TEST_F(DisplayViewer, MovingTheCameraAbortsFromOneToNinetyNineAndAlwaysWipes) {
    struct Row {
        int percent;
        bool aborts;
    };

    for (const Row& row :
         {Row{0, false}, Row{1, true}, Row{99, true}, Row{100, false}, Row{-1, false}}) {
        Progress(-1);
        Draw();
        Progress(row.percent);
        viewer->GetMain3DViewpoint()->SetAnimated(true);
        EXPECT_EQ(IsAborted(), row.aborts) << row.percent;
        EXPECT_EQ(Picture(), nullptr);
        viewer->GetMain3DViewpoint()->SetAnimated(false);
    }
}

TEST_F(DisplayViewer, MovingTheCameraBeforeTheFirstPictureAbortsToo) {
    Progress(0);
    Progress(1);
    viewer->GetMain3DViewpoint()->SetAnimated(true);
    EXPECT_TRUE(IsAborted());
    viewer->GetMain3DViewpoint()->SetAnimated(false);
}

TEST_F(DisplayViewer, AnotherViewersActivationEndsTheWatchUntilItComesBack) {
    Draw();
    auto* other = new QorFrmWindow(layout, "other", editor);
    auto* otherViewer = new Qor3DViewer(other, "viewer", QorDlgDefaultStyle, width, height);
    other->SetViewer(otherViewer);
    layout->SetCurrentWindow(other);
    viewer->GetMain3DViewpoint()->SetAnimated(true);
    EXPECT_NE(Picture(), nullptr);
    viewer->GetMain3DViewpoint()->SetAnimated(false);
    layout->SetCurrentWindow(window);
    viewer->GetMain3DViewpoint()->SetAnimated(true);
    EXPECT_EQ(Picture(), nullptr);
    viewer->GetMain3DViewpoint()->SetAnimated(false);
}

TEST_F(DisplayViewer, RefreshesOnceInFortyMillisecondsOfASecond) {
    struct Row {
        QorTimeStamp at;
        int updates;
        const char* why;
    };

    const Row rows[] = {
        {{100, 500000}, 1, "the first"},
        {{100, 540000}, 1, "40000 microseconds later"},
        {{100, 540001}, 2, "40001 microseconds later"},
        {{101, 5}, 3, "another second"},
        {{101, 10}, 3, "5 microseconds later"},
        {{100, 999999},
         4,
         "a clock that was set back has passed its 40000 microseconds all the same"},
    };
    for (const Row& row : rows) {
        now = row.at;
        Draw();
        EXPECT_EQ(updates, row.updates) << row.why;
    }
}

TEST_F(DisplayViewer, IsDeafAfterItsWindowIsDeleted) {
    Draw();
    layout->CloseWindow(window);
    EXPECT_TRUE(viewer->GetAddedViewpoints().empty());
    EXPECT_EQ(display->Draw(MakeGrey(4, 3)), S_OK);
    EXPECT_TRUE(viewer->GetAddedViewpoints().empty());
    EXPECT_EQ(display->Clear(), S_OK);
}

TEST_F(DisplayViewer, TracesWhatItDoes) {
    QorTraceChannel::StartRecording(6);
    display->Clear();
    Draw();
    viewer->GetMain3DViewpoint()->SetAnimated(true);
    layout->CloseWindow(window);
    QorTraceChannel::StopRecording();
    EXPECT_EQ(QorTraceChannel::TakeRecorded(),
              (std::vector<std::string>{"(QorRdgDisplayViewer::Init) \n",
                                        "(QorRdgDisplayViewer::UpdateDisplay) iForce=0\n",
                                        "(QorRdgDisplayViewer::UpdateDisplay) Updating...\n",
                                        "(QorRdgDisplayViewer::ViewpointBeginModifyCB)\n",
                                        "(QorRdgDisplayViewer::CleanUp) \n",
                                        "(QorRdgDisplayViewer::CleanUp) Done\n"}));
}

} // namespace
