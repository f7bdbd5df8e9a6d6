#include "platform/vis/QorRdgPictureFormats.h"

#include "platform/text/QorMsgCatalog.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<QorRdgPictureFormat, 11> formats = {{
    {"tifLabel", "*.tif", ".tif", "TIFF"},
    {"tifPackbitsLabel", "*.tif", ".tif", "TIFFPB"},
    {"rgbLabel", "*.rgb", ".rgb", "RGB"},
    {"bmpLabel", "*.bmp", ".bmp", "BMP"},
    {"jpgFairQualityLabel", "*.jpg", ".jpg", "JPEG_FAIR"},
    {"jpgMediumQualityLabel", "*.jpg", ".jpg", "JPEG"},
    {"jpgHighQualityLabel", "*.jpg", ".jpg", "JPEG_HIGH"},
    {"picLabel", "*.pic", ".pic", "PICT"},
    {"psdLabel", "*.psd", ".psd", "PSD"},
    {"pngLabel", "*.png", ".png", "PNG"},
    {"tgaLabel", "*.tga", ".tga", "TGA"},
}};

/// The row of that index, or the first.
const QorRdgPictureFormat& RowAt(int iIndex) {
    const bool isRow = iIndex >= 0 && static_cast<std::size_t>(iIndex) < formats.size();
    return formats[isRow ? static_cast<std::size_t>(iIndex) : 0];
}

} // namespace

std::span<const QorRdgPictureFormat> QorRdgPictureFormats::GetAll() {
    return formats;
}

const char* QorRdgPictureFormats::GetExtension(int iFilterIndex) {
    return RowAt(iFilterIndex).extension;
}

const char* QorRdgPictureFormats::GetKeyword(int iCode) {
    return RowAt(iCode > 0 ? iCode - 1 : 0).keyword;
}

QorUnicodeString QorRdgPictureFormats::AddExtension(const QorUnicodeString& iPath,
                                                    int iFilterIndex) {
    const bool hasDot = iPath.Str().rfind('.') != std::string::npos;
    return hasDot ? iPath : iPath + QorUnicodeString(GetExtension(iFilterIndex));
}

std::vector<QorString> QorRdgPictureFormats::GetExtensions() {
    std::vector<QorString> extensions;
    for (const QorRdgPictureFormat& format : formats) {
        const QorString extension = format.extension + 1;
        if (std::find(extensions.begin(), extensions.end(), extension) == extensions.end())
            extensions.push_back(extension);
    }
    return extensions;
}

void QorRdgPictureFormats::SetFilters(QorDlgFile& ioDialog) {
    std::vector<QorUnicodeString> labels;
    std::vector<QorString> patterns;
    for (const QorRdgPictureFormat& format : formats) {
        labels.push_back(
            QorMsgCatalog::BuildMessage("QorRdgShootingPictureFrame", format.labelKey));
        patterns.emplace_back(format.pattern);
    }
    ioDialog.SetFilterStrings(labels.data(), patterns.data(), static_cast<int>(labels.size()));
}
