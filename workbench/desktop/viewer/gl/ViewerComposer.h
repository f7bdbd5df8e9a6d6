#pragma once

#include "workbench/desktop/viewer/gl/SpaceLayer.h"
#include "workbench/paint/PictureCache.h"
#include "workbench/paint/Surface.h"

class QPaintDevice;

namespace qor::paint {
struct Plane;
}

namespace qor::desktop {

/// Puts together all that a viewer of space shows: background, viewpoints of the plane below 0,
/// space, the letters of the axis cross, viewpoints from 0 on. What a whole and opaque picture
/// hides is not drawn.
class ViewerComposer {
public:
    /// Throws std::runtime_error if the shaders cannot be built.
    /// \p pictures: what is drawn in the plane, kept for as long as the composer.
    ViewerComposer(Gl& gl, paint::PictureCache& pictures);

    /// Draws into \p framebuffer, which is what \p device paints on, \p size device pixels large.
    void compose(Qor3DViewer& viewer,
                 const QSize& size,
                 const ViewerLook& look,
                 GLuint framebuffer,
                 QPaintDevice& device);

    [[nodiscard]] const SpaceLayer& space() const { return space_; }

    /// Whether the last frame showed a picture of space that a better one is to follow.
    [[nodiscard]] bool isQuick() const { return showsSpace_ && space_.isQuick(); }

    /// How many pictures were uploaded so far; for tests and measuring.
    [[nodiscard]] std::size_t uploads() const { return pictures_.uploads(); }

private:
    void drawBackdrop(const Qor3DViewer& viewer, const ViewerLook& look);
    void drawSpace();
    void drawLetters(Qor3DViewer& viewer, const ViewerLook& look, QPaintDevice& device);
    void drawPlane(const paint::Plane& plane, const paint::Surface& surface, QPaintDevice& device);
    void drawPicture(const paint::PlacedPicture& picture);
    void bind(GLuint framebuffer, const QSize& size);

    Gl& gl_;
    SpaceLayer space_;
    TextureCache pictures_;
    GlProgram backdrop_;
    GlProgram layer_;
    GlProgram image_;
    GlVertexArray nothing_; ///< the vertices come from their numbers
    std::vector<std::shared_ptr<const GpuTexture>> shown_;
    std::vector<std::shared_ptr<const GpuTexture>> shownBefore_;
    paint::PictureCache& painted_;
    GLuint framebuffer_ = 0;
    QSize size_;
    bool showsSpace_ = true; ///< in the last frame
};

} // namespace qor::desktop
