#include "workbench/desktop/viewer/gl/ViewerComposer.h"

#include "platform/vis/QorViewer.h"
#include "workbench/paint/PlanePainter.h"
#include "workbench/paint/PlanePictures.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace qor::desktop {

namespace {

Float3 floatsOf(const QorColor& color) {
    constexpr float full = 255.0F;
    return {static_cast<float>(color.red) / full, static_cast<float>(color.green) / full,
            static_cast<float>(color.blue) / full};
}

Float4 floatsOf(const QRect& place) {
    const QRectF sides(place);
    return {static_cast<float>(sides.left()), static_cast<float>(sides.top()),
            static_cast<float>(sides.right()), static_cast<float>(sides.bottom())};
}

/// The sides of the part that is drawn, as parts of the picture's.
Float4 sourceOf(const paint::PlacedPicture& placed) {
    const Float4 sides = floatsOf(placed.source);
    const auto width = static_cast<float>(placed.picture->GetWidth());
    const auto height = static_cast<float>(placed.picture->GetHeight());
    return {sides[0] / width, sides[1] / height, sides[2] / width, sides[3] / height};
}

} // namespace

ViewerComposer::ViewerComposer(Gl& gl, paint::PictureCache& pictures)
    : gl_(gl)
    , space_(gl)
    , backdrop_(gl, {"full.vert", {"backdrop.frag"}})
    , layer_(gl, {"full.vert", {"layer.frag"}})
    , image_(gl, {"image.vert", {"image.frag"}})
    , nothing_(gl)
    , painted_(pictures) {}

void ViewerComposer::bind(GLuint framebuffer, const QSize& size) {
    framebuffer_ = framebuffer;
    size_ = size;
    gl_.glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    gl_.glViewport(0, 0, size.width(), size.height());
    gl_.glDisable(GL_DEPTH_TEST);
    gl_.glDisable(GL_SCISSOR_TEST);
    gl_.glDisable(GL_STENCIL_TEST);
    gl_.glDisable(GL_CULL_FACE);
    gl_.glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    gl_.glActiveTexture(GL_TEXTURE0);
    gl_.glBindVertexArray(nothing_.name());
}

void ViewerComposer::compose(Qor3DViewer& viewer,
                             const QSize& size,
                             const ViewerLook& look,
                             GLuint framebuffer,
                             QPaintDevice& device) {
    const paint::Surface surface = paint::surfaceOf(viewer);
    const paint::VisiblePlanes visible = paint::visiblePlanesOf(viewer, surface, painted_);
    showsSpace_ = !visible.hidesSpace;
    if (showsSpace_)
        space_.update(viewer, size, look);
    bind(framebuffer, size);
    if (!visible.hidesBackdrop)
        drawBackdrop(viewer, look);
    const auto isUnder = [](const paint::Plane& plane) {
        return plane.viewpoint->GetPriority() < 0;
    };
    const auto over = std::find_if_not(visible.planes.begin(), visible.planes.end(), isUnder);
    for (auto plane = visible.planes.begin(); plane != over; ++plane)
        drawPlane(*plane, surface, device);
    if (showsSpace_) {
        bind(framebuffer, size);
        drawSpace();
        drawLetters(viewer, look, device);
    }
    for (auto plane = over; plane != visible.planes.end(); ++plane)
        drawPlane(*plane, surface, device);
    gl_.glBindVertexArray(0);
    shownBefore_ = std::exchange(shown_, {});
    painted_.endFrame();
}

void ViewerComposer::drawLetters(Qor3DViewer& viewer,
                                 const ViewerLook& look,
                                 QPaintDevice& device) {
    if (!hasAxisCross(viewer, size_, look.pixelRatio))
        return;
    const std::vector<SpaceView> views = spaceViewsOf(viewer, size_);
    QPainter painter(&device);
    painter.scale(1.0 / device.devicePixelRatio(), 1.0 / device.devicePixelRatio());
    AxisCross::drawLetters(painter, *views.front().viewpoint, size_, look.pixelRatio);
}

void ViewerComposer::drawBackdrop(const Qor3DViewer& viewer, const ViewerLook& look) {
    const bool own = viewer.HasBackgroundColor();
    const Float3 color = floatsOf(viewer.GetBackgroundColor());
    gl_.glDisable(GL_BLEND);
    backdrop_.use();
    backdrop_.set("top", own ? color : look.backdropTop);
    backdrop_.set("bottom", own ? color : look.backdropBottom);
    gl_.glDrawArrays(GL_TRIANGLES, 0, 3);
}

void ViewerComposer::drawSpace() {
    gl_.glEnable(GL_BLEND);
    // The target stays opaque whatever the layer's own coverage is.
    gl_.glBlendFuncSeparate(GL_ONE, GL_ONE_MINUS_SRC_ALPHA, GL_ZERO, GL_ONE);
    gl_.glBindTexture(GL_TEXTURE_2D, space_.texture());
    layer_.use();
    layer_.set("layer", 0);
    gl_.glDrawArrays(GL_TRIANGLES, 0, 3);
}

void ViewerComposer::drawPlane(const paint::Plane& plane,
                               const paint::Surface& surface,
                               QPaintDevice& device) {
    if (!plane.pictures) {
        QPainter painter(&device);
        paint::paintPlane(painter, *plane.viewpoint, surface, painted_);
        return;
    }
    bind(framebuffer_, size_);
    gl_.glBlendFuncSeparate(GL_ONE, GL_ONE_MINUS_SRC_ALPHA, GL_ZERO, GL_ONE);
    image_.use();
    image_.set("size",
               Float2{static_cast<float>(size_.width()), static_cast<float>(size_.height())});
    image_.set("image", 0);
    for (const paint::PlacedPicture& picture : *plane.pictures)
        if (picture.picture)
            drawPicture(picture);
}

void ViewerComposer::drawPicture(const paint::PlacedPicture& picture) {
    const auto texture = pictures_.get(*picture.picture, TextureCache::Use::Shown);
    shown_.push_back(texture);
    gl_.glBindTexture(GL_TEXTURE_2D, texture->texture.name());
    const GLint filter = picture.isExact() ? GL_NEAREST : GL_LINEAR;
    gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
    image_.set("place", floatsOf(picture.place));
    image_.set("source", sourceOf(picture));
    image_.set("hasAlpha", picture.isOpaque ? 0 : 1);
    // Blending is work where a processor draws.
    if (picture.isOpaque)
        gl_.glDisable(GL_BLEND);
    else
        gl_.glEnable(GL_BLEND);
    gl_.glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
}

} // namespace qor::desktop
