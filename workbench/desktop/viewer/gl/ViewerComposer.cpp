#include "workbench/desktop/viewer/gl/ViewerComposer.h"

#include "platform/vis/QorViewer.h"
#include "workbench/desktop/viewer/gl/PlanePictures.h"
#include "workbench/paint/PlanePainter.h"

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

/// Whether a shrunk picture would lose pixels between those that a filter of two by two reads; the
/// painter has a better way then.
bool shrinks(const PlacedPicture& picture) {
    const auto sourceWidth =
        (picture.source[2] - picture.source[0]) * static_cast<float>(picture.image->GetWidth());
    const auto sourceHeight =
        (picture.source[3] - picture.source[1]) * static_cast<float>(picture.image->GetHeight());
    return 2.0F * (picture.place[2] - picture.place[0]) < sourceWidth ||
           2.0F * (picture.place[3] - picture.place[1]) < sourceHeight;
}

} // namespace

ViewerComposer::ViewerComposer(Gl& gl)
    : gl_(gl)
    , space_(gl)
    , backdrop_(gl, {"full.vert", {"backdrop.frag"}})
    , layer_(gl, {"full.vert", {"layer.frag"}})
    , image_(gl, {"image.vert", {"image.frag"}})
    , nothing_(gl) {}

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
    space_.update(viewer, size, look);
    bind(framebuffer, size);
    drawBackdrop(viewer, look);
    drawPlanes(viewer, true, device);
    bind(framebuffer, size);
    drawSpace();
    drawLetters(viewer, look, device);
    drawPlanes(viewer, false, device);
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

void ViewerComposer::drawPlanes(const Qor3DViewer& viewer, bool under, QPaintDevice& device) {
    const paint::Surface surface = paint::surfaceOf(viewer);
    for (const QorVar<QorViewpoint>& one : viewer.GetAddedViewpoints())
        if (const auto* plane = dynamic_cast<const Qor2DViewpoint*>(one.Get()))
            if ((plane->GetPriority() < 0) == under)
                drawPlane(*plane, surface, device);
}

void ViewerComposer::drawPlane(const Qor2DViewpoint& viewpoint,
                               const paint::Surface& surface,
                               QPaintDevice& device) {
    const auto pictures = picturesOf(viewpoint, surface);
    const bool simple =
        pictures && std::none_of(pictures->begin(), pictures->end(),
                                 [](const PlacedPicture& one) { return shrinks(one); });
    if (!simple) {
        QPainter painter(&device);
        paint::paintPlane(painter, viewpoint, surface, painted_);
        return;
    }
    bind(framebuffer_, size_);
    gl_.glEnable(GL_BLEND);
    gl_.glBlendFuncSeparate(GL_ONE, GL_ONE_MINUS_SRC_ALPHA, GL_ZERO, GL_ONE);
    image_.use();
    image_.set("size",
               Float2{static_cast<float>(size_.width()), static_cast<float>(size_.height())});
    image_.set("image", 0);
    for (const PlacedPicture& picture : *pictures) {
        const auto texture = pictures_.get(*picture.image, TextureCache::Use::Shown);
        shown_.push_back(texture);
        gl_.glBindTexture(GL_TEXTURE_2D, texture->texture.name());
        const GLint filter = picture.exact ? GL_NEAREST : GL_LINEAR;
        gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
        gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
        image_.set("place", picture.place);
        image_.set("source", picture.source);
        image_.set("hasAlpha", texture->hasAlpha && !picture.opaque ? 1 : 0);
        gl_.glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    }
}

} // namespace qor::desktop
