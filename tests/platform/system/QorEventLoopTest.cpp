#include "platform/system/QorEventLoop.h"

#include "tests/support/QorManualLoop.h"

#include <gtest/gtest.h>

#include <thread>

using Lines = std::vector<std::string>;

TEST(QorEventLoop, RunsPostedWorkInOrder) {
    QorManualLoop loop;
    Lines lines;
    for (const char* name : {"a", "b", "c"})
        loop.Post([&lines, name] { lines.emplace_back(name); });
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(loop.CountPosted(), 3U);
    EXPECT_TRUE(loop.RunOneTurn());
    EXPECT_EQ(lines, (Lines{"a", "b", "c"}));
    EXPECT_FALSE(loop.RunOneTurn());
}

TEST(QorEventLoop, WorkPostedMeanwhileWaitsForTheNextTurn) {
    QorManualLoop loop;
    int runs = 0;
    std::function<void()> again = [&] {
        ++runs;
        loop.Post(again);
    };
    loop.Post(again);
    loop.RunOneTurn();
    EXPECT_EQ(runs, 1);
    loop.RunOneTurn();
    EXPECT_EQ(runs, 2);
}

TEST(QorEventLoop, RunPostedRunsWhatIsPostedMeanwhileToo) {
    QorManualLoop loop;
    Lines lines;
    loop.Post([&] {
        lines.emplace_back("a");
        loop.Post([&] { lines.emplace_back("b"); });
    });
    loop.RunPosted();
    EXPECT_EQ(lines, (Lines{"a", "b"}));
}

TEST(QorEventLoop, ADeeperTurnLeavesTheWorkOfItsCaller) {
    QorManualLoop loop;
    Lines lines;
    loop.Post([&] { lines.emplace_back("outer"); });
    int turns = 0;
    loop.RunNested([&] {
        if (turns++ == 0)
            loop.Post([&] { lines.emplace_back("nested"); });
        EXPECT_EQ(loop.GetDepth(), 1);
        return turns > 5;
    });
    EXPECT_EQ(lines, Lines{"nested"});
    EXPECT_EQ(loop.GetDepth(), 0);
    loop.RunPosted();
    EXPECT_EQ(lines, (Lines{"nested", "outer"}));
}

TEST(QorEventLoop, WorkOfADeeperTurnRunsLaterInAShallowerOne) {
    QorManualLoop loop;
    Lines lines;
    loop.RunNested([&] {
        loop.Post([&] { lines.emplace_back("left over"); });
        return true;
    });
    EXPECT_TRUE(lines.empty());
    loop.RunOneTurn();
    EXPECT_EQ(lines, Lines{"left over"});
}

TEST(QorEventLoop, WorkForAnyDepthRunsInADeeperTurn) {
    QorManualLoop loop;
    bool ran = false;
    loop.Post([&] { ran = true; }, QorEventLoop::Scope::AnyDepth);
    loop.RunNested([&] { return ran; });
    EXPECT_TRUE(ran);
}

TEST(QorEventLoop, TurnsNestTwice) {
    QorManualLoop loop;
    Lines lines;
    loop.RunNested([&] {
        loop.Post([&] { lines.emplace_back("one"); });
        int turns = 0;
        loop.RunNested([&] {
            EXPECT_EQ(loop.GetDepth(), 2);
            return ++turns > 3;
        });
        EXPECT_TRUE(lines.empty());
        return true;
    });
    loop.RunPosted();
    EXPECT_EQ(lines, Lines{"one"});
}

TEST(QorEventLoop, QuitEndsNestedTurns) {
    QorManualLoop loop;
    loop.Post([&] { loop.Quit(); }, QorEventLoop::Scope::AnyDepth);
    loop.RunNested([] { return false; });
    EXPECT_TRUE(loop.IsQuitting());
    EXPECT_EQ(loop.GetDepth(), 0);
}

TEST(QorEventLoop, AnExceptionEndsANestedTurnCleanly) {
    QorManualLoop loop;
    loop.Post([] { throw std::runtime_error("broken work"); }, QorEventLoop::Scope::AnyDepth);
    EXPECT_THROW(loop.RunNested([] { return false; }), std::runtime_error);
    EXPECT_EQ(loop.GetDepth(), 0);
    EXPECT_EQ(loop.CountPosted(), 0U);
}

TEST(QorEventLoop, TakesWorkFromOtherThreadsAtAnyDepth) {
    constexpr int works = 1000;
    QorManualLoop loop;
    int done = 0;
    const auto post = [&] {
        for (int i = 0; i < works; ++i)
            loop.Post([&] { ++done; });
    };
    std::thread first(post);
    std::thread second(post);
    loop.RunNested([&] {
        std::this_thread::yield();
        return done == 2 * works;
    });
    first.join();
    second.join();
    EXPECT_EQ(done, 2 * works);
}
