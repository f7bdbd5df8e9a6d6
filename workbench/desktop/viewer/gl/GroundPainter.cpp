#include "workbench/desktop/viewer/gl/GroundPainter.h"

#include "platform/vis/Qor3DReps.h"

#include <algorithm>
#include <cmath>

namespace qor::desktop {

namespace {

constexpr int shadowSize = 1024;
constexpr int contactSize = 256;
constexpr double groundReach = 2.5; // sizes of the ground, as the engine has it
constexpr double reach = 0.22;      // of the product's size: how high above the ground darkens it
constexpr float fall = 5.0F;        // of that darkness, over the reach

/// Half sizes of a box around \p box in the axes of \p frame, and its middle.
struct Extent {
    QorMathVector low;
    QorMathVector high;
};

Extent extentIn(const QorMathTransformation& frame, const Qor3DBoundingBox& box) {
    const Qor3DBoundingBox inside = box.Transformed(frame.Inverse());
    return {inside.low, inside.high};
}

} // namespace

GroundPainter::GroundPainter(Gl& gl, SurfacePainter& surfaces)
    : gl_(gl)
    , surfaces_(surfaces)
    , ground_(gl, {"ground.vert", {"lighting.glsl", "ground.frag"}})
    , blur_(gl, {"full.vert", {"blur.frag"}})
    , nothing_(gl)
    , shadow_(makeDepthTarget(shadowSize))
    , contactDepth_(makeDepthTarget(contactSize))
    , contactBlurred_(makeGreyTarget(contactSize))
    , contact_(makeGreyTarget(contactSize)) {
    gl_.glBindTexture(GL_TEXTURE_2D, shadow_.texture.name());
    gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_MODE, GL_COMPARE_REF_TO_TEXTURE);
    gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
}

GroundPainter::Target GroundPainter::makeDepthTarget(int size) const {
    Target target{GlTexture(gl_), GlFramebuffer(gl_)};
    gl_.glBindTexture(GL_TEXTURE_2D, target.texture.name());
    gl_.glTexImage2D(GL_TEXTURE_2D, 0, GL_DEPTH_COMPONENT24, size, size, 0, GL_DEPTH_COMPONENT,
                     GL_UNSIGNED_INT, nullptr);
    gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    gl_.glBindFramebuffer(GL_FRAMEBUFFER, target.framebuffer.name());
    gl_.glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_TEXTURE_2D,
                               target.texture.name(), 0);
    const GLenum none = GL_NONE;
    gl_.glDrawBuffers(1, &none);
    gl_.glReadBuffer(GL_NONE);
    return target;
}

GroundPainter::Target GroundPainter::makeGreyTarget(int size) const {
    Target target{GlTexture(gl_), GlFramebuffer(gl_)};
    gl_.glBindTexture(GL_TEXTURE_2D, target.texture.name());
    gl_.glTexImage2D(GL_TEXTURE_2D, 0, GL_R8, size, size, 0, GL_RED, GL_UNSIGNED_BYTE, nullptr);
    gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    gl_.glBindFramebuffer(GL_FRAMEBUFFER, target.framebuffer.name());
    gl_.glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D,
                               target.texture.name(), 0);
    return target;
}

void GroundPainter::bindTarget(const Target& target, int size, bool depth) const {
    gl_.glBindFramebuffer(GL_FRAMEBUFFER, target.framebuffer.name());
    gl_.glViewport(0, 0, size, size);
    gl_.glDisable(GL_BLEND);
    if (!depth) {
        gl_.glDisable(GL_DEPTH_TEST);
        return;
    }
    gl_.glEnable(GL_DEPTH_TEST);
    gl_.glDepthMask(GL_TRUE);
    gl_.glClear(GL_DEPTH_BUFFER_BIT);
}

