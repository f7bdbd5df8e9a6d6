#include "tests/platform/engine/EngineManagerTest.h"

using testing::ElementsAre;

namespace {

TEST_F(EngineManager, ToldProgressPicturesAndTheEndInOrder) {
    script.progress = {Percent(10), Picture(50, false), Picture(99, true)};
    EXPECT_EQ(Start(), S_OK);
    for (int i = 0; i < 3; ++i)
        Pump();
    EXPECT_THAT(display->log, ElementsAre("0", "10", "50", "draw 8", "draw 8", "100"));
    EXPECT_THAT(done, ElementsAre(std::pair(1UL, Status::Done)));
    QorPixelImage* picture = nullptr;
    QorRdgWindow region;
    EXPECT_EQ(Manager().GetLastRender(picture, region), S_OK);
    EXPECT_EQ(region, (QorRdgWindow{0, 0, 8, 6}));
    picture->Release();
}

TEST_F(EngineManager, DoneIsPostedNeverSentFromInsideStart) {
    script.refusal = "out of paint";
    EXPECT_EQ(Start(), E_FAIL);
    EXPECT_TRUE(done.empty());
    loop.RunPosted();
    EXPECT_THAT(done, ElementsAre(std::pair(1UL, Status::Refused)));
    EXPECT_THAT(display->log, ElementsAre("out of paint"));
    EXPECT_EQ(Manager().GetMessage(), QorUnicodeString("out of paint"));
    QorPixelImage* picture = nullptr;
    QorRdgWindow region;
    EXPECT_EQ(Manager().GetLastRender(picture, region), E_FAIL);
}

TEST_F(EngineManager, RefusesSizesAndRegionsThatGiveNoPicture) {
    const QorRdgWindow outside{20, 0, 30, 4};
    const QorRdgWindow reversed{4, 0, 2, 4};
    EXPECT_EQ(Start(0, 6), E_FAIL);
    EXPECT_EQ(Start(8, -1), E_FAIL);
    EXPECT_EQ(Start(70000, 6), E_FAIL);
    EXPECT_EQ(Start(8, 6, &outside), E_FAIL);
    EXPECT_EQ(Start(8, 6, &reversed), E_FAIL);
    loop.RunPosted();
    EXPECT_EQ(done.size(), 5U);
    EXPECT_TRUE(script.requests.empty());
}

TEST_F(EngineManager, ARegionThatSticksOutIsClipped) {
    const QorRdgWindow region{-5, 2, 4, 60};
    EXPECT_EQ(Start(8, 6, &region), S_OK);
    EXPECT_EQ(*script.requests.at(0).region, (QorRdgWindow{0, 2, 4, 6}));
    EXPECT_EQ(*Manager().GetRecord().region, region);
    Manager().StopRender();
}

TEST_F(EngineManager, AStartAbortsTheRenderBeforeAndItsEndComesFirst) {
    EXPECT_EQ(Start(), S_OK);
    Pump();
    display->log.clear();
    EXPECT_EQ(Start(), S_OK);
    EXPECT_EQ(script.detached, 1);
    EXPECT_THAT(display->log, ElementsAre("-1"));
    loop.RunPosted();
    EXPECT_THAT(done, ElementsAre(std::pair(1UL, Status::Aborted)));
    EXPECT_THAT(display->log, ElementsAre("-1", "0"));
    Manager().StopRender();
    loop.RunPosted();
    EXPECT_THAT(done,
                ElementsAre(std::pair(1UL, Status::Aborted), std::pair(2UL, Status::Aborted)));
}

TEST_F(EngineManager, ThreeStartsInARowEndOnceEach) {
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(Start(), S_OK);
    loop.RunPosted();
    Manager().StopRender();
    loop.RunPosted();
    EXPECT_THAT(done, ElementsAre(std::pair(1UL, Status::Aborted), std::pair(2UL, Status::Aborted),
                                  std::pair(3UL, Status::Aborted)));
    EXPECT_EQ(script.detached, 3);
}

TEST_F(EngineManager, AnAbortKeepsTheWholePictureThatThereIs) {
    script.progress = {Picture(30, false)};
    EXPECT_EQ(Start(), S_OK);
    Pump();
    display->abort = true;
    Pump();
    EXPECT_THAT(done, ElementsAre(std::pair(1UL, Status::Aborted)));
    QorPixelImage* picture = nullptr;
    QorRdgWindow region;
    EXPECT_EQ(Manager().GetLastRender(picture, region), S_OK);
    picture->Release();
}

TEST_F(EngineManager, AnEndWaitsForItsPictureWithoutHoldingUpTheThread) {
    script.progress = {Picture(50, false)};
    EXPECT_EQ(Start(), S_OK);
    Pump();
    script.settled = false;
    Manager().StopRender();
    EXPECT_EQ(Start(), S_OK); // begins when the one before has been reported
    for (int i = 0; i < 3; ++i)
        Pump();
    EXPECT_TRUE(done.empty());
    script.settled = true;
    Pump();
    EXPECT_THAT(done, ElementsAre(std::pair(1UL, Status::Aborted)));
    QorPixelImage* picture = nullptr;
    QorRdgWindow region;
    EXPECT_EQ(Manager().GetLastRender(picture, region), S_OK);
    picture->Release();
    EXPECT_EQ(Manager().GetRecord().id, 2U);
    EXPECT_EQ(Manager().GetRecord().status, Status::Running);
    Manager().StopRender();
}

TEST_F(EngineManager, TheManagerMayGoBeforeAPictureIsThere) {
    EXPECT_EQ(Start(), S_OK);
    Pump();
    script.settled = false;
    Manager().StopRender();
    loop.RunPosted();
    QorRdgEngineManager::SetEngine(nullptr);
    EXPECT_EQ(script.detached, 1);
    EXPECT_EQ(loop.CountTimers(), 0U);
}

TEST_F(EngineManager, WithoutASubscriberTheRenderIsAborted) {
    EXPECT_EQ(Start(), S_OK);
    Manager().GetCallbackManager()->RemoveCallbacks(this, QorRdgEngineManager::RENDER_DONE);
    Pump();
    EXPECT_EQ(script.detached, 1);
    EXPECT_EQ(Manager().GetRecord().status, Status::Aborted);
}

TEST_F(EngineManager, CallsNoDisplayWhileOneRepaints) {
    script.progress = {Percent(10)};
    EXPECT_EQ(Start(), S_OK);
    display->log.clear();
    Manager().BeginDisplayUpdate();
    Pump();
    EXPECT_TRUE(display->log.empty());
    Manager().EndDisplayUpdate();
    Pump();
    EXPECT_THAT(display->log, ElementsAre("10"));
    Manager().StopRender();
}

TEST_F(EngineManager, WithoutTheFirstSwitchOnlyTheLastPictureIsDrawn) {
    script.progress = {Picture(30, false), Picture(60, false), Picture(99, true)};
    Manager().SetRenderSwitchA(false);
    EXPECT_EQ(Start(), S_OK);
    Manager().SetRenderSwitchA(true); // for the next start
    for (int i = 0; i < 3; ++i)
        Pump();
    EXPECT_THAT(display->log, ElementsAre("0", "30", "60", "draw 8", "100"));
}

TEST_F(EngineManager, AFailureOnTheWayIsReportedWithItsReason) {
    QorRdgProgress failure = Percent(40);
    failure.finished = true;
    failure.failed = true;
    failure.message = "not enough memory";
    script.progress = {failure};
    EXPECT_EQ(Start(), S_OK);
    Pump();
    EXPECT_THAT(done, ElementsAre(std::pair(1UL, Status::Refused)));
    EXPECT_EQ(Manager().GetMessage(), QorUnicodeString("not enough memory"));
    EXPECT_THAT(display->log, testing::Contains("not enough memory"));
}

} // namespace
