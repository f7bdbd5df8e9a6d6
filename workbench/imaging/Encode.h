#pragma once

#include "platform/vis/QorPixelImage.h"
#include "workbench/imaging/PictureFormat.h"

#include <functional>
#include <string>

namespace Magick {
class Blob;
}

namespace qor::imaging {

/// Told how far an encoding is, 0 to 100; false gives it up.
using Watcher = std::function<bool(int percent)>;

/// Puts \p image into \p bytes as a file of that format, with its density where the format has room
/// for one. False, with a reason without a file's name in \p error, when the format cannot hold it,
/// memory is short or \p watcher gives it up. Any thread.
bool encode(const QorPixelImage& image,
            const PictureFormat& format,
            Magick::Blob& bytes,
            std::string& error,
            const Watcher& watcher = {});

} // namespace qor::imaging
