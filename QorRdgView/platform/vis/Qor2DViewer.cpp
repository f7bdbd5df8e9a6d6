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
