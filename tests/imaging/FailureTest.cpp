#include "tests/imaging/ImagingTest.h"
#include "workbench/imaging/PictureFormat.h"

#include <sys/resource.h>

#include <csignal>

namespace {

using qor::imaging::PictureFiles;
using qor::imaging::pictureFormats;

/// While it lives, no file of this process may grow beyond a limit, as on a full disk.
class SmallFiles {
public:
    explicit SmallFiles(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit small{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }

    ~SmallFiles() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, SIG_DFL);
    }

    SmallFiles(const SmallFiles&) = delete;
    SmallFiles& operator=(const SmallFiles&) = delete;
    SmallFiles(SmallFiles&&) = delete;
    SmallFiles& operator=(SmallFiles&&) = delete;

private:
    rlimit before_{};
};

class PictureFailure : public ImagingTest {
protected:
    int tryWrite(const QorPixelImage& image, const char* format, const std::string& path) {
        return files.Write(image, format, QorUnicodeString(path), lastError);
    }

    /// Pictures of grain and with holes, each in every format.
    static std::vector<std::pair<QorPixelImage_var, qor::imaging::PictureFormat>> everyKind() {
        std::vector<std::pair<QorPixelImage_var, qor::imaging::PictureFormat>> all;
        for (const auto& picture : {makeGrain(24), makeGradient(70, 24, 4)})
            for (const auto& format : pictureFormats())
                all.emplace_back(picture, format);
        return all;
    }

    /// The error names the file and gives no memory of pixels.
    void expectRefused(const std::string& path) {
        lastError = {};
        EXPECT_FALSE(read(path));
        EXPECT_EQ(lastError.Str().rfind(path, 0), 0U) << lastError;
        EXPECT_GT(lastError.Str().size(), path.size() + 4) << lastError;
    }
};

