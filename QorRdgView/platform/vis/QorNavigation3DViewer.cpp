#include "platform/vis/QorNavigation3DViewer.h"

#include "platform/vis/QorViewerClickNotification.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

QorImplementClass(QorNavigation3DViewer, Qor3DViewer)

const QorEventName QorNavigation3DViewer::VIEWER_PART_CLICKED = "VIEWER_PART_CLICKED";
const QorEventName QorNavigation3DViewer::VIEWER_NOTHING_CLICKED = "VIEWER_NOTHING_CLICKED";

namespace {

constexpr double clickTolerance = 2.0; // device-independent pixels that a click may tremble
constexpr double wheelFactor = 0.85;   // what a step forwards leaves of the distance

} // namespace

QorNavigation3DViewer::QorNavigation3DViewer(
    QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle, float iWidth, float iHeight)
    : Qor3DViewer(iFather, iName, iStyle, iWidth, iHeight) {}

QorNavigation3DViewer::~QorNavigation3DViewer() {
    changes.clear();
    AnnounceEnd();
}

void QorNavigation3DViewer::SetTreeDisplay(bool iOn) {
    if (std::exchange(treeDisplayed, iOn) != iOn)
        GetCallbackManager()->DispatchCallbacks(iOn ? TREE_DISPLAY_ON : TREE_DISPLAY_OFF, this);
}

Qor3DViewpoint* QorNavigation3DViewer::GetActive3DViewpoint() const {
    return active ? active.Get() : GetMain3DViewpoint();
}

Qor3DViewpoint* QorNavigation3DViewer::Activate(const QorMathPoint2D& iPixel) {
    active = Get3DViewpointAt(iPixel);
    return active;
}

Qor3DViewpoint::Part QorNavigation3DViewer::PartOf(const Qor3DViewpoint& iViewpoint) const {
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    return iViewpoint.GetPart(width, height);
}

QorNavigation3DViewer::Change*
QorNavigation3DViewer::FindChange(const Qor3DViewpoint* iViewpoint) const {
    const auto found = std::find_if(changes.begin(), changes.end(), [&](const auto& iChange) {
        return iChange->viewpoint.Get() == iViewpoint;
    });
    return found != changes.end() ? found->get() : nullptr;
}

QorView QorNavigation3DViewer::GetView() const {
    const Change* change = FindChange(GetActive3DViewpoint());
    return change != nullptr && change->animation.IsRunning()
               ? change->to
               : QorView::Of(*GetActive3DViewpoint());
}

void QorNavigation3DViewer::ChangeView(const QorView& iView) {
    const QorVar<QorNavigation3DViewer> alive(this);
    const Qor3DViewpoint_var viewpoint(GetActive3DViewpoint());
    Change* change = FindChange(viewpoint);
    if (change == nullptr)
        change =
            changes.emplace_back(std::make_unique<Change>(viewpoint, [this] { Draw(); })).get();
    change->to = iView;
    change->animation.Start(iView);
}

void QorNavigation3DViewer::StopChangeOf(const Qor3DViewpoint* iViewpoint) {
    if (Change* change = FindChange(iViewpoint))
        change->animation.Stop();
}

void QorNavigation3DViewer::SplitViewpoints(int iCount) {
    const QorVar<QorNavigation3DViewer> alive(this);
    // Gestures and changes belong to parts that will be others.
    gesture.reset();
    changes.clear();
    for (const QorVar<QorViewpoint>& one : Get3DViewpoints())
        one->SetAnimated(false);
    active.Reset();
    Qor3DViewer::SplitViewpoints(iCount);
}

void QorNavigation3DViewer::ShowStandardView(QorStandardView iView) {
    ChangeView(QorSeenFrom(iView, GetVertical(), GetView())
                   .Fitted(GetProductBox(), PartOf(*GetActive3DViewpoint()).Ratio()));
}

void QorNavigation3DViewer::FitAll() {
    Fit(GetProductBox());
}

void QorNavigation3DViewer::Fit(const Qor3DBoundingBox& iBox) {
    if (!iBox.IsEmpty())
        ChangeView(GetView().Fitted(iBox, PartOf(*GetActive3DViewpoint()).Ratio()));
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
        Activate(iMouse.pixel);
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
    gesture = Gesture{pans ? GestureKind::Pan : GestureKind::Orbit, iMouse, Activate(iMouse.pixel)};
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
        const Qor3DViewpoint_var viewpoint = gesture->viewpoint;
        StopChangeOf(viewpoint);
        gesture->moved = true;
        gesture->start = QorView::Of(*viewpoint);
        const std::optional<QorMathPoint> grip = ProductUnder(gesture->press.pixel);
        gesture->pivot = grip.value_or(viewpoint->GetTarget());
        viewpoint->SetAnimated(true);
        if (!gesture)
            return true; // whoever was told has ended it
    }
    Show(*gesture->viewpoint,
         gesture->kind == GestureKind::Orbit ? Orbited(iMouse) : Panned(iMouse));
    return true;
}

