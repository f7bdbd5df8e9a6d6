#include "tests/engine/adapter/EngineTest.h"

#include <gmock/gmock.h>

#include <algorithm>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(EngineTest, RendersOnceAndSaysSoOnce) {
    const QorPixelImage_var picture = Render();
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetWidth(), 160);
    EXPECT_EQ(picture->GetHeight(), 120);
    EXPECT_FALSE(display->drawn.empty());
    EXPECT_EQ(display->percents.front(), 0);
    EXPECT_EQ(display->percents.back(), 100);
    SettleWorkers();
    for (int i = 0; i < 20; ++i)
        loop.RunOneTurn(std::chrono::milliseconds(2));
    EXPECT_THAT(done, ElementsAre(Status::Done));
}

TEST_F(EngineTest, ShowsTheProductOnTheViewersBackground) {
    const QorPixelImage_var picture = Render();
    const std::uint8_t* corner = PixelOf(picture, 1, 1);
    EXPECT_EQ(corner[0], 40);
    EXPECT_EQ(corner[1], 60);
    EXPECT_EQ(corner[2], 80);
    EXPECT_EQ(corner[3], 255);
    const std::uint8_t* middle = PixelOf(picture, 80, 60);
    EXPECT_NE(middle[0], 40);
}

TEST_F(EngineTest, LastPictureDrawnIsTheOneKept) {
    const QorPixelImage_var picture = Render();
    EXPECT_EQ(*display->drawn.back()->GetPixels(), *picture->GetPixels());
}

/// How far a render has come when it is aborted: percent, or -1 for at once.
class EngineAbortTest
    : public EngineTest
    , public testing::WithParamInterface<int> {};

TEST_P(EngineAbortTest, EndsOnceAndSoon) {
    options->samples = 4096; // many, of few pixels: a tenth of them is soon done
    ASSERT_EQ(Start(48, 36), S_OK);
    if (GetParam() >= 0)
        TurnUntil([this] { return display->percents.back() >= GetParam(); });
    const auto pressed = std::chrono::steady_clock::now();
    Manager().StopRender();
    TurnUntil([this] { return !done.empty(); });
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - pressed;
    EXPECT_LT(took.count(), 0.5) << "far more than it may be, even on a busy machine";
    const std::size_t drawn = display->drawn.size();
    SettleWorkers();
    for (int i = 0; i < 10; ++i)
        loop.RunOneTurn(std::chrono::milliseconds(2));
    EXPECT_THAT(done, ElementsAre(Status::Aborted));
    EXPECT_EQ(display->drawn.size(), drawn);
    if (drawn > 0) {
        EXPECT_TRUE(LastPicture());
    }
}

INSTANTIATE_TEST_SUITE_P(AtAnyPercentage, EngineAbortTest, testing::Values(-1, 0, 1, 3, 10));

TEST_F(EngineTest, AStartAbortsTheOneBefore) {
    options->samples = 4096;
    ASSERT_EQ(Start(), S_OK);
    TurnUntil([this] { return !display->drawn.empty(); });
    options->samples = 1;
    ASSERT_EQ(Start(), S_OK);
    TurnUntil([this] { return done.size() == 2; });
    EXPECT_THAT(done, ElementsAre(Status::Aborted, Status::Done));
}

TEST_F(EngineTest, ARegionIsTheRectangleOfTheWholePicture) {
    const QorPixelImage_var whole = Render();
    const QorRdgWindow region{37, 21, 118, 90};
    ASSERT_EQ(Start(160, 120, &region), S_OK);
    const QorPixelImage_var part = Finish();
    ASSERT_EQ(part->GetWidth(), 160);
    for (int y = 0; y < 120; ++y)
        for (int x = 0; x < 160; ++x) {
            const int fromBottom = 119 - y;
            const bool in = x >= 37 && x < 118 && fromBottom >= 21 && fromBottom < 90;
            const std::uint8_t* pixel = PixelOf(part, x, y);
            if (!in) {
                ASSERT_EQ(pixel[3], 0) << x << ", " << y;
                continue;
            }
            ASSERT_TRUE(std::equal(pixel, pixel + 4, PixelOf(whole, x, y))) << x << ", " << y;
        }
}

