#pragma once

#include "workbench/desktop/viewer/gl/ViewerComposer.h"

#include <QOpenGLWidget>

#include <functional>

class Qor3DViewer;

namespace qor::desktop {

/// Shows a viewer of space with OpenGL. What it keeps on the graphics card goes with the context,
/// and comes again with the next one.
class SpaceSurface : public QOpenGLWidget {
public:
    /// \p pictures: what is drawn in the plane, kept until forget().
    SpaceSurface(QWidget* parent, Qor3DViewer& viewer, paint::PictureCache& pictures);
    ~SpaceSurface() override;

    /// Called once when it turns out that it cannot draw, with the reason.
    std::function<void(const QString& reason)> onFault;

    /// The viewer is going: nothing is drawn any more, and nothing of it is kept.
    void forget();

    /// What it shows, in device pixels; null if it cannot draw.
    [[nodiscard]] QImage picture();

    /// Null before the first drawing; for tests and measuring.
    [[nodiscard]] const ViewerComposer* composer() const { return composer_.get(); }

    /// Why OpenGL cannot be used on this machine; empty when it can. Found out once.
    [[nodiscard]] static const QString& fault();

    /// Makes a window that is not shown yet one that OpenGL draws in. Else the first viewer of
    /// space that comes into it would have the window made anew before everybody's eyes.
    static void expectIn(QWidget& window);

protected:
    void initializeGL() override;
    void paintGL() override;

private:
    void release();
    void fail(const QString& reason);

    Qor3DViewer* viewer_;
    paint::PictureCache& pictures_;
    std::unique_ptr<ViewerComposer> composer_;
};

} // namespace qor::desktop
