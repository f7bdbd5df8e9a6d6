#include "workbench/imaging/Decode.h"

#include "workbench/imaging/Library.h"
#include "workbench/imaging/PictFile.h"
#include "workbench/imaging/PictureFormat.h"
#include "workbench/imaging/WholeFile.h"

#include <Magick++.h>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <vector>

namespace qor::imaging {

namespace {

// No honest file of our formats holds this many pixels a byte; deflate, the strongest of their
// compressions, shrinks by at most 1032 (zlib's technical notes).
constexpr std::uint64_t mostPixelsPerByte = 1100;

void refuseBombs(const Magick::Image& head, std::size_t fileSize) {
    const auto pixels = std::uint64_t{head.columns()} * head.rows();
    const std::string size = std::to_string(head.columns()) + " by " + std::to_string(head.rows());
    if (pixels > mostPixels)
        throw std::runtime_error(size + " pixels are too many");
    if (pixels > fileSize * mostPixelsPerByte)
        throw std::runtime_error("it promises " + size + " pixels but holds only " +
                                 std::to_string(fileSize) + " bytes");
}

// Warnings about tags that nobody needs are fine; warnings about missing pixels are not.
void readStrictly(Magick::Image& image, const Magick::Blob& blob) {
    try {
        image.read(blob);
    } catch (const Magick::WarningCorruptImage&) {
        throw;
    } catch (const Magick::Warning&) {
        return;
    }
}

void makeSrgb(Magick::Image& image, std::string_view coder) {
    if (coder == "JPEG" || coder == "TIFF") // the other coders have turned it already
        image.autoOrient();
    if (image.colorSpace() != Magick::sRGBColorspace)
        image.colorSpace(Magick::sRGBColorspace);
}

using Alpha = std::optional<std::vector<std::uint8_t>>;

/// \p alpha, if there is one, takes the place of the picture's own.
QorPixelImage* takePixels(Magick::Image& image, const Alpha& alpha) {
    if (!image.isValid() || image.columns() == 0 || image.rows() == 0)
        throw std::runtime_error("it holds no pixels");
    const int channels = alpha || image.matte() ? 4 : 3;
    auto pixels = std::make_shared<QorPixelImage::Pixels>(image.columns() * image.rows() *
                                                          static_cast<std::size_t>(channels));
    image.write(0, 0, image.columns(), image.rows(), channels == 4 ? "RGBA" : "RGB",
                Magick::CharPixel, pixels->data());
    for (std::size_t i = 0; alpha && i < alpha->size(); ++i)
        (*pixels)[i * 4 + 3] = (*alpha)[i];
    return new QorPixelImage(static_cast<int>(image.columns()), static_cast<int>(image.rows()),
                             channels, std::move(pixels));
}

/// What is read of a file, and the size of the whole.
struct Picture {
    QorPixelImage* pixels = nullptr;
    int width = 0;
    int height = 0;
};

/// Has the JPEG reader give a half, a quarter or an eighth of the picture, whichever is the
/// smallest with \p side pixels on its longer side. Whether it does.
bool reduce(Magick::Image& image, const Magick::Image& head, int side) {
    constexpr std::size_t smallest = 8; // parts, of the coder
    const std::size_t longer = std::max(head.columns(), head.rows());
    std::size_t parts = smallest;
    while (parts > 1 && longer / parts < static_cast<std::size_t>(side))
        parts /= 2;
    if (parts == 1)
        return false;
    const auto part = [parts](std::size_t length) {
        return std::max<std::size_t>(length / parts, 1);
    };
    image.defineValue("jpeg", "size", Magick::Geometry(part(head.columns()), part(head.rows())));
    return true;
}

Picture whole(QorPixelImage* pixels) {
    return {pixels, pixels->GetWidth(), pixels->GetHeight()};
}

/// \p lies: the camera was turned by a quarter.
Picture partOf(const Magick::Image& head, QorPixelImage* pixels, bool lies) {
    const auto width = static_cast<int>(head.columns());
    const auto height = static_cast<int>(head.rows());
    return lies ? Picture{pixels, height, width} : Picture{pixels, width, height};
}

/// \p side is 0 for the whole picture.
Picture decodeBy(const char* coder, std::string_view bytes, int side) {
    if (!isWhole(coder, bytes))
        throw std::runtime_error("it is cut short");
    const Magick::Blob blob(bytes.data(), bytes.size());
    Magick::Image head;
    head.magick(coder);
    head.quiet(true);
    head.ping(blob);
    refuseBombs(head, bytes.size());
    Magick::Image image;
    image.magick(coder);
    image.subImage(0); // the first of several pages, the whole of several layers
    image.subRange(1);
    const bool reduced = side > 0 && std::string_view(coder) == "JPEG" && reduce(image, head, side);
    readStrictly(image, blob);
    image.quiet(true);
    const bool lies = image.orientation() >= Magick::LeftTopOrientation;
    makeSrgb(image, coder);
    const bool hidesAlpha =
        std::string_view(coder) == "PICT"; // Magick++ writes it, but does not read it
    QorPixelImage* pixels =
        hidesAlpha ? takePixels(image, alphaOfPict(bytes, image.columns(), image.rows()))
                   : takePixels(image, {});
    return reduced ? partOf(head, pixels, lies) : whole(pixels);
}

Picture decodeAny(std::string_view bytes, int side, std::string& error) {
    const char* coder = coderOfFile(bytes);
    if (coder == nullptr) {
        error = "is no picture of a known format";
        return {};
    }
    prepareLibrary();
    try {
        return decodeBy(coder, bytes, side);
    } catch (const std::exception& failure) {
        error = std::string("cannot be decoded: ") + failure.what();
        return {};
    }
}

} // namespace

QorPixelImage* decode(std::string_view bytes, std::string& error) {
    return decodeAny(bytes, 0, error).pixels;
}

QorPixelImage*
decodeReduced(std::string_view bytes, int side, int& width, int& height, std::string& error) {
    const Picture picture = decodeAny(bytes, side, error);
    width = picture.width;
    height = picture.height;
    return picture.pixels;
}

} // namespace qor::imaging