TEST_F(EngineTest, ACameraMoveBuildsNothing) {
    (void)Render();
    const std::uint64_t made = engine->cache()->madeCount();
    EXPECT_GT(made, 0U);
    viewer->GetMain3DViewpoint()->SetView({-60, -50, 30}, {0, 0, 0}, {0, 0, 1});
    (void)Render();
    EXPECT_EQ(engine->cache()->madeCount(), made);
}

TEST_F(EngineTest, AnotherColourBuildsNothing) {
    const QorPixelImage_var grey = Render();
    const std::uint64_t made = engine->cache()->madeCount();
    material->baseColor[0] = 0.1F;
    const QorPixelImage_var coloured = Render();
    EXPECT_EQ(engine->cache()->madeCount(), made);
    EXPECT_NE(*grey->GetPixels(), *coloured->GetPixels());
}

TEST_F(EngineTest, PreparationLeavesNothingToMake) {
    qor::adapter::Engine& prepared = *engine;
    prepared.prepare(*QorQuery<QorIRdgWorld>(viewer));
    SettleWorkers();
    const std::uint64_t made = engine->cache()->madeCount();
    EXPECT_GT(made, 0U);
    (void)Render();
    EXPECT_EQ(engine->cache()->madeCount(), made);
}

TEST_F(EngineTest, LetsGoOfMeshesThatAreGone) {
    const QorMesh_var more = MakeCube(5.0);
    std::weak_ptr<const QorMesh::Data> data = more->GetSharedData();
    QorVar<Qor3DMeshRep> rep = QorMake<Qor3DMeshRep>(more.Get(), nullptr);
    viewer->AddRep(rep);
    (void)Render();
    viewer->RemoveRep(rep);
    rep.Reset();
    SettleWorkers();
    const_cast<QorMesh_var&>(more).Reset();
    EXPECT_TRUE(data.expired());
    const std::uint64_t made = engine->cache()->madeCount();
    (void)Render();
    EXPECT_EQ(engine->cache()->madeCount(), made + 1) << "an assembly of what is left";
}

TEST_F(EngineTest, WhatChangesAfterTheStartDoesNotMatter) {
    const QorPixelImage_var before = Render();
    ASSERT_EQ(Start(), S_OK);
    material->baseColor[1] = 0.0F;
    viewer->SetBackgroundColor({255, 0, 0, 255});
    viewer->GetMain3DViewpoint()->SetView({0, -90, 0}, {0, 0, 0}, {0, 0, 1});
    Qor3DLightSourceRep* light = nullptr;
    Qor3DLightSourceRep* none = nullptr;
    viewer->GetLightSourceReps(light, none);
    light->SetLocationParameters({}, {0, 0, 1});
    viewer->SetGlobalAmbientLight(1, 0, 0);
    options->samples = 1;
    const QorPixelImage_var after = Finish();
    EXPECT_EQ(*before->GetPixels(), *after->GetPixels());
}

TEST_F(EngineTest, RefusesWithAReason) {
    const QorRdgWindow outside{500, 0, 600, 10};
    EXPECT_EQ(Start(160, 120, &outside), E_FAIL);
    EXPECT_EQ(Start(0, 120), E_FAIL);
    EXPECT_EQ(Start(65535, 65535), E_FAIL);
    TurnUntil([this] { return done.size() == 3; });
    EXPECT_THAT(done, ElementsAre(Status::Refused, Status::Refused, Status::Refused));
    ASSERT_EQ(display->messages.size(), 3U);
    EXPECT_THAT(display->messages[0], HasSubstr("region"));
    EXPECT_THAT(display->messages[1], HasSubstr("0"));
    EXPECT_THAT(display->messages[2], HasSubstr("65535"));
    EXPECT_FALSE(LastPicture());
}

/// A world whose camera looks at itself.
class BlindWorld : public QorImplements<QorBaseUnknown, QorIRdgWorld> {
public:
    explicit BlindWorld(QorResult iResult) : result(iResult) {}

    QorResult Collect(QorRdgSnapshot& /*oSnapshot*/) override { return result; }

private:
    QorResult result;
};

