#pragma once

#include "platform/vis/QorNavigation3DViewer.h"
#include "platform/vis/QorViewerPictureService.h"
#include "tests/desktop/DesktopTest.h"
#include "workbench/desktop/viewer/SpaceSurface.h"
#include "workbench/desktop/viewer/SpaceViewerPeer.h"

#include <QScreen>

#include <cmath>
#include <memory>

namespace qor::desktop::tests {

/// A window with a viewer over all of it.
class ViewerTest : public DesktopTest {
protected:
    /// A viewer of \p Kind in the window, 320 by 240, shown.
    template <class Kind>
    Kind* showViewer() {
        auto* made = new Kind(window, "viewer", QorDlgDefaultStyle, 320.0F, 240.0F);
        window->Attach4Sides(made);
        viewer = made;
        show();
        return made;
    }

    /// The same with black for a background and a camera that looks along +y at the origin, in
    /// parallel projection, 100 mm high.
    QorNavigation3DViewer* showSpace() {
        auto* space = showViewer<QorNavigation3DViewer>();
        constexpr double distance = 500.0;
        constexpr double height = 100.0;
        Qor3DViewpoint& viewpoint = *space->GetMain3DViewpoint();
        viewpoint.SetView({0.0, -distance, 0.0}, {}, {0.0, 0.0, 1.0});
        viewpoint.SetFieldOfView(2.0 * std::atan(0.5 * height / distance) * 180.0 /
                                 3.14159265358979);
        viewpoint.SetProjection(Qor3DViewpoint::Projection::Parallel);
        space->SetBackgroundColor({0, 0, 0, 255});
        space->SetGlobalAmbientLight(0.0F, 0.0F, 0.0F);
        return space;
    }

    [[nodiscard]] Qor3DViewer& space() const { return static_cast<Qor3DViewer&>(*viewer); }

    [[nodiscard]] SpaceSurface& surface() const {
        return *dynamic_cast<SpaceViewerPeer*>(viewer->GetPeer())->surface();
    }

    [[nodiscard]] ViewerControl& control() const {
        return *static_cast<ViewerControl*>(controlOf(viewer));
    }

    /// All that the viewer shows, in device pixels.
    QImage picture() const {
        QorUnicodeString error;
        const QorPixelImage_var taken =
            QorAdopt(QorViewerPictureService::Get().Take(*viewer, error));
        EXPECT_TRUE(taken) << error.Str();
        if (!taken)
            return {};
        return QImage(taken->GetPixels()->data(), taken->GetWidth(), taken->GetHeight(),
                      3 * taken->GetWidth(), QImage::Format_RGB888)
            .copy();
    }

    /// What the display shows where the viewer is, in device pixels.
    [[nodiscard]] QImage onScreen() const {
        QScreen* screen = control().screen();
        const QImage all = screen->grabWindow(0).toImage();
        const double ratio = control().devicePixelRatioF();
        const QPointF corner = QPointF(control().mapToGlobal(QPoint(0, 0))) * ratio;
        QImage part = all.copy(QRect(corner.toPoint(), control().deviceSize()));
        part.setDevicePixelRatio(1.0);
        return part.convertToFormat(QImage::Format_RGB888);
    }

    /// The middle of the viewer.
    [[nodiscard]] QColor middle() const {
        const QImage image = picture();
        return image.pixelColor(image.width() / 2, image.height() / 2);
    }

    /// The pixel of a point of space in \p image, a picture of the viewer.
    [[nodiscard]] QPoint pixelOf(const QorMathPoint& point, const QImage& image) const {
        QorMathPoint2D pixel;
        EXPECT_TRUE(space().GetMain3DViewpoint()->Project(
            point, static_cast<float>(image.width()), static_cast<float>(image.height()), pixel));
        return {static_cast<int>(pixel.x), static_cast<int>(pixel.y)};
    }

    QorViewer* viewer = nullptr; ///< belongs to the window
};

/// A box around a point, with edges.
inline QorMesh_var boxMesh(const QorMathVector& half) {
    QorMesh::Data data;
    for (const double x : {-half.x, half.x})
        for (const double y : {-half.y, half.y})
            for (const double z : {-half.z, half.z})
                for (const double value : {x, y, z})
                    data.positions.push_back(static_cast<float>(value));
    data.indices = {0, 1, 3, 0, 3, 2, 4, 6, 7, 4, 7, 5, 0, 4, 5, 0, 5, 1,
                    2, 3, 7, 2, 7, 6, 0, 2, 6, 0, 6, 4, 1, 5, 7, 1, 7, 3};
    data.edges = {0, 1, 1, 3, 3, 2, 2, 0, 4, 5, 5, 7, 7, 6, 6, 4, 0, 4, 1, 5, 2, 6, 3, 7};
    return QorMake<QorMesh>(std::move(data));
}

/// What the numbers of light are on the screen: sRGB-coded, 0..255.
inline int coded(double light) {
    const double value =
        light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
    return static_cast<int>(std::lround(255.0 * value));
}

inline QorVar<QorGraphicMaterial> plainMaterial(float red, float green, float blue) {
    auto material = QorMake<QorGraphicMaterial>();
    material->baseColor[0] = red;
    material->baseColor[1] = green;
    material->baseColor[2] = blue;
    material->roughness = 1.0F;
    return material;
}

inline QorVar<Qor3DMeshRep> boxRep(QorGraphicMaterial* material,
                                   const QorMathVector& half = {30.0, 30.0, 30.0}) {
    return QorMake<Qor3DMeshRep>(boxMesh(half).Get(), material);
}

/// A light from far away that goes along \p direction, without gloss.
inline Qor3DLightSourceRep* mattLight(const QorMathVector& direction, float factor) {
    auto* light = new Qor3DLightSourceRep(QorLightType::Directional, QorLightMode::Model, {},
                                          direction, 180.0F);
    const float black[4] = {0.0F, 0.0F, 0.0F, 1.0F};
    const float diffuse[4] = {factor, factor, factor, 1.0F};
    light->SetColorParameters(black, diffuse, black);
    return light;
}

/// Colours that are all different from their neighbours, so that any shift shows.
inline QorPixelImage_var noisePicture(int width, int height, int channels, unsigned seed) {
    auto pixels = std::make_shared<QorPixelImage::Pixels>();
    unsigned state = seed;
    for (int i = 0; i < width * height * channels; ++i) {
        state = state * 1664525U + 1013904223U; // Numerical Recipes' generator
        const bool isAlpha = channels == 4 && i % 4 == 3;
        pixels->push_back(isAlpha ? 255 : static_cast<std::uint8_t>(state >> 24U));
    }
    return QorMake<QorPixelImage>(width, height, channels, std::move(pixels));
}

} // namespace qor::desktop::tests
