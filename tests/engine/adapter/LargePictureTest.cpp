#include "tests/engine/adapter/EngineTest.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

/// The part of a large picture that is rendered: all of it, but for sanitizers, which take minutes
/// for as many pixels and look for other faults, a band at its top.
const QorRdgWindow* LargePart() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    static constexpr QorRdgWindow band{0, 2336, 4000, 2400};
    return &band;
#else
    return nullptr;
#endif
}

TEST_F(EngineTest, LargePicturesAreShownFromSmallerOnes) {
    options->samples = 1;
    ASSERT_EQ(Start(4000, 2400, LargePart()), S_OK);
    const QorPixelImage_var whole = Finish();
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->GetWidth(), 4000);
    ASSERT_GT(display->drawn.size(), 1U);
    EXPECT_EQ(display->drawn.front()->GetWidth(), 2000);
    EXPECT_EQ(display->drawn.front()->GetHeight(), 1200);
    EXPECT_EQ(PixelOf(display->drawn.front(), 1, 1)[2], 80);
    EXPECT_EQ(PixelOf(whole, 1, 1)[2], 80);
}

TEST_F(EngineTest, AnAbortedLargePictureIsMadeWholeByAWorker) {
    options->samples = 4096;
    ASSERT_EQ(Start(4000, 2400, LargePart()), S_OK);
    TurnUntil([this] { return !display->drawn.empty(); });
    Manager().StopRender();
    loop.RunPosted();
    EXPECT_TRUE(done.empty()) << "made on the user-interface thread";
    TurnUntil([this] { return !done.empty(); });
    EXPECT_THAT(done, ElementsAre(Status::Aborted));
    const QorPixelImage_var whole = LastPicture();
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->GetWidth(), 4000);
    EXPECT_EQ(PixelOf(whole, 1, 1)[2], 80);
}

} // namespace
