// Calls of the manager from inside what it calls.
#include "tests/platform/engine/EngineManagerTest.h"

using testing::ElementsAre;

namespace {

TEST_F(EngineManager, AStartFromInsideDoneIsTheNext) {
    script.refusal = "out of paint";
    int starts = 0;
    whenDone = [&] {
        script.refusal = {};
        if (++starts < 3) {
            EXPECT_EQ(Start(), S_OK);
        }
    };
    EXPECT_EQ(Start(), E_FAIL);
    loop.RunPosted();
    EXPECT_EQ(Manager().GetRecord().status, Status::Running);
    Manager().StopRender();
    loop.RunPosted();
    Manager().StopRender();
    loop.RunPosted();
    EXPECT_THAT(done, ElementsAre(std::pair(1UL, Status::Refused), std::pair(2UL, Status::Aborted),
                                  std::pair(3UL, Status::Aborted)));
}

TEST_F(EngineManager, AStartFromInsideTheDisplayAbortsTheRenderThatCallsIt) {
    script.progress = {Picture(50, false)};
    display->onDraw = [this] {
        display->onDraw = nullptr;
        EXPECT_EQ(Start(), S_OK);
    };
    EXPECT_EQ(Start(), S_OK);
    Pump();
    EXPECT_THAT(done, ElementsAre(std::pair(1UL, Status::Aborted)));
    EXPECT_EQ(Manager().GetRecord().id, 2U);
    Manager().StopRender();
    loop.RunPosted();
    EXPECT_EQ(done.size(), 2U);
    EXPECT_EQ(script.detached, 2);
}

TEST_F(EngineManager, AStartFromInsideARefusalsMessageEndsOnceToo) {
    script.refusal = "out of paint";
    display->onMessage = [this] {
        display->onMessage = nullptr;
        script.refusal = {};
        EXPECT_EQ(Start(), S_OK);
        EXPECT_THAT(display->log, testing::Not(testing::Contains("0"))) << "begins after the end";
    };
    EXPECT_EQ(Start(), E_FAIL);
    loop.RunPosted();
    Manager().StopRender();
    loop.RunPosted();
    EXPECT_THAT(done,
                ElementsAre(std::pair(1UL, Status::Refused), std::pair(2UL, Status::Aborted)));
}

TEST_F(EngineManager, TheManagerMayGoFromInsideDone) {
    EXPECT_EQ(Start(), S_OK);
    whenDone = [] {
        QorRdgEngineManager::SetEngine(nullptr);
    };
    Manager().StopRender();
    loop.RunPosted();
    EXPECT_EQ(QorRdgEngineManager::GetManager(), nullptr);
    EXPECT_EQ(loop.CountTimers(), 0U);
}

} // namespace
