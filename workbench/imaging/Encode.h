#pragma once

#include "platform/vis/QorPixelImage.h"
#include "workbench/imaging/PictureFormat.h"

#include <string>

namespace Magick {
class Blob;
}

namespace qor::imaging {

/// Puts \p image into \p bytes as a file of that format. False, with a reason without a file's name
/// in \p error, when the format cannot hold it or memory is short. Any thread.
bool encode(const QorPixelImage& image,
            const PictureFormat& format,
            Magick::Blob& bytes,
            std::string& error);

} // namespace qor::imaging
