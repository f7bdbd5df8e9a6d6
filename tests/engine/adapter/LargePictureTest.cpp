#include "tests/engine/adapter/EngineTest.h"
#include "tests/support/Sanitized.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

/// The part of a large picture that is rendered: all of it, but under a sanitizer a band at its
/// top.
const QorRdgWindow* LargePart() {
    static constexpr QorRdgWindow band{0, 2336, 4000, 2400};
    return isSanitized ? &band : nullptr;
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
