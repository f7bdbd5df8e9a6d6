#include "workbench/imaging/Encode.h"

#include "workbench/imaging/Library.h"
#include "workbench/imaging/SrgbProfile.h"

#include <Magick++.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <vector>

namespace qor::imaging {

namespace {

using std::to_string;

constexpr int whole = 255; ///< alpha that lets nothing through

Magick::CompressionType magickCompression(Compression compression) {
    switch (compression) {
    case Compression::packBits: // what the TIFF coder calls run lengths
    case Compression::runLength:
        return Magick::RLECompression;
    case Compression::zip:
        return Magick::ZipCompression;
    case Compression::jpeg:
        return Magick::JPEGCompression;
    case Compression::none:
        break;
    }
    return Magick::NoCompression;
}

std::string findObstacle(const QorPixelImage& image, const PictureFormat& format) {
    if (image.IsEmpty())
        return "an empty picture cannot be written";
    const int side = std::max(image.GetWidth(), image.GetHeight());
    if (side > format.largestSide)
        return "a side of " + to_string(side) + " pixels is too long for " +
               std::string(format.keyword) + ", which holds " + to_string(format.largestSide);
    const auto pixels = std::uint64_t(image.GetWidth()) * std::uint64_t(image.GetHeight());
    if (pixels > mostPixels)
        return to_string(pixels) + " pixels are too many, at most " + to_string(mostPixels) +
               " are written";
    return {};
}

/// Whether anything shows through. A file of a picture without holes needs no alpha.
bool hasHoles(const QorPixelImage& picture) {
    if (picture.GetChannels() != 4)
        return false;
    const QorPixelImage::Pixels& pixels = *picture.GetPixels();
    for (std::size_t i = 3; i < pixels.size(); i += 4)
        if (pixels[i] != whole)
            return true;
    return false;
}

/// The colours as they look on white paper, and the alpha as it is.
QorPixelImage::Pixels onWhite(const QorPixelImage& picture) {
    QorPixelImage::Pixels pixels = *picture.GetPixels();
    for (std::size_t i = 0; i < pixels.size(); i += 4)
        for (std::size_t channel = i; channel < i + 3; ++channel)
            pixels[channel] = static_cast<std::uint8_t>(
                whole - ((whole - pixels[channel]) * pixels[i + 3] + whole / 2) / whole);
    return pixels;
}

Magick::Image makeImage(const QorPixelImage& picture, const QorPixelImage::Pixels& pixels) {
    Magick::Image image(
        static_cast<std::size_t>(picture.GetWidth()), static_cast<std::size_t>(picture.GetHeight()),
        picture.GetChannels() == 4 ? "RGBA" : "RGB", Magick::CharPixel, pixels.data());
    image.quiet(true);
    return image;
}

/// Pictures without one get none, except in the formats that always tell one.
void setDensity(Magick::Image& image, const PictureFormat& format, double pixelsPerInch) {
    constexpr double customary = 72.0;
    if (pixelsPerInch <= 0.0 && format.needsDensity)
        pixelsPerInch = customary;
    if (pixelsPerInch <= 0.0)
        return;
    image.resolutionUnits(Magick::PixelsPerInchResolution);
    image.density(Magick::Geometry(to_string(std::lround(pixelsPerInch)) + "x" +
                                   to_string(std::lround(pixelsPerInch))));
}

MagickCore::MagickBooleanType tell(const char* /*step*/,
                                   MagickCore::MagickOffsetType done,
                                   MagickCore::MagickSizeType all,
                                   void* watcher) {
    constexpr int most = 100;
    const int percent = all > 0 ? static_cast<int>(done * most / static_cast<long long>(all)) : 0;
    const bool goesOn = (*static_cast<const Watcher*>(watcher))(std::clamp(percent, 0, most));
    return goesOn ? MagickCore::MagickTrue : MagickCore::MagickFalse;
}

/// False when the watcher has given it up, at the latest at the end: some coders tell nothing on
/// the way.
bool write(std::vector<Magick::Image>& images, Magick::Blob& bytes, const Watcher& watcher) {
    constexpr int all = 100;
    bool goesOn = true;
    Watcher watch = [&](int percent) {
        goesOn = goesOn && watcher(percent);
        return goesOn;
    };
    for (Magick::Image& image : images)
        if (watcher)
            MagickCore::SetImageProgressMonitor(image.image(), &tell, &watch);
    Magick::writeImages(images.begin(), images.end(), &bytes);
    return !watcher || watch(all);
}

void describe(Magick::Image& image, const PictureFormat& format) {
    image.magick(format.coder);
    image.depth(8);
    image.compressType(magickCompression(format.compression));
    if (format.compression == Compression::zip) { // renders are smooth: a row is much like the last
        image.defineValue("png", "compression-level", "3");
        image.defineValue("png", "compression-filter", "2");
    }
    // Never grey or indexed, so that what is written does not depend on what is shown.
    image.type(image.matte() ? Magick::TrueColorMatteType : Magick::TrueColorType);
    image.defineValue("png", "color-type", image.matte() ? "6" : "2");
    image.defineValue("png", "bit-depth", "8");
    image.renderingIntent(Magick::PerceptualIntent);
    if (format.quality != 0) {
        image.quality(static_cast<std::size_t>(format.quality));
        image.defineValue("jpeg", "sampling-factor", format.fullColor ? "1x1" : "2x2");
    }
    if (format.profile) {
        const std::string profile = makeSrgbProfile();
        image.profile("ICC", Magick::Blob(profile.data(), profile.size()));
    }
}

/// What a file holds: the picture; in Photoshop files with holes first how it looks, for programs
/// that know no layers, and then itself, as the one layer.
std::vector<Magick::Image> makeImages(const QorPixelImage& picture, const PictureFormat& format) {
    const bool keepsAlpha = format.alpha && hasHoles(picture);
    std::vector<Magick::Image> images;
    if (keepsAlpha && format.coder == std::string_view("PSD"))
        images.push_back(makeImage(picture, onWhite(picture)));
    images.push_back(makeImage(picture, *picture.GetPixels()));
    for (Magick::Image& image : images) {
        if (!keepsAlpha)
            image.matte(false);
        describe(image, format);
        setDensity(image, format, picture.GetPixelsPerInch());
    }
    return images;
}

} // namespace

bool encode(const QorPixelImage& picture,
            const PictureFormat& format,
            Magick::Blob& bytes,
            std::string& error,
            const Watcher& watcher) {
    error = findObstacle(picture, format);
    if (!error.empty())
        return false;
    prepareLibrary();
    try {
        std::vector<Magick::Image> images = makeImages(picture, format);
        if (!write(images, bytes, watcher))
            error = "was given up";
        return error.empty();
    } catch (const std::exception& failure) {
        error = std::string("cannot be encoded: ") + failure.what();
        return false;
    }
}

} // namespace qor::imaging
