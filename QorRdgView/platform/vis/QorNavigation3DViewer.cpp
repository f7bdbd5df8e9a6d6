#include "platform/vis/QorNavigation3DViewer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

QorImplementClass(QorNavigation3DViewer, Qor3DViewer)

namespace {

constexpr double clickTolerance = 2.0; // device-independent pixels that a click may tremble
constexpr double wheelFactor = 0.85;   // what a step forwards leaves of the distance

} // namespace

QorNavigation3DViewer::QorNavigation3DViewer(
    QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle, float iWidth, float iHeight)
    : Qor3DViewer(iFather, iName, iStyle, iWidth, iHeight)
    , animation(*GetMain3DViewpoint(), [this] { Draw(); }) {}

QorNavigation3DViewer::~QorNavigation3DViewer() {
    animation.Stop();
    AnnounceEnd();
}

void QorNavigation3DViewer::SetTreeDisplay(bool iOn) {
    if (std::exchange(treeDisplayed, iOn) != iOn)
        GetCallbackManager()->DispatchCallbacks(iOn ? TREE_DISPLAY_ON : TREE_DISPLAY_OFF, this);
}

QorView QorNavigation3DViewer::GetView() const {
    return animation.IsRunning() ? changeTo : QorView::Of(*GetMain3DViewpoint());
}

void QorNavigation3DViewer::ChangeView(const QorView& iView) {
    const QorVar<QorNavigation3DViewer> alive(this);
    changeTo = iView;
    animation.Start(iView);
}

void QorNavigation3DViewer::ShowStandardView(QorStandardView iView) {
    const auto ratio = static_cast<double>(GetSupport()->GetRatioWH());
    ChangeView(QorSeenFrom(iView, GetVertical(), GetView()).Fitted(GetProductBox(), ratio));
}

void QorNavigation3DViewer::FitAll() {
    const Qor3DBoundingBox box = GetProductBox();
    if (!box.IsEmpty())
        ChangeView(GetView().Fitted(box, static_cast<double>(GetSupport()->GetRatioWH())));
}

void QorNavigation3DViewer::ShowProjection(Qor3DViewpoint::Projection iProjection) {
    QorView view = GetView();
    view.projection = iProjection;
    ChangeView(view);
}

Qor3DBoundingBox QorNavigation3DViewer::GetProductBox() const {
    return Qor3DBoundingBoxRender({}).Render(GetMain3DViewpoint()->GetRoot());
}

bool QorNavigation3DViewer::Navigate(const QorMouseEvent& iMouse) {
    using Action = QorMouseEvent::Action;
    const QorVar<QorNavigation3DViewer> alive(this);
    switch (iMouse.action) {
    case Action::Press:
        return BeginGesture(iMouse);
    case Action::DoubleClick:
        if (iMouse.button == QorMouseEvent::Button::Left && !ProductUnder(iMouse.pixel))
            FitAll();
        return BeginGesture(iMouse);
    case Action::Move:
        return MoveGesture(iMouse);
    case Action::Release:
        return EndGesture(iMouse);
    case Action::Wheel:
        return Zoom(iMouse);
    }
    return false;
}

bool QorNavigation3DViewer::BeginGesture(const QorMouseEvent& iMouse) {
    using Button = QorMouseEvent::Button;
    if (iMouse.button == Button::None)
        return false;
    if (gesture)
        return true; // the button that came first goes on
    const bool pans =
        iMouse.button == Button::Right || (iMouse.button == Button::Middle && iMouse.shift);
    gesture = Gesture{pans ? GestureKind::Pan : GestureKind::Orbit, iMouse};
    return true;
}

bool QorNavigation3DViewer::IsMovement(const QorMouseEvent& iMouse) const {
    const QorMathPoint2D way = iMouse.pixel - gesture->press.pixel;
    return std::max(std::abs(way.x), std::abs(way.y)) >
           clickTolerance * static_cast<double>(GetSupport()->GetPixelRatio());
}

