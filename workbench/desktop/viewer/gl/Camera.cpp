#include "workbench/desktop/viewer/gl/Camera.h"

#include "platform/vis/QorViewpoint.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qor::desktop {

namespace {

struct Depths {
    double near;
    double far;
};

/// How far in front of the eye \p content begins and ends.
Depths depthsOf(const Qor3DBoundingBox& content, const QorMathTransformation& frame) {
    if (content.IsEmpty())
        return {1.0, 2.0};
    Depths depths{HUGE_VAL, -HUGE_VAL};
    for (const double x : {content.low.x, content.high.x})
        for (const double y : {content.low.y, content.high.y})
            for (const double z : {content.low.z, content.high.z}) {
                const double depth = (frame.origin - QorMathPoint{x, y, z}) * frame.axes[2];
                depths.near = std::min(depths.near, depth);
                depths.far = std::max(depths.far, depth);
            }
    return depths;
}

/// A little room around, and never empty.
Depths widened(const Depths& depths) {
    const double room = 1.0e-3 * (depths.far - depths.near) + 1.0e-6 * std::abs(depths.far) + 1e-6;
    return {depths.near - room, depths.far + room};
}

Depths inFrontOfTheEye(const Depths& depths, double targetDistance) {
    constexpr double nearestPart = 2.0e-5; // of the farthest: what 24 bits can tell apart
    const double far = depths.far > 0.0 ? depths.far : targetDistance;
    return {std::max(depths.near, far * nearestPart), far};
}

} // namespace

Camera cameraOf(const Qor3DViewpoint& viewpoint,
                const QorMathPoint& origin,
                const Qor3DBoundingBox& content,
                double width,
                double height) {
    const QorMathTransformation frame = viewpoint.GetEyeFrame();
    const double ratio = width / std::max(1.0, height);
    const Depths all = widened(depthsOf(content, frame));
    const QorMathTransformation relative{frame.axes, frame.origin - origin};
    const bool parallel = viewpoint.GetProjection() == Qor3DViewpoint::Projection::Parallel;

    Camera camera;
    camera.right = toFloats(frame.axes[0]);
    camera.back = toFloats(frame.axes[2]);
    camera.halfSize = {static_cast<float>(0.5 * width), static_cast<float>(0.5 * height)};
    Matrix4d projection;
    double halfHeight = 0.0;
    if (parallel) {
        halfHeight = 0.5 * viewpoint.GetViewHeight();
        projection = parallelMatrix(halfHeight * ratio, halfHeight, all.near, all.far);
        camera.eye = {camera.back[0], camera.back[1], camera.back[2], 0.0F};
    } else {
        halfHeight = std::tan(viewpoint.GetFieldOfView() * std::numbers::pi / 360.0);
        const double distance = (viewpoint.GetTarget() - viewpoint.GetEye()).Norm();
        const Depths seen = inFrontOfTheEye(all, distance);
        projection = perspectiveMatrix(halfHeight * ratio, halfHeight, seen.near, seen.far);
        const Float3 eye = toFloats(relative.origin);
        camera.eye = {eye[0], eye[1], eye[2], 1.0F};
    }
    camera.pixelsByMm = static_cast<float>(0.5 * height / halfHeight);
    camera.viewProjection = toFloats(projection * viewMatrix(relative));
    return camera;
}

} // namespace qor::desktop
