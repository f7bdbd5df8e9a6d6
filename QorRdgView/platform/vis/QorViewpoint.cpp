#include "platform/vis/QorViewpoint.h"

#include <algorithm>
#include <cmath>
#include <numbers>

QorImplementClass(QorViewpoint, QorBaseUnknown)
QorImplementClass(Qor2DViewpoint, QorViewpoint)
QorImplementClass(Qor3DViewpoint, QorViewpoint)

const QorEventName QorViewpoint::VIEWPOINT_MODIFIED = "VIEWPOINT_MODIFIED";
const QorEventName QorViewpoint::VIEWPOINT_ANIMATION_STARTED = "VIEWPOINT_ANIMATION_STARTED";

void QorViewpoint::GetGLViewport(float& oX, float& oY, float& oWidth, float& oHeight) const {
    oX = viewport[0];
    oY = viewport[1];
    oWidth = viewport[2];
    oHeight = viewport[3];
}

void QorViewpoint::SetGLViewport(float iX, float iY, float iWidth, float iHeight) {
    viewport[0] = iX;
    viewport[1] = iY;
    viewport[2] = iWidth;
    viewport[3] = iHeight;
}

void QorViewpoint::SetAnimated(bool iAnimated) {
    if (animated == iAnimated)
        return;
    animated = iAnimated;
    if (animated)
        callbacks.DispatchCallbacks(VIEWPOINT_ANIMATION_STARTED, this);
    else
        Modified();
}

void QorViewpoint::Modified() {
    callbacks.DispatchCallbacks(VIEWPOINT_MODIFIED, this);
}

Qor2DViewpoint::Qor2DViewpoint(const QorMathPoint2D& iOrigin, double iScale)
    : origin(iOrigin), scale(iScale) {}

void Qor2DViewpoint::SetView(const QorMathPoint2D& iOrigin, double iScale) {
    if (!(iScale > 0.0) || !std::isfinite(iScale) || !std::isfinite(iOrigin.x) ||
        !std::isfinite(iOrigin.y))
        return;
    origin = iOrigin;
    scale = iScale;
}

void Qor2DViewpoint::AddRep(Qor2DRep* iRep) {
    root->AddChild(iRep);
}

void Qor2DViewpoint::RemoveRep(Qor2DRep* iRep) {
    root->RemoveChild(iRep);
}

QorMathPoint2D Qor2DViewpoint::PixelToModel(const QorMathPoint2D& iPixel,
                                            float iWidth,
                                            float iHeight,
                                            float iMMInSupportUnit) const {
    const double pixelsPerUnit = scale * static_cast<double>(iMMInSupportUnit);
    return {origin.x + (iPixel.x - 0.5 * static_cast<double>(iWidth)) / pixelsPerUnit,
            origin.y - (iPixel.y - 0.5 * static_cast<double>(iHeight)) / pixelsPerUnit};
}

QorMathPoint2D Qor2DViewpoint::ModelToPixel(const QorMathPoint2D& iPoint,
                                            float iWidth,
                                            float iHeight,
                                            float iMMInSupportUnit) const {
    const double pixelsPerUnit = scale * static_cast<double>(iMMInSupportUnit);
    return {0.5 * static_cast<double>(iWidth) + (iPoint.x - origin.x) * pixelsPerUnit,
            0.5 * static_cast<double>(iHeight) - (iPoint.y - origin.y) * pixelsPerUnit};
}

void Qor2DViewpoint::GetWindow(float iWidth,
                               float iHeight,
                               float iMMInSupportUnit,
                               double& oLeft,
                               double& oRight,
                               double& oBottom,
                               double& oTop) const {
    const QorMathPoint2D upperLeft = PixelToModel({0.0, 0.0}, iWidth, iHeight, iMMInSupportUnit);
    const QorMathPoint2D lowerRight =
        PixelToModel({static_cast<double>(iWidth), static_cast<double>(iHeight)}, iWidth, iHeight,
                     iMMInSupportUnit);
    oLeft = upperLeft.x;
    oRight = lowerRight.x;
    oBottom = lowerRight.y;
    oTop = upperLeft.y;
}

void Qor2DViewpoint::SetWindow(
    float iWidth, float iHeight, float iMMInSupportUnit, double iLeft, double iRight, double iTop) {
    if (!(iRight > iLeft) || !(iWidth > 0.0F))
        return;
    const double pixelsPerUnit = static_cast<double>(iWidth) / (iRight - iLeft);
    SetView({0.5 * (iLeft + iRight), iTop - 0.5 * static_cast<double>(iHeight) / pixelsPerUnit},
            pixelsPerUnit / static_cast<double>(iMMInSupportUnit));
}

namespace {

constexpr double radians = std::numbers::pi / 180.0;
constexpr double smallestAngle = 1.0;
constexpr double largestAngle = 170.0;

bool IsFinite(const QorMathVector& iVector) {
    return std::isfinite(iVector.x) && std::isfinite(iVector.y) && std::isfinite(iVector.z);
}

} // namespace