void GroundPainter::prepare(const QorRsc3DGroundRep& ground,
                            const SceneBuffers& scene,
                            const Lighting& lighting,
                            std::uint64_t change) {
    const QorMathVector up = ground.GetVertical().NormalizedOr({0.0, 0.0, 1.0});
    plane_.origin = ground.GetOrigin();
    plane_.frame = QorMathTransformation::FromZTo(up);
    plane_.frame.origin = ground.GetOrigin() - scene.origin();
    plane_.halfSize = 0.5 * ground.GetSize() * groundReach;
    plane_.transparency = ground.GetTransparency();
    plane_.reflectivity = ground.GetReflectivity();
    hasShadow_ = lighting.hasShadow() && lighting.shadowDirection() * up < -0.02;

    std::vector<double> wanted{static_cast<double>(change),
                               plane_.frame.origin.x,
                               plane_.frame.origin.y,
                               plane_.frame.origin.z,
                               up.x,
                               up.y,
                               up.z,
                               hasShadow_ ? 1.0 : 0.0};
    if (hasShadow_) {
        const QorMathVector& direction = lighting.shadowDirection();
        wanted.insert(wanted.end(), {direction.x, direction.y, direction.z});
    }
    if (wanted == drawnFor_ || scene.box().IsEmpty())
        return;
    drawnFor_ = wanted;
    if (hasShadow_)
        drawShadow(scene, lighting.shadowDirection());
    drawContact(scene);
}

Qor3DBoundingBox GroundPainter::boxOf(const QorRsc3DGroundRep& ground) {
    const Qor3DBoundingBox own = ground.GetBoundingBox();
    if (own.IsEmpty())
        return own;
    const QorMathPoint middle = own.Center();
    Qor3DBoundingBox box;
    box.Add(middle + (own.low - middle) * groundReach);
    box.Add(middle + (own.high - middle) * groundReach);
    return box;
}

void GroundPainter::prepareMirror(const Qor3DViewpoint& viewpoint,
                                  const QRect& viewport,
                                  const SceneBuffers& scene,
                                  const SurfacePainter::View& view) {
    hasMirror_ = plane_.reflectivity > 0.0F && !scene.box().IsEmpty() && !viewport.isEmpty();
    if (!hasMirror_) {
        mirror_.reset();
        return;
    }
    if (!mirror_)
        mirror_ = std::make_unique<GroundMirror>(gl_, surfaces_);
    corner_ = {static_cast<float>(viewport.x()), static_cast<float>(viewport.y())};
    hasMirror_ = mirror_->draw(viewpoint, viewport.size(),
                               {plane_.frame.origin, plane_.frame.axes[2]}, scene, view);
}

/// The product as the light sees it, in the light's own rectangle around it.
void GroundPainter::drawShadow(const SceneBuffers& scene, const QorMathVector& direction) {
    constexpr double room = 1.02;
    const QorMathTransformation axes = QorMathTransformation::FromZTo(-direction);
    const Extent extent = extentIn(axes, scene.box());
    const QorMathVector middle = (extent.low + extent.high) * 0.5;
    const QorMathVector half = (extent.high - extent.low) * (0.5 * room);
    const double depth = std::max(half.Norm(), 1.0e-6);
    const QorMathTransformation frame{axes.axes, axes.Apply(middle) - scene.origin()};
    // Behind the product the light goes on to the ground, which lies in the far plane's reach.
    const Matrix4d matrix =
        parallelMatrix(std::max(half.x, 1.0e-6), std::max(half.y, 1.0e-6), -depth, depth) *
        viewMatrix(frame);
    bindTarget(shadow_, shadowSize, true);
    gl_.glEnable(GL_POLYGON_OFFSET_FILL);
    gl_.glPolygonOffset(1.5F, 2.0F);
    surfaces_.drawDepths(scene, toFloats(matrix));
    gl_.glDisable(GL_POLYGON_OFFSET_FILL);
    shadowMatrix_ = toFloats(halvingMatrix() * matrix);
}

