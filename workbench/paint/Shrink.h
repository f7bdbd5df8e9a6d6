#pragma once

#include "platform/vis/QorPixelImage.h"

#include <QRect>

namespace qor::paint {

/// Pixels of a picture that any thread may read, and the part of them that is wanted, counted from
/// the upper left. The part lies in the picture and is not empty.
struct PicturePart {
    std::shared_ptr<const QorPixelImage::Pixels> pixels;
    int width = 0; ///< of the whole picture
    int channels = 0;
    QRect source;
    bool ignoresAlpha = false; ///< it is opaque, whatever its alpha says
};

using SharedPixels = std::shared_ptr<const QorPixelImage::Pixels>;

/// The part in another size, which is not empty: each pixel the mean of those it covers. Takes no
/// memory beside the result, however large the picture. Throws std::bad_alloc.
[[nodiscard]] SharedPixels shrink(const PicturePart& part, const QSize& size);

/// The same with one of the pixels that it covers: coarse, and as quick as the result is small.
[[nodiscard]] SharedPixels thin(const PicturePart& part, const QSize& size);

/// Whether none of the pixels lets anything through.
[[nodiscard]] bool areOpaque(const QorPixelImage::Pixels& pixels, int channels);

} // namespace qor::paint
