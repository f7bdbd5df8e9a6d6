#include "tests/imaging/ImagingTest.h"

namespace {

class PictureReading : public ImagingTest {
protected:
    /// A picture made by the other program.
    std::string make(const std::string& arguments, const char* name) {
        const std::string path = directory.GetPath(name);
        run(std::string(QOR_CONVERT) + " " + arguments + " '" + path + "'");
        return path;
    }
};

TEST_F(PictureReading, GoesByContentAndNotByName) {
    const auto picture = read(make("-size 20x10 xc:red", "red.png"));
    ASSERT_TRUE(picture) << lastError;
    std::filesystem::rename(directory.GetPath("red.png"), directory.GetPath("red.jpg"));
    const auto renamed = read(directory.GetPath("red.jpg"));
    ASSERT_TRUE(renamed) << lastError;
    EXPECT_EQ(*renamed->GetPixels(), *picture->GetPixels());
    EXPECT_EQ(renamed->GetPixels()->at(0), 255);
    EXPECT_EQ(renamed->GetPixels()->at(1), 0);
}

TEST_F(PictureReading, TakesGreyIndexedAndDeepPictures) {
    for (const char* arguments :
         {"-size 20x10 xc:gray50 -colorspace Gray", "-size 20x10 xc:gray50 -type Palette",
          "-size 20x10 xc:gray50 -depth 16"}) {
        const auto picture = read(make(arguments, "grey.png"));
        ASSERT_TRUE(picture) << arguments << lastError;
        EXPECT_NEAR(picture->GetPixels()->at(0), 127.5, 1.0) << arguments;
        EXPECT_EQ(picture->GetWidth(), 20);
    }
}

TEST_F(PictureReading, TakesTheFirstPageOfSeveral) {
    const auto picture = read(make("-size 20x10 xc:red xc:blue", "pages.tif"));
    ASSERT_TRUE(picture) << lastError;
    EXPECT_EQ(picture->GetPixels()->at(0), 255);
}

TEST_F(PictureReading, TurnsAPictureAsItsCameraSays) {
    const auto picture = read(make("-size 20x10 xc:red -orient RightTop", "turned.tif"));
    ASSERT_TRUE(picture) << lastError;
    EXPECT_EQ(picture->GetWidth(), 10);
    EXPECT_EQ(picture->GetHeight(), 20);
}

} // namespace
