#include "workbench/desktop/viewer/gl/GroundMirror.h"

#include <algorithm>

namespace qor::desktop {

namespace {

constexpr GLenum clipDistance = 0x3000; // GL_CLIP_DISTANCE0, which the headers of OpenGL ES lack

using Plane = GroundMirror::Plane;

QorMathPoint mirrored(const QorMathPoint& point, const Plane& plane) {
    return point - plane.normal * (2.0 * ((point - plane.origin) * plane.normal));
}

Matrix4d mirrorMatrix(const Plane& plane) {
    const QorMathPoint zero = mirrored({}, plane);
    const std::array<QorMathVector, 3> axes{mirrored({1.0, 0.0, 0.0}, plane) - zero,
                                            mirrored({0.0, 1.0, 0.0}, plane) - zero,
                                            mirrored({0.0, 0.0, 1.0}, plane) - zero};
    return {axes[0].x, axes[0].y, axes[0].z, 0.0, axes[1].x, axes[1].y, axes[1].z, 0.0,
            axes[2].x, axes[2].y, axes[2].z, 0.0, zero.x,    zero.y,    zero.z,    1.0};
}

/// Around the mirror image of a box of model space.
Qor3DBoundingBox
mirrored(const Qor3DBoundingBox& box, const QorMathPoint& origin, const Plane& plane) {
    Qor3DBoundingBox result;
    for (const double x : {box.low.x, box.high.x})
        for (const double y : {box.low.y, box.high.y})
            for (const double z : {box.low.z, box.high.z})
                result.Add(mirrored(QorMathPoint{x, y, z} - origin, plane) + origin);
    return result;
}

Float4 withW(const QorMathVector& vector, double w) {
    const Float3 xyz = toFloats(vector);
    return {xyz[0], xyz[1], xyz[2], static_cast<float>(w)};
}

/// The camera whose picture is the mirror image that \p camera sees.
Camera mirrored(Camera camera, const Plane& plane) {
    Matrix4d projection{};
    std::copy(camera.viewProjection.begin(), camera.viewProjection.end(), projection.begin());
    camera.viewProjection = toFloats(projection * mirrorMatrix(plane));
    const QorMathVector eye{static_cast<double>(camera.eye[0]), static_cast<double>(camera.eye[1]),
                            static_cast<double>(camera.eye[2])};
    const bool isPlace = camera.eye[3] != 0.0F;
    camera.eye = isPlace ? withW(mirrored(eye, plane), 1.0)
                         : withW(mirrored(eye, plane) - mirrored(QorMathPoint{}, plane), 0.0);
    return camera;
}

bool isAbove(const Camera& camera, const Plane& plane) {
    const QorMathVector eye{static_cast<double>(camera.eye[0]), static_cast<double>(camera.eye[1]),
                            static_cast<double>(camera.eye[2])};
    return (eye - plane.origin * static_cast<double>(camera.eye[3])) * plane.normal > 0.0;
}

} // namespace

GroundMirror::GroundMirror(Gl& gl, SurfacePainter& surfaces)
    : gl_(gl), surfaces_(surfaces), target_(gl) {}

bool GroundMirror::draw(const Qor3DViewpoint& viewpoint,
                        const QSize& size,
                        const Plane& plane,
                        const SceneBuffers& scene,
                        const SurfacePainter::View& view) {
    if (!isAbove(view.camera, plane))
        return false;
    // The depths are those of the mirror image.
    const Camera camera =
        mirrored(cameraOf(viewpoint, scene.origin(), mirrored(scene.box(), scene.origin(), plane),
                          size.width(), size.height()),
                 plane);
    const Float4 clip = withW(plane.normal, -(plane.normal * plane.origin));
    const SurfacePainter::View mirror{camera, view.lighting, view.look, clip};
    target_.resize(size, true);
    target_.begin();
    gl_.glEnable(GL_DEPTH_TEST);
    gl_.glDepthFunc(GL_LEQUAL);
    gl_.glEnable(clipDistance);
    surfaces_.drawSolid(scene, mirror);
    surfaces_.drawClear(scene, mirror);
    gl_.glDisable(clipDistance);
    gl_.glDisable(GL_BLEND);
    target_.end();
    return true;
}

} // namespace qor::desktop
