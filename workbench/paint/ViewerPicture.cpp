#include "workbench/paint/ViewerPicture.h"

#include "platform/vis/QorNavigation3DViewer.h"
#include "workbench/paint/AxisCross.h"
#include "workbench/paint/Images.h"
#include "workbench/paint/PlanePainter.h"
#include "workbench/paint/PlanePictures.h"

#include <QPainter>

#include <cmath>
#include <string>

namespace qor::paint {

namespace {

/// Where a viewpoint is drawn, device pixels from the upper left.
QRect viewportOf(const QorViewpoint& viewpoint, const QSize& size) {
    float x = 0.0F;
    float y = 0.0F;
    float width = 0.0F;
    float height = 0.0F;
    viewpoint.GetGLViewport(x, y, width, height);
    if (width <= 0.0F || height <= 0.0F)
        return {QPoint(0, 0), size};
    const auto whole = [](float number) {
        return static_cast<int>(std::lround(number));
    };
    return {whole(x), size.height() - whole(y) - whole(height), whole(width), whole(height)};
}

template <class Which>
void paintAdded(QPainter& painter,
                const QorViewer& viewer,
                PictureCache& pictures,
                const Which& which) {
    const Surface surface = surfaceOf(viewer);
    for (const QorVar<QorViewpoint>& added : viewer.GetAddedViewpoints())
        if (const auto* flat = dynamic_cast<const Qor2DViewpoint*>(added.Get());
            flat != nullptr && which(flat->GetPriority()))
            paintPlane(painter, *flat, surface, pictures);
}

/// Draws each viewpoint of space, the main one first.
bool paintSpace(QPainter& painter,
                QorViewer& viewer,
                const QSize& size,
                const SpaceDrawer& draw,
                QorUnicodeString& error) {
    auto* solid = dynamic_cast<Qor3DViewer*>(&viewer);
    if (solid == nullptr)
        return true;
    if (!draw) {
        error = "this program draws nothing in space";
        return false;
    }
    std::vector<QorVar<Qor3DViewpoint>> looks;
    auto all = solid->Get3DViewpoints();
    all.insert(all.end(), viewer.GetAddedViewpoints().begin(), viewer.GetAddedViewpoints().end());
    for (const QorVar<QorViewpoint>& added : all)
        if (auto* look = dynamic_cast<Qor3DViewpoint*>(added.Get()))
            looks.emplace_back(look);
    for (const QorVar<Qor3DViewpoint>& look : looks) {
        const QRect place = viewportOf(*look, size);
        const QorPixelImage_var picture = draw(*solid, *look, place.width(), place.height(), error);
        if (!picture)
            return false;
        painter.drawImage(place, lend(*picture, false));
    }
    return true;
}

} // namespace

namespace {

/// Behind a viewer of space that nobody gave a colour: that of the light theme's windows.
QBrush backdrop(double height) {
    QLinearGradient gradient(0.0, 0.0, 0.0, height);
    gradient.setColorAt(0.0, QColor(0xf6, 0xf7, 0xf8));
    gradient.setColorAt(1.0, QColor(0xc6, 0xc9, 0xce));
    return gradient;
}

} // namespace

void paintUnder(QPainter& painter, const QorViewer& viewer, PictureCache& pictures) {
    const QorColor& color = viewer.GetBackgroundColor();
    const Surface surface = surfaceOf(viewer);
    const double ratio = painter.device()->devicePixelRatio();
    const QRectF area(0.0, 0.0, static_cast<double>(surface.width) / ratio,
                      static_cast<double>(surface.height) / ratio);
    const bool hasBackdrop = viewer.GetMain3DViewpoint() != nullptr && !viewer.HasBackgroundColor();
    painter.fillRect(area, hasBackdrop ? backdrop(area.height())
                                       : QBrush(QColor(color.red, color.green, color.blue)));
    paintAdded(painter, viewer, pictures, [](int priority) { return priority < 0; });
}

void paintOver(QPainter& painter, const QorViewer& viewer, PictureCache& pictures) {
    if (const Qor2DViewpoint* main = viewer.GetMain2DViewpoint())
        paintPlane(painter, *main, surfaceOf(viewer), pictures);
    paintAdded(painter, viewer, pictures, [](int priority) { return priority >= 0; });
}

QorPixelImage_var takePicture(QorViewer& viewer,
                              const SpaceDrawer& drawSpace,
                              PictureCache& pictures,
                              QorUnicodeString& error) {
    const Surface surface = surfaceOf(viewer);
    const QSize size(static_cast<int>(std::lround(surface.width)),
                     static_cast<int>(std::lround(surface.height)));
    const std::string named =
        std::to_string(size.width()) + " by " + std::to_string(size.height()) + " pixels";
    if (size.isEmpty()) {
        error = "a viewer of " + named + " shows nothing";
        return nullptr;
    }
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull()) {
        error = "there is no memory for a picture of " + named;
        return nullptr;
    }
    QPainter painter(&image);
    paintUnder(painter, viewer, pictures);
    const bool isSpaceHidden = visiblePlanesOf(viewer, surface, pictures).hidesSpace;
    if (!isSpaceHidden && !paintSpace(painter, viewer, size, drawSpace, error))
        return nullptr;
    if (dynamic_cast<const QorNavigation3DViewer*>(&viewer) != nullptr)
        paintAxisCross(painter, *viewer.GetMain3DViewpoint(), size,
                       static_cast<double>(surface.ratio));
    paintOver(painter, viewer, pictures);
    painter.end();
    pictures.endFrame();
    QorPixelImage_var picture = copyOpaque(image);
    if (!picture)
        error = "there is no memory for a picture of " + named;
    return picture;
}

} // namespace qor::paint
