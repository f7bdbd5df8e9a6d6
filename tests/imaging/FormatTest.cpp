#include "tests/imaging/ImagingTest.h"
#include "workbench/imaging/PictureFormat.h"

#include <sstream>

namespace {

struct Row {
    const char* keyword;
    const char* seenAs; ///< format and compression as another program names them
    bool alpha;
    int tolerance; ///< of a channel, 0..255
};

// PICT's coder always packs; SGI's and PSD's run lengths are not named by identify's %C in every
// version.
constexpr auto rows = std::to_array<Row>({
    {"TIFF", "TIFF None", true, 0},
    {"TIFFPB", "TIFF RLE", true, 0},
    {"RGB", "SGI", true, 0},
    {"BMP", "BMP", true, 0},
    {"JPEG_FAIR", "JPEG JPEG", false, 24},
    {"JPEG", "JPEG JPEG", false, 12},
    {"JPEG_HIGH", "JPEG JPEG", false, 4},
    {"PICT", "PICT", true, 0},
    {"PSD", "PSD", true, 0},
    {"PNG", "PNG Zip", true, 0},
    {"TGA", "TGA", true, 0},
});

/// A file ending by which the other program knows the format: Targa and QuickDraw files have no
/// signature.
std::string endingOf(std::string_view keyword) {
    return keyword == "TGA" ? ".tga" : keyword == "PICT" ? ".pict" : ".any";
}

class PictureFormats : public ImagingTest {};

TEST_F(PictureFormats, AreTheElevenInTheOrderOfTheDialogs) {
    const auto formats = qor::imaging::pictureFormats();
    ASSERT_EQ(formats.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(formats[i].keyword, rows[i].keyword);
}

TEST_F(PictureFormats, AreSeenByAnotherProgramAsWhatTheyAre) {
    const auto picture = makeGradient(40, 24, 3);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.keyword);
        const std::string path =
            write(*picture, row.keyword, std::string("picture") + endingOf(row.keyword));
        const std::string seen = identify(path, "%m %C %wx%h %[depth]");
        EXPECT_EQ(seen.rfind(row.seenAs, 0), 0U) << seen;
        EXPECT_NE(seen.find(" 40x24 8"), std::string::npos) << seen;
    }
}

TEST_F(PictureFormats, KeepTheirPixelsForAnotherProgram) {
    const auto picture = makeGradient(40, 24, 3);
    for (const Row& row : rows) {
        const std::string path =
            write(*picture, row.keyword, std::string("picture") + endingOf(row.keyword));
        EXPECT_LE(largestDifference(convertedPixels(path, "rgb"), *picture->GetPixels()),
                  row.tolerance)
            << row.keyword;
    }
}

TEST_F(PictureFormats, KeepAlphaWhereTheyHaveIt) {
    const auto picture = makeGradient(40, 24, 4);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.keyword);
        const std::string path =
            write(*picture, row.keyword, std::string("picture") + endingOf(row.keyword));
        if (std::string_view(row.keyword) == "PSD") {
            EXPECT_LE(largestDifference(convertedPixels(path, "rgba"), *picture->GetPixels()), 3)
                << "the picture is kept on white";
        } else if (std::string_view(row.keyword) == "PICT") {
            const auto back = read(path); // the other program reads no alpha from such a file
            ASSERT_TRUE(back) << lastError;
            EXPECT_EQ(*back->GetPixels(), *picture->GetPixels());
        } else if (row.alpha) {
            EXPECT_EQ(convertedPixels(path, "rgba"), *picture->GetPixels());
        } else {
            const auto opaque = read(path);
            ASSERT_TRUE(opaque) << lastError;
            EXPECT_EQ(opaque->GetChannels(), 3);
        }
    }
}

TEST_F(PictureFormats, KeepTheColoursBehindADroppedAlpha) {
    const auto plain = makeGradient(40, 24, 3);
    const auto clear = makeGradient(40, 24, 4);
    for (const char* keyword : {"JPEG", "PICT"}) {
        const std::string a = write(*plain, keyword, std::string("plain") + endingOf(keyword));
        const std::string b = write(*clear, keyword, std::string("clear") + endingOf(keyword));
        EXPECT_EQ(convertedPixels(a, "rgb"), convertedPixels(b, "rgb")) << keyword;
    }
}