/// The product as the ground sees it from below, blurred.
void GroundPainter::drawContact(const SceneBuffers& scene) {
    constexpr double room = 1.35; // for the blur
    const QorMathTransformation& up = plane_.frame;
    const QorMathTransformation seen{{up.axes[0], -up.axes[1], -up.axes[2]}, {}};
    const Extent extent = extentIn(seen, scene.box());
    const QorMathVector middle = (extent.low + extent.high) * 0.5;
    const double half =
        0.5 * room * std::max(extent.high.x - extent.low.x, extent.high.y - extent.low.y) + 1.0e-6;
    QorMathPoint center = seen.Apply(middle) - scene.origin();
    center = center - up.axes[2] * ((center - up.origin) * up.axes[2]);
    const double height = reach * scene.box().Extent().Norm();
    const Matrix4d matrix =
        parallelMatrix(half, half, -0.02 * height, height) * viewMatrix({seen.axes, center});
    bindTarget(contactDepth_, contactSize, true);
    surfaces_.drawDepths(scene, toFloats(matrix));
    const float texel = 1.0F / static_cast<float>(contactSize);
    blur(contactDepth_, contactBlurred_, {texel, 0.0F}, true);
    blur(contactBlurred_, contact_, {0.0F, texel}, false);
    contactMatrix_ = toFloats(halvingMatrix() * matrix);
}

void GroundPainter::blur(const Target& source,
                         const Target& target,
                         const Float2& direction,
                         bool depth) {
    bindTarget(target, contactSize, false);
    gl_.glActiveTexture(GL_TEXTURE0);
    gl_.glBindTexture(GL_TEXTURE_2D, source.texture.name());
    blur_.use();
    blur_.set("source", 0);
    blur_.set("texel", direction);
    blur_.set("isDepth", depth ? 1 : 0);
    blur_.set("reach", fall);
    gl_.glBindVertexArray(nothing_.name());
    gl_.glDrawArrays(GL_TRIANGLES, 0, 3);
}

void GroundPainter::draw(const SceneBuffers& scene, const SurfacePainter::View& view) {
    constexpr float seenFromBelow = 0.25F;
    const QorMathTransformation& frame = plane_.frame;
    gl_.glEnable(GL_BLEND);
    gl_.glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    gl_.glDepthMask(GL_FALSE);
    gl_.glEnable(GL_POLYGON_OFFSET_FILL); // what stands on it is in front of it
    gl_.glPolygonOffset(1.0F, 2.0F);
    ground_.use();
    view.lighting.apply(ground_, scene.origin());
    ground_.set("viewProjection", view.camera.viewProjection);
    ground_.set("eye", view.camera.eye);
    ground_.set("origin", toFloats(frame.origin));
    ground_.set("across", toFloats(frame.axes[0] * plane_.halfSize));
    ground_.set("along", toFloats(frame.axes[1] * plane_.halfSize));
    ground_.set("normal", toFloats(frame.axes[2]));
    ground_.set("opacity", 1.0F - plane_.transparency);
    ground_.set("albedo", view.look.ground);
    ground_.set("below", seenFromBelow);
    ground_.set("hasShadow", hasShadow_ && !scene.box().IsEmpty() ? 1 : 0);
    ground_.set("hasContact", scene.box().IsEmpty() ? 0 : 1);
    ground_.set("shadowMatrix", shadowMatrix_);
    ground_.set("shadowTexel", 1.0F / static_cast<float>(shadowSize));
    ground_.set("contactMatrix", contactMatrix_);
    ground_.set("shadowMap", 0);
    ground_.set("contactMap", 1);
    ground_.set("mirrorMap", 2);
    ground_.set("reflectivity", hasMirror_ ? plane_.reflectivity : 0.0F);
    ground_.set("corner", corner_);
    gl_.glActiveTexture(GL_TEXTURE2);
    gl_.glBindTexture(GL_TEXTURE_2D, hasMirror_ ? mirror_->texture() : contact_.texture.name());
    gl_.glActiveTexture(GL_TEXTURE1);
    gl_.glBindTexture(GL_TEXTURE_2D, contact_.texture.name());
    gl_.glActiveTexture(GL_TEXTURE0);
    gl_.glBindTexture(GL_TEXTURE_2D, shadow_.texture.name());
    gl_.glBindVertexArray(nothing_.name());
    gl_.glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    gl_.glDisable(GL_POLYGON_OFFSET_FILL);
    gl_.glDepthMask(GL_TRUE);
}

} // namespace qor::desktop
