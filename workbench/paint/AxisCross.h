#pragma once

#include <QSize>

class QPainter;
class Qor3DViewpoint;

namespace qor::paint {

/// Three small arrows in the lower left corner that tell where x, y and z are, as the desktop's
/// viewers draw them. A painter's unit is a device pixel here; \p size is the viewer's. Nothing is
/// drawn in a viewer that is too small for it.
void paintAxisCross(QPainter& painter,
                    const Qor3DViewpoint& viewpoint,
                    const QSize& size,
                    double pixelRatio);

} // namespace qor::paint
