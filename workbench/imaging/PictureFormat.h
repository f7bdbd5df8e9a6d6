#pragma once

#include <span>
#include <string_view>

namespace qor::imaging {

enum class Compression { none, packBits, runLength, zip, jpeg };

/// One way to write a picture file.
struct PictureFormat {
    std::string_view keyword; ///< as dialogs name it
    const char* coder;        ///< as Magick++ names it
    Compression compression = Compression::none;
    int quality = 0;           ///< JPEG only, 1..100
    bool fullColor = true;     ///< JPEG only: colour as fine as brightness
    bool alpha = false;        ///< keeps a picture's alpha
    bool profile = false;      ///< carries an sRGB colour profile
    bool needsDensity = false; ///< its files always tell one
    int largestSide = 0;       ///< in pixels
};

/// The eleven formats, in the order in which dialogs list them.
std::span<const PictureFormat> pictureFormats();

/// Null for a keyword that is none of the eleven.
const PictureFormat* findPictureFormat(std::string_view keyword);

/// Name of the coder that reads a file which begins with \p bytes; null when it is none of ours.
const char* coderOfFile(std::string_view bytes);

} // namespace qor::imaging
