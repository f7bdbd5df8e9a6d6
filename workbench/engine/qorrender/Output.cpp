#include "workbench/engine/qorrender/Output.h"

#include "platform/component/QorHandle.h"
#include "platform/system/QorFileWriter.h"
#include "workbench/engine/adapter/EightBit.h"
#include "workbench/engine/qorrender/Failure.h"
#include "workbench/engine/qorrender/Interrupt.h"
#include "workbench/imaging/PictureFiles.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cctype>
#include <cstring>

namespace qor::render {

namespace {

namespace fs = std::filesystem;

struct Ending {
    std::string_view text;
    const char* keyword; ///< of the picture service; null: linear floats
};

constexpr auto endings = std::to_array<Ending>({{".png", "PNG"},
                                                {".tif", "TIFF"},
                                                {".tiff", "TIFF"},
                                                {".jpg", "JPEG_HIGH"},
                                                {".jpeg", "JPEG_HIGH"},
                                                {".bmp", "BMP"},
                                                {".tga", "TGA"},
                                                {".psd", "PSD"},
                                                {".rgb", "RGB"},
                                                {".pic", "PICT"},
                                                {".pfm", nullptr}});

const Ending* endingOf(const fs::path& file) {
    std::string text = file.extension().string();
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    for (const Ending& ending : endings)
        if (ending.text == text)
            return &ending;
    return nullptr;
}

/// What is written of a picture; rows count from the top.
struct Part {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

Part partOf(const engine::Image& image, const engine::Region& region) {
    return {region.x, image.height - region.y - region.height, region.width, region.height};
}

/// Portable float map: a head in text, then rows from the bottom up, so that readers show the top
/// row at the top. A negative scale says that the low byte comes first.
std::string floatMap(const engine::Image& image, const Part& part) {
    static_assert(std::endian::native == std::endian::little);
    std::string bytes =
        "PF\n" + std::to_string(part.width) + " " + std::to_string(part.height) + "\n-1.0\n";
    const std::size_t head = bytes.size();
    constexpr std::size_t pixelSize = 3 * sizeof(float);
    bytes.resize(head + pixelSize * static_cast<std::size_t>(part.width) *
                            static_cast<std::size_t>(part.height));
    char* at = bytes.data() + head;
    for (int y = part.top + part.height - 1; y >= part.top; --y)
        for (int x = part.left; x < part.left + part.width; ++x, at += pixelSize)
            std::memcpy(at, image.pixel(x, y), pixelSize);
    return bytes;
}

std::shared_ptr<const QorPixelImage::Pixels> opaquePixels(const engine::Image& image,
                                                          const Part& part) {
    auto pixels = std::make_shared<QorPixelImage::Pixels>(
        static_cast<std::size_t>(part.width) * static_cast<std::size_t>(part.height) * 3);
    std::uint8_t* to = pixels->data();
    for (int y = part.top; y < part.top + part.height; ++y)
        for (int x = part.left; x < part.left + part.width; ++x, to += 3)
            adapter::encodeColor(image.pixel(x, y), x, y, to);
    return pixels;
}

} // namespace

bool knowsFormatOf(const fs::path& file) {
    return endingOf(file) != nullptr;
}

void checkWritable(const fs::path& file) {
    QorFileWriter writer(file.string());
    if (!writer.GetError().empty())
        throw Failure(writer.GetError());
}

void writePicture(const engine::Image& image,
                  const engine::Region& region,
                  const fs::path& file,
                  const std::function<void(double fraction)>& told) {
    const Part part = partOf(image, region);
    const Ending* ending = endingOf(file);
    if (ending == nullptr)
        throw Failure(file.string() + ": no picture format has this ending");
    if (ending->keyword == nullptr) {
        writeWhole(file, floatMap(image, part));
        return;
    }
    imaging::PictureFiles files;
    QorUnicodeString error;
    const auto picture =
        QorMake<QorPixelImage>(part.width, part.height, 3, opaquePixels(image, part));
    const auto watcher = [&](int percent) {
        told(percent / 100.0);
        return !isInterrupted();
    };
    if (files.WriteWatched(*picture, ending->keyword, QorUnicodeString(file.string()), watcher,
                           error) == 0)
        return;
    checkInterrupt();
    throw Failure(error.Str());
}

void writeWhole(const fs::path& file, std::string_view text) {
    QorFileWriter writer(file.string());
    writer.Write(text);
    if (!QorSucceeded(writer.Commit()))
        throw Failure(writer.GetError());
}

} // namespace qor::render
