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

TEST_F(PictureReading, GivesASmallerVersionOfALargeJpegAndSaysTheWholeSize) {
    struct Row {
        const char* arguments;
        const char* name;
        std::pair<int, int> whole;
        std::pair<int, int> read;
    };

    const Row rows[] = {
        {"-size 1920x1080 gradient:red-black", "large.jpg", {1920, 1080}, {240, 135}},
        {"-size 1001x777 gradient:red-black", "odd.jpg", {1001, 777}, {251, 195}},
        {"-size 300x451 gradient:red-black", "half.jpg", {300, 451}, {150, 226}},
        {"-size 200x300 gradient:red-black", "small.jpg", {200, 300}, {200, 300}},
        {"-size 3000x4 xc:red", "line.jpg", {3000, 4}, {750, 1}},
        {"-size 1920x1080 gradient:red-black", "large.png", {1920, 1080}, {1920, 1080}}};
    for (const Row& row : rows) {
        int width = 0;
        int height = 0;
        const std::string path = make(row.arguments, row.name);
        const auto picture =
            QorAdopt(files.ReadReduced(QorUnicodeString(path), 184, width, height, lastError));
        ASSERT_TRUE(picture) << row.name << lastError;
        EXPECT_EQ(std::pair(width, height), row.whole) << row.name;
        EXPECT_EQ(std::pair(picture->GetWidth(), picture->GetHeight()), row.read) << row.name;
        const auto whole = read(path);
        ASSERT_TRUE(whole);
        EXPECT_EQ(std::pair(whole->GetWidth(), whole->GetHeight()), row.whole) << row.name;
        const auto shrunk =
            QorAdopt(files.Resize(*whole, picture->GetWidth(), picture->GetHeight()));
        EXPECT_LE(largestDifference(*picture->GetPixels(), *shrunk->GetPixels()), 6) << row.name;
    }
}

TEST_F(PictureReading, TurnsTheSmallerVersionToo) {
    const std::string path = make("-size 800x600 gradient:red-black", "lying.jpg");
    std::string bytes = directory.Read("lying.jpg");
    // An Exif segment right after the start: a TIFF header and a directory of one entry,
    // orientation 6, right top.
    static constexpr char exif[] = "\xff\xe1\0\x22"
                                   "Exif\0\0"
                                   "MM\0\x2a\0\0\0\x08"
                                   "\0\x01"
                                   "\x01\x12\0\x03\0\0\0\x01\0\x06\0\0"
                                   "\0\0\0\0";
    bytes.insert(2, std::string(exif, sizeof exif - 1));
    const std::string turned = directory.Write("turned.jpg", bytes);
    int width = 0;
    int height = 0;
    const auto picture =
        QorAdopt(files.ReadReduced(QorUnicodeString(turned), 184, width, height, lastError));
    ASSERT_TRUE(picture) << lastError;
    EXPECT_EQ(std::pair(width, height), std::pair(600, 800));
    EXPECT_EQ(std::pair(picture->GetWidth(), picture->GetHeight()), std::pair(150, 200));
}

TEST_F(PictureReading, ADamagedJpegHasNoSmallerVersion) {
    const std::string path = make("-size 1920x1080 plasma:red-blue", "cut.jpg");
    std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
    int width = 0;
    int height = 0;
    EXPECT_EQ(files.ReadReduced(QorUnicodeString(path), 184, width, height, lastError), nullptr);
    EXPECT_NE(lastError.Str().find(path), std::string::npos);
}

} // namespace
