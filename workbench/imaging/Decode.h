#pragma once

#include "platform/vis/QorPixelImage.h"

#include <string>
#include <string_view>

namespace qor::imaging {

/// The picture that \p bytes, a whole file, hold: turned as its camera says, sRGB, with alpha when
/// the file has one. The reference belongs to the caller. Null, with a reason without a file's name
/// in \p error, when it is none of our formats, damaged, cut short or too large. Any thread.
QorPixelImage* decode(std::string_view bytes, std::string& error);

/// The same in a quarter of the time for a large JPEG picture of which less is needed: by whole
/// parts smaller, its longer side at least \p side pixels. \p width and \p height are the size that
/// decode would give.
QorPixelImage*
decodeReduced(std::string_view bytes, int side, int& width, int& height, std::string& error);

} // namespace qor::imaging
