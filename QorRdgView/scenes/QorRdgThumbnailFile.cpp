#include "scenes/QorRdgThumbnailFile.h"

#include "platform/system/QorPaths.h"
#include "scenes/QorRdgThumbnails.h"

#include <filesystem>

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
    auto picture = QorAdopt(QorPixelImage::CreateFromFile(iImage));
    if (!picture || picture->IsEmpty())
        return {};
    const auto [width, height] =
        QorRdgThumbnails::GetSize(picture->GetWidth(), picture->GetHeight());
    auto thumbnail = QorAdopt(picture->Resize(width, height));
    picture.Reset(); // many of these are large, and others wait
    const bool free = !place.empty() &&
                      (Is(place, fs::file_type::not_found) || Is(place, fs::file_type::regular));
    if (thumbnail && free)
        static_cast<void>(thumbnail->WriteToFile("JPEG", place)); // not kept: made again next time
    return thumbnail;
}
