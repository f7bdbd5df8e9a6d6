#include "workbench/document/session/Workers.h"

#include "tests/document/DocumentTest.h"

#include <atomic>
#include <latch>

using namespace qor::document;
using namespace qor::document::testing;

namespace {

class WorkersTest : public DocumentTest {};

} // namespace

TEST_F(WorkersTest, TheOutcomeComesOnTheThreadOfTheLoop) {
    Workers workers(loop);
    const auto here = std::this_thread::get_id();
    std::thread::id there;
    const Result<int> outcome = wait<int>([&](std::function<void(Result<int>)> done) {
        workers.run<int>(
            [&there](const WorkContext& /*context*/) -> Result<int> {
                there = std::this_thread::get_id();
                return 7;
            },
            {},
            [here, done = std::move(done)](const Result<int>& result) {
                EXPECT_EQ(std::this_thread::get_id(), here);
                done(result);
            });
    });
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome.value(), 7);
    EXPECT_NE(there, here);
}

TEST_F(WorkersTest, ProgressIsToldInOrderAndNeverFalls) {
    Workers workers(loop);
    std::vector<int> percents;
    const Result<int> outcome = wait<int>([&](std::function<void(Result<int>)> done) {
        workers.run<int>(
            [](const WorkContext& context) -> Result<int> {
                for (const int percent : {10, 50, 30, 100})
                    context.report(percent, "work");
                return 0;
            },
            [&](int percent, const std::string& stage) {
                EXPECT_EQ(stage, "work");
                percents.push_back(percent);
            },
            std::move(done));
    });
    ASSERT_TRUE(outcome);
    ASSERT_FALSE(percents.empty());
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
    EXPECT_EQ(percents.back(), 100);
}

TEST_F(WorkersTest, ACancelIsAnsweredBeforeTheWorkHasEnded) {
    Workers workers(loop);
    std::latch mayEnd(1);
    std::optional<Result<int>> outcome;
    const OperationPtr operation = workers.run<int>(
        [&mayEnd](const WorkContext& context) -> Result<int> {
            mayEnd.wait();
            EXPECT_TRUE(context.stop().stop_requested());
            return 1;
        },
        {}, [&](const Result<int>& result) { outcome = result; });
    EXPECT_TRUE(operation->isRunning());
    operation->cancel();
    loop.RunPosted();
    ASSERT_TRUE(outcome);
    ASSERT_FALSE(*outcome);
    EXPECT_TRUE(isCancelled(outcome->failure()));
    EXPECT_FALSE(operation->isRunning());
    outcome.reset();
    mayEnd.count_down();
    EXPECT_TRUE(runUntil([&] { return workers.countThreads() == 0; }));
    loop.RunPosted();
    EXPECT_FALSE(outcome) << "there is one outcome";
}

TEST_F(WorkersTest, TheirEndWaitsAndTellsNothing) {
    bool told = false;
    std::atomic<bool> ended = false;
    {
        Workers workers(loop);
        workers.run<int>(
            [&ended](const WorkContext& context) -> Result<int> {
                while (!context.stop().stop_requested())
                    context.report(1, "wait");
                ended = true;
                return 1;
            },
            {}, [&](const Result<int>& /*result*/) { told = true; });
    }
    EXPECT_TRUE(ended);
    loop.RunPosted();
    EXPECT_FALSE(told);
}

TEST_F(WorkersTest, AnOutcomeWaitsForTheEndOfADeeperTurn) {
    Workers workers(loop);
    int depthOfOutcome = -1;
    std::atomic<bool> worked = false;
    workers.run<int>(
        [&worked](const WorkContext& /*context*/) -> Result<int> {
            worked = true;
            return 1;
        },
        {}, [&](const Result<int>& /*result*/) { depthOfOutcome = loop.GetDepth(); });
    int turns = 0;
    QorTimerId timer = loop.StartTimer(
        std::chrono::milliseconds(5), [&] { ++turns; }, true);
    loop.RunNested([&] { return worked && turns > 10; });
    loop.StopTimer(timer);
    EXPECT_EQ(depthOfOutcome, -1);
    EXPECT_TRUE(runUntil([&] { return depthOfOutcome >= 0; }));
    EXPECT_EQ(depthOfOutcome, 0);
}
