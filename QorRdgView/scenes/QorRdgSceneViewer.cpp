#include "scenes/QorRdgSceneViewer.h"

#include "platform/engine/QorIRdgDisplay.h"
#include "platform/engine/QorIRdgViewerParts.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmWindow.h"
#include "platform/vis/QorI3DMultiViewpointViewer.h"
#include "platform/vis/QorViewer.h"

QorViewer* QorRdgSceneViewer::GetCurrent() {
    const QorFrmLayout* layout = QorFrmLayout::GetCurrentLayout();
    const QorFrmWindow* window = layout != nullptr ? layout->GetCurrentWindow() : nullptr;
    return window != nullptr ? window->GetViewer() : nullptr;
}

void QorRdgSceneViewer::SetBackground(QorViewer* iViewer, const QorString& iImage, bool iStretch) {
    const auto background = QorQuery<QorIRdgBackground>(iViewer);
    if (!background)
        return;
    QorString shown;
    bool shownStretch = false;
    if (QorSucceeded(background->GetBackground(shown, shownStretch)) && !(shown == iImage))
        if (const auto display = QorQuery<QorIRdgDisplay>(iViewer))
            display->Clear(); // what was rendered with the other picture is true no more
    background->SetBackground(iImage, iStretch);
}

void QorRdgSceneViewer::RemoveBackground(QorViewer* iViewer) {
    if (const auto background = QorQuery<QorIRdgBackground>(iViewer))
        background->RemoveBackground();
}

void QorRdgSceneViewer::SetGround(QorViewer* iViewer, float iTransparency, float iReflectivity) {
    const auto ground = QorQuery<QorIRdgGround>(iViewer);
    if (!ground)
        return;
    ground->SetGroundOn(1);
    ground->SetTransparency(iTransparency);
    ground->SetReflectivity(iReflectivity);
}

void QorRdgSceneViewer::HideGround(QorViewer* iViewer) {
    if (const auto ground = QorQuery<QorIRdgGround>(iViewer))
        ground->SetGroundOn(0);
}

void QorRdgSceneViewer::SetColors(Qor3DLightSourceRep& ioLight,
                                  const std::array<float, 3>& iColor,
                                  float iDiffuse,
                                  float iSpecular) {
    const std::array<float, 4> ambient = {0.0F, 0.0F, 0.0F, 1.0F};
    const auto scaled = [&](float iFactor) {
        return std::array<float, 4>{iColor[0] * iFactor, iColor[1] * iFactor, iColor[2] * iFactor,
                                    1.0F};
    };
    ioLight.SetColorParameters(ambient.data(), scaled(iDiffuse).data(), scaled(iSpecular).data());
}

Qor3DLightSourceRep* QorRdgSceneViewer::NewLight(const std::array<float, 3>& iColor,
                                                 const std::array<float, 3>& iDirection,
                                                 float iDiffuse,
                                                 float iSpecular) {
    constexpr float halfCircle = 180.0F;
    auto* light = new Qor3DLightSourceRep(QorLightType::Directional, QorLightMode::Model, {},
                                          {static_cast<double>(iDirection[0]),
                                           static_cast<double>(iDirection[1]),
                                           static_cast<double>(iDirection[2])},
                                          halfCircle);
    SetColors(*light, iColor, iDiffuse, iSpecular);
    return light;
}

void QorRdgSceneViewer::SetLights(QorViewer* iViewer, const QorRdgScene& iScene) {
    auto* viewer = dynamic_cast<Qor3DViewer*>(iViewer);
    if (viewer == nullptr)
        return;
    Qor3DLightSourceRep* light1 = nullptr;
    Qor3DLightSourceRep* light2 = nullptr;
    if (iScene.lightCount >= 1)
        light1 = NewLight(iScene.color1, iScene.direction1, iScene.diffuse, iScene.specular);
    if (iScene.lightCount == 2)
        light2 = NewLight(iScene.color2, iScene.direction2, iScene.diffuse, iScene.specular);
    viewer->SetGlobalAmbientLight(iScene.ambient, iScene.ambient, iScene.ambient);
    viewer->SetLightSourceReps(light1, light2);
    ShowLightsEverywhere(*viewer);
    viewer->Draw();
}

void QorRdgSceneViewer::ShowLightsEverywhere(Qor3DViewer& iViewer) {
    const auto several = QorQuery<QorI3DMultiViewpointViewer>(&iViewer);
    if (!several || !several->HasSeveralViewpoints())
        return;
    for (const QorVar<QorViewpoint>& one : several->GetViewpoints()) {
        auto* viewpoint = dynamic_cast<Qor3DViewpoint*>(one.Get());
        if (viewpoint == nullptr)
            continue;
        Qor3DLightSourceRep* light1 = nullptr;
        Qor3DLightSourceRep* light2 = nullptr;
        iViewer.GetLightSourceReps(light1, light2);
        for (Qor3DLightSourceRep* light : {light1, light2}) {
            if (light == nullptr)
                continue;
            viewpoint->RemoveRep(light);
            viewpoint->AddRep(light);
        }
    }
}