bool QorNavigation3DViewer::EndGesture(const QorMouseEvent& iMouse) {
    if (!gesture || iMouse.button != gesture->press.button)
        return false;
    MoveGesture(iMouse);
    const bool moved = gesture && gesture->moved;
    const bool clicked = gesture && !moved &&
                         gesture->press.button == QorMouseEvent::Button::Left &&
                         gesture->press.action == QorMouseEvent::Action::Press;
    const Qor3DViewpoint_var viewpoint = gesture ? gesture->viewpoint : nullptr;
    gesture.reset();
    if (moved)
        viewpoint->SetAnimated(false);
    if (clicked)
        TellOfClick(iMouse);
    return moved;
}

void QorNavigation3DViewer::TellOfClick(const QorMouseEvent& iMouse) {
    QorPickPath path = PickProduct(iMouse.pixel).path;
    const bool onPart = !path.empty();
    const auto click = QorMake<QorViewerClickNotification>(std::move(path), iMouse);
    GetCallbackManager()->DispatchCallbacks(onPart ? VIEWER_PART_CLICKED : VIEWER_NOTHING_CLICKED,
                                            this, click);
}

QorView QorNavigation3DViewer::Orbited(const QorMouseEvent& iMouse) const {
    const double radiansByPixel =
        std::numbers::pi / std::max(1.0, PartOf(*gesture->viewpoint).height);
    const QorMathPoint2D way = iMouse.pixel - gesture->press.pixel;
    return gesture->start.Orbited(gesture->pivot, GetVertical(), -way.x * radiansByPixel,
                                  way.y * radiansByPixel);
}

QorView QorNavigation3DViewer::Panned(const QorMouseEvent& iMouse) const {
    const Qor3DViewpoint::Part part = PartOf(*gesture->viewpoint);
    const Qor3DViewpoint_var start = QorMake<Qor3DViewpoint>();
    gesture->start.ApplyTo(*start);
    const QorMathVector sight = start->GetSight();
    // The plane across the sight in which what was taken hold of stays under the pointer.
    const auto inPlane = [&](const QorMathPoint2D& iPixel) {
        const QorMathRay ray =
            start->GetEyeRay({iPixel.x - part.left, iPixel.y - part.top},
                             static_cast<float>(part.width), static_cast<float>(part.height));
        const double depth = (gesture->pivot - ray.origin) * sight;
        return ray.origin + ray.direction * (depth / (ray.direction * sight));
    };
    return gesture->start.Moved(inPlane(gesture->press.pixel) - inPlane(iMouse.pixel));
}

bool QorNavigation3DViewer::Zoom(const QorMouseEvent& iMouse) {
    if (iMouse.wheelSteps == 0.0)
        return false;
    const Qor3DViewpoint_var viewpoint(Activate(iMouse.pixel));
    StopChangeOf(viewpoint);
    // The start of a drag is no more where the view was.
    const Qor3DViewpoint_var dragged = gesture && gesture->moved ? gesture->viewpoint : nullptr;
    gesture.reset();
    if (dragged && !(dragged == viewpoint))
        dragged->SetAnimated(false);
    viewpoint->SetAnimated(true);
    const QorMathPoint point = ProductUnder(iMouse.pixel).value_or(AtTargetDepth(iMouse.pixel));
    Show(*viewpoint,
         QorView::Of(*viewpoint).Zoomed(point, std::pow(wheelFactor, iMouse.wheelSteps)));
    viewpoint->SetAnimated(false);
    return true;
}

QorMathRay QorNavigation3DViewer::RayUnder(const QorMathPoint2D& iPixel) const {
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    return Get3DViewpointAt(iPixel)->GetEyeRay(iPixel, width, height);
}

QorPicker::Hit QorNavigation3DViewer::PickProduct(const QorMathPoint2D& iPixel) const {
    return QorPicker::Pick(GetMain3DViewpoint()->GetRoot(), RayUnder(iPixel),
                           std::numeric_limits<double>::infinity());
}

std::optional<QorMathPoint>
QorNavigation3DViewer::ProductUnder(const QorMathPoint2D& iPixel) const {
    const QorPicker::Hit hit = PickProduct(iPixel);
    if (hit.distance < 0.0)
        return std::nullopt;
    const QorMathRay ray = RayUnder(iPixel);
    return ray.origin + ray.direction * hit.distance;
}

QorMathPoint QorNavigation3DViewer::AtTargetDepth(const QorMathPoint2D& iPixel) const {
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    QorMathPoint near;
    QorMathPoint far;
    Get3DViewpointAt(iPixel)->ComputeModelFromDeviceEvent(iPixel, width, height, near, far);
    return far;
}

void QorNavigation3DViewer::Show(Qor3DViewpoint& ioViewpoint, const QorView& iView) {
    iView.ApplyTo(ioViewpoint);
    Draw();
}
