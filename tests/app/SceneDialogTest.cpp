// The scene dialog in the running program without a display, through its port: what a person sees
// of it in the view.
#include "tests/app/ChildProgram.h"
#include "tests/support/QorTempDirectory.h"
#include "tests/support/automation/PortClient.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>

namespace {

using Json = nlohmann::json;

constexpr const char* iconViewer = "sceneDialog/iconList/viewer";

class SceneDialogOfTheProgram : public testing::Test {
protected:
    void SetUp() override {
        const std::string model = directory.GetPath("model.obj");
        const std::string socket = directory.GetPath("port");
        std::ofstream(model) << "v 0 0 0\nv 10 0 0\nv 0 10 5\nf 1 2 3\n";
        program = std::make_unique<ChildProgram>(
            QOR_WORKBENCH, std::vector<std::string>{"--listen", socket, "--headless"},
            std::vector<std::string>{"XDG_CONFIG_HOME=" + directory.GetPath("config"),
                                     "XDG_DATA_HOME=" + directory.GetPath("data"),
                                     "TMPDIR=" + directory.GetPath(""), "QorStartupPath",
                                     "LC_ALL=C", "LANGUAGE", "DISPLAY", "WAYLAND_DISPLAY",
                                     "QT_QPA_PLATFORM"});
        port = std::make_unique<PortClient>(socket);
        call("document.open", {{"path", model}});
        call("command.start", {{"name", "EasyRender"}});
    }

    void TearDown() override {
        if (port == nullptr)
            return; // it did not even start
        port->call("app.quit");
        EXPECT_EQ(program->wait(), 0) << program->errors();
    }

    Json call(const std::string& method, const Json& parameters = Json::object()) {
        return port->call(method, parameters);
    }

    void openDialog() {
        call("widget.check", {{"path", "renderToolbar/sceneButton"}, {"checked", true}});
        call("widget.set", {{"path", "sceneDialog/scrollbar"}, {"value", 0}});
    }

    /// What scenes change of the view.
    Json look() {
        const Json all = call("viewer.get", {{"viewer", "main"}});
        Json part;
        for (const char* key : {"lights", "ambient", "background", "ground", "texture"})
            part[key] = all.at(key);
        return part;
    }

    void mouse(const char* action, int x, int y) {
        call("viewer.mouse", {{"viewer", iconViewer}, {"action", action}, {"x", x}, {"y", y}});
    }

    void click(int x, int y) {
        mouse("press", x, y);
        mouse("release", x, y);
    }

    int setting(const char* key) {
        return call("settings.get", {{"repository", "RenderingOptionsSettings"}, {"key", key}});
    }

    QorTempDirectory directory;
    std::unique_ptr<ChildProgram> program;
    std::unique_ptr<PortClient> port;
};

TEST_F(SceneDialogOfTheProgram, ShowsEveryThumbnailWhenItsOpeningIsAnswered) {
    openDialog();
    const Json viewer = call("viewer.get", {{"viewer", iconViewer}});
    int thumbnails = 0;
    for (const Json& icon : viewer.at("viewpoints").at(0).at("reps").at(0).at("reps"))
        if (icon.contains("reps") && icon["reps"][0]["kind"] == "image")
            ++thumbnails;
    EXPECT_EQ(thumbnails, 10);
}

TEST_F(SceneDialogOfTheProgram, PutsTheViewBackOnCancelAndOnItsCloseBox) {
    const Json before = look();
    for (const char* way : {"dialog.cancel", "dialog.close"}) {
        openDialog();
        click(50, 50);
        const Json first = look();
        EXPECT_NE(first, before) << way;
        click(170, 50);
        EXPECT_NE(look(), first) << way;
        call(way, {{"dialog", "sceneDialog"}});
        EXPECT_EQ(look(), before) << way;
    }
    openDialog();
    call("widget.check", {{"path", "sceneDialog/customRadio"}, {"checked", true}});
    EXPECT_NE(look(), before);
    call("dialog.cancel", {{"dialog", "sceneDialog"}});
    EXPECT_EQ(look(), before);
}

TEST_F(SceneDialogOfTheProgram, KeepsTheSceneOfADoubleClick) {
    openDialog();
    click(170, 50);
    const Json chosen = look();
    mouse("doubleClick", 170, 50);
    EXPECT_EQ(call("dialog.list").size(), 1U);
    EXPECT_EQ(look(), chosen);
    EXPECT_EQ(setting("SceneType"), 2);
    EXPECT_EQ(setting("PredefinedScene"), 9);
}

TEST_F(SceneDialogOfTheProgram, PrintsTheCustomSceneThatOKKeeps) {
    openDialog();
    call("widget.check", {{"path", "sceneDialog/customRadio"}, {"checked", true}});
    call("widget.set", {{"path", "sceneDialog/ambientSlider"}, {"value", 0.25}});
    call("dialog.ok", {{"dialog", "sceneDialog"}});
    EXPECT_EQ(setting("SceneType"), 1);
    port->call("app.quit");
    EXPECT_EQ(program->wait(), 0) << program->errors();
    port.reset();
    EXPECT_TRUE(program->output().starts_with("==========================\n"
                                              "Scene.Light.Ambient=\"0.250000\";\n"))
        << program->output();
}

} // namespace
