#include "workbench/imaging/Encode.h"

#include "workbench/imaging/Library.h"
#include "workbench/imaging/SrgbProfile.h"

#include <Magick++.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace qor::imaging {

namespace {

using std::to_string;

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

Magick::Image makeImage(const QorPixelImage& picture) {
    Magick::Image image(static_cast<std::size_t>(picture.GetWidth()),
                        static_cast<std::size_t>(picture.GetHeight()),
                        picture.GetChannels() == 4 ? "RGBA" : "RGB", Magick::CharPixel,
                        picture.GetPixels()->data());
    image.quiet(true);
    return image;
}

/// Pictures without one get none, but PSD files always tell one: theirs shall be of use.
void setDensity(Magick::Image& image, const PictureFormat& format, double pixelsPerInch) {
    constexpr double customary = 72.0;
    if (pixelsPerInch <= 0.0 && format.coder == std::string_view("PSD"))
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
    constexpr int whole = 100;
    const int percent = all > 0 ? static_cast<int>(done * whole / static_cast<long long>(all)) : 0;
    const bool goesOn = (*static_cast<const Watcher*>(watcher))(std::clamp(percent, 0, whole));
    return goesOn ? MagickCore::MagickTrue : MagickCore::MagickFalse;
}

/// False when the watcher has given it up, at the latest at the end: some coders tell nothing on
/// the way.
bool write(Magick::Image& image, Magick::Blob& bytes, const Watcher& watcher) {
    constexpr int whole = 100;
    bool goesOn = true;
    Watcher watch = [&](int percent) {
        goesOn = goesOn && watcher(percent);
        return goesOn;
    };
    if (watcher)
        MagickCore::SetImageProgressMonitor(image.image(), &tell, &watch);
    image.write(&bytes);
    return !watcher || watch(whole);
}

void describe(Magick::Image& image, const PictureFormat& format) {
    image.magick(format.coder);
    image.depth(8);
    image.compressType(magickCompression(format.compression));
    // Never grey or indexed, so that what is written does not depend on what is shown.
    image.type(image.matte() ? Magick::TrueColorMatteType : Magick::TrueColorType);
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
        Magick::Image image = makeImage(picture);
        if (!format.alpha)
            image.matte(false);
        describe(image, format);
        setDensity(image, format, picture.GetPixelsPerInch());
        if (!write(image, bytes, watcher))
            error = "was given up";
        return error.empty();
    } catch (const std::exception& failure) {
        error = std::string("cannot be encoded: ") + failure.what();
        return false;
    }
}

} // namespace qor::imaging
