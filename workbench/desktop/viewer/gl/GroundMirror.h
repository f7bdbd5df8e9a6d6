#pragma once

#include "workbench/desktop/viewer/gl/RenderTarget.h"
#include "workbench/desktop/viewer/gl/SurfacePainter.h"

namespace qor::desktop {

/// What a plane mirrors of a scene, as a picture of a viewport: the scene seen by the eye's own
/// mirror image, without what lies below the plane.
class GroundMirror {
public:
    GroundMirror(Gl& gl, SurfacePainter& surfaces);

    struct Plane {
        QorMathPoint origin; ///< relative to the scene's
        QorMathVector normal;
    };

    /// Draws into a framebuffer of its own; the caller binds his afterwards. False, and nothing
    /// drawn, for an eye below the plane.
    bool draw(const Qor3DViewpoint& viewpoint,
              const QSize& size,
              const Plane& plane,
              const SceneBuffers& scene,
              const SurfacePainter::View& view);

    /// Premultiplied, of the size of the viewport.
    [[nodiscard]] GLuint texture() const { return target_.texture(); }

private:
    Gl& gl_;
    SurfacePainter& surfaces_;
    RenderTarget target_;
};

} // namespace qor::desktop
