#include "platform/vis/QorManipulator.h"

#include "platform/vis/QorViewer.h"

#include <algorithm>
#include <cmath>
#include <utility>

QorImplementClass(QorManipulatorNotification, QorNotification)
QorImplementClass(QorManipulatorBeginNotification, QorManipulatorNotification)
QorImplementClass(QorManipulatorManipulateNotification, QorManipulatorNotification)
QorImplementClass(QorManipulatorEndNotification, QorManipulatorNotification)
QorImplementClass(QorManipulatorActivateNotification, QorManipulatorNotification)
QorImplementClass(QorManipulatorEditNotification, QorManipulatorNotification)
QorImplementClass(QorManipulator, QorCommand)
QorImplementClass(Qor2DManipulator, QorManipulator)
QorImplementClass(Qor2DIndicator, Qor2DManipulator)
QorImplementClass(Qor3DManipulator, QorManipulator)

QorManipulator::QorManipulator(QorCommand* iFather, const QorString& iName, QorViewer* iViewer)
    : QorCommand(iFather, iName), viewer(iViewer) {
    if (viewer != nullptr)
        viewer->AddManipulator(this);
}

QorManipulator::~QorManipulator() {
    Detach();
}

void QorManipulator::Detach() {
    if (QorViewer* last = std::exchange(viewer, nullptr))
        last->RemoveManipulator(this);
}

QorNotification* QorManipulator::GetBeginManipulate() const {
    return begin;
}

QorNotification* QorManipulator::GetManipulate() const {
    return manipulate;
}

QorNotification* QorManipulator::GetEndManipulate() const {
    return end;
}

QorNotification* QorManipulator::GetActivate() const {
    return activate;
}

QorNotification* QorManipulator::GetEdit() const {
    return edit;
}

void QorManipulator::Send(QorManipulatorNotification* iNotification,
                          const QorMouseEvent& iMouse,
                          const std::vector<QorVar<QorRep>>& iPath) {
    const QorVar<QorManipulatorNotification> alive(iNotification);
    iNotification->SetMouse(iMouse);
    iNotification->SetPickPath(iPath);
    SendNotification(this, iNotification);
    iNotification->SetPickPath({}); // a path kept here would keep what was picked
}

void QorManipulator::Edit() {
    Send(edit, {}, {});
}

bool QorManipulator::Begin(const QorMouseEvent& iMouse, const std::vector<QorVar<QorRep>>& iPath) {
    pressed = true;
    dragging = true;
    BeginDrag(iMouse, iPath);
    Send(begin, iMouse, iPath);
    return true;
}

bool QorManipulator::HandleMouse(const QorMouseEvent& iMouse,
                                 const std::vector<QorVar<QorRep>>& iPath) {
    using Action = QorMouseEvent::Action;
    if (viewer == nullptr)
        return false;
    const QorVar<QorManipulator> alive(this);
    switch (iMouse.action) {
    case Action::Press:
        if (iMouse.button != QorMouseEvent::Button::Left)
            return false;
        pressed = true;
        BeginDrag(iMouse, iPath);
        return true;
    case Action::Move:
        if (!pressed)
            return false;
        if (!dragging) {
            dragging = true;
            Send(begin, iMouse, iPath);
        }
        Drag(iMouse);
        Send(manipulate, iMouse, iPath);
        return true;
    case Action::Release:
        if (!pressed || iMouse.button != QorMouseEvent::Button::Left)
            return false;
        pressed = false;
        if (std::exchange(dragging, false)) {
            Drag(iMouse);
            Send(end, iMouse, iPath);
        } else {
            Send(activate, iMouse, iPath);
        }
        return true;
    case Action::DoubleClick:
        if (iMouse.button != QorMouseEvent::Button::Left)
            return false;
        Send(edit, iMouse, iPath);
        return true;
    case Action::Wheel:
        return false;
    }
    return false;
}

