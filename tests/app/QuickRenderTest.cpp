// A quick render from end to end in the running program, through its port.
#include "tests/app/ChildProgram.h"
#include "tests/support/QorTempDirectory.h"
#include "tests/support/automation/PortClient.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

using Json = nlohmann::json;

/// A tetrahedron with sides of 100 mm along the axes.
constexpr const char* tetrahedron = "o part\nv 0 0 0\nv 100 0 0\nv 0 100 0\nv 0 0 100\n"
                                    "f 1 3 2\nf 1 2 4\nf 2 3 4\nf 1 4 3\n";
constexpr int width = 64;
constexpr int height = 48;
constexpr int overlay = 6;
constexpr int areaLayer = 7;

class QuickRender : public testing::Test {
protected:
    void SetUp() override {
        std::ofstream(model) << tetrahedron;
        program = std::make_unique<ChildProgram>(
            QOR_WORKBENCH, std::vector<std::string>{"--headless", "--listen", socket, model},
            std::vector<std::string>{"XDG_CONFIG_HOME=" + directory.GetPath("config"),
                                     "XDG_DATA_HOME=" + directory.GetPath("data"), "QorStartupPath",
                                     "LC_ALL=C", "LANGUAGE", "DISPLAY", "WAYLAND_DISPLAY",
                                     "QT_QPA_PLATFORM"});
        port = std::make_unique<PortClient>(socket);
        set("Quality", 0);
        set("FinalGather", 0);
        resize(width, height);
    }

    void TearDown() override {
        port->call("app.quit");
        EXPECT_EQ(program->wait(), 0) << program->errors();
        EXPECT_EQ(program->errors(), "");
    }

    Json call(const std::string& method, const Json& parameters = Json::object()) {
        return port->call(method, parameters);
    }

    void set(const std::string& key, int value) {
        call("settings.set",
             {{"repository", "RenderingOptionsSettings"}, {"key", key}, {"value", value}});
    }

    void resize(int columns, int rows) {
        call("viewer.resize", {{"viewer", "main"}, {"width", columns}, {"height", rows}});
    }

    void openToolBar() { call("command.start", {{"name", "EasyRender"}}); }

    void closeToolBar() { call("dialog.close", {{"dialog", "renderToolbar"}}); }

    Json widget(const std::string& name) {
        return call("widget.get", {{"path", "renderToolbar/" + name}});
    }

    void check(const std::string& name, bool checked) {
        call("widget.check", {{"path", "renderToolbar/" + name}, {"checked", checked}});
    }

    std::string size() { return widget("infoLabel")["title"]; }

    Json wait() { return call("render.wait", {{"timeout", 60}}); }

    Json render() {
        check("renderCheck", true);
        return wait();
    }

    /// Presses Save and accepts the file box.
    Json save(const std::string& path, int filter) {
        call("widget.press", {{"path", "renderToolbar/saveButton"}});
        return call("file.accept",
                    {{"dialog", "fileBox"}, {"path", directory.GetPath(path)}, {"filter", filter}});
    }

    bool isHeaderChecked(const std::string& name) {
        for (const Json& one : call("command.list"))
            if (one["name"] == name)
                return one["checked"];
        return false;
    }

    std::vector<std::string> dialogs() {
        std::vector<std::string> names;
        for (const Json& one : call("dialog.list"))
            names.push_back(one["name"]);
        return names;
    }

    /// The kinds of what lies in the layer of that priority.
    std::vector<std::string> layer(int priority) {
        std::vector<std::string> kinds;
        const Json viewer = call("viewer.get", {{"viewer", "main"}});
        for (const Json& one : viewer["viewpoints"])
            if (one["kind"] == "2d" && one["priority"] == priority)
                for (const Json& rep : one["reps"])
                    kinds.push_back(rep["kind"]);
        return kinds;
    }

    /// What the tool bar changes of the viewer.
    Json staging() {
        const Json viewer = call("viewer.get", {{"viewer", "main"}});
        Json found;
        for (const char* part : {"lights", "ambient", "background", "ground", "texture"})
            found[part] = viewer[part];
        return found;
    }

    void drag(double x1, double y1, double x2, double y2) {
        const auto tell = [&](const char* action, double x, double y) {
            call("viewer.mouse",
                 {{"viewer", "main"}, {"action", action}, {"x", x}, {"y", y}, {"button", "left"}});
        };
        tell("press", x1, y1);
        tell("move", (x1 + x2) / 2, (y1 + y2) / 2);
        tell("move", x2, y2);
        tell("release", x2, y2);
    }

    void answer(const std::string& answer) { call("notify.answer", {{"answer", answer}}); }

    QorTempDirectory directory;
    const std::string socket = directory.GetPath("port");
    const std::string model = directory.GetPath("part.obj");
    std::unique_ptr<ChildProgram> program;
    std::unique_ptr<PortClient> port;
};

std::string beginningOf(const std::string& path, std::size_t length) {
    std::ifstream file(path, std::ios::binary);
    std::string bytes(length, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(length));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

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

TEST_F(QuickRender, SavesInEveryFormat) {
    openToolBar();
    render();
    using namespace std::string_literals;
    const std::array<std::pair<const char*, std::string>, 11> formats{{{"tif", "II*"},
                                                                       {"tif", "II*"},
                                                                       {"rgb", "\x01\xda"},
                                                                       {"bmp", "BM"},
                                                                       {"jpg", "\xff\xd8\xff"},
                                                                       {"jpg", "\xff\xd8\xff"},
                                                                       {"jpg", "\xff\xd8\xff"},
                                                                       {"pic", ""},
                                                                       {"psd", "8BPS"},
                                                                       {"png", "\x89PNG"},
                                                                       {"tga", ""}}};
    for (int filter = 0; filter < 11; ++filter) {
        const auto& [extension, magic] = formats.at(static_cast<std::size_t>(filter));
        const std::string name = "picture" + std::to_string(filter);
        EXPECT_EQ(save(name, filter), Json::object()) << filter;
        const std::string path = directory.GetPath(name + "." + extension);
        EXPECT_TRUE(std::filesystem::exists(path)) << path;
        EXPECT_EQ(beginningOf(path, magic.size()), magic) << path;
    }
    EXPECT_EQ(dialogs(), std::vector<std::string>{"renderToolbar"});
}

TEST_F(QuickRender, AsksBeforeItReplacesAFileAndTellsOfFailures) {
    openToolBar();
    render();
    const std::string kept = directory.GetPath("kept.tif");
    std::ofstream(kept) << "old";
    EXPECT_EQ(save("kept", 0)["blocked"], "errNotify");
    EXPECT_EQ(call("notify.get")["kind"], "warning");
    answer("no");
    EXPECT_EQ(beginningOf(kept, 9), "old");
    EXPECT_EQ(dialogs(), std::vector<std::string>{"renderToolbar"});
    EXPECT_EQ(save("kept", 0)["blocked"], "errNotify");
    answer("yes");
    EXPECT_EQ(beginningOf(kept, 2), "II");

    EXPECT_EQ(save("missing/out", 9)["blocked"], "errNotify");
    EXPECT_EQ(call("notify.get")["kind"], "error");
    answer("ok");
    EXPECT_EQ(dialogs(), std::vector<std::string>{"renderToolbar"});
    EXPECT_EQ(widget("saveButton")["sensitive"], true);

    std::filesystem::create_directory(directory.GetPath("my.dir"));
    EXPECT_EQ(save("my.dir/out", 9), Json::object());
    EXPECT_EQ(beginningOf(directory.GetPath("my.dir/out"), 4), "\x89PNG");
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
