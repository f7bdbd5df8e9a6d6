#pragma once

#include "workbench/paint/PictureCache.h"
#include "workbench/paint/Surface.h"

#include <optional>
#include <vector>

class Qor2DViewpoint;
class QorViewer;

namespace qor::paint {

/// The pictures of a viewpoint that shows nothing else, all of them upright; nothing for others.
/// Such viewpoints, of renders and backgrounds, need no painter: a texture is enough.
[[nodiscard]] std::optional<std::vector<PlacedPicture>>
picturesOf(const Qor2DViewpoint& viewpoint, const Surface& surface, PictureCache& pictures);

/// A viewpoint of the plane that was added to a viewer.
struct Plane {
    const Qor2DViewpoint* viewpoint;
    std::optional<std::vector<PlacedPicture>> pictures; ///< if it shows nothing else
};

/// What of a viewer is to be seen at all: a whole and opaque picture hides all that lies below it.
struct VisiblePlanes {
    std::vector<Plane> planes;  ///< from the lowest that is not hidden
    bool hidesBackdrop = false; ///< the colour under everything
    bool hidesSpace = false;
};

[[nodiscard]] VisiblePlanes
visiblePlanesOf(const QorViewer& viewer, const Surface& surface, PictureCache& pictures);

} // namespace qor::paint
