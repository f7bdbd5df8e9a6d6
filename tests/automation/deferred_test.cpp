// Methods of other rooms, and answers that come later.
#include "scenes/QorRdgWorkers.h"
#include "tests/automation/PortTest.h"
#include "workbench/automation/Call.h"

namespace qor::automation {

namespace {

using std::chrono::milliseconds;

/// A port with a method that is answered by the test.
class Deferred : public PortTest {
protected:
    void SetUp() override {
        PortTest::SetUp();
        port->add({
            {.name = "test.later",
             .params = {},
             .run =
                 [this](Call& call) {
                     answers.push_back(call.answerLater());
                     answers.back().whenAbandoned([this] { ++abandoned; });
                     return Json();
                 }},
            {.name = "test.give",
             .params = {},
             .run =
                 [this](Call&) {
                     answers.back().give("given");
                     return Json::object();
                 }},
            {.name = "test.throw",
             .params = {},
             .run = [](Call&) -> Json {
                 throw std::runtime_error("our fault");
             }},
        });
    }

    void TearDown() override {
        answers.clear();
        PortTest::TearDown();
    }

    std::vector<Answer> answers;
    int abandoned = 0;
};

TEST_F(Deferred, LetsFurtherRequestsBeHandledMeanwhile) {
    play([](PortClient& client) {
        const int later = client.request("test.later");
        EXPECT_EQ(client.call("app.info").at("name"), "test");
        const int give = client.request("test.give");
        const Json first = client.read();
        EXPECT_EQ(first.at("id"), later);
        EXPECT_EQ(first.at("result"), "given");
        EXPECT_EQ(client.read().at("id"), give);
    });
    EXPECT_FALSE(answers.front().isWanted());
    answers.front().give("once is enough");
}

TEST_F(Deferred, CanFail) {
    play([this](PortClient& client) {
        client.request("test.later");
        client.call("app.info");
        loop.Post([this] { answers.front().fail(ErrorCode::timedOut, "it still runs"); });
        const Json answer = client.read();
        EXPECT_EQ(answer.at("error").at("code"), -32007);
        EXPECT_EQ(answer.at("error").at("message"), "it still runs");
    });
}

TEST_F(Deferred, IsAbandonedWithItsClient) {
    run([this] {
        {
            PortClient client(path());
            client.request("test.later");
            client.call("app.info");
        }
        PortClient next(path());
        EXPECT_EQ(next.call("app.info").at("name"), "test");
    });
    EXPECT_EQ(abandoned, 1);
    EXPECT_FALSE(answers.front().isWanted());
}

TEST_F(Deferred, KeepsTheConnectionOfAClientThatOnlyListens) {
    play([this](PortClient& client) {
        client.request("test.later");
        client.call("app.info");
        client.endInput();
        EXPECT_TRUE(client.isSilentFor(milliseconds(30)));
        loop.Post([this] { answers.front().give(1); });
        EXPECT_EQ(client.read().at("result"), 1);
        EXPECT_TRUE(client.isClosed());
    });
}

TEST_F(Deferred, IsAnsweredWithAnErrorWhenThePortEnds) {
    std::atomic<int> error = 0;
    std::thread thread([&] {
        PortClient client(path());
        client.request("test.later");
        error = client.read().at("error").at("code").get<int>();
    });
    while (answers.empty())
        loop.RunOneTurn(std::chrono::seconds(1));
    port.reset();
    thread.join();
    EXPECT_EQ(error, -32006);
    answers.front().give("too late, and harmless");
}

TEST_F(Deferred, InABatchHoldsTheAnswersOfTheBatchAlone) {
    play([](PortClient& client) {
        const Json later{{"jsonrpc", "2.0"}, {"id", "l"}, {"method", "test.later"}};
        const Json info{{"jsonrpc", "2.0"}, {"id", "i"}, {"method", "app.info"}};
        client.sendLine(Json::array({later, info}).dump());
        EXPECT_EQ(client.call("app.info").at("name"), "test");
        const int give = client.request("test.give");
        const Json batch = client.read();
        ASSERT_EQ(batch.size(), 2U);
        EXPECT_EQ(batch[0].at("id"), "i");
        EXPECT_EQ(batch[1].at("result"), "given");
        EXPECT_EQ(client.read().at("id"), give);
    });
}

TEST_F(Deferred, AnswersShowWhatWorkersDoForTheDialogs) {
    int deliveries = 0;
    port->add({{.name = "test.work", .params = {}, .run = [&deliveries](Call&) -> Json {
                    const auto again = [&deliveries]() -> QorRdgWorkers::Delivery {
                        return [&deliveries] {
                            ++deliveries;
                        };
                    };
                    QorRdgWorkers::Run([&deliveries, again]() -> QorRdgWorkers::Delivery {
                        std::this_thread::sleep_for(milliseconds(20));
                        return [&deliveries, again] {
                            ++deliveries;
                            QorRdgWorkers::Run(again);
                        };
                    });
                    return "begun";
                }}});
    play([&deliveries](PortClient& client) {
        EXPECT_EQ(client.call("test.work"), "begun");
        EXPECT_EQ(deliveries, 2);
    });
}

TEST_F(Deferred, ExceptionsOfAHandlerAreOurFault) {
    play([](PortClient& client) {
        EXPECT_EQ(client.callForError("test.throw"), -32603);
        EXPECT_EQ(client.callForError("test.throw", {{"a", 1}}), -32602);
    });
}

} // namespace

} // namespace qor::automation
