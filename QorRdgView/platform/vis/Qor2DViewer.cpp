#include "platform/vis/QorViewer.h"

QorImplementClass(Qor2DViewer, QorViewer)

Qor2DViewer::Qor2DViewer(
    QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle, float iWidth, float iHeight)
    : QorViewer(iFather, iName, iStyle, iWidth, iHeight) {
    main->SetView({0.0, 0.0}, 1.0 / static_cast<double>(GetSupport()->GetMMInSupportUnit()));
}

Qor2DViewer::~Qor2DViewer() {
    AnnounceEnd();
}

void Qor2DViewer::AddRep(Qor2DRep* iRep) {
    main->AddRep(iRep);
}

void Qor2DViewer::RemoveRep(Qor2DRep* iRep) {
    main->RemoveRep(iRep);
}

void Qor2DViewer::GetViewBox(double& oLeft, double& oRight, double& oBottom, double& oTop) const {
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    main->GetWindow(width, height, GetSupport()->GetMMInSupportUnit(), oLeft, oRight, oBottom,
                    oTop);
}

void Qor2DViewer::SetViewBox(double iLeft, double iRight, double /*iBottom*/, double iTop) {
    float width = 0.0F;
    float height = 0.0F;
    GetGraphicSize(width, height);
    main->SetWindow(width, height, GetSupport()->GetMMInSupportUnit(), iLeft, iRight, iTop);
    main->Modified();
    Draw();
}

bool Qor2DViewer::Navigate(const QorMouseEvent& iMouse) {
    if (iMouse.action != QorMouseEvent::Action::Wheel || iMouse.wheelSteps == 0.0)
        return false;
    constexpr double pixelsByStep = 48.0; // three lines of text
    const double pixels =
        iMouse.wheelSteps * pixelsByStep * static_cast<double>(GetSupport()->GetPixelRatio());
    const double pixelsByUnit =
        main->GetScale() * static_cast<double>(GetSupport()->GetMMInSupportUnit());
    const QorMathPoint2D& origin = main->GetOrigin();
    main->SetView({origin.x, origin.y + pixels / pixelsByUnit}, main->GetScale());
    Draw();
    main->Modified();
    return true;
}