TEST_F(PictureFormats, HaveNoAlphaForAPictureWithoutHoles) {
    auto pixels = std::make_shared<Pixels>(*makeGradient(40, 24, 4)->GetPixels());
    for (std::size_t i = 3; i < pixels->size(); i += 4)
        (*pixels)[i] = 255;
    const auto solid = QorMake<QorPixelImage>(40, 24, 4, std::move(pixels));
    for (const Row& row : rows) {
        const auto back = read(write(*solid, row.keyword, "solid.any"));
        ASSERT_TRUE(back) << row.keyword << lastError;
        EXPECT_EQ(back->GetChannels(), 3) << row.keyword;
        EXPECT_LE(largestDifference(*back->GetPixels(), *makeGradient(40, 24, 3)->GetPixels()),
                  row.tolerance)
            << row.keyword;
    }
}

TEST_F(PictureFormats, PsdKeepsAPictureWithHolesAsALayerToo) {
    const auto picture = makeGradient(40, 24, 4);
    const std::string path = write(*picture, "PSD", "picture.psd");
    const std::string layer = run(std::string(QOR_CONVERT) + " '" + path + "[1]' -depth 8 rgba:-");
    EXPECT_EQ(Pixels(layer.begin(), layer.end()), *picture->GetPixels());
    EXPECT_EQ(run(std::string(QOR_IDENTIFY) + " -format '%wx%h ' '" + path + "'"), "40x24 40x24 ");
}

TEST_F(PictureFormats, AreReadBack) {
    for (const int channels : {3, 4})
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(row.keyword) + " " + std::to_string(channels));
            const auto picture = makeGradient(33, 21, channels);
            const auto back = read(write(*picture, row.keyword, "picture.any"));
            ASSERT_TRUE(back) << lastError;
            if (row.alpha || channels == 3) {
                const bool onWhite = channels == 4 && std::string_view(row.keyword) == "PSD";
                EXPECT_EQ(back->GetChannels(), channels);
                EXPECT_LE(largestDifference(*back->GetPixels(), *picture->GetPixels()),
                          onWhite ? 3 : row.tolerance);
            }
        }
}

TEST_F(PictureFormats, SayHowDenseThePictureIsWhereTheyCan) {
    const auto picture = makeGradient(40, 24, 3);
    for (const char* keyword :
         {"TIFF", "TIFFPB", "BMP", "JPEG_FAIR", "JPEG", "JPEG_HIGH", "PSD", "PNG"})
        for (const int pixelsPerInch : {300, 72, 1200}) {
            picture->SetPixelsPerInch(pixelsPerInch);
            const std::string path = write(*picture, keyword, "picture.any");
            const std::string seen = run(std::string(QOR_IDENTIFY) +
                                         " -units PixelsPerInch -format '%x %y' '" + path + "[0]'");
            double across = 0.0;
            double down = 0.0;
            std::istringstream(seen) >> across >> down;
            EXPECT_NEAR(across, pixelsPerInch, 0.02) << keyword << " " << seen;
            EXPECT_NEAR(down, pixelsPerInch, 0.02) << keyword << " " << seen;
        }
    for (const char* keyword : {"RGB", "TGA"})
        EXPECT_TRUE(read(write(*picture, keyword, "picture.any"))) << keyword << lastError;
}

TEST_F(PictureFormats, PictSaysHowDenseThePictureIs) {
    const auto picture = makeGradient(40, 24, 3);
    for (const int pixelsPerInch : {0, 300}) {
        constexpr std::size_t header = 512 + 20; // behind size, frame and versions
        picture->SetPixelsPerInch(pixelsPerInch);
        write(*picture, "PICT", "picture.pic");
        const std::string bytes = directory.Read("picture.pic");
        const int dense = pixelsPerInch == 0 ? 72 : pixelsPerInch;
        for (const std::size_t at : {header, header + 4}) {
            EXPECT_EQ(static_cast<std::uint8_t>(bytes.at(at)), dense / 256);
            EXPECT_EQ(static_cast<std::uint8_t>(bytes.at(at + 1)), dense % 256);
        }
    }
}