TEST_F(PictureFailure, UnknownKeywordsAndEmptyPicturesAreRefused) {
    const std::string path = directory.GetPath("picture");
    EXPECT_EQ(tryWrite(*makeGradient(4, 4, 3), "GIF", path), PictureFiles::unknownFormat);
    EXPECT_NE(lastError.Str().find("GIF"), std::string::npos);
    EXPECT_EQ(tryWrite(*QorMake<QorPixelImage>(), "PNG", path), PictureFiles::notEncoded);
    EXPECT_EQ(directory.List("picture").size(), 0U);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(PictureFailure, ASideThatAFormatCannotHoldIsRefused) {
    const auto strip = makeGradient(66000, 1, 3);
    for (const char* keyword : {"RGB", "JPEG", "PICT", "PSD", "TGA"})
        EXPECT_EQ(tryWrite(*strip, keyword, directory.GetPath("strip")), PictureFiles::notEncoded)
            << keyword;
    for (const char* keyword : {"TIFF", "TIFFPB", "BMP", "PNG"}) {
        const auto back = read(write(*strip, keyword, "strip"));
        ASSERT_TRUE(back) << keyword << lastError;
        EXPECT_EQ(*back->GetPixels(), *strip->GetPixels()) << keyword;
    }
}

TEST_F(PictureFailure, AFolderThatIsNotThereIsSaid) {
    EXPECT_EQ(tryWrite(*makeGradient(4, 4, 3), "PNG", directory.GetPath("no/where.png")),
              PictureFiles::notWritten);
    EXPECT_NE(lastError.Str().find("where.png"), std::string::npos) << lastError;
}

TEST_F(PictureFailure, AFullDiskLeavesTheOldFileAndNothingElse) {
    directory.Write("out/picture.any", "old");
    const std::string path = directory.GetPath("out/picture.any");
    const auto grain = makeGrain(128);
    for (const auto& format : pictureFormats()) {
        SCOPED_TRACE(format.keyword);
        {
            const SmallFiles small(1000);
            // The Photoshop coder works in a temporary file and so fails earlier.
            EXPECT_NE(tryWrite(*grain, format.keyword.data(), path), 0);
        }
        EXPECT_EQ(directory.Read("out/picture.any"), "old");
        EXPECT_EQ(directory.List("out").size(), 1U);
        EXPECT_NE(lastError.Str().find("picture.any"), std::string::npos);
    }
}

TEST_F(PictureFailure, WhatIsNoPictureIsRefused) {
    expectRefused(directory.GetPath("missing.png"));
    expectRefused(directory.GetPath());
    expectRefused("/dev/zero");
    expectRefused(directory.Write("empty.png", ""));
    expectRefused(directory.Write("text.png", "This is a text and no picture at all."));
    expectRefused(directory.Write("drawing.svg", "<svg xmlns='http://www.w3.org/2000/svg'/>"));
    expectRefused(directory.Write("script.mvg", "push graphic-context\nviewbox 0 0 9 9\n"));
    expectRefused(directory.Write("page.ps", "%!PS\nshowpage\n"));
}

TEST_F(PictureFailure, NamesThatLookLikeCommandsAreOnlyNames) {
    for (const char* name : {"label:hello", "@list", "|touch owned", "png:x", "50%.png"}) {
        const auto picture = makeGradient(4, 4, 3);
        const auto back = read(write(*picture, "PNG", name));
        ASSERT_TRUE(back) << name << lastError;
        EXPECT_EQ(*back->GetPixels(), *picture->GetPixels());
    }
    EXPECT_FALSE(std::filesystem::exists("owned"));
}

TEST_F(PictureFailure, AFileCutShortNeverCrashesAndIsRefusedOnceItsPixelsAreCut) {
    for (const auto& [picture, format] : everyKind()) {
        const auto whole = read(write(*picture, format.keyword.data(), "whole"));
        ASSERT_TRUE(whole) << lastError;
        const std::string bytes = directory.Read("whole");
        for (std::size_t size = 0; size < bytes.size(); size += 1 + bytes.size() / 40) {
            // A TIFF file's colour profile stands last, and nobody misses it.
            const auto back = read(directory.Write("cut", bytes.substr(0, size)));
            EXPECT_TRUE(!back || *back->GetPixels() == *whole->GetPixels())
                << format.keyword << " of " << size << " of " << bytes.size();
        }
    }
}

TEST_F(PictureFailure, PicturesOfTheOtherProgramCutShortAreRefused) {
    struct Row {
        const char* options;
        const char* name;
    };

    for (const Row& row :
         {Row{"-compress none", "a.psd"}, Row{"-compress RLE -type Grayscale", "b.psd"},
          Row{"-type Palette", "c.pict"}, Row{"-type Grayscale", "d.pict"},
          Row{"-type TrueColor", "e.pict"}}) {
        const std::string path = directory.GetPath(row.name);
        run(std::string(QOR_CONVERT) + " -size 60x40 plasma:red-blue -depth 8 " + row.options +
            " '" + path + "'");
        const auto whole = read(path);
        ASSERT_TRUE(whole) << row.name << lastError;
        const std::string bytes = directory.Read(row.name);
        for (const std::size_t left : {bytes.size() * 3 / 4, bytes.size() - 60})
            EXPECT_FALSE(read(directory.Write("cut", bytes.substr(0, left)))) << row.name;
    }
}

TEST_F(PictureFailure, DamagedBytesNeverCrash) {
    const auto picture = makeGradient(24, 24, 4);
    for (const auto& format : pictureFormats()) {
        write(*picture, format.keyword.data(), "whole");
        const std::string bytes = directory.Read("whole");
        for (std::size_t at = 0; at < std::min<std::size_t>(bytes.size(), 700); at += 3) {
            std::string damaged = bytes;
            damaged[at] = static_cast<char>(~damaged[at]);
            const auto back = read(directory.Write("damaged", damaged));
            EXPECT_TRUE(!back || !back->IsEmpty());
        }
    }
}

TEST_F(PictureFailure, AFileThatPromisesTooMuchIsRefused) {
    write(*makeGradient(16, 16, 3), "TGA", "small");
    std::string bytes = directory.Read("small");
    for (const std::size_t at : {12, 13, 14, 15})
        bytes[at] = '\xF0';
    expectRefused(directory.Write("promise.tga", bytes));
    write(*makeGradient(16, 16, 3), "PNG", "small");
    bytes = directory.Read("small");
    for (const std::size_t at : {17, 18, 21, 22})
        bytes[at] = '\x01';
    expectRefused(directory.Write("promise.png", bytes));
}

TEST_F(PictureFailure, TheMachinesOwnLimitsDoNotHoldHere) {
    // The usual policy file of the machine allows 16000 pixels a side.
    const auto strip = makeGradient(20000, 2, 3);
    const auto back = read(write(*strip, "PNG", "strip.png"));
    ASSERT_TRUE(back) << lastError;
    EXPECT_EQ(*back->GetPixels(), *strip->GetPixels());
}

} // namespace
