#pragma once

#include "workbench/desktop/viewer/ViewerPeer.h"

#include <QPointer>

class Qor3DViewer;

namespace qor::desktop {

class SpaceSurface;

/// A viewer of space, drawn with OpenGL 3.3. On a machine without, the viewer says so and works as
/// it does without a window.
class SpaceViewerPeer : public ViewerPeer {
public:
    explicit SpaceViewerPeer(QorDialog& widget);
    ~SpaceViewerPeer() override;

    QImage picture(QString& reason) override;

    /// Null without OpenGL.
    [[nodiscard]] SpaceSurface* surface() const;

protected:
    void drawLater() override;

private:
    [[nodiscard]] Qor3DViewer& my() const;

    QPointer<SpaceSurface> surface_; ///< in the control
};

} // namespace qor::desktop