TEST_F(EngineTest, RefusesAWorldWithoutACamera) {
    for (const QorResult result : {E_FAIL, S_OK}) {
        const QorVar<BlindWorld> world = QorMake<BlindWorld>(result);
        EXPECT_EQ(
            Manager().StartRender(world, display, options, true, 16, 12, nullptr, false, true),
            E_FAIL);
    }
    TurnUntil([this] { return done.size() == 2; });
    EXPECT_THAT(display->messages, testing::Each(HasSubstr("camera")));
}

/// A world too large to be collected.
class EndlessWorld : public QorImplements<QorBaseUnknown, QorIRdgWorld> {
public:
    QorResult Collect(QorRdgSnapshot& /*oSnapshot*/) override { throw std::bad_alloc(); }
};

TEST_F(EngineTest, RefusesWhatThereIsNoMemoryFor) {
    const QorVar<EndlessWorld> world = QorMake<EndlessWorld>();
    EXPECT_EQ(Manager().StartRender(world, display, options, true, 16, 12, nullptr, false, true),
              E_FAIL);
    TurnUntil([this] { return !done.empty(); });
    EXPECT_THAT(done, ElementsAre(Status::Refused));
    EXPECT_THAT(display->messages, ElementsAre(HasSubstr("not enough memory")));
    EXPECT_THAT(Manager().GetMessage().Str(), HasSubstr("not enough memory"));
}

TEST_F(EngineTest, AnEmptyViewerGivesItsBackground) {
    viewer->GetMain3DViewpoint()->RemoveRep(
        viewer->GetMain3DViewpoint()->GetRoot().GetChildren().front());
    const QorPixelImage_var picture = Render(8, 6);
    ASSERT_TRUE(picture);
    EXPECT_EQ(PixelOf(picture, 4, 3)[2], 80);
}

TEST_F(EngineTest, CallsNoDisplayDuringItsRepaint) {
    constexpr std::size_t repaints = 5;
    options->samples = 1 << 20; // never done
    bool inside = false;
    int nested = 0;
    const auto repaint = [&] {
        nested += inside ? 1 : 0;
        inside = true;
        Manager().BeginDisplayUpdate();
        for (int i = 0; i < 5; ++i)
            loop.RunOneTurn(std::chrono::milliseconds(5));
        Manager().EndDisplayUpdate();
        inside = false;
    };
    display->onDraw = repaint;
    display->onProgress = [&](int) {
        repaint();
    };
    ASSERT_EQ(Start(40, 30), S_OK);
    TurnUntil([&] { return display->drawn.size() >= repaints; });
    Manager().StopRender();
    TurnUntil([this] { return !done.empty(); });
    EXPECT_EQ(nested, 0);
    EXPECT_THAT(done, ElementsAre(Status::Aborted));
    display->onDraw = nullptr;
    display->onProgress = nullptr;
}

TEST_F(EngineTest, AbortAskedForWhileDrawingEndsTheRender) {
    options->samples = 4096;
    display->onDraw = [this] {
        Manager().StopRender();
    };
    ASSERT_EQ(Start(320, 240), S_OK);
    TurnUntil([this] { return !done.empty(); });
    EXPECT_THAT(done, ElementsAre(Status::Aborted));
    EXPECT_EQ(display->drawn.size(), 1U);
}

TEST_F(EngineTest, AViewerMayGoWhileItIsRendered) {
    options->samples = 256;
    const auto own = QorQuery<QorIRdgDisplay>(viewer);
    const auto world = QorQuery<QorIRdgWorld>(viewer);
    ASSERT_EQ(Manager().StartRender(world, own, options, true, 320, 240, nullptr, false, true),
              S_OK);
    const_cast<QorIRdgDisplay_var&>(own).Reset();
    const_cast<QorIRdgWorld_var&>(world).Reset();
    layout->RequestDelayedDestruction();
    TurnUntil([this] { return !done.empty(); });
    SettleWorkers();
    layout = new QorFrmLayout(nullptr, "another"); // for TearDown
    EXPECT_THAT(done, ElementsAre(Status::Aborted));
}

TEST_F(EngineTest, TheEngineMayGoDuringARender) {
    options->samples = 4096;
    ASSERT_EQ(Start(640, 480), S_OK);
    loop.RunOneTurn();
    // TearDown takes the engine away while workers are busy.
}