TEST_F(PictureFormats, PsdHasAUsefulDensityThoughThePictureHasNone) {
    const std::string path = write(*makeGradient(40, 24, 3), "PSD", "picture.any");
    const std::string seen =
        run(std::string(QOR_IDENTIFY) + " -units PixelsPerInch -format '%x' '" + path + "[0]'");
    double density = 0.0;
    std::istringstream(seen) >> density;
    EXPECT_NEAR(density, 72.0, 0.02) << seen;
}

TEST_F(PictureFormats, TellHowFarTheyAre) {
    const auto picture = makeGrain(600);
    QorUnicodeString error;
    for (const Row& row : rows) {
        int last = -1;
        const auto watch = [&](int percent) {
            EXPECT_GE(percent, 0);
            EXPECT_LE(percent, 100);
            last = percent;
            return true;
        };
        EXPECT_EQ(files.WriteWatched(*picture, row.keyword, directory.GetPath("a"), watch, error),
                  0)
            << row.keyword << error;
        EXPECT_GE(last, 90) << row.keyword;
    }
}

TEST_F(PictureFormats, CanBeGivenUp) {
    const auto picture = makeGrain(600);
    for (const Row& row : rows) {
        QorUnicodeString error;
        const std::string path = directory.Write(std::string("given/") + row.keyword, "old");
        const auto never = [](int) {
            return false;
        };
        EXPECT_NE(files.WriteWatched(*picture, row.keyword, path, never, error), 0);
        EXPECT_TRUE(directory.Read(std::string("given/") + row.keyword) == "old") << row.keyword;
        EXPECT_FALSE(error.IsNull());
    }
    EXPECT_EQ(directory.List("given").size(), rows.size()) << "no temporary file is left";
}

TEST_F(PictureFormats, OfOnePixelWork) {
    const auto dot = makeGradient(1, 1, 4);
    for (const Row& row : rows)
        EXPECT_TRUE(read(write(*dot, row.keyword, "dot.any"))) << row.keyword << lastError;
}

TEST_F(PictureFormats, GreyPicturesStayColourFiles) {
    auto pixels = std::make_shared<Pixels>(std::size_t{16} * 16 * 3, std::uint8_t{128});
    const auto grey = QorMake<QorPixelImage>(16, 16, 3, std::move(pixels));
    for (const Row& row : rows) {
        const std::string path =
            write(*grey, row.keyword, std::string("grey") + endingOf(row.keyword));
        EXPECT_LE(largestDifference(convertedPixels(path, "rgb"), *grey->GetPixels()), 1)
            << row.keyword;
    }
}

TEST_F(PictureFormats, JpegQualitiesDiffer) {
    const auto grain = makeGrain(64);
    write(*grain, "JPEG_FAIR", "fair.jpg");
    write(*grain, "JPEG", "medium.jpg");
    write(*grain, "JPEG_HIGH", "high.jpg");
    EXPECT_LT(directory.Read("fair.jpg").size() * 11, directory.Read("medium.jpg").size() * 10);
    EXPECT_LT(directory.Read("medium.jpg").size() * 3, directory.Read("high.jpg").size() * 2);
}

TEST_F(PictureFormats, SayThatTheyAreSrgb) {
    const auto picture = makeGradient(40, 24, 3);
    for (const char* keyword :
         {"TIFF", "TIFFPB", "JPEG_FAIR", "JPEG", "JPEG_HIGH", "PICT", "PSD", "PNG"})
        EXPECT_EQ(identify(write(*picture, keyword, std::string("picture") + endingOf(keyword)),
                           "%[profile:icc]"),
                  "sRGB")
            << keyword;
    constexpr std::size_t colorSpace = 70; // of a bitmap's version 5 header
    write(*picture, "BMP", "picture.bmp");
    EXPECT_EQ(directory.Read("picture.bmp").substr(colorSpace, 4), "BGRs");
}

} // namespace
