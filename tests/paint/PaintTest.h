#pragma once

#include "platform/dialog/QorDlgDialog.h"
#include "platform/vis/QorViewer.h"
#include "tests/support/QorTestApplication.h"
#include "workbench/paint/PictureCache.h"
#include "workbench/paint/PlanePainter.h"

#include <QImage>

namespace qor::paint {

/// A picture on which a viewpoint draws, black at first.
class PaintTest : public QorTestApplication {
protected:
    static constexpr QRgb black = 0xff000000;
    static constexpr QRgb red = 0xffff0000;
    static constexpr QRgb green = 0xff00ff00;

    void TearDown() override {
        pictures.endFrame(); // what the last frame used
        pictures.endFrame();
        QorTestApplication::TearDown();
    }

    /// A viewpoint with one model unit a device pixel whose origin is the middle of the viewer.
    [[nodiscard]] Qor2DViewpoint_var makeViewpoint() const {
        return QorMake<Qor2DViewpoint>(QorMathPoint2D{}, 1.0 / static_cast<double>(surface.unit));
    }

    [[nodiscard]] QImage paint(const Qor2DViewpoint& viewpoint) {
        QImage image(static_cast<int>(surface.width), static_cast<int>(surface.height),
                     QImage::Format_RGB32);
        image.fill(black);
        paintOn(image, viewpoint);
        return image;
    }

    void paintOn(QImage& image, const Qor2DViewpoint& viewpoint);

    template <class Rep>
    static void look(Rep& rep, const QorGraphicAttributeSet& attributes) {
        rep.SetAttributes(attributes);
    }

    static constexpr QorGraphicAttributeSet inRed{.color = {255, 0, 0, 255}};

    /// The smallest rectangle around all pixels that are not black.
    [[nodiscard]] static QRect inked(const QImage& image);
    /// How many pixels have that colour.
    [[nodiscard]] static int count(const QImage& image, QRgb color);

    Surface surface{.width = 40.0F, .height = 30.0F, .unit = 3.7795277F, .ratio = 1.0F};
    PictureCache pictures;
};

/// A picture of \p channels whose pixel (x, y) is (x, y, 7, alpha).
[[nodiscard]] QorPixelImage_var makeGradient(int width, int height, int channels, int alpha = 255);

} // namespace qor::paint
