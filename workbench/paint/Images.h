#pragma once

#include "platform/vis/QorPixelImage.h"

#include <QImage>

namespace qor::paint {

/// The pixels of \p picture as an image that shares them; they live as long as it does.
/// Transparency counts unless \p isOpaque. Null for an empty picture.
[[nodiscard]] QImage lend(const QorPixelImage& picture, bool isOpaque);

/// A picture of RGB pixels, without transparency; null when memory is short.
[[nodiscard]] QorPixelImage_var copyOpaque(const QImage& image);

} // namespace qor::paint
