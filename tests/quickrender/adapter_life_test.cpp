// The four adapters of a viewer at their ends: whoever goes first, nothing is left, in the viewer
// or at all. The fixture counts the live objects.
#include "tests/quickrender/ViewerAdapterTest.h"

#include <functional>

namespace {

class AdapterLife : public ViewerAdapterTest {
protected:
    /// All four in use: a picture, a rectangle, a background and a ground.
    void Begin() {
        AddBox({-1, -1, -1}, {1, 1, 1});
        display = QorQuery<QorIRdgDisplay>(viewer);
        area = QorQuery<QorIRdgArea>(viewer);
        background = QorQuery<QorIRdgBackground>(viewer);
        ground = QorQuery<QorIRdgGround>(viewer);
        EXPECT_EQ(display->Draw(MakeGrey(40, 30)), S_OK);
        EXPECT_EQ(area->SetAreaMode(true), S_OK);
        EXPECT_EQ(area->SetArea(10, 10, 90, 80), S_OK);
        const std::string path = directory.GetPath("grey.tga");
        EXPECT_EQ(MakeGrey(20, 10)->WriteToFile("TGA", path), 0);
        EXPECT_EQ(background->SetBackground(path, true), S_OK);
        EXPECT_EQ(ground->SetGroundOn(1), S_OK);
        EXPECT_EQ(viewer->GetAddedViewpoints().size(), 3U);
        loop.RunPosted();
    }

    void LetGo() {
        display.Reset();
        area.Reset();
        background.Reset();
        ground.Reset();
    }

    void ExpectNothingInTheViewer() const {
        EXPECT_TRUE(viewer->GetAddedViewpoints().empty());
        EXPECT_TRUE(viewer->GetManipulators().empty());
        EXPECT_EQ(viewer->GetGround(), nullptr);
        EXPECT_EQ(viewer->GetForegroundIndicator(), nullptr);
        EXPECT_EQ(viewer->GetSupport()->GetCallbackManager()->CountCallbacks(), 0U);
        EXPECT_EQ(viewer->GetMain3DViewpoint()->GetCallbackManager()->CountCallbacks(), 0U);
    }

    void TearDown() override {
        LetGo();
        ViewerAdapterTest::TearDown();
    }

    QorIRdgDisplay_var display;
    QorIRdgArea_var area;
    QorIRdgBackground_var background;
    QorIRdgGround_var ground;
};

TEST_F(AdapterLife, TheWindowIsDeletedFirst) {
    Begin();
    layout->CloseWindow(window);
    ExpectNothingInTheViewer();
    LetGo();
    loop.RunPosted();
}

TEST_F(AdapterLife, TheClientsLetGoFirst) {
    Begin();
    LetGo();
    loop.RunPosted();
    EXPECT_EQ(viewer->GetAddedViewpoints().size(), 3U) << "an adapter lives as long as its viewer";
    layout->CloseWindow(window);
    ExpectNothingInTheViewer();
}

TEST_F(AdapterLife, TheViewerGoesFirst) {
    Begin();
    LetGo();
    window->SetViewer(nullptr);
    viewer->RequestDelayedDestruction();
    loop.RunPosted();
    layout->CloseWindow(window);
}

TEST_F(AdapterLife, TheViewerGoesWhileClientsStillHoldTheAdapters) {
    Begin();
    window->SetViewer(nullptr);
    viewer->RequestDelayedDestruction();
    loop.RunPosted();
    int on = 0;
    int percent = 50;
    display->SetProgress(percent);
    area->GetAreaMode(on);
    ground->SetGroundOn(1);
    layout->CloseWindow(window);
    LetGo();
    loop.RunPosted();
}

TEST_F(AdapterLife, TheLayoutGoesFirst) {
    Begin();
    layout->RequestDelayedDestruction();
    layout = nullptr;
    loop.RunPosted();
    LetGo();
}

TEST_F(AdapterLife, TheViewerGoesInTheMiddleOfADrag) {
    Begin();
    viewer->HandleMouse(Mouse(QorMouseEvent::Action::Press, 90, 250));
    viewer->HandleMouse(Mouse(QorMouseEvent::Action::Move, 95, 250));
    LetGo();
    window->SetViewer(nullptr);
    viewer->RequestDelayedDestruction();
    loop.RunPosted();
}

} // namespace
