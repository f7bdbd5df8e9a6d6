#include "tests/support/QorManualLoop.h"

#include <gtest/gtest.h>

using std::chrono::milliseconds;
using Lines = std::vector<std::string>;

TEST(QorTimer, RunsOnceWhenItIsDue) {
    QorManualLoop loop;
    int runs = 0;
    EXPECT_NE(loop.StartTimer(
                  milliseconds(10), [&] { ++runs; }, false),
              0U);
    loop.Advance(milliseconds(9));
    EXPECT_EQ(runs, 0);
    loop.Advance(milliseconds(1));
    EXPECT_EQ(runs, 1);
    loop.Advance(milliseconds(100));
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(loop.CountTimers(), 0U);
}

TEST(QorTimer, RepeatsAndMakesNoUpForLostPeriods) {
    QorManualLoop loop;
    int runs = 0;
    QorTimerId timer = loop.StartTimer(
        milliseconds(10), [&] { ++runs; }, true);
    loop.Advance(milliseconds(10));
    loop.Advance(milliseconds(10));
    EXPECT_EQ(runs, 2);
    loop.Advance(milliseconds(1000));
    EXPECT_EQ(runs, 3);
    loop.Advance(milliseconds(9));
    EXPECT_EQ(runs, 3);
    loop.StopTimer(timer);
    EXPECT_EQ(timer, 0U);
    loop.Advance(milliseconds(1000));
    EXPECT_EQ(runs, 3);
    loop.StopTimer(timer);
}

TEST(QorTimer, MayStopItselfAndOthers) {
    QorManualLoop loop;
    Lines lines;
    QorTimerId first = 0;
    QorTimerId second = 0;
    first = loop.StartTimer(
        milliseconds(1),
        [&] {
            lines.emplace_back("first");
            loop.StopTimer(first);
            loop.StopTimer(second);
        },
        true);
    second = loop.StartTimer(
        milliseconds(1), [&] { lines.emplace_back("second"); }, true);
    loop.Advance(milliseconds(5));
    loop.Advance(milliseconds(5));
    EXPECT_EQ(lines, Lines{"first"});
    EXPECT_EQ(loop.CountTimers(), 0U);
}

TEST(QorTimer, MayStartOthers) {
    QorManualLoop loop;
    Lines lines;
    loop.StartTimer(
        milliseconds(1),
        [&] {
            for (int i = 0; i < 50; ++i)
                loop.StartTimer(
                    milliseconds(0), [&] { lines.emplace_back("later"); }, false);
        },
        false);
    loop.Advance(milliseconds(1));
    EXPECT_TRUE(lines.empty());
    loop.RunOneTurn();
    EXPECT_EQ(lines.size(), 50U);
}

TEST(QorTimer, RunsInDeeperTurns) {
    QorManualLoop loop;
    bool ran = false;
    loop.StartTimer(
        milliseconds(0), [&] { ran = true; }, false);
    loop.RunNested([&] { return ran; });
    EXPECT_TRUE(ran);
}

TEST(QorTimer, MayRunANestedTurnInWhichItRunsAgain) {
    QorManualLoop loop;
    int runs = 0;
    QorTimerId timer = loop.StartTimer(
        milliseconds(5),
        [&] {
            if (++runs == 1) {
                loop.Advance(milliseconds(5));
                loop.RunNested([&] { return runs >= 2; });
            }
        },
        true);
    loop.Advance(milliseconds(5));
    EXPECT_EQ(runs, 2);
    loop.StopTimer(timer);
}
