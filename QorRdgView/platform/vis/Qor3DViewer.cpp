#include "platform/vis/QorPicker.h"
#include "platform/vis/QorViewer.h"

#include <limits>

QorImplementClass(Qor3DViewer, QorViewer)

const QorEventName Qor3DViewer::TREE_DISPLAY_ON = "TREE_DISPLAY_ON";
const QorEventName Qor3DViewer::TREE_DISPLAY_OFF = "TREE_DISPLAY_OFF";

Qor3DViewer::Qor3DViewer(
    QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle, float iWidth, float iHeight)
    : QorViewer(iFather, iName, iStyle, iWidth, iHeight) {}

Qor3DViewer::~Qor3DViewer() {
    AnnounceEnd();
}

void Qor3DViewer::AddRep(Qor3DRep* iRep) {
    main->AddRep(iRep);
}

void Qor3DViewer::RemoveRep(Qor3DRep* iRep) {
    main->RemoveRep(iRep);
}

void Qor3DViewer::SetVertical(const QorMathVector& iVertical) {
    vertical = iVertical.NormalizedOr(vertical);
}

void Qor3DViewer::GetGlobalAmbientLight(float& oRed, float& oGreen, float& oBlue) const {
    oRed = ambient[0];
    oGreen = ambient[1];
    oBlue = ambient[2];
}

void Qor3DViewer::SetGlobalAmbientLight(float iRed, float iGreen, float iBlue) {
    ambient[0] = iRed;
    ambient[1] = iGreen;
    ambient[2] = iBlue;
}

void Qor3DViewer::GetLightSourceReps(Qor3DLightSourceRep*& oLight1,
                                     Qor3DLightSourceRep*& oLight2) const {
    oLight1 = light1;
    oLight2 = light2;
}

void Qor3DViewer::SetLightSourceReps(Qor3DLightSourceRep* iLight1, Qor3DLightSourceRep* iLight2) {
    // A light that is given again keeps the reference that the viewer has on it.
    const auto take = [](Qor3DLightSourceRep_var& ioHeld, Qor3DLightSourceRep* iGiven) {
        if (ioHeld.Get() != iGiven)
            ioHeld = QorAdopt(iGiven);
    };
    take(light1, iLight1);
    take(light2, iLight2);
}

QorPickPath Qor3DViewer::PickSpace(const QorMathPoint2D& iPixel) const {
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    const QorMathRay ray = main->GetEyeRay(iPixel, width, height);
    QorPicker::Hit hit =
        QorPicker::Pick(main->GetRoot(), ray, std::numeric_limits<double>::infinity());
    if (!ground)
        return std::move(hit.path);
    const double farthest =
        hit.distance >= 0.0 ? hit.distance : std::numeric_limits<double>::infinity();
    QorPicker::Hit onGround = QorPicker::Pick(*ground, ray, farthest);
    return onGround.distance >= 0.0 ? std::move(onGround.path) : std::move(hit.path);
}
