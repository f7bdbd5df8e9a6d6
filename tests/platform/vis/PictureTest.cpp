#include "platform/vis/QorPictureService.h"
#include "tests/support/QorTestApplication.h"

#include <cmath>
#include <fstream>

namespace {

using Pixels = QorPixelImage::Pixels;

/// Pixels that tell where they are: red is the column, green the row from the top.
QorPixelImage_var MakeGradient(int iWidth, int iHeight, int iChannels) {
    auto pixels = std::make_shared<Pixels>();
    for (int row = 0; row < iHeight; ++row)
        for (int column = 0; column < iWidth; ++column) {
            pixels->push_back(static_cast<std::uint8_t>(column));
            pixels->push_back(static_cast<std::uint8_t>(row));
            pixels->push_back(7);
            if (iChannels == 4)
                pixels->push_back(200);
        }
    return QorMake<QorPixelImage>(iWidth, iHeight, iChannels, std::move(pixels));
}

class Picture : public QorTestApplication {};

TEST_F(Picture, WhatDoesNotFitItsSizeIsEmpty) {
    const auto six = std::make_shared<const Pixels>(6);
    EXPECT_FALSE(QorMake<QorPixelImage>(2, 1, 3, six)->IsEmpty());
    EXPECT_TRUE(QorMake<QorPixelImage>(2, 2, 3, six)->IsEmpty());
    EXPECT_TRUE(QorMake<QorPixelImage>(3, 1, 2, six)->IsEmpty());
    EXPECT_TRUE(QorMake<QorPixelImage>(-2, -1, 3, six)->IsEmpty());
    EXPECT_TRUE(QorMake<QorPixelImage>(2, 1, 3, nullptr)->IsEmpty());
}

TEST_F(Picture, ACopySharesThePixels) {
    const QorPixelImage_var picture = MakeGradient(4, 3, 3);
    const QorVar<QorPixelImage> copy = QorMake<QorPixelImage>(*picture);
    EXPECT_EQ(copy->GetPixels(), picture->GetPixels());
    EXPECT_EQ(copy->GetContentId(), picture->GetContentId());
    EXPECT_NE(MakeGradient(4, 3, 3)->GetContentId(), picture->GetContentId());
}

TEST_F(Picture, ARegionCountsRowsFromTheBottom) {
    const QorPixelImage_var picture = MakeGradient(10, 8, 3);
    const QorPixelImage_var cut = QorAdopt(picture->ExtractRegion(2, 1, 5, 3));
    ASSERT_TRUE(cut);
    EXPECT_EQ(cut->GetWidth(), 3);
    EXPECT_EQ(cut->GetHeight(), 2);
    EXPECT_EQ(cut->GetPixels()->at(0), 2); // column 2
    EXPECT_EQ(cut->GetPixels()->at(1), 5); // rows 1 and 2 from the bottom are 6 and 5 from the top
}

TEST_F(Picture, TheWholePictureAsARegionSharesThePixels) {
    const QorPixelImage_var picture = MakeGradient(10, 8, 3);
    const QorPixelImage_var cut = QorAdopt(picture->ExtractRegion(0, 0, 10, 8));
    EXPECT_EQ(cut->GetPixels(), picture->GetPixels());
    EXPECT_NE(cut, picture);
}

TEST_F(Picture, CopiesAndRegionsAreAsDense) {
    const QorPixelImage_var picture = MakeGradient(10, 8, 3);
    EXPECT_EQ(picture->GetPixelsPerInch(), 0.0);
    picture->SetPixelsPerInch(300.0);
    EXPECT_EQ(QorMake<QorPixelImage>(*picture)->GetPixelsPerInch(), 300.0);
    EXPECT_EQ(QorAdopt(picture->ExtractRegion(2, 1, 5, 3))->GetPixelsPerInch(), 300.0);
    for (const double none : {0.0, -1.0, std::nan(""), HUGE_VAL}) {
        picture->SetPixelsPerInch(none);
        EXPECT_EQ(picture->GetPixelsPerInch(), 0.0);
    }
}

TEST_F(Picture, AServiceThatCannotTellWritesAllTheSame) {
    const QorPixelImage_var picture = MakeGradient(10, 8, 3);
    QorUnicodeString error;
    const auto never = [](int) -> bool {
        ADD_FAILURE();
        return false;
    };
    EXPECT_EQ(QorPictureService::Get().WriteWatched(*picture, "TGA", directory.GetPath("a.tga"),
                                                    never, error),
              0);
    EXPECT_EQ(directory.List(), (std::vector<std::string>{"a.tga"}));
}

TEST_F(Picture, ARegionIsClippedAndNothingLeftIsNull) {
    const QorPixelImage_var picture = MakeGradient(10, 8, 4);
    const QorPixelImage_var cut = QorAdopt(picture->ExtractRegion(-5, -5, 100, 100));
    EXPECT_EQ(*cut->GetPixels(), *picture->GetPixels());
    EXPECT_EQ(picture->ExtractRegion(10, 0, 20, 8), nullptr);
    EXPECT_EQ(picture->ExtractRegion(5, 5, 5, 8), nullptr);
    EXPECT_EQ(picture->ExtractRegion(6, 6, 2, 2), nullptr);
    EXPECT_EQ(QorMake<QorPixelImage>()->ExtractRegion(0, 0, 1, 1), nullptr);
}

TEST_F(Picture, WritesAndReadsItsOwnFormat) {
    for (const int channels : {3, 4}) {
        const QorPixelImage_var picture = MakeGradient(5, 4, channels);
        const std::string path = directory.GetPath("picture.tga");
        EXPECT_EQ(picture->WriteToFile("TGA", path), 0);
        const QorPixelImage_var read = QorAdopt(QorPixelImage::CreateFromFile(path));
        ASSERT_TRUE(read);
        EXPECT_EQ(read->GetChannels(), channels);
        EXPECT_EQ(*read->GetPixels(), *picture->GetPixels());
    }
}

TEST_F(Picture, RefusalsNameTheFile) {
    QorUnicodeString error;
    QorPictureService& service = QorPictureService::Get();
    const std::string path = directory.GetPath("none.tga");
    EXPECT_EQ(service.Read(path, error), nullptr);
    EXPECT_NE(error.Str().find(path), std::string::npos);
    EXPECT_NE(service.Write(*MakeGradient(2, 2, 3), "PNG", path, error), 0);
    EXPECT_NE(service.Write(*MakeGradient(2, 2, 3), "TGA", directory.GetPath("no/such/folder.tga"),
                            error),
              0);
    std::ofstream(path, std::ios::binary) << std::string(18, '\2') << "short";
    EXPECT_EQ(service.Read(path, error), nullptr);
}

TEST_F(Picture, ResizingKeepsTheMeanAndTheEnds) {
    const QorPixelImage_var picture = MakeGradient(100, 60, 3);
    const QorPixelImage_var small = QorAdopt(picture->Resize(10, 6));
    ASSERT_TRUE(small);
    EXPECT_NEAR(small->GetPixels()->at(0), 5, 1);                 // the first ten columns' mean
    EXPECT_NEAR(small->GetPixels()->at((10 * 6 - 1) * 3), 94, 1); // the last ten columns'
    const QorPixelImage_var large = QorAdopt(small->Resize(40, 24));
    ASSERT_TRUE(large);
    EXPECT_EQ(large->GetPixels()->at(0), small->GetPixels()->at(0));
    EXPECT_EQ(picture->Resize(0, 5), nullptr);
    EXPECT_EQ(QorMake<QorPixelImage>()->Resize(5, 5), nullptr);
}

TEST_F(Picture, AnEvenPictureStaysEvenAtEverySize) {
    const auto grey = std::make_shared<const Pixels>(std::size_t(33 * 17 * 3), std::uint8_t(77));
    const QorPixelImage_var picture = QorMake<QorPixelImage>(33, 17, 3, grey);
    for (const int side : {1, 2, 7, 33, 50}) {
        const QorPixelImage_var resized = QorAdopt(picture->Resize(side, side));
        for (const std::uint8_t value : *resized->GetPixels())
            ASSERT_EQ(value, 77) << side;
    }
}

} // namespace
