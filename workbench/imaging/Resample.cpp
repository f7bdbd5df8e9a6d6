#include "workbench/imaging/Resample.h"

#include "workbench/imaging/Library.h"

#include <Magick++.h>

namespace qor::imaging {

namespace {

bool isUsable(int width, int height) {
    return width > 0 && height > 0 && std::uint64_t(width) <= largestSide &&
           std::uint64_t(height) <= largestSide &&
           std::uint64_t(width) * std::uint64_t(height) <= mostPixels;
}

QorPixelImage* scale(const QorPixelImage& source, int width, int height) {
    const char* map = source.GetChannels() == 4 ? "RGBA" : "RGB";
    Magick::Image image(static_cast<std::size_t>(source.GetWidth()),
                        static_cast<std::size_t>(source.GetHeight()), map, Magick::CharPixel,
                        source.GetPixels()->data());
    image.quiet(true);
    image.colorSpace(Magick::RGBColorspace); // linear
    image.filterType(Magick::MitchellFilter);
    Magick::Geometry size(static_cast<std::size_t>(width), static_cast<std::size_t>(height));
    size.aspect(true);
    image.resize(size);
    image.colorSpace(Magick::sRGBColorspace);
    auto pixels = std::make_shared<QorPixelImage::Pixels>(
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
        static_cast<std::size_t>(source.GetChannels()));
    image.write(0, 0, static_cast<std::size_t>(width), static_cast<std::size_t>(height), map,
                Magick::CharPixel, pixels->data());
    return new QorPixelImage(width, height, source.GetChannels(), std::move(pixels));
}

} // namespace

QorPixelImage* resample(const QorPixelImage& image, int width, int height) {
    if (image.IsEmpty() || !isUsable(width, height))
        return nullptr;
    prepareLibrary();
    try {
        return scale(image, width, height);
    } catch (const std::exception&) {
        return nullptr;
    }
}

} // namespace qor::imaging
