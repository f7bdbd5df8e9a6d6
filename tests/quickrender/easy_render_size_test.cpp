// How large the picture of a quick render is, and which part of it is rendered.
#include "tests/quickrender/EasyRenderTest.h"

namespace {

class EasyRenderSize : public EasyRenderTest {
protected:
    /// What the engine is asked for when a person presses the button now.
    QorRdgRequest Ask() {
        Check("renderCheck");
        const QorRdgRequest asked =
            script.requests.empty() ? QorRdgRequest{} : script.requests.back();
        Check("renderCheck", false);
        loop.RunPosted();
        return asked;
    }

    void SetArea(int iX1, int iY1, int iX2, int iY2) {
        ASSERT_EQ(Area(viewer)->SetArea(iX1, iY1, iX2, iY2), S_OK);
    }

    static QorMouseEvent Mouse(QorMouseEvent::Action iAction, double iX, double iY) {
        QorMouseEvent event;
        event.action = iAction;
        event.button = QorMouseEvent::Button::Left;
        event.pixel = {iX, iY};
        return event;
    }
};

TEST_F(EasyRenderSize, FollowsViewportResolutionAndUnit) {
    struct Row {
        const char* what;
        std::array<float, 4> viewport;
        float graphicWidth, graphicHeight;
        float mmInSupportUnit;
        int screen, resolution, unit;
        int width, height;
    };

    const Row rows[] = {
        {"the viewer's own size", {0, 0, 0, 0}, 400, 300, 1, 1, 300, 0, 400, 300},
        {"a fraction of a pixel is cut", {0, 0, 0, 0}, 400.9F, 300.9F, 1, 1, 300, 0, 400, 300},
        {"a viewport", {10, 20, 200, 100}, 400, 300, 1, 1, 300, 0, 200, 100},
        {"a viewport without width", {10, 20, 0, 100}, 400, 300, 1, 1, 300, 0, 400, 300},
        {"a viewport without height", {10, 20, 100, 0}, 400, 300, 1, 1, 300, 0, 400, 300},
        {"300 an inch", {0, 0, 1000, 500}, 400, 300, 1, 0, 300, 0, 11811, 5905},
        {"300 a centimetre", {0, 0, 1000, 500}, 400, 300, 1, 0, 300, 1, 30000, 15000},
        {"any unit but 0 is a centimetre", {0, 0, 100, 50}, 400, 300, 1, 0, 300, 7, 3000, 1500},
        {"a finer screen", {0, 0, 1000, 500}, 400, 300, 4, 0, 254, 0, 2500, 1250},
        {"the height follows the width as it was cut", {0, 0, 3, 100}, 9, 9, 1, 0, 30, 0, 3, 100},
        {"what no picture can have",
         {0, 0, 1000, 500},
         9,
         9,
         1,
         0,
         2000000000,
         1,
         2147483647,
         1073741823},
        {"a negative resolution", {0, 0, 1000, 500}, 9, 9, 1, 0, -10, 1, -1000, -500},
        {"a viewer of no size", {0, 0, 0, 0}, 0, 0, 1, 0, 300, 0, 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        viewer->UserResizeViewer(row.graphicWidth, row.graphicHeight);
        viewer->GetMain3DViewpoint()->SetGLViewport(row.viewport[0], row.viewport[1],
                                                    row.viewport[2], row.viewport[3]);
        viewer->GetSupport()->SetMMInSupportUnit(row.mmInSupportUnit);
        Store("ScreenResolution", row.screen);
        Store("CustomResolution", row.resolution);
        Store("CustomUnit", row.unit);
        Open();
        EXPECT_EQ(Info(),
                  std::to_string(row.width) + " × " + std::to_string(row.height) + " pixels");
        Check("renderCheck");
        loop.RunPosted();
        const QorRdgEngineManager::Record& record = QorRdgEngineManager::GetManager()->GetRecord();
        EXPECT_EQ(record.width, row.width);
        EXPECT_EQ(record.height, row.height);
        EXPECT_FALSE(record.region.has_value());
        Person::Close("renderToolbar");
        loop.RunPosted();
    }
}

TEST_F(EasyRenderSize, AbsentSettingsMeanTheScreen) {
    Open();
    EXPECT_EQ(Ask().width, 400);
    Store("ScreenResolution", 0);
    EXPECT_EQ(Ask().width, static_cast<int>(400 * 300 / 25.4));
}

TEST_F(EasyRenderSize, OnAnOrdinaryScreenWholeMultiplesOfItsPixelsAreWhole) {
    viewer->GetSupport()->SetMMInSupportUnit(QorMake<QorSupport>(1.0F, 1.0F)->GetMMInSupportUnit());
    Store("ScreenResolution", 0);
    Open();
    for (const auto& [resolution, factor] :
         {std::pair{192, 2}, std::pair{288, 3}, std::pair{960, 10}, std::pair{1920, 20}})
        for (const int width : {100, 333, 1920, 2560}) {
            viewer->UserResizeViewer(static_cast<float>(width), 50.0F);
            Store("CustomResolution", resolution);
            const QorRdgRequest asked = Ask();
            EXPECT_EQ(asked.width, width * factor);
            EXPECT_EQ(asked.height, 50 * factor);
        }
}

TEST_F(EasyRenderSize, TheLabelFollowsTheViewer) {
    Open();
    viewer->UserResizeViewer(320.0F, 240.0F);
    EXPECT_EQ(Info(), "320 × 240 pixels");
    Person::Close("renderToolbar");
    loop.RunPosted();
    viewer->UserResizeViewer(400.0F, 300.0F); // nobody listens any more
}

TEST_F(EasyRenderSize, AnAreaCountsFromTheViewportAndInPixelsOfThePicture) {
    Open();
    Check("areaCheck");
    SetArea(50, 40, 250, 140);
    EXPECT_EQ(Ask().region, (QorRdgWindow{50, 40, 250, 140}));
    EXPECT_EQ(Info(), "0 × 0 pixels") << "nobody has told of the area yet";

    viewer->GetMain3DViewpoint()->SetGLViewport(30, 20, 300, 200);
    EXPECT_EQ(Ask().region, (QorRdgWindow{20, 20, 220, 120}));

    Store("ScreenResolution", 0);
    Store("CustomUnit", 1);
    Store("CustomResolution", 25); // two and a half pixels a pixel
    const QorRdgRequest asked = Ask();
    EXPECT_EQ(asked.width, 750);
    EXPECT_EQ(asked.height, 500);
    EXPECT_EQ(asked.region, (QorRdgWindow{50, 50, 550, 300}));
    Check("areaCheck", false);
    EXPECT_EQ(Info(), "750 × 500 pixels");
    EXPECT_FALSE(Ask().region.has_value());
}

TEST_F(EasyRenderSize, AnAreaDrawnWithTheMouseShowsItsSizeAtOnce) {
    Open();
    Check("areaCheck");
    EXPECT_EQ(Info(), "0 × 0 pixels");
    using Action = QorMouseEvent::Action;
    for (const auto& [action, x, y] :
         {std::tuple{Action::Press, 50, 60}, std::tuple{Action::Move, 100, 100},
          std::tuple{Action::Move, 150, 140}, std::tuple{Action::Release, 150, 140}})
        viewer->HandleMouse(Mouse(action, x, y));
    loop.RunPosted();
    EXPECT_EQ(Info(), "100 × 80 pixels");
    EXPECT_EQ(Ask().region, (QorRdgWindow{50, 160, 150, 240}));
}

TEST_F(EasyRenderSize, WithoutAnAreaDrawnNothingCanBeRendered) {
    Open();
    Check("areaCheck");
    Check("renderCheck");
    loop.RunPosted();
    EXPECT_TRUE(script.requests.empty());
    EXPECT_EQ(frame->GetStatus(), "the area to render is empty");
    EXPECT_EQ(Enabled(), "soar");
    EXPECT_FALSE(IsChecked("renderCheck"));
}

TEST_F(EasyRenderSize, WithoutTheAreaInterfaceTheSizeIsKnownAndNothingStarts) {
    QorExtension::Unregister("Qor3DViewer", QorIRdgArea::ClassId());
    auto* probe = new EasyRenderProbe(*frame);
    int width = 0;
    int height = 0;
    QorRdgWindow* region = nullptr;
    EXPECT_EQ(probe->GetSize(width, height, region), E_FAIL);
    EXPECT_EQ(width, 400);
    EXPECT_EQ(height, 300);
    EXPECT_EQ(region, nullptr);
    Check("areaCheck");
    Check("renderCheck");
    EXPECT_TRUE(script.requests.empty());
    EXPECT_EQ(Enabled(), "r") << "until any render ends";
    EXPECT_TRUE(IsChecked("renderCheck"));
    QorRdgEngineManager* manager = QorRdgEngineManager::GetManager();
    manager->StartRender(nullptr, nullptr, nullptr, true, 10, 10, nullptr, false, true);
    loop.RunPosted();
    EXPECT_EQ(Enabled(), "soar");
    EXPECT_FALSE(IsChecked("renderCheck"));
    Person::Close("renderToolbar");
    QorRegisterViewerAdapters();
}

TEST_F(EasyRenderSize, AFailureWithoutViewerOrSettingsTouchesNothing) {
    auto* probe = new EasyRenderProbe(*frame);
    window->SetViewer(nullptr);
    viewer->RequestDelayedDestruction();
    loop.RunPosted();
    int width = 7;
    int height = 8;
    QorRdgWindow* region = nullptr;
    EXPECT_EQ(probe->GetSize(width, height, region), E_FAIL);
    EXPECT_EQ(width, 7);
    EXPECT_EQ(height, 8);
    Person::Close("renderToolbar");
}

} // namespace