Qor2DManipulator::Qor2DManipulator(QorCommand* iFather,
                                   const QorString& iName,
                                   QorViewer* iViewer,
                                   Qor2DViewpoint* iViewpoint)
    : QorManipulator(iFather, iName, iViewer), viewpoint(iViewpoint) {}

double Qor2DManipulator::GetDistance(const QorMathPoint2D& iPoint) const {
    const QorMathPoint2D offset = iPoint - origin;
    return std::max({0.0, std::abs(offset.x) - reach.x, std::abs(offset.y) - reach.y});
}

QorMathPoint2D Qor2DManipulator::PointUnder(const QorMouseEvent& iMouse) const {
    const QorSupport* support = GetViewer()->GetSupport();
    float width = 0.0F;
    float height = 0.0F;
    support->GetWidthAndHeight(width, height);
    return viewpoint->PixelToModel(iMouse.pixel, width, height, support->GetMMInSupportUnit());
}

void Qor2DManipulator::BeginDrag(const QorMouseEvent& iMouse,
                                 const std::vector<QorVar<QorRep>>& /*iPath*/) {
    grip = PointUnder(iMouse) - origin;
}

void Qor2DManipulator::Drag(const QorMouseEvent& iMouse) {
    origin = PointUnder(iMouse) - grip;
}

Qor2DIndicator::Qor2DIndicator(QorCommand* iFather,
                               const QorString& iName,
                               QorViewer* iViewer,
                               Qor2DViewpoint* iViewpoint)
    : Qor2DManipulator(iFather, iName, iViewer, iViewpoint) {
    SetPickable(false); // it gets what no handle takes, while it is the foreground one
    SetCursor(QorCursor::Cross);
}

bool Qor2DIndicator::HandleMouse(const QorMouseEvent& iMouse,
                                 const std::vector<QorVar<QorRep>>& iPath) {
    using Action = QorMouseEvent::Action;
    const bool begins =
        iMouse.action == Action::Press && iMouse.button == QorMouseEvent::Button::Left;
    if (!begins)
        return Qor2DManipulator::HandleMouse(iMouse, iPath);
    SetOrigin(PointUnder(iMouse));
    return Begin(iMouse, iPath); // drawing begins where the button goes down, moved or not
}

Qor3DManipulator::Qor3DManipulator(QorCommand* iFather,
                                   const QorString& iName,
                                   QorViewer* iViewer,
                                   Qor3DRep* iRep,
                                   const QorMathAxis& iPosition)
    : QorManipulator(iFather, iName, iViewer)
    , rep(iRep)
    , position(iPosition)
    , startPosition(iPosition) {}

void Qor3DManipulator::TurnThirdTo(const QorMathVector& iThird) {
    const QorMathVector third = iThird.NormalizedOr(position.GetThirdDirection());
    const QorMathTransformation& frame = position.GetFrame();
    const QorMathTransformation turn =
        QorMathTransformation::FromZTo(third) *
        QorMathTransformation::FromZTo(position.GetThirdDirection()).Inverse();
    position = QorMathAxis(frame.origin, turn.ApplyToVector(frame.axes[0]),
                           turn.ApplyToVector(frame.axes[1]), third);
    Send(static_cast<QorManipulatorNotification*>(GetManipulate()), {}, {});
}

