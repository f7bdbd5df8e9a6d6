// The event loop on Qt, in a program without windows.
#include "platform/system/QorTrace.h"
#include "tests/support/QorTestApplication.h"
#include "workbench/desktop/loop/QtEventLoop.h"
#include "workbench/desktop/loop/SlowTurn.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <functional>
#include <thread>

using std::chrono::milliseconds;

namespace qor::desktop::tests {

namespace {

class QtEnvironment : public testing::Environment {
public:
    void SetUp() override { qt_ = std::make_unique<QCoreApplication>(count_, arguments_); }

    void TearDown() override { qt_.reset(); }

private:
    int count_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<QCoreApplication> qt_;
};

[[maybe_unused]] auto* const environment = testing::AddGlobalTestEnvironment(new QtEnvironment);

class QtLoop : public QorTestApplicationOn<QtEventLoop> {
protected:
    void turn(int count) {
        for (int i = 0; i < count; ++i)
            loop.RunOneTurn();
    }
};

TEST_F(QtLoop, RunsPostedWorkInOrderAndQuits) {
    std::string order;
    loop.Post([&] { order += 'a'; });
    loop.Post([&] {
        order += 'b';
        loop.Post([&] {
            order += 'c';
            loop.Quit();
        });
    });
    loop.run();
    EXPECT_EQ(order, "abc");
    loop.run(); // has quit already: comes back at once
}

TEST_F(QtLoop, IsWokenByOtherThreads) {
    std::thread other([&] {
        for (int i = 0; i < 100; ++i)
            loop.Post([] {});
        loop.Post([&] { loop.Quit(); });
    });
    loop.run();
    other.join();
    EXPECT_TRUE(loop.IsQuitting());
}

TEST_F(QtLoop, RunsTimersOnceAndAgainAndAgain) {
    int ticks = 0;
    bool once = false;
    QorTimerId tick = loop.StartTimer(
        milliseconds(2),
        [&] {
            if (++ticks == 3)
                loop.Quit();
        },
        true);
    loop.StartTimer(
        milliseconds(1), [&] { once = true; }, false);
    loop.run();
    loop.StopTimer(tick);
    EXPECT_EQ(ticks, 3);
    EXPECT_TRUE(once);
}

TEST_F(QtLoop, WaitsNoLongerThanAsked) {
    const auto start = std::chrono::steady_clock::now();
    loop.RunOneTurn(milliseconds(20));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST_F(QtLoop, HoldsWorkOfTheOuterDepthBackInNestedTurns) {
    std::string order;
    loop.StartTimer(
        milliseconds(5), [&] { order += 'n'; }, false);
    loop.Post([&] {
        loop.Post([&] { order += 'o'; });
        loop.RunNested([&] { return order == "n"; });
        EXPECT_EQ(order, "n") << "work of the outer depth ran in the nested turn";
    });
    loop.Post([&] { loop.Quit(); });
    loop.run();
    turn(2);
    EXPECT_EQ(order, "no");
}

TEST_F(QtLoop, QuittingEndsNestedTurnsToo) {
    loop.Post([&] {
        loop.StartTimer(
            milliseconds(1), [&] { loop.Quit(); }, false);
        loop.RunNested([] { return false; });
    });
    loop.run();
    EXPECT_EQ(loop.GetDepth(), 0);
}

TEST_F(QtLoop, ServesWhileQtRunsALoopOfItsOwn) {
    bool ran = false;
    QEventLoop own; // as for a menu
    loop.Post([&] {
        ran = true;
        own.quit();
    });
    own.exec();
    EXPECT_TRUE(ran);
}

TEST_F(QtLoop, LetsInputInBetweenWorkThatPostsItselfAgain) {
    int slices = 0;
    std::function<void()> pump = [&] {
        if (++slices < 1000)
            loop.Post(pump);
    };
    loop.Post(pump);
    int slicesAtEvent = -1;
    QTimer::singleShot(0, [&] {
        slicesAtEvent = slices;
        loop.Quit();
    });
    loop.run();
    EXPECT_GE(slicesAtEvent, 0);
    EXPECT_LT(slicesAtEvent, 100) << "an event of Qt's waited for the work";
    loop.RunPosted();
    EXPECT_EQ(slices, 1000);
}

/// Handles an event for that long.
void handle(milliseconds time, const std::function<void()>& within = {}) {
    const QObject receiver;
    const QEvent event(QEvent::User);
    const SlowTurn turn(receiver, event);
    const auto end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end) {
    }
    if (within)
        within();
}

TEST_F(QtLoop, TracesWhatKeepsAPersonWaiting) {
    QorTraceChannel::StartRecording(5);
    handle({});
    handle(milliseconds(30));
    handle({}, [] { handle(milliseconds(30)); });
    QorTraceChannel::StopRecording();
    const std::vector<std::string> lines = QorTraceChannel::TakeRecorded();
    ASSERT_GE(lines.size(), 2U); // more where a busy machine has kept the quick ones waiting too
    EXPECT_TRUE(lines.front().starts_with("(SlowTurn) ")) << lines.front();
    EXPECT_NE(lines.front().find("QObject, event 1000"), std::string::npos) << lines.front();
}

} // namespace

} // namespace qor::desktop::tests
