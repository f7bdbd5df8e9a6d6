#include "scenes/QorRdgThumbnailFile.h"

#include "platform/system/QorPaths.h"
#include "scenes/QorRdgThumbnails.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>

namespace {

namespace fs = std::filesystem;

/// Whether there is such a thing, itself and not through a link. Nobody else can have put it into
/// the private directory, but a link of the user's own could still lead out of it.
bool Is(const std::string& iPath, fs::file_type iType) {
    std::error_code failed;
    return fs::symlink_status(iPath, failed).type() == iType;
}

bool IsClosedToOthers(const std::string& iDirectory) {
    std::error_code failed;
    const fs::perms others = fs::perms::group_write | fs::perms::others_write;
    return (fs::symlink_status(iDirectory, failed).permissions() & others) == fs::perms::none;
}

/// The mean of the pixels from one column and row to before others.
void Average(const QorPixelImage& iImage,
             const std::array<int, 2>& iColumns,
             const std::array<int, 2>& iRows,
             std::uint8_t* oPixel) {
    const auto channels = static_cast<std::size_t>(iImage.GetChannels());
    std::array<unsigned, 4> sums{};
    for (int y = iRows[0]; y < iRows[1]; ++y) {
        const std::size_t first =
            static_cast<std::size_t>(y) * static_cast<std::size_t>(iImage.GetWidth());
        const std::uint8_t* pixel =
            iImage.GetPixels()->data() + (first + static_cast<std::size_t>(iColumns[0])) * channels;
        for (int x = iColumns[0]; x < iColumns[1]; ++x)
            for (std::size_t channel = 0; channel < channels; ++channel)
                sums[channel] += *pixel++;
    }
    const auto count = static_cast<unsigned>((iColumns[1] - iColumns[0]) * (iRows[1] - iRows[0]));
    for (std::size_t channel = 0; channel < channels; ++channel)
        oPixel[channel] = static_cast<std::uint8_t>((sums[channel] + count / 2) / count);
}

/// A large picture by means of blocks, still at least twice a thumbnail: a good filter takes longer
/// over all its pixels than reading it did. Null for one that is not that large.
QorPixelImage_var Shrink(const QorPixelImage& iImage, int iWidth, int iHeight) {
    constexpr int largestBlock = 2048; // its sum fits
    const int block = std::min({iImage.GetWidth() / (2 * std::max(iWidth, 1)),
                                iImage.GetHeight() / (2 * std::max(iHeight, 1)), largestBlock});
    const int channels = iImage.GetChannels();
    if (block < 2 || channels > 4)
        return {};
    const int width = iImage.GetWidth() / block;
    const int height = iImage.GetHeight() / block;
    const auto edge = [](int iAt, int iOf, int iWhole) {
        return static_cast<int>(static_cast<std::int64_t>(iAt) * iWhole / iOf);
    };
    auto pixels = std::make_shared<QorPixelImage::Pixels>(static_cast<std::size_t>(width) *
                                                          static_cast<std::size_t>(height) *
                                                          static_cast<std::size_t>(channels));
    std::uint8_t* pixel = pixels->data();
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x, pixel += channels)
            Average(iImage,
                    {edge(x, width, iImage.GetWidth()), edge(x + 1, width, iImage.GetWidth())},
                    {edge(y, height, iImage.GetHeight()), edge(y + 1, height, iImage.GetHeight())},
                    pixel);
    return QorAdopt(new QorPixelImage(width, height, channels, std::move(pixels)));
}

/// Where the thumbnail of a picture is kept; empty when its name is none that could be.
std::string FindPlace(const QorUnicodeString& iDirectory, const QorUnicodeString& iImage) {
    QorUnicodeString folder;
    QorUnicodeString name;
    QorSplitPath(iImage, folder, name);
    if (iDirectory.IsNull() || name.IsNull() || name == "." || name == "..")
        return {};
    return iDirectory.Str() + "/" + name.Str();
}

} // namespace

QorUnicodeString QorRdgThumbnailFile::GetDirectory() {
    constexpr unsigned onlyUser = 0700;
    const QorUnicodeString temporary = QorGetTempDirectory();
    if (temporary.IsNull())
        return {};
    const std::string path = temporary.Str() + "/.icons";
    if (!QorSucceeded(QorCreateDirectory(path, onlyUser)) || !Is(path, fs::file_type::directory) ||
        !IsClosedToOthers(path))
        return {};
    return path;
}

QorPixelImage_var QorRdgThumbnailFile::ReadOrMake(const QorUnicodeString& iDirectory,
                                                  const QorUnicodeString& iImage) {
    const std::string place = FindPlace(iDirectory, iImage);
    if (!place.empty() && Is(place, fs::file_type::regular))
        if (auto kept = QorAdopt(QorPixelImage::CreateFromFile(place)))
            return kept;
    int wholeWidth = 0;
    int wholeHeight = 0;
    auto picture = QorAdopt(QorPixelImage::CreateReducedFromFile(iImage, 2 * QorRdgThumbnails::side,
                                                                 wholeWidth, wholeHeight));
    if (!picture || picture->IsEmpty())
        return {};
    const auto [width, height] = QorRdgThumbnails::GetSize(wholeWidth, wholeHeight);
    if (auto smaller = Shrink(*picture, width, height))
        picture = smaller;
    auto thumbnail = QorAdopt(picture->Resize(width, height));
    picture.Reset(); // many of these are large, and others wait
    const bool free = !place.empty() &&
                      (Is(place, fs::file_type::not_found) || Is(place, fs::file_type::regular));
    if (thumbnail && free)
        static_cast<void>(thumbnail->WriteToFile("JPEG", place)); // not kept: made again next time
    return thumbnail;
}
