// A quick render from end to end in the running program, through its port.
#include "tests/app/QuickRenderTest.h"

namespace {

TEST_F(QuickRender, PhotographsTheProductInItsPlace) {
    const Json before = staging();
    openToolBar();
    EXPECT_NE(staging(), before);
    EXPECT_EQ(size(), "64 × 48 pixels");
    EXPECT_EQ(widget("saveButton")["sensitive"], false);
    const Json last = render();
    EXPECT_EQ(last["status"], "done");
    EXPECT_EQ(last["width"], width);
    EXPECT_EQ(last["height"], height);
    EXPECT_EQ(last["region"], Json());
    EXPECT_EQ(layer(overlay), std::vector<std::string>{"image"});
    for (const char* name : {"sceneButton", "optionsButton", "areaCheck", "saveButton"})
        EXPECT_EQ(widget(name)["sensitive"], true) << name;
    EXPECT_EQ(widget("renderCheck")["checked"], false);
    closeToolBar();
    EXPECT_EQ(staging(), before);
    EXPECT_TRUE(layer(overlay).empty());
    EXPECT_FALSE(isHeaderChecked("EasyRender"));
}

TEST_F(QuickRender, TheSizeFollowsTheViewerTheResolutionAndTheArea) {
    openToolBar();
    resize(80, 60);
    EXPECT_EQ(size(), "80 × 60 pixels");
    check("areaCheck", true);
    drag(10, 20, 50, 50);
    EXPECT_EQ(size(), "40 × 30 pixels");
    EXPECT_EQ(render()["region"], (Json{10, 10, 50, 40}));
    set("ScreenResolution", 0);
    set("CustomResolution", 24); // a quarter of the screen's
    check("optionsButton", true);
    call("dialog.ok", {{"dialog", "optionsDialog"}});
    const Json last = render();
    EXPECT_EQ(last["status"], "done");
    EXPECT_EQ(size(),
              std::to_string(last["region"][2].get<int>() - last["region"][0].get<int>()) + " × " +
                  std::to_string(last["region"][3].get<int>() - last["region"][1].get<int>()) +
                  " pixels");
    EXPECT_LE(last["width"], 20);
    EXPECT_GE(last["width"], 19);
}

TEST_F(QuickRender, MovingTheCameraAbortsAndWipes) {
    set("Quality", 2);
    resize(640, 480);
    openToolBar();
    check("renderCheck", true);
    Json last;
    // A camera that moves before the first percent wipes the picture alone.
    for (int tries = 0; tries < 600 && last.is_null(); ++tries) {
        call("app.run", {{"ms", 50}});
        for (const bool moving : {true, false})
            call("viewer.viewpoint", {{"viewer", "main"}, {"animated", moving}});
        try {
            last = call("render.wait", {{"timeout", 0}});
        } catch (const PortClient::Failure&) {
            last = Json();
        }
    }
    EXPECT_EQ(last["status"], "aborted");
    EXPECT_TRUE(layer(overlay).empty());
    EXPECT_EQ(widget("renderCheck")["checked"], false);
}

TEST_F(QuickRender, EveryWayOfClosingDuringARenderEndsIt) {
    set("Quality", 2);
    resize(640, 480);
    const Json before = staging();
    for (const bool byCommand : {false, true}) {
        openToolBar();
        check("renderCheck", true);
        if (byCommand)
            openToolBar(); // unchecks the command
        else
            closeToolBar();
        EXPECT_EQ(wait()["status"], "aborted");
        EXPECT_FALSE(isHeaderChecked("EasyRender"));
        EXPECT_TRUE(dialogs().empty());
        EXPECT_EQ(staging(), before);
    }
    for (const bool another : {true, false}) {
        openToolBar();
        check("renderCheck", true);
        if (another)
            call("document.open", {{"path", model}});
        else
            call("document.close");
        EXPECT_EQ(wait()["status"], "aborted");
        EXPECT_FALSE(isHeaderChecked("EasyRender"));
        EXPECT_TRUE(dialogs().empty());
    }
    openToolBar(); // without a document
    check("renderCheck", true);
    EXPECT_TRUE(isHeaderChecked("EasyRender"));
    closeToolBar();
}

TEST_F(QuickRender, TheAreaTakesTheMouseOverThePicture) {
    openToolBar();
    render();
    check("areaCheck", true);
    drag(10, 10, 40, 30);
    EXPECT_EQ(size(), "30 × 20 pixels");
    EXPECT_FALSE(layer(areaLayer).empty());
    call("manipulator.edit", {{"viewer", "main"}, {"name", "manipulator5"}});
    EXPECT_EQ(size(), "64 × 48 pixels");
    check("areaCheck", false);
    EXPECT_TRUE(layer(areaLayer).empty());
}

} // namespace
