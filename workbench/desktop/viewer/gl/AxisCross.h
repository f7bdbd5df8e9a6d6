#pragma once

#include "workbench/desktop/viewer/gl/SurfacePainter.h"

#include <QRect>

class QPainter;

namespace qor::desktop {

/// Three small arrows in a corner that turn with the view and tell where x, y and z are.
class AxisCross {
public:
    /// The caches are asked once.
    AxisCross(Gl& gl, MeshCache& meshes, TextureCache& textures);

    /// Whether a viewer of that size has the room.
    [[nodiscard]] static bool fits(const QSize& size, float pixelRatio);

    /// Draws the arrows into the framebuffer that is bound, \p size pixels large, over what is
    /// there; its depths are lost.
    void draw(SurfacePainter& surfaces,
              const Qor3DViewpoint& viewpoint,
              const Lighting& lighting,
              const ViewerLook& look);

    /// Writes the letters at the arrows' ends.
    static void drawLetters(QPainter& painter,
                            const Qor3DViewpoint& viewpoint,
                            const QSize& size,
                            float pixelRatio);

private:
    Gl& gl_;
    SceneBuffers arrows_;
};

} // namespace qor::desktop