namespace {

/// The point of a ray in the plane through \p iPoint across \p iNormal; the ray's origin when it
/// runs along it.
QorMathPoint
OnPlane(const QorMathRay& iRay, const QorMathPoint& iPoint, const QorMathVector& iNormal) {
    const double slope = iRay.direction * iNormal;
    if (slope == 0.0)
        return iRay.origin;
    return iRay.origin + iRay.direction * (((iPoint - iRay.origin) * iNormal) / slope);
}

/// The point of the line through \p iPoint along \p iAxis that is nearest to a ray.
QorMathPoint
OnLine(const QorMathRay& iRay, const QorMathPoint& iPoint, const QorMathVector& iAxis) {
    const QorMathVector across = (iAxis ^ iRay.direction).Normalized();
    return iPoint +
           iAxis * ((OnPlane(iRay, iPoint, (across ^ iAxis).Normalized()) - iPoint) * iAxis);
}

QorMathAxis
Moved(const QorMathAxis& iAxis, const QorMathTransformation& iTurn, const QorMathVector& iShift) {
    const QorMathTransformation& frame = iAxis.GetFrame();
    return {frame.origin + iShift, iTurn.ApplyToVector(frame.axes[0]),
            iTurn.ApplyToVector(frame.axes[1]), iTurn.ApplyToVector(frame.axes[2])};
}

/// The rotation that turns one direction to another by the shortest way.
QorMathTransformation FromTo(const QorMathVector& iFrom, const QorMathVector& iTo) {
    const QorMathVector axis = iFrom ^ iTo;
    return QorMathTransformation::Rotation(axis, std::atan2(axis.Norm(), iFrom * iTo));
}

} // namespace

QorMathRay Qor3DManipulator::RayUnder(const QorMouseEvent& iMouse) const {
    float width = 0.0F;
    float height = 0.0F;
    GetViewer()->GetGraphicSize(width, height);
    return held->GetEyeRay(iMouse.pixel, width, height);
}

QorMathPoint Qor3DManipulator::Grasp(const QorMouseEvent& iMouse) const {
    const QorMathRay ray = RayUnder(iMouse);
    const QorMathPoint& origin = startPosition.GetOrigin();
    const QorMathVector sight = held->GetSight();
    switch (mode) {
    case Mode::AxisTranslation:
        return OnLine(ray, origin, startPosition.GetThirdDirection());
    case Mode::PlaneTranslation:
    case Mode::AxisRotation:
        return OnPlane(ray, origin, startPosition.GetThirdDirection());
    case Mode::OriginRotation:
        return OnBall(ray, origin, sight);
    case Mode::Translation:
    case Mode::None:
        break;
    }
    return OnPlane(ray, origin, sight);
}

QorMathPoint Qor3DManipulator::OnBall(const QorMathRay& iRay,
                                      const QorMathPoint& iCenter,
                                      const QorMathVector& iSight) const {
    // The near half of a ball through the point that was taken hold of; outside it, its rim.
    const QorMathVector offset = OnPlane(iRay, iCenter, iSight) - iCenter;
    const double across = offset.Norm();
    if (across >= ballRadius)
        return iCenter + offset * (ballRadius / across);
    return iCenter + offset - iSight * std::sqrt(ballRadius * ballRadius - across * across);
}

void Qor3DManipulator::BeginDrag(const QorMouseEvent& iMouse,
                                 const std::vector<QorVar<QorRep>>& /*iPath*/) {
    startPosition = position;
    held = GetViewer()->Get3DViewpointAt(iMouse.pixel);
    const QorMathVector sight = held->GetSight();
    const QorMathRay ray = RayUnder(iMouse);
    const double across = (OnPlane(ray, position.GetOrigin(), sight) - position.GetOrigin()).Norm();
    // The ball must hold the pointer with room to turn, whatever part of the arrow was taken.
    const Qor3DBoundingBox box = rep ? rep->GetBoundingBox() : Qor3DBoundingBox{};
    ballRadius = std::max({across, 0.5 * box.Extent().Norm(), 1.0e-9});
    startPoint = Grasp(iMouse);
}

void Qor3DManipulator::Drag(const QorMouseEvent& iMouse) {
    const QorMathPoint& origin = startPosition.GetOrigin();
    const QorMathPoint point = Grasp(iMouse);
    switch (mode) {
    case Mode::None:
        return;
    case Mode::Translation:
    case Mode::AxisTranslation:
    case Mode::PlaneTranslation:
        position = Moved(startPosition, {}, point - startPoint);
        return;
    case Mode::AxisRotation:
    case Mode::OriginRotation:
        position =
            Moved(startPosition,
                  FromTo((startPoint - origin).Normalized(), (point - origin).Normalized()), {});
        return;
    }
}
