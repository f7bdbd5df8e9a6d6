// app.* and system.*: the program itself.
#include "platform/dialog/QorDlgDialog.h"
#include "scenes/QorRdgWorkers.h"
#include "tests/automation/PortTest.h"

#include <unistd.h>

#include <future>

namespace qor::automation {

namespace {

using std::chrono::milliseconds;

class AppMethods : public PortTest {};

TEST_F(AppMethods, InfoTellsWhatTheProgramIs) {
    openPort({.name = {}, .version = {}, .isHeadless = true, .quit = {}});
    play([](PortClient& client) {
        const Json expected{
            {"name", "test"}, {"version", "1.2.3"}, {"headless", true}, {"pid", ::getpid()}};
        EXPECT_EQ(client.call("app.info"), expected);
    });
}

TEST_F(AppMethods, InfoDoesNotWaitForWorkers) {
    std::promise<void> mayEnd;
    std::shared_future<void> end = mayEnd.get_future().share();
    QorRdgWorkers::Run([end]() -> QorRdgWorkers::Delivery {
        constexpr std::chrono::seconds patience(10);
        EXPECT_EQ(end.wait_for(patience), std::future_status::ready) << "it was waited for";
        return {};
    });
    play([&](PortClient& client) {
        EXPECT_EQ(client.call("app.info").at("name"), "test");
        mayEnd.set_value();
    });
    QorRdgWorkers::Finish();
}

TEST_F(AppMethods, NothingWaitsForWorkThatGoesOnAside) {
    std::promise<void> mayEnd;
    std::shared_future<void> end = mayEnd.get_future().share();
    QorRdgWorkers::RunAside([end]() -> QorRdgWorkers::Delivery {
        constexpr std::chrono::seconds patience(10);
        EXPECT_EQ(end.wait_for(patience), std::future_status::ready) << "it was waited for";
        return {};
    });
    play([&](PortClient& client) {
        EXPECT_EQ(client.call("dialog.list"), Json::array());
        mayEnd.set_value();
    });
    EXPECT_EQ(QorRdgWorkers::CountPending(), 0U);
}

TEST_F(AppMethods, RunLeavesTheLoopToItselfThatLong) {
    int ticks = 0;
    int depth = -1;
    QorTimerId timer = loop.StartTimer(
        milliseconds(5),
        [&] {
            ++ticks;
            depth = loop.GetDepth();
        },
        true);
    const auto begin = std::chrono::steady_clock::now();
    play([](PortClient& client) {
        EXPECT_EQ(client.call("app.run", {{"ms", 60}}), Json::object());
    });
    EXPECT_GE(std::chrono::steady_clock::now() - begin, milliseconds(60));
    EXPECT_GE(ticks, 3);
    EXPECT_EQ(depth, 0) << "timers run where they would without the port";
    loop.StopTimer(timer);
}

TEST_F(AppMethods, RunHoldsTheRequestsBehindIt) {
    play([](PortClient& client) {
        const int run = client.request("app.run", {{"ms", 30}});
        const int info = client.request("app.info");
        EXPECT_EQ(client.read().at("id"), run);
        EXPECT_EQ(client.read().at("id"), info);
    });
}

TEST_F(AppMethods, RunAnswersAfterWhatWasPostedInIt) {
    std::vector<std::string> steps;
    QorTimerId timer = loop.StartTimer(
        milliseconds(1),
        [&] {
            loop.Post([&] {
                steps.emplace_back("posted");
                loop.Post([&] { steps.emplace_back("posted by that"); });
            });
        },
        false);
    play([](PortClient& client) { client.call("app.run", {{"ms", 1}}); });
    EXPECT_EQ(steps, Names({"posted", "posted by that"}));
    loop.StopTimer(timer);
}

TEST_F(AppMethods, RunEndsWhenItsClientIsGone) {
    run([this] {
        {
            PortClient client(path());
            client.request("app.run", {{"ms", 600'000}});
        }
        PortClient next(path());
        EXPECT_EQ(next.call("app.info").at("name"), "test");
    });
}

TEST_F(AppMethods, RunRefusesTimesThatAreNone) {
    play([](PortClient& client) {
        for (const Json& ms : {Json(-1), Json(1e12), Json("1"), Json(nullptr)})
            EXPECT_EQ(client.callForError("app.run", {{"ms", ms}}), -32602) << ms;
        EXPECT_EQ(client.callForError("app.run"), -32602);
        EXPECT_EQ(client.call("app.run", {{"ms", 0}}), Json::object());
        EXPECT_EQ(client.call("app.run", {{"ms", 0.5}}), Json::object());
    });
}

TEST_F(AppMethods, QuitEndsTheProgramAfterAnswering) {
    int quits = 0;
    openPort({.name = {}, .version = {}, .quit = [&] {
                  ++quits;
              }});
    play([](PortClient& client) {
        EXPECT_EQ(client.call("app.quit"), Json::object());
        client.request("app.info");
        EXPECT_TRUE(client.isSilentFor(milliseconds(30))) << "nothing is handled after it";
    });
    EXPECT_EQ(quits, 1);
}

TEST_F(AppMethods, QuitAsksTheLoopUnlessToldOtherwise) {
    play([](PortClient& client) { client.call("app.quit"); });
    EXPECT_TRUE(loop.IsQuitting());
}

TEST_F(AppMethods, EnvSetsAndUnsetsVariables) {
    play([](PortClient& client) {
        const Json set{{"name", "QorPortTest"}, {"value", "a=b"}};
        EXPECT_EQ(client.call("system.env", set), Json::object());
        EXPECT_EQ(client.callForError("system.env", {{"name", "QorPortTest"}}), -32602);
        EXPECT_EQ(client.callForError("system.env", {{"name", "Q"}, {"value", 1}}), -32602);
        EXPECT_EQ(client.callForError("system.env", {{"name", "A=B"}, {"value", ""}}), -32602);
        EXPECT_EQ(client.callForError("system.env", {{"name", ""}, {"value", ""}}), -32602);
    });
    EXPECT_EQ(QorGetEnv("QorPortTest"), QorUnicodeString("a=b"));
    play([](PortClient& client) {
        client.call("system.env", {{"name", "QorPortTest"}, {"value", nullptr}});
    });
    EXPECT_EQ(QorGetEnv("QorPortTest"), std::nullopt);
}

/// Destroys a dialog when the dialog's OK is pressed, and notes when that has happened.
class Closer : public QorDlgDialog {
public:
    Closer() : QorDlgDialog(nullptr, "closer", QorDlgWndOK) {
        AddAnalyseNotificationCB(this, this, GetDiaOKNotification(), &Closer::okCB);
        SetVisibility(QorDlgSHOW);
    }

private:
    void okCB(QorCommand* /*sender*/, QorNotification* /*notification*/, void* /*data*/) {
        RequestDelayedDestruction();
    }
};

TEST_F(AppMethods, AnswersComeAfterDelayedDestructions) {
    const long before = QorDlgDialog::MetaObject().GetLiveCount();
    new Closer;
    std::atomic<long> after = -1;
    loop.Post([] {});
    play([&](PortClient& client) {
        client.call("dialog.ok", {{"dialog", "closer"}});
        after = QorDlgDialog::MetaObject().GetLiveCount();
    });
    EXPECT_EQ(after, before);
}

} // namespace

} // namespace qor::automation
