#include "workbench/imaging/PictureFiles.h"

#include "platform/system/QorFileWriter.h"
#include "workbench/imaging/Decode.h"
#include "workbench/imaging/Encode.h"
#include "workbench/imaging/Resample.h"

#include <Magick++/Blob.h>

#include <filesystem>
#include <fstream>
#include <new>
#include <optional>

namespace qor::imaging {

namespace {

// More than the largest picture takes in any format without compression.
constexpr std::uintmax_t largestFile = std::uintmax_t{2} << 30U;

/// All bytes of a regular file; nothing, with a reason, for pipes, folders, and what is too large.
std::optional<std::string> load(const std::string& path, std::string& error) {
    std::error_code code;
    if (!std::filesystem::is_regular_file(path, code)) {
        error = code ? "cannot be read: " + code.message() : "is no file";
        return std::nullopt;
    }
    const std::uintmax_t size = std::filesystem::file_size(path, code);
    if (code || size > largestFile) {
        error = "is too large for a picture";
        return std::nullopt;
    }
    std::string bytes(size, '\0');
    std::ifstream file(path, std::ios::binary);
    if (!file.read(bytes.data(), static_cast<std::streamsize>(size))) {
        error = "cannot be read";
        return std::nullopt;
    }
    return bytes;
}

QorUnicodeString named(const QorUnicodeString& path, const std::string& reason) {
    return path + QorUnicodeString(": " + reason);
}

template <class Decoder>
QorPixelImage* readWith(const QorUnicodeString& path, QorUnicodeString& error, Decoder decoder) {
    std::string reason;
    QorPixelImage* picture = nullptr;
    try {
        if (const std::optional<std::string> bytes = load(path.Str(), reason))
            picture = decoder(*bytes, reason);
    } catch (const std::bad_alloc&) {
        reason = "there is not enough memory to read it";
    }
    if (picture == nullptr)
        error = named(path, reason);
    return picture;
}

} // namespace

QorPixelImage* PictureFiles::Read(const QorUnicodeString& path, QorUnicodeString& error) {
    return readWith(path, error, [](const std::string& bytes, std::string& reason) {
        return decode(bytes, reason);
    });
}

QorPixelImage* PictureFiles::ReadReduced(
    const QorUnicodeString& path, int side, int& width, int& height, QorUnicodeString& error) {
    return readWith(path, error, [&](const std::string& bytes, std::string& reason) {
        return decodeReduced(bytes, side, width, height, reason);
    });
}

int PictureFiles::Write(const QorPixelImage& image,
                        const QorString& keyword,
                        const QorUnicodeString& path,
                        QorUnicodeString& error) {
    return WriteWatched(image, keyword, path, {}, error);
}

int PictureFiles::WriteWatched(const QorPixelImage& image,
                               const QorString& keyword,
                               const QorUnicodeString& path,
                               const Watcher& watcher,
                               QorUnicodeString& error) {
    const PictureFormat* format = findPictureFormat(keyword.Str());
    if (format == nullptr) {
        error = named(path, "there is no picture format \"" + keyword.Str() + "\"");
        return unknownFormat;
    }
    Magick::Blob bytes;
    std::string reason;
    if (!encode(image, *format, bytes, reason, watcher)) {
        error = named(path, reason);
        return notEncoded;
    }
    QorFileWriter writer(path.Str());
    writer.Write({static_cast<const char*>(bytes.data()), bytes.length()});
    if (QorSucceeded(writer.Commit()))
        return 0;
    error = QorUnicodeString(writer.GetError());
    return notWritten;
}

QorPixelImage* PictureFiles::Resize(const QorPixelImage& image, int width, int height) {
    return resample(image, width, height);
}

} // namespace qor::imaging
