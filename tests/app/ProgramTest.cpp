#include "tests/app/ChildProgram.h"
#include "tests/support/QorTempDirectory.h"
#include "tests/support/automation/PortClient.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

namespace {

using Json = nlohmann::json;

/// The program, with settings of its own and no display.
class Program : public testing::Test {
protected:
    [[nodiscard]] std::unique_ptr<ChildProgram> start(std::vector<std::string> arguments) const {
        return std::make_unique<ChildProgram>(
            QOR_WORKBENCH, arguments,
            std::vector<std::string>{"XDG_CONFIG_HOME=" + directory.GetPath("config"),
                                     "XDG_DATA_HOME=" + directory.GetPath("data"), "QorStartupPath",
                                     "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "LC_ALL=C",
                                     "LANGUAGE"});
    }

    [[nodiscard]] std::unique_ptr<ChildProgram>
    startHeadless(std::vector<std::string> more = {}) const {
        more.insert(more.begin(), {"--headless", "--listen", socket});
        return start(std::move(more));
    }

    QorTempDirectory directory;
    const std::string socket = directory.GetPath("port");
};

TEST_F(Program, HelpGoesToStandardOutput) {
    const auto program = start({"--help"});
    EXPECT_EQ(program->wait(), 0);
    EXPECT_NE(program->output().find("--listen SOCKET"), std::string::npos);
    EXPECT_EQ(program->errors(), "");
}

TEST_F(Program, VersionIsOneLine) {
    const auto program = start({"--version"});
    EXPECT_EQ(program->wait(), 0);
    EXPECT_EQ(program->output().rfind("qorworkbench ", 0), 0U);
    EXPECT_EQ(program->output().back(), '\n');
}

TEST_F(Program, WrongOptionsEndItWithTwo) {
    const auto program = start({"--headless", "--bogus"});
    EXPECT_EQ(program->wait(), 2);
    EXPECT_EQ(program->output(), "");
    EXPECT_NE(program->errors().find("--bogus"), std::string::npos);
}

TEST_F(Program, WithoutADisplayItSaysSo) {
    const auto program = start({});
    EXPECT_EQ(program->wait(), 1);
    EXPECT_NE(program->errors().find("--headless"), std::string::npos) << program->errors();
}

TEST_F(Program, HeadlessAnswersAndQuits) {
    const auto program = startHeadless();
    PortClient client(socket);
    const Json info = client.call("app.info");
    EXPECT_EQ(info["name"], "qorworkbench");
    EXPECT_EQ(info["headless"], true);
    client.call("app.quit");
    EXPECT_EQ(program->wait(), 0);
    EXPECT_FALSE(std::filesystem::exists(socket));
    EXPECT_EQ(program->output(), "");
    EXPECT_EQ(program->errors(), "");
}

TEST_F(Program, SignalsEndItInGoodOrder) {
    for (const int signal : {SIGTERM, SIGINT}) {
        const auto program = startHeadless();
        PortClient client(socket);
        client.call("command.start", {{"name", "EasyRenderOptions"}});
        program->send(signal);
        EXPECT_EQ(program->wait(), 0);
        EXPECT_FALSE(std::filesystem::exists(socket));
        EXPECT_EQ(program->errors(), "");
    }
}

TEST_F(Program, ASignalEndsItInABlockingBoxToo) {
    const auto program = startHeadless({"--gallery"});
    PortClient client(socket);
    const Json answer = client.call("widget.press", {{"path", "galleryDialog/questionButton"}});
    EXPECT_EQ(answer["blocked"], "galleryNotify");
    program->send(SIGTERM);
    EXPECT_EQ(program->wait(), 0);
    EXPECT_FALSE(std::filesystem::exists(socket));
}

TEST_F(Program, OnceEndsWithTheFirstClient) {
    const auto program = startHeadless({"--once"});
    PortClient client(socket);
    client.call("app.info");
    client.close();
    EXPECT_EQ(program->wait(), 0);
    EXPECT_FALSE(std::filesystem::exists(socket));
}

TEST_F(Program, ASocketInUseIsRefused) {
    const auto first = startHeadless();
    PortClient client(socket);
    client.call("app.info");
    const auto second = startHeadless();
    EXPECT_EQ(second->wait(), 1);
    EXPECT_NE(second->errors().find(socket), std::string::npos) << second->errors();
    client.call("app.quit");
    EXPECT_EQ(first->wait(), 0);
}

TEST_F(Program, AFileThatCannotBeOpenedIsReportedAndItRunsOn) {
    const std::string file = directory.GetPath("missing.step");
    const auto program = startHeadless({file});
    PortClient client(socket);
    client.call("app.run", {{"ms", 500}});
    EXPECT_EQ(client.call("notify.get"), Json());
    EXPECT_EQ(client.call("viewer.list"), Json::array());
    client.call("app.quit");
    EXPECT_EQ(program->wait(), 0);
    const std::string said = program->errors();
    EXPECT_EQ(said.rfind("qorworkbench: ", 0), 0U) << said;
    EXPECT_NE(said.find(file), std::string::npos) << said;
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
}

TEST_F(Program, SettingsSurviveARestart) {
    const Json setting{{"repository", "RenderingOptionsSettings"}, {"key", "Quality"}};
    for (const int round : {1, 2}) {
        const auto program = startHeadless();
        PortClient client(socket);
        if (round == 1) {
            client.call("command.start", {{"name", "EasyRenderOptions"}});
            client.call("widget.set", {{"path", "optionsDialog/qualityCombo"}, {"value", 2}});
            client.call("dialog.ok", {{"dialog", "optionsDialog"}});
            EXPECT_EQ(client.call("dialog.list"), Json::array());
        }
        EXPECT_EQ(client.call("settings.get", setting), 2);
        client.call("app.quit");
        EXPECT_EQ(program->wait(), 0);
    }
}

TEST_F(Program, FindsItsOwnTexts) {
    const auto program = startHeadless();
    PortClient client(socket);
    client.call("command.start", {{"name", "About"}});
    EXPECT_EQ(client.call("dialog.list")[0]["title"], "About QorWorkbench");
    client.call("app.quit");
    EXPECT_EQ(program->wait(), 0);
}

TEST_F(Program, SaysWhenItsResourcesAreMissingAndRunsOn) {
    std::filesystem::create_directory(directory.GetPath("bin"));
    const std::string copy = directory.GetPath("bin/qorworkbench");
    std::filesystem::copy_file(QOR_WORKBENCH, copy);
    ChildProgram program(copy, {"--headless", "--listen", socket},
                         {"XDG_CONFIG_HOME=" + directory.GetPath("config"),
                          "LD_LIBRARY_PATH=" QOR_LIBRARIES, "QorStartupPath", "DISPLAY"});
    PortClient(socket).call("app.quit");
    EXPECT_EQ(program.wait(), 0);
    EXPECT_EQ(program.errors(), "qorworkbench: the folder \"" +
                                    directory.GetPath("share/qorworkbench") +
                                    "\" with the program's texts, icons and scenes is missing\n");
}

TEST_F(Program, TracesToStandardError) {
    const auto program = startHeadless({"--trace", "2"});
    PortClient client(socket);
    client.call("command.start", {{"name", "EasyRenderOptions"}});
    client.call("app.quit");
    EXPECT_EQ(program->wait(), 0);
    EXPECT_NE(program->errors().find("(QorRdgOptionsDialog::~QorRdgOptionsDialog) Done\n"),
              std::string::npos)
        << program->errors();
}

} // namespace
