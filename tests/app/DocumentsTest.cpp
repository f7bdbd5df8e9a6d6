// Documents in the running program without a display, through its port.
#include "tests/app/ChildProgram.h"
#include "tests/support/QorTempDirectory.h"
#include "tests/support/automation/PortClient.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

namespace {

using Json = nlohmann::json;

/// Two triangles of 10 mm, one above the other, as two objects of an OBJ file.
constexpr const char* twoParts = "o low\nv 0 0 0\nv 10 0 0\nv 0 10 0\nf 1 2 3\n"
                                 "o high\nv 0 0 5\nv 10 0 5\nv 0 10 5\nf 4 5 6\n";

class Documents : public testing::Test {
protected:
    void SetUp() override {
        std::ofstream(model) << twoParts;
        startProgram({});
    }

    void TearDown() override { endProgram(); }

    /// With windows when QOR_TEST_WINDOWS is set, and there is a display then; else headless.
    void startProgram(const std::vector<std::string>& more) {
        std::vector<std::string> arguments{"--listen", socket};
        std::vector<std::string> environment{"XDG_CONFIG_HOME=" + directory.GetPath("config"),
                                             "XDG_DATA_HOME=" + directory.GetPath("data"),
                                             "QorStartupPath", "LC_ALL=C", "LANGUAGE"};
        if (std::getenv("QOR_TEST_WINDOWS") == nullptr) {
            arguments.emplace_back("--headless");
            environment.insert(environment.end(),
                               {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"});
        }
        arguments.insert(arguments.end(), more.begin(), more.end());
        program = std::make_unique<ChildProgram>(QOR_WORKBENCH, arguments, environment);
        port = std::make_unique<PortClient>(socket);
    }

    void endProgram() {
        if (port == nullptr)
            return; // it did not even start
        port->call("app.quit");
        EXPECT_EQ(program->wait(), 0) << program->errors();
        port.reset();
    }

    Json call(const std::string& method, const Json& parameters = Json::object()) {
        return port->call(method, parameters);
    }

    void start(const std::string& command) { call("command.start", {{"name", command}}); }

    [[nodiscard]] bool isAvailable(const std::string& command) {
        for (const Json& one : call("command.list"))
            if (one["name"] == command)
                return one["available"];
        ADD_FAILURE() << "no command " << command;
        return false;
    }

    void open(const std::string& path) { call("document.open", {{"path", path}}); }

    /// Names of the framework's events since the last take, those of \p wanted alone, in order.
    std::vector<std::string> events(const std::vector<std::string>& wanted) {
        std::vector<std::string> names;
        for (const Json& one : call("events.take"))
            if (std::find(wanted.begin(), wanted.end(), one["event"]) != wanted.end())
                names.push_back(one["event"]);
        return names;
    }

    /// A person's click at the middle of a viewer.
    void click(double x, double y) {
        for (const char* action : {"press", "release"})
            call("viewer.mouse",
                 {{"viewer", "main"}, {"action", action}, {"x", x}, {"y", y}, {"button", "left"}});
    }

    /// The pixel of a point of the product.
    Json project(const std::vector<double>& point) {
        return call("viewer.project", {{"viewer", "main"}, {"point", point}});
    }

    QorTempDirectory directory;
    const std::string socket = directory.GetPath("port");
    const std::string model = directory.GetPath("two & parts.obj");
    const std::vector<std::string> closing{"EDITOR_DEACTIVATED", "WINDOW_DELETED",
                                           "EDITOR_CLOSE_ENDED"};
    std::unique_ptr<ChildProgram> program;
    std::unique_ptr<PortClient> port;
};

TEST_F(Documents, TheProgramBeginsWithAnEmptyOneInAWindow) {
    const Json viewer = call("viewer.get", {{"viewer", "main"}});
    EXPECT_EQ(viewer["kind"], "3d");
    EXPECT_EQ(viewer["box"], Json());
    EXPECT_FALSE(isAvailable("SelectAll"));
}

TEST_F(Documents, AModelIsSeenWholeInTheWindow) {
    open(model);
    const Json viewer = call("viewer.get", {{"viewer", "main"}});
    EXPECT_EQ(viewer["box"]["low"], (Json{0.0, 0.0, 0.0}));
    const double width = viewer["width"];
    const double height = viewer["height"];
    for (const auto& corner : {std::vector<double>{0, 0, 0}, {10, 0, 0}, {0, 10, 5}}) {
        const Json pixel = project(corner);
        EXPECT_GT(pixel["x"], 0.0);
        EXPECT_LT(pixel["x"], width);
        EXPECT_GT(pixel["y"], 0.0);
        EXPECT_LT(pixel["y"], height);
    }
    EXPECT_EQ(call("dialog.list"), Json::array());
}

TEST_F(Documents, ThatOfTheCommandLineIsOpenForTheFirstRequest) {
    endProgram();
    startProgram({model});
    EXPECT_EQ(call("viewer.get", {{"viewer", "main"}})["box"]["high"][2], 5.0);
}

TEST_F(Documents, OpeningAnotherClosesTheOneThatIsOpen) {
    open(model);
    call("events.take");
    open(model);
    EXPECT_EQ(events(closing), closing);
    EXPECT_EQ(call("viewer.list").size(), 1U);
}

TEST_F(Documents, ClosingOneOfSeveralWindowsDeletesItAlone) {
    open(model);
    start("NewWindow");
    start("NewWindow");
    EXPECT_EQ(call("viewer.list").size(), 3U);
    call("events.take");
    start("CloseWindow");
    EXPECT_EQ(events(closing), std::vector<std::string>{"WINDOW_DELETED"});
    EXPECT_EQ(call("viewer.list").size(), 2U);
    start("Close");
    EXPECT_EQ(events(closing), (std::vector<std::string>{"EDITOR_DEACTIVATED", "WINDOW_DELETED",
                                                         "WINDOW_DELETED", "EDITOR_CLOSE_ENDED"}));
    EXPECT_EQ(call("viewer.list"), Json::array());
    EXPECT_FALSE(isAvailable("Save"));
}

TEST_F(Documents, TheLastWindowClosesTheDocument) {
    open(model);
    call("events.take");
    start("CloseWindow");
    EXPECT_EQ(events(closing), closing);
}

TEST_F(Documents, AnotherWindowLooksTheSameWay) {
    open(model);
    call("viewer.viewpoint", {{"viewer", "main"}, {"eye", {1, 2, 300}}, {"up", {0, 1, 0}}});
    const Json eye = call("viewer.get", {{"viewer", "main"}})["eye"];
    start("NewWindow");
    EXPECT_EQ(call("viewer.get", {{"viewer", "main"}})["eye"], eye);
    start("NextWindow");
    EXPECT_EQ(call("viewer.get", {{"viewer", "main"}})["eye"], eye);
}

TEST_F(Documents, AClickSelectsAPartAndCommandsHideAndIsolateIt) {
    open(model);
    call("viewer.viewpoint",
         {{"viewer", "main"}, {"eye", {3, 3, 100}}, {"target", {3, 3, 0}}, {"up", {0, 1, 0}}});
    EXPECT_FALSE(isAvailable("Hide"));
    click(project({2, 2, 5})["x"], project({2, 2, 5})["y"]);
    EXPECT_TRUE(isAvailable("Hide"));
    start("Hide");
    EXPECT_EQ(call("viewer.get", {{"viewer", "main"}})["box"]["high"][2], 0.0)
        << "the low one is left";
    start("ShowAll");
    EXPECT_EQ(call("viewer.get", {{"viewer", "main"}})["box"]["high"][2], 5.0);
    start("Isolate");
    EXPECT_EQ(call("viewer.get", {{"viewer", "main"}})["box"]["low"][2], 5.0);
    click(2, 2);
    EXPECT_FALSE(isAvailable("Hide")) << "a click beside the product selects nothing";
    start("SelectAll");
    EXPECT_TRUE(isAvailable("Hide"));
}

TEST_F(Documents, AModifiedOneAsksBeforeItIsClosed) {
    open(model);
    start("SelectAll");
    start("Hide");
    call("events.take");
    EXPECT_EQ(call("command.start", {{"name", "Close"}})["blocked"], "saveNotify");
    call("notify.answer", {{"answer", "cancel"}});
    EXPECT_EQ(call("viewer.list").size(), 1U);
    EXPECT_EQ(call("command.start", {{"name", "Close"}})["blocked"], "saveNotify");
    call("notify.answer", {{"answer", "no"}});
    EXPECT_EQ(call("viewer.list"), Json::array());
    EXPECT_EQ(events(closing), closing);
}

TEST_F(Documents, SaveAsksForANameAndGivesItTheSuffix) {
    open(model);
    start("Save");
    const Json dialog = call("file.get", {{"dialog", "saveFile"}});
    EXPECT_EQ(dialog["save"], true);
    call("file.accept", {{"dialog", "saveFile"}, {"path", directory.GetPath("kept")}});
    for (int i = 0; i < 200 && !std::filesystem::exists(directory.GetPath("kept.qor")); ++i)
        call("app.run", {{"ms", 50}});
    EXPECT_TRUE(std::filesystem::exists(directory.GetPath("kept.qor")));
    EXPECT_EQ(call("dialog.list"), Json::array());
}

TEST_F(Documents, WhatCannotBeDoneMeanwhileIsNotOfferedWhileOneIsOpened) {
    EXPECT_TRUE(isAvailable("New"));
    const int opening = port->request("document.open", {{"path", QOR_SAMPLE}});
    EXPECT_FALSE(isAvailable("New"));
    EXPECT_FALSE(isAvailable("Close"));
    const int cancelling = port->request("document.cancel");
    const std::set<int> answered{port->read().at("id"), port->read().at("id")};
    EXPECT_EQ(answered, (std::set<int>{opening, cancelling}));
    EXPECT_TRUE(isAvailable("New"));
}

TEST_F(Documents, TheProgramMayEndWhileItAsksForAFile) {
    for (const char* command : {"Open", "ImportInto", "Save", "SaveAs"}) {
        start(command);
        endProgram();
        startProgram({});
    }
}

TEST_F(Documents, TheOpenDialogOffersWhatCanBeReadAndRemembersTheFolder) {
    start("Open");
    const Json first = call("file.get", {{"dialog", "openFile"}});
    EXPECT_EQ(first["save"], false);
    ASSERT_GE(first["filters"].size(), 9U);
    for (const char* suffix : {"*.stp", "*.step", "*.igs", "*.brep", "*.glb", "*.gltf", "*.obj",
                               "*.stl", "*.ply", "*.qor"})
        EXPECT_NE(first["filters"][0]["pattern"].get<std::string>().find(suffix), std::string::npos)
            << suffix;
    call("file.accept", {{"dialog", "openFile"}, {"path", model}});
    for (int i = 0; i < 200 && !isAvailable("SelectAll"); ++i)
        call("app.run", {{"ms", 50}});
    EXPECT_TRUE(isAvailable("SelectAll"));
    EXPECT_TRUE(isAvailable("RecentFile1"));
    start("Open");
    EXPECT_EQ(call("file.get", {{"dialog", "openFile"}})["directory"], directory.GetPath(""));
    call("file.cancel", {{"dialog", "openFile"}});
    EXPECT_EQ(call("dialog.list"), Json::array());
}

TEST_F(Documents, TheViewCommandsAreChecked) {
    open(model);
    const auto isChecked = [&](const char* command) {
        for (const Json& one : call("command.list"))
            if (one["name"] == command)
                return one["checked"].get<bool>();
        return false;
    };
    EXPECT_TRUE(isChecked("ProductTree"));
    call("events.take");
    start("ProductTree");
    EXPECT_FALSE(isChecked("ProductTree"));
    EXPECT_EQ(events({"TREE_DISPLAY_ON", "TREE_DISPLAY_OFF"}),
              std::vector<std::string>{"TREE_DISPLAY_OFF"});
    EXPECT_TRUE(isChecked("Perspective"));
    start("Perspective");
    call("app.run", {{"ms", 400}});
    EXPECT_EQ(call("viewer.get", {{"viewer", "main"}})["projection"], "parallel");
    EXPECT_FALSE(isChecked("Perspective"));
    EXPECT_TRUE(isChecked("Edges"));
    start("Edges");
    EXPECT_FALSE(isChecked("Edges"));
}

} // namespace
