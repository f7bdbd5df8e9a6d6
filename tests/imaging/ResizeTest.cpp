#include "tests/imaging/ImagingTest.h"

namespace {

class PictureResizing : public ImagingTest {};

TEST_F(PictureResizing, GivesTheSizeAskedForWhateverItsShape) {
    for (const int channels : {3, 4}) {
        const auto picture = QorAdopt(files.Resize(*makeGradient(64, 32, channels), 10, 50));
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->GetWidth(), 10);
        EXPECT_EQ(picture->GetHeight(), 50);
        EXPECT_EQ(picture->GetChannels(), channels);
    }
}

TEST_F(PictureResizing, KeepsAConstantColour) {
    auto pixels = std::make_shared<Pixels>(std::size_t{30} * 20 * 3, std::uint8_t{77});
    const auto flat = QorMake<QorPixelImage>(30, 20, 3, std::move(pixels));
    for (const int width : {7, 90}) {
        const auto picture = QorAdopt(files.Resize(*flat, width, 11));
        ASSERT_TRUE(picture);
        const Pixels expected(static_cast<std::size_t>(width) * 11 * 3, 77);
        EXPECT_LE(largestDifference(*picture->GetPixels(), expected), 1);
    }
}

TEST_F(PictureResizing, MixesLightAndNotNumbers) {
    auto pixels = std::make_shared<Pixels>();
    for (int i = 0; i < 64 * 64; ++i)
        pixels->insert(pixels->end(), 3,
                       (i + i / 64) % 2 == 0 ? std::uint8_t{255} : std::uint8_t{0});
    const auto board = QorMake<QorPixelImage>(64, 64, 3, std::move(pixels));
    const auto small = QorAdopt(files.Resize(*board, 8, 8));
    ASSERT_TRUE(small);
    // Half the light of white is 188 in sRGB, not 128.
    EXPECT_NEAR(small->GetPixels()->at((std::size_t{4} * 8 + 4) * 3), 188, 3);
}

TEST_F(PictureResizing, DoesNotLetTheColourOfClearPixelsIn) {
    auto pixels = std::make_shared<Pixels>();
    for (int i = 0; i < 32 * 32; ++i) {
        const bool clear = i % 32 >= 16;
        pixels->insert(pixels->end(), {std::uint8_t(clear ? 0 : 255), std::uint8_t(clear ? 255 : 0),
                                       0, std::uint8_t(clear ? 0 : 255)});
    }
    const auto half = QorMake<QorPixelImage>(32, 32, 4, std::move(pixels));
    const auto small = QorAdopt(files.Resize(*half, 9, 9));
    ASSERT_TRUE(small);
    const std::uint8_t* middle = small->GetPixels()->data() + (std::size_t{4} * 9 + 4) * 4;
    EXPECT_GT(middle[3], 60);
    EXPECT_LT(middle[3], 195);
    EXPECT_GT(middle[0], 240);
    EXPECT_LT(middle[1], 15);
}

TEST_F(PictureResizing, RefusesAbsurdSizes) {
    const auto picture = makeGradient(8, 8, 3);
    EXPECT_EQ(files.Resize(*picture, 0, 8), nullptr);
    EXPECT_EQ(files.Resize(*picture, 8, -1), nullptr);
    EXPECT_EQ(files.Resize(*picture, 2000000000, 1), nullptr);
    EXPECT_EQ(files.Resize(*picture, 90000, 90000), nullptr);
    EXPECT_EQ(files.Resize(*QorMake<QorPixelImage>(), 8, 8), nullptr);
}

} // namespace
