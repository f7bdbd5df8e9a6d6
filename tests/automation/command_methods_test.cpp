// command.*: the command headers.
#include "platform/frame/QorCommandHeader.h"
#include "tests/automation/PortTest.h"

namespace qor::automation {

namespace {

class CommandMethods : public PortTest {
protected:
    void SetUp() override {
        PortTest::SetUp();
        headers = new QorCommand(nullptr, "headers");
        plain = new QorCommandHeader(headers, "Plain", [this](QorCommandHeader& header) {
            ++started;
            return new QorCommand(&header, "running");
        });
        check = new QorCheckHeader(headers, "Check", [](QorCommandHeader& header) {
            return new QorCommand(&header, "running");
        });
    }

    void TearDown() override {
        headers->RequestDelayedDestruction();
        PortTest::TearDown();
    }

    QorCommand* headers = nullptr;
    QorCommandHeader* plain = nullptr;
    QorCommandHeader* check = nullptr;
    int started = 0;
};

Json header(const char* name, bool available, bool checked) {
    return {{"name", name}, {"available", available}, {"checked", checked}};
}

TEST_F(CommandMethods, ListTheHeaders) {
    play([](PortClient& client) {
        EXPECT_EQ(client.call("command.list"),
                  Json::array({header("Plain", true, false), header("Check", true, false)}));
    });
}

TEST_F(CommandMethods, StartAndEndCommands) {
    play([](PortClient& client) {
        EXPECT_EQ(client.call("command.start", {{"name", "Plain"}}), Json::object());
        EXPECT_EQ(client.call("command.list").at(0), header("Plain", false, false));
        EXPECT_EQ(client.callForError("command.start", {{"name", "Plain"}}), -32003)
            << "it is not available while it runs";
        EXPECT_EQ(client.call("command.end", {{"name", "Plain"}}), Json::object());
        EXPECT_EQ(client.call("command.list").at(0), header("Plain", true, false));
    });
    EXPECT_EQ(started, 1);
    EXPECT_EQ(plain->GetCommand(), nullptr);
}

TEST_F(CommandMethods, StartOnACheckedHeaderUnchecksIt) {
    play([](PortClient& client) {
        const Json name{{"name", "Check"}};
        client.call("command.start", name);
        EXPECT_EQ(client.call("command.list").at(1), header("Check", true, true));
        client.call("command.start", name);
        EXPECT_EQ(client.call("command.list").at(1), header("Check", true, false));
        client.call("command.start", name);
        client.call("command.end", name);
        EXPECT_EQ(client.call("command.list").at(1), header("Check", true, false));
    });
    EXPECT_EQ(check->GetCommand(), nullptr);
}

TEST_F(CommandMethods, RefuseWhatIsNotThere) {
    plain->BecomeUnavailable();
    play([](PortClient& client) {
        EXPECT_EQ(client.callForError("command.start", {{"name", "none"}}), -32001);
        EXPECT_EQ(client.callForError("command.end", {{"name", "none"}}), -32001);
        EXPECT_EQ(client.callForError("command.start", {{"name", "Plain"}}), -32003);
        EXPECT_EQ(client.callForError("command.start"), -32602);
    });
}

} // namespace

} // namespace qor::automation
