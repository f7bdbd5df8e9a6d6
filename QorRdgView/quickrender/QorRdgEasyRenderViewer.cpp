// The quick render's tool bar and the viewer that it takes hold of: what it notes, and gives back.
#include "platform/engine/QorIRdgDisplay.h"
#include "platform/engine/QorIRdgViewerParts.h"
#include "platform/engine/QorRdgEngineManager.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/system/QorTrace.h"
#include "quickrender/QorRdgEasyRenderDialog.h"
#include "scenes/QorRdgSceneManager.h"
#include "scenes/QorRdgSceneViewer.h"

namespace {

QorCommandHeader* FindHeader(const char* iName) {
    return QorCommandHeader::GetHeaderFromList(iName, 1);
}

Qor3DLightSourceRep_var CopyOf(const Qor3DLightSourceRep* iLight) {
    return iLight != nullptr ? QorMake<Qor3DLightSourceRep>(*iLight) : Qor3DLightSourceRep_var();
}

} // namespace

Qor3DViewer* QorRdgEasyRenderDialog::Get3DViewer() const {
    return dynamic_cast<Qor3DViewer*>(viewer);
}

void QorRdgEasyRenderDialog::SetViewer(QorViewer* iViewer) {
    if (viewer != nullptr) {
        viewer->GetCallbackManager()->RemoveCallback(viewerDestroyedCookie);
        if (QorSupport* surface = viewer->GetSupport())
            surface->GetCallbackManager()->RemoveCallback(sizeCookie);
    }
    viewer = iViewer;
    if (viewer == nullptr)
        return;
    viewerDestroyedCookie = viewer->GetCallbackManager()->AddCallback(
        this, QorViewer::VIEWER_DESTROYED, &QorRdgEasyRenderDialog::ViewerDestroyedCB);
    if (QorSupport* surface = viewer->GetSupport())
        sizeCookie = surface->GetCallbackManager()->AddCallback(
            this, QorGraphicWindow::GRAPHICWINDOW_RESIZE, &QorRdgEasyRenderDialog::SizeChangedCB);
}