QorMathVector Qor3DViewpoint::GetSight() const {
    return (target - eye).Normalized();
}

double Qor3DViewpoint::GetViewHeight() const {
    return 2.0 * (target - eye).Norm() * std::tan(0.5 * fieldOfView * radians);
}

void Qor3DViewpoint::SetView(const QorMathPoint& iEye,
                             const QorMathPoint& iTarget,
                             const QorMathVector& iUp) {
    if (!IsFinite(iEye) || !IsFinite(iTarget) || !IsFinite(iUp) || iEye == iTarget)
        return;
    eye = iEye;
    target = iTarget;
    const QorMathVector sight = GetSight();
    // Up is kept as given as long as it makes a picture upright; else the axis nearest to it that
    // does.
    const std::array<QorMathVector, 4> candidates{
        {iUp.Normalized(), up, {0.0, 0.0, 1.0}, {0.0, 1.0, 0.0}}};
    constexpr double leastSine = 1.0e-6;
    for (const QorMathVector& candidate : candidates)
        if ((candidate ^ sight).Norm() > leastSine) {
            up = candidate;
            return;
        }
}

void Qor3DViewpoint::SetFieldOfView(double iDegrees) {
    if (std::isfinite(iDegrees))
        fieldOfView = std::clamp(iDegrees, smallestAngle, largestAngle);
}

void Qor3DViewpoint::AddRep(Qor3DRep* iRep) {
    root->AddChild(iRep);
}

void Qor3DViewpoint::RemoveRep(Qor3DRep* iRep) {
    root->RemoveChild(iRep);
}

QorMathTransformation Qor3DViewpoint::GetEyeFrame() const {
    const QorMathVector back = -GetSight();
    const QorMathVector right = (up ^ back).Normalized();
    return {{{right, back ^ right, back}}, eye};
}

Qor3DViewpoint::Part Qor3DViewpoint::GetPart(float iWidth, float iHeight) const {
    float x = 0.0F;
    float y = 0.0F;
    float width = 0.0F;
    float height = 0.0F;
    GetGLViewport(x, y, width, height);
    if (!(width > 0.0F) || !(height > 0.0F))
        return {0.0, 0.0, static_cast<double>(iWidth), static_cast<double>(iHeight)};
    return {static_cast<double>(x),
            static_cast<double>(iHeight) - static_cast<double>(y) - static_cast<double>(height),
            static_cast<double>(width), static_cast<double>(height)};
}

QorMathRay
Qor3DViewpoint::GetEyeRay(const QorMathPoint2D& iPixel, float iWidth, float iHeight) const {
    const QorMathTransformation frame = GetEyeFrame();
    const Part part = GetPart(iWidth, iHeight);
    const double half = std::max(1.0, 0.5 * part.height);
    const double x = (iPixel.x - part.left - 0.5 * part.width) / half;
    const double y = (0.5 * part.height - (iPixel.y - part.top)) / half;
    if (projection == Projection::Parallel) {
        const double halfHeight = 0.5 * GetViewHeight();
        return {eye + frame.axes[0] * (x * halfHeight) + frame.axes[1] * (y * halfHeight),
                GetSight()};
    }
    const double tangent = std::tan(0.5 * fieldOfView * radians);
    return {
        eye,
        (GetSight() + frame.axes[0] * (x * tangent) + frame.axes[1] * (y * tangent)).Normalized()};
}

void Qor3DViewpoint::ComputeModelFromDeviceEvent(const QorMathPoint2D& iPixel,
                                                 float iWidth,
                                                 float iHeight,
                                                 QorMathPoint& oNear,
                                                 QorMathPoint& oFar) const {
    const QorMathRay ray = GetEyeRay(iPixel, iWidth, iHeight);
    const double depth = (target - eye).Norm();
    oNear = ray.origin;
    oFar = ray.origin + ray.direction * (depth / (ray.direction * GetSight()));
}

bool Qor3DViewpoint::Project(const QorMathPoint& iPoint,
                             float iWidth,
                             float iHeight,
                             QorMathPoint2D& oPixel) const {
    const QorMathTransformation frame = GetEyeFrame();
    const QorMathVector offset = iPoint - eye;
    const double depth = offset * GetSight();
    const bool parallel = projection == Projection::Parallel;
    if (!parallel && depth <= 0.0)
        return false;
    const double halfExtent =
        parallel ? 0.5 * GetViewHeight() : depth * std::tan(0.5 * fieldOfView * radians);
    const Part part = GetPart(iWidth, iHeight);
    const double half = 0.5 * part.height;
    oPixel = {part.left + 0.5 * part.width + half * (offset * frame.axes[0]) / halfExtent,
              part.top + half - half * (offset * frame.axes[1]) / halfExtent};
    return true;
}
