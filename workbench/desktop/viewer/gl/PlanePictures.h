#pragma once

#include "platform/vis/QorPixelImage.h"
#include "workbench/desktop/viewer/gl/GlMath.h"
#include "workbench/paint/Surface.h"

#include <optional>
#include <vector>

class Qor2DViewpoint;

namespace qor::desktop {

/// A picture and the device pixels that it covers.
struct PlacedPicture {
    const QorPixelImage* image; ///< the representation holds it
    Float4 place;               ///< left, top, right, bottom
    Float4 source;              ///< the same of the picture, 0..1
    bool exact;                 ///< a pixel of the picture is one of the screen
    bool opaque;
};

/// The pictures of a viewpoint that shows nothing else, all of them upright; nothing for others.
/// Such viewpoints, of renders and backgrounds, need no painter: a texture is enough.
[[nodiscard]] std::optional<std::vector<PlacedPicture>> picturesOf(const Qor2DViewpoint& viewpoint,
                                                                   const paint::Surface& surface);

} // namespace qor::desktop
