#include "platform/system/QorQueueLoop.h"

#include <gtest/gtest.h>

#include <thread>

using std::chrono::milliseconds;

TEST(QorQueueLoop, RunsUntilQuit) {
    QorQueueLoop loop;
    int runs = 0;
    loop.Post([&] { ++runs; });
    loop.Post([&] { loop.Quit(); });
    loop.Run();
    EXPECT_EQ(runs, 1);
}

TEST(QorQueueLoop, WakesForWorkOfAnotherThread) {
    QorQueueLoop loop;
    std::thread other([&] { loop.Post([&] { loop.Quit(); }); });
    const auto before = std::chrono::steady_clock::now();
    while (!loop.IsQuitting())
        loop.RunOneTurn(std::chrono::minutes(1));
    other.join();
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(30));
}

TEST(QorQueueLoop, WaitsForATimerAndNoLonger) {
    QorQueueLoop loop;
    bool ran = false;
    loop.StartTimer(
        milliseconds(3), [&] { ran = true; }, false);
    const auto before = std::chrono::steady_clock::now();
    for (int turn = 0; turn < 100 && !ran; ++turn)
        loop.RunOneTurn(std::chrono::minutes(1));
    EXPECT_TRUE(ran);
    EXPECT_GE(std::chrono::steady_clock::now() - before, milliseconds(3));
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(30));
}

TEST(QorQueueLoop, DoesNotLoseTheWorkHeldBackByANestedTurn) {
    QorQueueLoop loop;
    bool ran = false;
    loop.Post([&] {
        loop.Post([&] { ran = true; }); // for this depth: the turn below must not run it
        int turns = 0;
        loop.RunNested([&] { return ++turns > 3; });
        EXPECT_FALSE(ran);
    });
    const auto before = std::chrono::steady_clock::now();
    for (int turn = 0; turn < 5 && !ran; ++turn)
        loop.RunOneTurn(std::chrono::minutes(1));
    EXPECT_TRUE(ran);
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(30));
}
