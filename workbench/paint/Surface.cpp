#include "workbench/paint/Surface.h"

#include "platform/vis/QorViewer.h"

namespace qor::paint {

Surface surfaceOf(const QorViewer& viewer) {
    Surface surface;
    viewer.GetGraphicSize(surface.width, surface.height);
    surface.unit = viewer.GetSupport()->GetMMInSupportUnit();
    surface.ratio = viewer.GetSupport()->GetPixelRatio();
    return surface;
}

} // namespace qor::paint
