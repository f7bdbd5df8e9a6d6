#include "scenes/QorRdgViewerState.h"

#include "platform/engine/QorIRdgViewerParts.h"
#include "platform/frame/QorCommandHeader.h"
#include "scenes/QorRdgSceneViewer.h"

#include <utility>

namespace {

QorCommandHeader* FindGroundHeader() {
    return QorCommandHeader::GetHeaderFromList("Ground", 1);
}

Qor3DLightSourceRep_var CopyOf(const Qor3DLightSourceRep* iLight) {
    return iLight != nullptr ? QorMake<Qor3DLightSourceRep>(*iLight) : Qor3DLightSourceRep_var();
}

} // namespace

QorRdgViewerState::QorRdgViewerState(QorViewer* iViewer)
    : viewer(dynamic_cast<Qor3DViewer*>(iViewer)) {
    if (viewer != nullptr)
        viewer->GetCallbackManager()->AddCallback(this, QorViewer::VIEWER_DESTROYED,
                                                  &QorRdgViewerState::ViewerDestroyedCB);
}

void QorRdgViewerState::ViewerDestroyedCB(QorEventName /*iEvent*/,
                                          QorBaseUnknown* /*iPublisher*/,
                                          QorNotification* /*iNotification*/,
                                          QorSubscriberData /*iData*/,
                                          QorCallbackId /*iCookie*/) {
    viewer = nullptr;
}

void QorRdgViewerState::Capture() {
    if (viewer == nullptr)
        return;
    captured = true;
    if (const QorCommandHeader* header = FindGroundHeader())
        savedGroundState = header->GetCheckState() == QorDlgCheck;
    if (const auto background = QorQuery<QorIRdgBackground>(viewer))
        background->GetBackground(savedBackgroundImage, savedBackgroundStretch);
    if (const QorRsc3DGroundRep* ground = viewer->GetGround())
        savedGround = {true, ground->GetTransparency(), ground->GetReflectivity()};
    viewer->GetGlobalAmbientLight(savedAmbient[0], savedAmbient[1], savedAmbient[2]);
    Qor3DLightSourceRep* light1 = nullptr;
    Qor3DLightSourceRep* light2 = nullptr;
    viewer->GetLightSourceReps(light1, light2);
    savedLight1 = CopyOf(light1);
    savedLight2 = CopyOf(light2);
    savedTexture = viewer->GetTexture();
}

void QorRdgViewerState::Restore() {
    if (!std::exchange(captured, false))
        return;
    RestoreLights();
    if (QorCommandHeader* header = FindGroundHeader())
        header->SetCheckState(savedGroundState ? QorDlgCheck : QorDlgUncheck, QorDlgDoNotify);
    RestoreGround();
    RestoreBackground();
    Release();
}

void QorRdgViewerState::RestoreLights() {
    if (viewer == nullptr)
        return;
    viewer->SetLightSourceReps(savedLight1.Detach(), savedLight2.Detach());
    viewer->SetGlobalAmbientLight(savedAmbient[0], savedAmbient[1], savedAmbient[2]);
    viewer->SetTexture(savedTexture);
    QorRdgSceneViewer::ShowLightsEverywhere(*viewer);
    viewer->Draw();
}

void QorRdgViewerState::RestoreGround() {
    if (savedGround.shown)
        QorRdgSceneViewer::SetGround(viewer, savedGround.transparency, savedGround.reflectivity);
    else
        QorRdgSceneViewer::HideGround(viewer);
}

void QorRdgViewerState::RestoreBackground() {
    if (savedBackgroundImage.IsNull())
        return; // one that was added meanwhile stays: meant
    if (const auto background = QorQuery<QorIRdgBackground>(viewer))
        background->SetBackground(savedBackgroundImage, savedBackgroundStretch);
}

void QorRdgViewerState::Release() {
    captured = false;
    savedLight1.Reset();
    savedLight2.Reset();
    savedTexture.Reset();
}
