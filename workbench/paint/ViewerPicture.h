#pragma once

#include "platform/vis/QorViewer.h"
#include "workbench/paint/PictureCache.h"

#include <functional>

class QPainter;

namespace qor::paint {

/// Draws what a viewpoint of \p viewer shows of space: that many pixels, RGB, or RGBA with straight
/// alpha where the background is to be seen. Null with a reason that begins in lower case on
/// failure.
using SpaceDrawer = std::function<QorPixelImage_var(Qor3DViewer& viewer,
                                                    const Qor3DViewpoint& viewpoint,
                                                    int width,
                                                    int height,
                                                    QorUnicodeString& error)>;

/// The background colour, of a viewer of space without one a light backdrop, and the viewpoints of
/// the plane below 0, on a device of the viewer's size.
void paintUnder(QPainter& painter, const QorViewer& viewer, PictureCache& pictures);
/// The viewpoints of the plane from 0 on; those of a viewer of the plane include the main one.
void paintOver(QPainter& painter, const QorViewer& viewer, PictureCache& pictures);

/// All that the viewer shows, in its size in device pixels: colour, viewpoints below 0, space (not
/// asked for by a viewer of the plane, nor where a picture hides all of it), the axis cross of a
/// viewer that navigates in space, and viewpoints from 0 on. Null with a reason on failure.
[[nodiscard]] QorPixelImage_var takePicture(QorViewer& viewer,
                                            const SpaceDrawer& drawSpace,
                                            PictureCache& pictures,
                                            QorUnicodeString& error);

} // namespace qor::paint
