#include "platform/vis/QorViewer.h"

#include "platform/vis/QorPicker.h"

#include <algorithm>
#include <cmath>
#include <utility>

QorImplementClass(QorViewer, QorDialog)

const QorEventName QorViewer::VIEWER_DESTROYED = "VIEWER_DESTROYED";
const QorEventName QorViewer::VIEWER_LIGHT_MODIFIED = "VIEWER_LIGHT_MODIFIED";

namespace {

constexpr double pickTolerance = 3.0; // device-independent pixels around thin lines

bool IsPress(const QorMouseEvent& iMouse) {
    return iMouse.action == QorMouseEvent::Action::Press ||
           iMouse.action == QorMouseEvent::Action::DoubleClick;
}

} // namespace

QorViewer::QorViewer(
    QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle, float iWidth, float iHeight)
    : QorDialog(iFather, iName, iStyle), support(QorMake<QorSupport>(iWidth, iHeight)) {}

QorViewer::~QorViewer() {
    AnnounceEnd();
    for (const QorVar<QorViewpoint>& viewpoint : added)
        Unwatch(viewpoint);
    for (QorManipulator* manipulator : manipulators)
        manipulator->viewer = nullptr;
}

void QorViewer::AnnounceEnd() {
    if (!std::exchange(endAnnounced, true))
        GetCallbackManager()->DispatchCallbacks(VIEWER_DESTROYED, this);
}

void QorViewer::GetGraphicSize(float& oWidth, float& oHeight) const {
    support->GetWidthAndHeight(oWidth, oHeight);
}

void QorViewer::AddViewpoint(QorViewpoint* iViewpoint) {
    if (iViewpoint == nullptr)
        return;
    const QorVar<QorViewpoint> viewpoint(iViewpoint);
    RemoveViewpoint(iViewpoint);
    const auto place =
        std::find_if(added.begin(), added.end(), [&](const QorVar<QorViewpoint>& iOther) {
            return iOther->GetPriority() > iViewpoint->GetPriority();
        });
    added.insert(place, viewpoint);
    Watch(viewpoint);
}

void QorViewer::RemoveViewpoint(QorViewpoint* iViewpoint) {
    const auto place =
        std::find_if(added.begin(), added.end(), [&](const QorVar<QorViewpoint>& iOther) {
            return iOther.Get() == iViewpoint;
        });
    if (place == added.end())
        return;
    Unwatch(iViewpoint);
    added.erase(place);
}

void QorViewer::Watch(QorViewpoint* iViewpoint) {
    if (auto* solid = dynamic_cast<Qor3DViewpoint*>(iViewpoint))
        solid->GetRoot().AddWatcher(this);
}

void QorViewer::Unwatch(QorViewpoint* iViewpoint) {
    if (auto* solid = dynamic_cast<Qor3DViewpoint*>(iViewpoint))
        solid->GetRoot().RemoveWatcher(this);
}

void QorViewer::RepChanged(QorRepChange /*iChange*/) {
    Draw();
}

void QorViewer::SetBackgroundColor(const QorColor& iColor) {
    background = iColor;
    backgroundIsSet = true;
    Draw();
}

void QorViewer::Draw() {
    ++drawCount;
    Changed(QorAspectValue);
}

void QorViewer::AddManipulator(QorManipulator* iManipulator) {
    if (iManipulator != nullptr &&
        std::find(manipulators.begin(), manipulators.end(), iManipulator) == manipulators.end())
        manipulators.push_back(iManipulator);
}

void QorViewer::RemoveManipulator(QorManipulator* iManipulator) {
    std::erase(manipulators, iManipulator);
    if (grabbed == iManipulator)
        grabbed = nullptr;
    if (indicator == iManipulator)
        indicator = nullptr;
}

void QorViewer::UserResizeViewer(float iWidth, float iHeight) {
    if (!(iWidth >= 0.0F) || !(iHeight >= 0.0F))
        return;
    const QorVar<QorViewer> alive(this);
    support->Resize(iWidth, iHeight);
    Draw();
}

