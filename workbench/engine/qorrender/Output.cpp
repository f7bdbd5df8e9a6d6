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

/// Portable float map: a head in text, then rows from the bottom up, so that readers show the top
/// row at the top. A negative scale says that the low byte comes first.
std::string floatMap(const engine::Image& image) {
    static_assert(std::endian::native == std::endian::little);
    std::string bytes =
        "PF\n" + std::to_string(image.width) + " " + std::to_string(image.height) + "\n-1.0\n";
    const std::size_t head = bytes.size();
    constexpr std::size_t pixelSize = 3 * sizeof(float);
    bytes.resize(head + pixelSize * static_cast<std::size_t>(image.width) *
                            static_cast<std::size_t>(image.height));
    char* at = bytes.data() + head;
    for (int y = image.height - 1; y >= 0; --y)
        for (int x = 0; x < image.width; ++x, at += pixelSize)
            std::memcpy(at, image.pixel(x, y), pixelSize);
    return bytes;
}

std::shared_ptr<const QorPixelImage::Pixels> opaquePixels(const engine::Image& image) {
    auto pixels = std::make_shared<QorPixelImage::Pixels>(image.rgba.size() / 4 * 3);
    auto to = pixels->begin();
    for (std::size_t i = 0; i < image.rgba.size(); i += 4)
        for (std::size_t channel = 0; channel < 3; ++channel)
            *to++ = adapter::srgb8(image.rgba[i + channel]);
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

engine::Image cut(const engine::Image& image, const engine::Region& region) {
    engine::Image part{region.width, region.height, {}};
    const int top = image.height - region.y - region.height;
    part.rgba.reserve(static_cast<std::size_t>(region.width) *
                      static_cast<std::size_t>(region.height) * 4);
    for (int y = top; y < top + region.height; ++y)
        part.rgba.insert(part.rgba.end(), image.pixel(region.x, y),
                         image.pixel(region.x, y) + static_cast<std::ptrdiff_t>(region.width) * 4);
    return part;
}

void writePicture(const engine::Image& image,
                  const fs::path& file,
                  const std::function<void(double fraction)>& told) {
    const Ending* ending = endingOf(file);
    if (ending == nullptr)
        throw Failure(file.string() + ": no picture format has this ending");
    if (ending->keyword == nullptr) {
        writeWhole(file, floatMap(image));
        return;
    }
    imaging::PictureFiles files;
    QorUnicodeString error;
    const auto picture = QorMake<QorPixelImage>(image.width, image.height, 3, opaquePixels(image));
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
