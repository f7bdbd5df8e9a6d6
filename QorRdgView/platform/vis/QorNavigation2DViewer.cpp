#include "platform/vis/QorNavigation2DViewer.h"

#include <algorithm>
#include <cmath>
#include <utility>

QorImplementClass(QorNavigation2DViewer, Qor2DViewer)

namespace {

constexpr double wheelFactor = 1.2; // a step forwards
constexpr double smallestScale = 1.0e-6;
constexpr double largestScale = 1.0e6;

} // namespace

QorNavigation2DViewer::QorNavigation2DViewer(QorCommand* iFather,
                                             const QorString& iName,
                                             QorDlgStyle iStyle,
                                             float iWidth,
                                             float iHeight,
                                             QorDlgStyle iFrameStyle)
    : Qor2DViewer(iFather, iName, iStyle, iWidth, iHeight), frameStyle(iFrameStyle) {}

QorNavigation2DViewer::~QorNavigation2DViewer() {
    AnnounceEnd();
}

void QorNavigation2DViewer::Reframe() {
    const Qor2DBoundingBox box = GetMain2DViewpoint()->GetRoot().GetBoundingBox();
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    if (box.IsEmpty() || !(width > 0.0F) || !(height > 0.0F))
        return;
    const QorMathPoint2D size = box.high - box.low;
    const double unitsByPixel =
        std::max(size.x / static_cast<double>(width), size.y / static_cast<double>(height));
    const QorMathPoint2D center{0.5 * (box.low.x + box.high.x), 0.5 * (box.low.y + box.high.y)};
    const double scale =
        unitsByPixel > 0.0
            ? 1.0 / (unitsByPixel * static_cast<double>(GetSupport()->GetMMInSupportUnit()))
            : GetMain2DViewpoint()->GetScale();
    Show(center, scale);
}

bool QorNavigation2DViewer::Navigate(const QorMouseEvent& iMouse) {
    using Action = QorMouseEvent::Action;
    const QorVar<QorNavigation2DViewer> alive(this);
    switch (iMouse.action) {
    case Action::Press:
    case Action::DoubleClick:
        if (!pan)
            pan = Pan{iMouse.button, PointUnder(iMouse.pixel)};
        return true;
    case Action::Move:
        return pan && MoveTo(iMouse.pixel);
    case Action::Release:
        if (!pan || pan->button != iMouse.button)
            return false;
        MoveTo(iMouse.pixel);
        pan.reset();
        return true;
    case Action::Wheel:
        return Zoom(iMouse);
    }
    return false;
}

QorMathPoint2D QorNavigation2DViewer::PointUnder(const QorMathPoint2D& iPixel) const {
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    return GetMain2DViewpoint()->PixelToModel(iPixel, width, height,
                                              GetSupport()->GetMMInSupportUnit());
}

bool QorNavigation2DViewer::MoveTo(const QorMathPoint2D& iPixel) {
    constexpr double still = 1.0e-9; // of the viewer's plane: rounding, no movement
    const QorMathPoint2D way = pan->grip - PointUnder(iPixel);
    const double scale = GetMain2DViewpoint()->GetScale();
    if (std::max(std::abs(way.x), std::abs(way.y)) * scale > still)
        Show(GetMain2DViewpoint()->GetOrigin() + way, scale);
    return true;
}

bool QorNavigation2DViewer::Zoom(const QorMouseEvent& iMouse) {
    if (iMouse.wheelSteps == 0.0)
        return false;
    const double scale = GetMain2DViewpoint()->GetScale();
    const double newScale =
        std::clamp(scale * std::pow(wheelFactor, iMouse.wheelSteps), smallestScale, largestScale);
    const double part = scale / newScale; // what is left of the way from the point to the origin
    const QorMathPoint2D point = PointUnder(iMouse.pixel);
    const QorMathPoint2D offset = GetMain2DViewpoint()->GetOrigin() - point;
    Show({point.x + offset.x * part, point.y + offset.y * part}, newScale);
    return true;
}

void QorNavigation2DViewer::Show(const QorMathPoint2D& iOrigin, double iScale) {
    GetMain2DViewpoint()->SetView(iOrigin, iScale);
    Draw();
    GetMain2DViewpoint()->Modified();
}
