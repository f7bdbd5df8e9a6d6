#include "platform/vis/QorRdgPictureFormats.h"
#include "tests/support/QorTestApplication.h"

namespace {

class PictureFormats : public QorTestApplication {};

TEST_F(PictureFormats, AreElevenInThisOrder) {
    struct Row {
        int index;
        const char* label;
        const char* pattern;
        const char* extension;
        const char* keyword;
    };

    const Row rows[] = {
        {0, "tifLabel", "*.tif", ".tif", "TIFF"},
        {1, "tifPackbitsLabel", "*.tif", ".tif", "TIFFPB"},
        {2, "rgbLabel", "*.rgb", ".rgb", "RGB"},
        {3, "bmpLabel", "*.bmp", ".bmp", "BMP"},
        {4, "jpgFairQualityLabel", "*.jpg", ".jpg", "JPEG_FAIR"},
        {5, "jpgMediumQualityLabel", "*.jpg", ".jpg", "JPEG"},
        {6, "jpgHighQualityLabel", "*.jpg", ".jpg", "JPEG_HIGH"},
        {7, "picLabel", "*.pic", ".pic", "PICT"},
        {8, "psdLabel", "*.psd", ".psd", "PSD"},
        {9, "pngLabel", "*.png", ".png", "PNG"},
        {10, "tgaLabel", "*.tga", ".tga", "TGA"},
    };
    ASSERT_EQ(QorRdgPictureFormats::GetAll().size(), std::size(rows));
    for (const Row& row : rows) {
        const QorRdgPictureFormat& format =
            QorRdgPictureFormats::GetAll()[static_cast<std::size_t>(row.index)];
        EXPECT_STREQ(format.labelKey, row.label);
        EXPECT_STREQ(format.pattern, row.pattern);
        EXPECT_STREQ(QorRdgPictureFormats::GetExtension(row.index), row.extension);
        EXPECT_STREQ(QorRdgPictureFormats::GetKeyword(row.index + 1), row.keyword);
    }
}

TEST_F(PictureFormats, WhatIsNoneIsTiff) {
    for (const int index : {-1, 11, 1000})
        EXPECT_STREQ(QorRdgPictureFormats::GetExtension(index), ".tif") << index;
    for (const int code : {-1, 0, 12, 1000})
        EXPECT_STREQ(QorRdgPictureFormats::GetKeyword(code), "TIFF") << code;
}

TEST_F(PictureFormats, AnExtensionIsAddedOnlyWhereThereIsNoDotAtAll) {
    struct Row {
        const char* typed;
        int filter;
        const char* path;
    };

    const Row rows[] = {
        {"/a/out", 9, "/a/out.png"},       {"/a/out", 1, "/a/out.tif"},
        {"/a/out", 99, "/a/out.tif"},      {"/a/out.jpg", 0, "/a/out.jpg"},
        {"/my.dir/out", 9, "/my.dir/out"}, {"/a/out.", 9, "/a/out."},
        {"/a/.hidden", 9, "/a/.hidden"},   {"", 9, ".png"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(QorRdgPictureFormats::AddExtension(row.typed, row.filter), row.path);
}

TEST_F(PictureFormats, ADialogGetsThemAllAsFilters) {
    EXPECT_EQ(QorRdgPictureFormats::GetExtensions(),
              (std::vector<QorString>{"tif", "rgb", "bmp", "jpg", "pic", "psd", "png", "tga"}));
    auto* dialog = new QorDlgFile(nullptr, "fileBox", QorDlgFileSave);
    QorRdgPictureFormats::SetFilters(*dialog);
    ASSERT_EQ(dialog->GetFilters().size(), 11U);
    EXPECT_EQ(dialog->GetActiveFilterIndex(), 0);
    EXPECT_EQ(dialog->GetFilters().at(7).pattern, "*.pic");
    EXPECT_EQ(dialog->GetFilters().at(7).label, "picLabel"); // no catalog here: its key
    dialog->RequestDelayedDestruction();
}

} // namespace
