#include "platform/vis/QorPicker.h"
#include "platform/vis/QorView.h"
#include "platform/vis/QorViewer.h"

#include <array>
#include <limits>
#include <utility>

QorImplementClass(Qor3DViewer, QorViewer)

const QorEventName Qor3DViewer::TREE_DISPLAY_ON = "TREE_DISPLAY_ON";
const QorEventName Qor3DViewer::TREE_DISPLAY_OFF = "TREE_DISPLAY_OFF";

Qor3DViewer::Qor3DViewer(
    QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle, float iWidth, float iHeight)
    : QorViewer(iFather, iName, iStyle, iWidth, iHeight) {
    Watch(main);
}

Qor3DViewer::~Qor3DViewer() {
    AnnounceEnd();
    Unwatch(main);
}

QorResult Qor3DViewer::QueryInterface(const QorInterfaceId& iInterface, void** oInterface) {
    const QorResult result = QorViewer::QueryInterface(iInterface, oInterface);
    if (QorSucceeded(result) || !(iInterface == QorI3DMultiViewpointViewer::ClassId()))
        return result;
    AddRef();
    *oInterface = static_cast<QorI3DMultiViewpointViewer*>(&tiles);
    return S_OK;
}

Qor3DViewpoint* Qor3DViewer::Get3DViewpointAt(const QorMathPoint2D& iPixel) const {
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    return tiles.At(iPixel, width, height);
}

void Qor3DViewer::SplitViewpoints(int iCount) {
    const QorVar<Qor3DViewer> alive(this);
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    const bool wasAnimated = main->IsAnimated();
    main->SetAnimated(true);
    const std::size_t first = tiles.Split(iCount, width, height);
    const Qor3DBoundingBox box = Qor3DBoundingBoxRender({}).Render(main->GetRoot());
    constexpr std::array sides{QorStandardView::Front, QorStandardView::Top,
                               QorStandardView::Right};
    const auto all = Get3DViewpoints();
    for (std::size_t i = first; i < all.size(); ++i) {
        auto* viewpoint = static_cast<Qor3DViewpoint*>(all[i].Get());
        QorView view = QorSeenFrom(sides.at(i - 1), vertical, QorView::Of(*main));
        view.projection = Qor3DViewpoint::Projection::Parallel;
        view.Fitted(box, viewpoint->GetPart(width, height).Ratio()).ApplyTo(*viewpoint);
    }
    if (!wasAnimated)
        main->SetAnimated(false);
    Draw();
}

void Qor3DViewer::UserResizeViewer(float iWidth, float iHeight) {
    // Before anyone hears of the new size.
    if (iWidth >= 0.0F && iHeight >= 0.0F)
        tiles.LayOut(iWidth, iHeight);
    QorViewer::UserResizeViewer(iWidth, iHeight);
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

void Qor3DViewer::SetEdgesShown(bool iShown) {
    if (std::exchange(edgesShown, iShown) != iShown)
        Draw();
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
    // A light that is given again keeps the reference that the viewer has on it; one that is given
    // back is no more shown by a viewpoint that it was put into.
    const auto take = [this](Qor3DLightSourceRep_var& ioHeld, Qor3DLightSourceRep* iGiven) {
        if (ioHeld.Get() == iGiven)
            return;
        main->RemoveRep(ioHeld);
        ioHeld = QorAdopt(iGiven);
    };
    take(light1, iLight1);
    take(light2, iLight2);
}

QorPickPath Qor3DViewer::PickSpace(const QorMathPoint2D& iPixel) const {
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    const QorMathRay ray = Get3DViewpointAt(iPixel)->GetEyeRay(iPixel, width, height);
    QorPicker::Hit hit =
        QorPicker::Pick(main->GetRoot(), ray, std::numeric_limits<double>::infinity());
    if (!ground)
        return std::move(hit.path);
    const double farthest =
        hit.distance >= 0.0 ? hit.distance : std::numeric_limits<double>::infinity();
    QorPicker::Hit onGround = QorPicker::Pick(*ground, ray, farthest);
    return onGround.distance >= 0.0 ? std::move(onGround.path) : std::move(hit.path);
}
