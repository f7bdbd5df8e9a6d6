#pragma once

#include "workbench/paint/Surface.h"

class QPainter;
class Qor2DViewpoint;

namespace qor::paint {

class PictureCache;

/// Draws what a viewpoint of the plane shows on a surface whose upper left is the painter's origin.
/// A device pixel of the painter's device is one of the surface, whatever its pixel ratio. Lines,
/// marks and texts lie where Qor2DViewpoint::ModelToPixel puts their points, to half a pixel; a
/// picture whose pixels are those of the surface is drawn exactly. The painter's state is kept.
void paintPlane(QPainter& painter,
                const Qor2DViewpoint& viewpoint,
                const Surface& surface,
                PictureCache& pictures);

} // namespace qor::paint