QorManipulator* QorViewer::PickPlane(const QorMathPoint2D& iPixel, QorPickPath& oPath) const {
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    const float unit = support->GetMMInSupportUnit();
    const auto ratio = static_cast<double>(support->GetPixelRatio());
    QorManipulator* best = nullptr;
    double bestDistance = 0.0;
    for (QorManipulator* manipulator : manipulators) {
        const auto* flat = dynamic_cast<Qor2DManipulator*>(manipulator);
        if (flat == nullptr || !flat->IsPickable())
            continue;
        const Qor2DViewpoint& viewpoint = *flat->GetViewpoint();
        const QorMathPoint2D point = viewpoint.PixelToModel(iPixel, width, height, unit);
        const double modelUnit =
            1.0 / (viewpoint.GetScale() * static_cast<double>(unit)); // of a pixel
        QorPickPath path;
        if (flat->GetRep() != nullptr) {
            path = QorPicker::Pick(*flat->GetRep(), point, pickTolerance * ratio * modelUnit);
            if (path.empty())
                continue;
        }
        const double distance = flat->GetDistance(point) / modelUnit;
        if (flat->GetRep() == nullptr &&
            distance > static_cast<double>(Qor2DManipulator::hitRadius) * ratio)
            continue;
        const int lead = best != nullptr ? flat->GetPickPriority() - best->GetPickPriority() : 1;
        if (lead < 0 || (lead == 0 && distance >= bestDistance))
            continue;
        best = manipulator;
        bestDistance = distance;
        oPath = std::move(path);
    }
    return best;
}

QorManipulator* QorViewer::PickManipulator(const QorMathPoint2D& iPixel, QorPickPath& oPath) const {
    if (QorManipulator* flat = PickPlane(iPixel, oPath))
        return flat;
    if (indicator != nullptr)
        return indicator;
    oPath = PickSpace(iPixel);
    for (QorManipulator* manipulator : manipulators) {
        const auto* solid = dynamic_cast<Qor3DManipulator*>(manipulator);
        if (solid == nullptr || !solid->IsPickable() || solid->GetRep() == nullptr)
            continue;
        const auto isRep = [&](const QorVar<QorRep>& iOne) {
            return iOne.Get() == solid->GetRep();
        };
        if (std::any_of(oPath.begin(), oPath.end(), isRep))
            return manipulator;
    }
    oPath.clear();
    const auto rest =
        std::find_if(manipulators.begin(), manipulators.end(), [](const QorManipulator* iOne) {
            return iOne->IsPickable() && iOne->TakesRest();
        });
    return rest != manipulators.end() ? *rest : nullptr;
}

QorCursor QorViewer::GetCursor(const QorMathPoint2D& iPixel) const {
    if (grabbed != nullptr)
        return grabbed->GetCursor();
    // Most viewers have no manipulators, and looking for what is hit in space takes its time.
    QorPickPath path;
    const QorManipulator* under = manipulators.empty() ? nullptr : PickManipulator(iPixel, path);
    return under != nullptr && !under->TakesRest() ? under->GetCursor() : QorCursor::Arrow;
}

bool QorViewer::HandleMouse(const QorMouseEvent& iMouse) {
    const QorVar<QorViewer> alive(this);
    const bool grabs = IsPress(iMouse) && grabbed == nullptr;
    if (grabs) {
        grabbed = PickManipulator(iMouse.pixel, grabbedPath);
        grabbedBy = iMouse.button;
    }
    if (grabbed == nullptr)
        return Navigate(iMouse);
    const QorVar<QorManipulator> target(grabbed);
    const QorPickPath path = grabbedPath;
    const bool used = target->HandleMouse(iMouse, path);
    const bool released =
        iMouse.action == QorMouseEvent::Action::Release && iMouse.button == grabbedBy;
    // A wheel or another button in the middle of a drag does not end it.
    if (released || (grabs && !used)) {
        grabbed = nullptr;
        grabbedPath.clear();
    }
    return used || (grabs && Navigate(iMouse));
}