void QorRdgEasyRenderDialog::SizeChangedCB(QorEventName /*iEvent*/,
                                           QorBaseUnknown* /*iPublisher*/,
                                           QorNotification* /*iNotification*/,
                                           QorSubscriberData /*iData*/,
                                           QorCallbackId /*iCookie*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::SizeChangedCB) \n");
    UpdateSize();
}

void QorRdgEasyRenderDialog::ViewerDestroyedCB(QorEventName /*iEvent*/,
                                               QorBaseUnknown* /*iPublisher*/,
                                               QorNotification* /*iNotification*/,
                                               QorSubscriberData /*iData*/,
                                               QorCallbackId /*iCookie*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::ViewerDestroyedCB) \n");
    DropView();
    areaCookie = 0; // its publisher goes with the viewer
    SetViewer(nullptr);
}

void QorRdgEasyRenderDialog::Init() {
    QorTrace(4, "(QorRdgEasyRenderDialog::Init) Valuating dialog objects\n");
    settings = QorSettingRepository::GetRepository("RenderingOptionsSettings");
    if (!settings)
        return;
    DropView(); // one that CleanUp has passed over may still watch its last viewer
    SetViewer(nullptr);
    AttachToWindow();
    if (viewer != nullptr)
        AttachToViewer();
}

void QorRdgEasyRenderDialog::AttachToWindow() {
    QorFrmLayout* documents = QorFrmLayout::GetCurrentLayout();
    if (documents == nullptr)
        return;
    window = documents->GetCurrentWindow();
    windowDeletedCookie = documents->GetCallbackManager()->AddCallback(
        this, QorFrmWindow::WINDOW_DELETED, &QorRdgEasyRenderDialog::WindowDeletedCB);
    SetViewer(window != nullptr ? window->GetViewer() : nullptr);
}

void QorRdgEasyRenderDialog::AttachToViewer() {
    if (QorSupport* surface = viewer->GetSupport())
        support = surface;
    TakeLighting();
    if (const QorCommandHeader* ground = FindHeader("Ground"))
        groundHeaderState = ground->GetCheckState() == QorDlgCheck;
    CaptureViewer();
    if (QorRdgSceneManager* manager = QorRdgSceneManager::GetManager()) {
        manager->SetScene(manager->GetCurrentScene());
        WatchArea();
        UpdateSize();
    }
    QorTrace(4, "(QorRdgEasyRenderDialog::Init) Done\n");
}

void QorRdgEasyRenderDialog::TakeLighting() {
    QorCommandHeader* header = FindHeader("Lighting");
    if (header == nullptr)
        return;
    header->StartCommand();
    lightingHeader = header;
    lightingCookie = header->GetCallbackManager()->AddCallback(
        this, QorCommandHeader::BecomeAvailableEvent, &QorRdgEasyRenderDialog::CommandAvailableCB);
}

void QorRdgEasyRenderDialog::CommandAvailableCB(QorEventName /*iEvent*/,
                                                QorBaseUnknown* iPublisher,
                                                QorNotification* /*iNotification*/,
                                                QorSubscriberData /*iData*/,
                                                QorCallbackId /*iCookie*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::CommandAvailableCB) \n");
    auto* header = dynamic_cast<QorCommandHeader*>(iPublisher);
    if (header != nullptr && header->IsAvailable() && !IsDying())
        header->StartCommand(); // one that is closed leaves it to others
}

void QorRdgEasyRenderDialog::CaptureViewer() {
    Qor3DViewer* space = Get3DViewer();
    if (space == nullptr)
        return;
    space->GetGlobalAmbientLight(savedAmbient[0], savedAmbient[1], savedAmbient[2]);
    Qor3DLightSourceRep* light1 = nullptr;
    Qor3DLightSourceRep* light2 = nullptr;
    space->GetLightSourceReps(light1, light2);
    savedLight1 = CopyOf(light1);
    savedLight2 = CopyOf(light2);
    savedTexture = space->GetTexture();
    savedGround.reset();
    if (const QorRsc3DGroundRep* ground = space->GetGround())
        savedGround = {ground->GetOrigin(), ground->GetTransparency(), ground->GetReflectivity()};
}

void QorRdgEasyRenderDialog::WatchArea() {
    const auto area = QorQuery<QorIRdgArea>(viewer);
    QorCallbackManager* publisher = area ? area->GetAreaPublisher() : nullptr;
    if (publisher != nullptr)
        areaCookie = publisher->AddCallback(this, area->GetEndAreaEvent(),
                                            &QorRdgEasyRenderDialog::EndModifyAreaCB);
}

void QorRdgEasyRenderDialog::CleanUp() {
    QorTrace(4, "(QorRdgEasyRenderDialog::CleanUp) \n");
    if (_curDialog == this) {
        LetGo();
        if (QorFrmLayout* documents = QorFrmLayout::GetCurrentLayout()) {
            LeaveLayout(*documents->GetCallbackManager());
            if (viewer != nullptr)
                RestoreViewer();
            _curDialog = nullptr;
        }
    }
    if (QorCommandHeader* lighting = FindHeader("Lighting"))
        lighting->EndCommand();
    QorTrace(4, "(QorRdgEasyRenderDialog::CleanUp) Done\n");
}

void QorRdgEasyRenderDialog::LetGo() {
    image.Reset();
    if (lightingHeader)
        lightingHeader->GetCallbackManager()->RemoveCallback(lightingCookie);
    lightingHeader.Reset();
    DropView();
    EndRender();
}

void QorRdgEasyRenderDialog::LeaveLayout(QorCallbackManager& ioEvents) {
    ioEvents.RemoveCallback(windowDeletedCookie);
    // The subscription that the constructor made is to EDITOR_DEACTIVATED; it stays. That is meant.
    ioEvents.RemoveCallbacks(this, QorFrmEditor::EDITOR_ACTIVATED);
}

void QorRdgEasyRenderDialog::RestoreViewer() {
    if (const auto display = QorQuery<QorIRdgDisplay>(viewer))
        display->Clear();
    if (const auto area = QorQuery<QorIRdgArea>(viewer)) {
        area->SetAreaMode(false);
        if (QorCallbackManager* publisher = area->GetAreaPublisher())
            publisher->RemoveCallback(areaCookie);
    }
    areaCookie = 0;
    if (const auto background = QorQuery<QorIRdgBackground>(viewer))
        background->RemoveBackground();
    if (const auto ground = QorQuery<QorIRdgGround>(viewer))
        ground->SetGroundVisible(false);
    if (QorCommandHeader* header = FindHeader("Ground"))
        header->SetCheckState(groundHeaderState ? QorDlgCheck : QorDlgUncheck, QorDlgDoNotify);
    if (Qor3DViewer* space = Get3DViewer()) {
        RestoreGround(*space);
        RestoreLights(*space);
    }
    viewer->Draw();
    SetViewer(nullptr);
}

/// The header has shown the ground again if there was one: it shall also look and lie as before.
void QorRdgEasyRenderDialog::RestoreGround(Qor3DViewer& ioViewer) const {
    QorRsc3DGroundRep* ground = ioViewer.GetGround();
    if (ground == nullptr || !savedGround)
        return;
    ground->SetTransparency(savedGround->transparency);
    ground->SetReflectivity(savedGround->reflectivity);
    ground->Translate((savedGround->origin - ground->GetOrigin()) * ground->GetVertical());
}

void QorRdgEasyRenderDialog::RestoreLights(Qor3DViewer& ioViewer) {
    ioViewer.SetLightSourceReps(savedLight1.Detach(), savedLight2.Detach());
    ioViewer.SetGlobalAmbientLight(savedAmbient[0], savedAmbient[1], savedAmbient[2]);
    ioViewer.SetTexture(savedTexture);
    savedTexture.Reset();
    QorRdgSceneViewer::ShowLightsEverywhere(ioViewer);
}
