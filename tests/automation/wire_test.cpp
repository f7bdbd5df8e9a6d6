// The port as a client meets it: messages good and bad, clients that come, wait and go.
#include "tests/automation/PortTest.h"

namespace qor::automation {

namespace {

using std::chrono::milliseconds;

class Wire : public PortTest {};

constexpr milliseconds aWhile(30);

TEST_F(Wire, AnswersWithTheIdOfTheRequest) {
    play([](PortClient& client) {
        for (const Json& id : {Json(1), Json("one"), Json(nullptr), Json(1.5), Json(true),
                               Json::array({1, "a"}), Json({{"a", 1}}), Json(-9007199254740993)}) {
            client.sendLine(Json{{"jsonrpc", "2.0"}, {"id", id}, {"method", "app.info"}}.dump());
            const Json answer = client.read();
            EXPECT_EQ(answer.at("id"), id);
            EXPECT_EQ(answer.at("jsonrpc"), "2.0");
            EXPECT_EQ(answer.at("result").at("name"), "test");
            EXPECT_FALSE(answer.contains("error"));
        }
    });
}

TEST_F(Wire, RefusesWhatIsNoRequestAndGoesOn) {
    play([](PortClient& client) {
        const std::vector<std::pair<std::string, ErrorCode>> rows = {
            {"{", ErrorCode::parseError},
            {"\xff\xfe", ErrorCode::parseError},
            {"{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"\xc3\x28\"}", ErrorCode::parseError},
            {"7", ErrorCode::invalidRequest},
            {"[]", ErrorCode::invalidRequest},
            {R"({"jsonrpc":"2.0","id":1,"method":"none"})", ErrorCode::methodNotFound},
            {R"({"jsonrpc":"2.0","id":1,"method":"widget.get"})", ErrorCode::invalidParams},
            {R"({"jsonrpc":"2.0","id":1,"method":"widget.get","params":{"path":"none"}})",
             ErrorCode::noSuchObject},
        };
        for (const auto& [line, error] : rows) {
            client.sendLine(line);
            const Json answer = client.read();
            EXPECT_EQ(answer.at("error").at("code"), code(error)) << line;
            EXPECT_TRUE(answer.at("error").at("message").is_string());
            EXPECT_FALSE(answer.contains("result"));
            EXPECT_EQ(client.call("app.info").at("name"), "test");
        }
    });
}

/// A request of that many bytes.
std::string infoRequest(std::size_t size) {
    std::string line = R"({"jsonrpc":"2.0","id":1,"method":"app.info")";
    line.resize(size, ' ');
    line.back() = '}';
    return line;
}

TEST_F(Wire, RefusesMessagesThatAreTooLongAndGoesOn) {
    constexpr std::size_t limit = std::size_t(16) * 1024 * 1024;
    play([](PortClient& client) {
        client.sendLine(infoRequest(limit));
        EXPECT_EQ(client.read().at("result").at("name"), "test");
        client.sendLine(infoRequest(limit + 1));
        const Json answer = client.read();
        EXPECT_EQ(answer.at("error").at("code"), -32600);
        EXPECT_EQ(answer.at("error").at("message"), "the message is longer than 16777216 bytes");
        EXPECT_TRUE(answer.at("id").is_null());
        client.send(std::string(3 * limit, 'x'));
        EXPECT_EQ(client.read().at("error").at("code"), -32600);
        EXPECT_TRUE(client.isSilentFor(aWhile)) << "one line, one error";
        client.send("\n");
        EXPECT_EQ(client.call("app.info").at("name"), "test");
    });
}

TEST_F(Wire, SaysNothingToNotifications) {
    play([](PortClient& client) {
        client.notify("app.info");
        client.notify("none");
        client.notify("system.env", {{"name", "QorPortTest"}, {"value", "set"}});
        EXPECT_EQ(client.call("app.info").at("name"), "test") << "the first answer there is";
    });
    EXPECT_EQ(QorGetEnv("QorPortTest"), QorUnicodeString("set"));
    QorSetEnv("QorPortTest", std::nullopt);
}

TEST_F(Wire, AnswersABatchWithAnArray) {
    play([](PortClient& client) {
        const Json first{{"jsonrpc", "2.0"}, {"id", 1}, {"method", "app.info"}};
        const Json quiet{{"jsonrpc", "2.0"}, {"method", "app.info"}};
        const Json last{{"jsonrpc", "2.0"}, {"id", "x"}, {"method", "none"}};
        client.sendLine(Json::array({first, 5, quiet, last}).dump());
        const Json answers = client.read();
        ASSERT_TRUE(answers.is_array());
        ASSERT_EQ(answers.size(), 3U);
        EXPECT_EQ(answers[0].at("id"), 1);
        EXPECT_EQ(answers[0].at("result").at("name"), "test");
        EXPECT_EQ(answers[1].at("error").at("code"), -32600);
        EXPECT_EQ(answers[2].at("id"), "x");
        EXPECT_EQ(answers[2].at("error").at("code"), -32601);
        client.sendLine(Json::array({quiet, quiet}).dump());
        EXPECT_TRUE(client.isSilentFor(aWhile)) << "a batch of notifications has no answer";
    });
}

TEST_F(Wire, HandlesRequestsInTheOrderOfTheirComing) {
    const int count = 1000;
    play([&](PortClient& client) {
        for (int i = 1; i <= count; ++i)
            client.request("settings.set", {{"repository", "soak"}, {"key", "K"}, {"value", i}});
        for (int i = 1; i <= count; ++i)
            EXPECT_EQ(client.read().at("id"), i);
        EXPECT_EQ(client.call("settings.get", {{"repository", "soak"}, {"key", "K"}}), count);
    });
}

TEST_F(Wire, LetsASecondClientWait) {
    run([this] {
        PortClient first(path());
        EXPECT_EQ(first.call("app.info").at("name"), "test");
        PortClient second(path());
        second.request("app.info");
        EXPECT_TRUE(second.isSilentFor(aWhile));
        EXPECT_EQ(first.call("app.info").at("name"), "test");
        first.close();
        EXPECT_EQ(second.read().at("result").at("name"), "test");
    });
}

TEST_F(Wire, AnswersAClientThatHasSaidAllItWants) {
    play([](PortClient& client) {
        client.request("app.info");
        client.send(R"({"jsonrpc":"2.0","id":"last","method":"app.info"})");
        client.endInput();
        EXPECT_EQ(client.read().at("id"), 1);
        EXPECT_EQ(client.read().at("id"), "last") << "without a line end";
        EXPECT_TRUE(client.isClosed());
    });
}

std::string keyOf(int number) {
    return std::string("K").append(std::to_string(number));
}

TEST_F(Wire, CarriesOutWhatAClientAskedForBeforeItHungUp) {
    run([this] {
        for (int i = 0; i < 50; ++i) {
            PortClient client(path());
            client.notify("settings.set",
                          {{"repository", "left"}, {"key", keyOf(i)}, {"value", i}});
        }
        PortClient last(path());
        for (int i = 0; i < 50; ++i)
            EXPECT_EQ(last.call("settings.get", {{"repository", "left"}, {"key", keyOf(i)}}), i);
    });
}

TEST_F(Wire, IgnoresHalfAMessageOfAClientThatVanished) {
    run([this] {
        {
            PortClient client(path());
            client.send(R"({"jsonrpc":"2.0","id":1,"method":"app.qu)");
        }
        PortClient next(path());
        EXPECT_EQ(next.call("app.info").at("name"), "test");
    });
    EXPECT_FALSE(loop.IsQuitting());
}

TEST_F(Wire, KeepsAnswersForAClientThatReadsLate) {
    constexpr int count = 50;
    const std::string text(100'000, 'x');
    play([&](PortClient& client) {
        client.call("settings.set", {{"repository", "big"}, {"key", "K"}, {"value", text}});
        for (int i = 0; i < count; ++i) // 5 MB, far more than the socket holds
            client.request("settings.get", {{"repository", "big"}, {"key", "K"}});
        for (int i = 0; i < count; ++i)
            EXPECT_EQ(client.read().at("result"), text);
    });
}

TEST_F(Wire, OutlivesAClientThatNeverReads) {
    const std::string text(100'000, 'x');
    run([&] {
        {
            PortClient client(path());
            client.call("settings.set", {{"repository", "big"}, {"key", "K"}, {"value", text}});
            for (int i = 0; i < 100; ++i) // 10 MB
                client.request("settings.get", {{"repository", "big"}, {"key", "K"}});
        }
        PortClient next(path());
        EXPECT_EQ(next.call("app.info").at("name"), "test");
    });
}

TEST_F(Wire, WritesWhatIsWaitingAtItsEnd) {
    run([this] {
        PortClient client(path());
        client.call("app.info");
    });
    std::thread thread;
    std::atomic<int> answers = 0;
    thread = std::thread([&] {
        PortClient client(path());
        client.request("app.info");
        client.request("app.quit");
        answers += static_cast<int>(client.read().contains("result"));
        answers += static_cast<int>(client.read().contains("result"));
        answers += static_cast<int>(client.isClosed());
    });
    while (!loop.IsQuitting())
        loop.RunOneTurn(std::chrono::seconds(1));
    port.reset();
    thread.join();
    EXPECT_EQ(answers, 3);
}

TEST_F(Wire, EndsTheProgramWithItsClientWhenAsked) {
    bool hasQuit = false;
    openPort({.name = {}, .version = {}, .isOnce = true, .quit = [&] {
                  hasQuit = true;
              }});
    play([&](PortClient& client) { client.call("app.info"); });
    while (!hasQuit)
        loop.RunOneTurn(std::chrono::seconds(1));
    EXPECT_TRUE(hasQuit);
}

TEST_F(Wire, TellsWhyItDoesNotListen) {
    const auto second = std::make_unique<Port>(loop, path(), PortOptions());
    EXPECT_NE(second->error().find(": another program listens there"), std::string::npos);
}

} // namespace

} // namespace qor::automation
