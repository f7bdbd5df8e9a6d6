#pragma once

#include "workbench/desktop/viewer/ViewerPeer.h"
#include "workbench/paint/PictureCache.h"

#include <QPointer>

class Qor3DViewer;

namespace qor::desktop {

class SpaceSurface;

/// A viewer of space, drawn with OpenGL 3.3. On a machine without, the viewer says so and works as
/// it does without a window. Where the processor does the graphics card's work, a picture that
/// hides all of space is painted without OpenGL, which would lay all of the window together anew
/// for it.
class SpaceViewerPeer : public ViewerPeer {
public:
    explicit SpaceViewerPeer(QorDialog& widget);
    ~SpaceViewerPeer() override;

    QImage picture(QString& reason) override;

    /// Null without OpenGL.
    [[nodiscard]] SpaceSurface* surface() const;

    /// Whether what the viewer shows is painted without OpenGL now.
    [[nodiscard]] bool isFlat() const { return flat_; }

    /// Has all drawn with OpenGL, as on machines with a graphics card; for tests and measuring.
    void setAlwaysOpenGl(bool isAlways);

protected:
    void drawLater() override;

private:
    [[nodiscard]] Qor3DViewer& my() const;
    void chooseSurface();
    void paintFlat(QPainter& painter);

    paint::PictureCache pictures_;
    QPointer<SpaceSurface> surface_; ///< in the control
    bool flat_ = false;
    bool alwaysOpenGl_ = false;
};

} // namespace qor::desktop
