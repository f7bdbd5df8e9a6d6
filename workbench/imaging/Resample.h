#pragma once

#include "platform/vis/QorPixelImage.h"

namespace qor::imaging {

/// A picture of another size, filtered in linear light. The reference belongs to the caller. Null
/// when a side is not in 1..largestSide, there are too many pixels, or memory is short. Any thread.
/// Filter: Mitchell and Netravali 1988, B = C = 1/3.
QorPixelImage* resample(const QorPixelImage& image, int width, int height);

} // namespace qor::imaging