bool QorNavigation3DViewer::MoveGesture(const QorMouseEvent& iMouse) {
    if (!gesture)
        return false;
    if (!gesture->moved) {
        if (!IsMovement(iMouse))
            return true;
        animation.Stop();
        gesture->moved = true;
        gesture->start = QorView::Of(*GetMain3DViewpoint());
        const std::optional<QorMathPoint> grip = ProductUnder(gesture->press.pixel);
        gesture->pivot = grip.value_or(GetMain3DViewpoint()->GetTarget());
        GetMain3DViewpoint()->SetAnimated(true);
        if (!gesture)
            return true; // whoever was told has ended it
    }
    Show(gesture->kind == GestureKind::Orbit ? Orbited(iMouse) : Panned(iMouse));
    return true;
}

bool QorNavigation3DViewer::EndGesture(const QorMouseEvent& iMouse) {
    if (!gesture || iMouse.button != gesture->press.button)
        return false;
    MoveGesture(iMouse);
    const bool moved = gesture && gesture->moved;
    gesture.reset();
    if (moved)
        GetMain3DViewpoint()->SetAnimated(false);
    return moved;
}

QorView QorNavigation3DViewer::Orbited(const QorMouseEvent& iMouse) const {
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    const double radiansByPixel = std::numbers::pi / std::max(1.0, static_cast<double>(height));
    const QorMathPoint2D way = iMouse.pixel - gesture->press.pixel;
    return gesture->start.Orbited(gesture->pivot, GetVertical(), -way.x * radiansByPixel,
                                  way.y * radiansByPixel);
}

QorView QorNavigation3DViewer::Panned(const QorMouseEvent& iMouse) const {
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    const Qor3DViewpoint_var start = QorMake<Qor3DViewpoint>();
    gesture->start.ApplyTo(*start);
    const QorMathVector sight = start->GetSight();
    // The plane across the sight in which what was taken hold of stays under the pointer.
    const auto inPlane = [&](const QorMathPoint2D& iPixel) {
        const QorMathRay ray = start->GetEyeRay(iPixel, width, height);
        const double depth = (gesture->pivot - ray.origin) * sight;
        return ray.origin + ray.direction * (depth / (ray.direction * sight));
    };
    return gesture->start.Moved(inPlane(gesture->press.pixel) - inPlane(iMouse.pixel));
}

bool QorNavigation3DViewer::Zoom(const QorMouseEvent& iMouse) {
    if (iMouse.wheelSteps == 0.0)
        return false;
    animation.Stop();
    gesture.reset(); // its start is no more where the view was
    GetMain3DViewpoint()->SetAnimated(true);
    const QorMathPoint point = ProductUnder(iMouse.pixel).value_or(AtTargetDepth(iMouse.pixel));
    Show(
        QorView::Of(*GetMain3DViewpoint()).Zoomed(point, std::pow(wheelFactor, iMouse.wheelSteps)));
    GetMain3DViewpoint()->SetAnimated(false);
    return true;
}

std::optional<QorMathPoint>
QorNavigation3DViewer::ProductUnder(const QorMathPoint2D& iPixel) const {
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    const QorMathRay ray = GetMain3DViewpoint()->GetEyeRay(iPixel, width, height);
    const double infinite = std::numeric_limits<double>::infinity();
    const QorPicker::Hit hit = QorPicker::Pick(GetMain3DViewpoint()->GetRoot(), ray, infinite);
    if (hit.distance < 0.0)
        return std::nullopt;
    return ray.origin + ray.direction * hit.distance;
}

QorMathPoint QorNavigation3DViewer::AtTargetDepth(const QorMathPoint2D& iPixel) const {
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    QorMathPoint near;
    QorMathPoint far;
    GetMain3DViewpoint()->ComputeModelFromDeviceEvent(iPixel, width, height, near, far);
    return far;
}

void QorNavigation3DViewer::Show(const QorView& iView) {
    iView.ApplyTo(*GetMain3DViewpoint());
    Draw();
}
