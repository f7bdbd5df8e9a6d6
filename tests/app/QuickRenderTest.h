#pragma once

#include "tests/app/ChildProgram.h"
#include "tests/support/QorTempDirectory.h"
#include "tests/support/automation/PortClient.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>

/// The running program with a small product, driven through its port.
class QuickRender : public testing::Test {
protected:
    using Json = nlohmann::json;

    static constexpr int width = 64;
    static constexpr int height = 48;
    static constexpr int overlay = 6;
    static constexpr int areaLayer = 7;

    void SetUp() override {
        std::ofstream(model) << "o part\nv 0 0 0\nv 100 0 0\nv 0 100 0\nv 0 0 100\n"
                                "f 1 3 2\nf 1 2 4\nf 2 3 4\nf 1 4 3\n"; // a tetrahedron
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
