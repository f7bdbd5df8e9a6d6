// The quick render's tool bar: starting a render, hearing its end, and rendering again and again.
#include "platform/dialog/QorDlgButton.h"
#include "platform/engine/QorIRdgDisplay.h"
#include "platform/engine/QorIRdgWorld.h"
#include "platform/engine/QorRdgEngineManager.h"
#include "platform/frame/QorApplicationFrame.h"
#include "platform/system/QorTrace.h"
#include "platform/text/QorMsgCatalog.h"
#include "quickrender/QorRdgEasyRenderDialog.h"
#include "quickrender/QorRdgRecentRenders.h"
#include "scenes/QorRdgSceneViewer.h"

#include <memory>
#include <utility>

namespace {

QorUnicodeString Message(const char* iKey) {
    return QorMsgCatalog::BuildMessage("QorRdgEasyRenderDialog", iKey);
}

} // namespace

void QorRdgEasyRenderDialog::Tell(const QorUnicodeString& iText) {
    if (QorApplicationFrame* frame = QorApplicationFrame::GetFrame())
        frame->SetStatus(iText);
}

void QorRdgEasyRenderDialog::SetControls(bool iEnabled) {
    const QorDlgSensitivity sensitivity = iEnabled ? QorDlgENABLE : QorDlgDISABLE;
    for (QorDlgCheckButton* one : {sceneButton, optionsButton, areaCheck})
        one->SetSensitivity(sensitivity);
    saveButton->SetSensitivity(iEnabled && image ? QorDlgENABLE : QorDlgDISABLE);
}

/// As after a render, for a tool bar that has lost the viewer it rendered into.
void QorRdgEasyRenderDialog::ResetControls() {
    SetControls(true);
    areaCheck->SetState(QorDlgUncheck, QorDlgNoNotify);
    if (!loopMode)
        renderCheck->SetState(QorDlgUncheck, QorDlgNoNotify);
}

void QorRdgEasyRenderDialog::Render() {
    QorTrace(4, "(QorRdgEasyRenderDialog::Render) \n");
    const QorVar<QorRdgEngineManager> manager(QorRdgEngineManager::GetManager());
    if (viewer == nullptr || !options || !manager) {
        Tell(Message(viewer == nullptr ? "NoViewer" : "NoEngine"));
        return;
    }
    image.Reset();
    SetControls(false);
    renderDoneCookie = manager->GetCallbackManager()->AddCallback(
        this, QorRdgEngineManager::RENDER_DONE, &QorRdgEasyRenderDialog::RenderDoneCB);
    const auto world = QorQuery<QorIRdgWorld>(viewer);
    const auto display = QorQuery<QorIRdgDisplay>(viewer);
    const auto choices = QorQuery<QorIRdgOptions>(options.Get());
    int columns = 0;
    int rows = 0;
    QorRdgWindow* part = nullptr;
    if (!QorSucceeded(GetSize(columns, rows, part))) {
        Tell(Message("NoSize"));
        return;
    }
    const std::unique_ptr<QorRdgWindow> region(part);
    density = GetDensity();
    rendering = true;
    manager->SetRenderSwitchA(true);
    manager->SetRenderSwitchB(false);
    manager->StartRender(world, display, choices, true, columns, rows, region.get(), false, true);
    renderId = manager->GetLastStart();
}

/// Whether the render that has just ended is older than the latest that was started from here,
/// which has taken its place.
bool QorRdgEasyRenderDialog::IsEarlierRender(const QorRdgEngineManager& iManager) const {
    return rendering && iManager.GetRecord().id < renderId;
}

void QorRdgEasyRenderDialog::RenderDoneCB(QorEventName /*iEvent*/,
                                          QorBaseUnknown* /*iPublisher*/,
                                          QorNotification* /*iNotification*/,
                                          QorSubscriberData /*iData*/,
                                          QorCallbackId /*iCookie*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::RenderDoneCB) \n");
    const QorVar<QorRdgEngineManager> manager(QorRdgEngineManager::GetManager());
    if (manager) {
        if (IsEarlierRender(*manager))
            return;
        manager->GetCallbackManager()->RemoveCallback(renderDoneCookie);
        QorPixelImage* last = nullptr;
        const bool wasMine = std::exchange(rendering, false);
        if (QorSucceeded(manager->GetLastRender(last, imageRegion))) {
            image = QorAdopt(last);
            imageDensity = density;
            if (wasMine)
                QorRdgRecentRenders::Add(*image, imageRegion, imageDensity);
        } else if (wasMine && !manager->GetMessage().IsNull()) {
            Tell(manager->GetMessage());
        }
    }
    SetControls(true);
    if (!loopMode)
        renderCheck->SetState(QorDlgUncheck, QorDlgNoNotify);
}

void QorRdgEasyRenderDialog::EndRender() {
    const QorVar<QorRdgEngineManager> manager(QorRdgEngineManager::GetManager());
    if (!manager)
        return;
    manager->GetCallbackManager()->RemoveCallback(renderDoneCookie);
    // Others may still listen for its end; the viewer is none of the render's any more.
    if (std::exchange(rendering, false) && manager->GetLastStart() == renderId)
        manager->StopRender();
}

void QorRdgEasyRenderDialog::RenderCB(QorCommand* /*iCommand*/,
                                      QorNotification* /*iNotification*/,
                                      QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::RenderCB) \n");
    if (renderCheck->GetState() == QorDlgUncheck) {
        LeaveLoop();
        if (QorRdgEngineManager* manager = QorRdgEngineManager::GetManager())
            manager->StopRender();
    } else if (!loopMode) {
        Render();
    }
}

void QorRdgEasyRenderDialog::DropView() {
    if (viewpointNotifier)
        viewpointNotifier->GetCallbackManager()->RemoveCallback(viewpointCookie);
    viewpointNotifier.Reset();
    viewpoint = nullptr;
    if (support != nullptr)
        support->GetCallbackManager()->RemoveCallback(resizeCookie);
    support = nullptr;
}

void QorRdgEasyRenderDialog::LeaveLoop() {
    DropView();
    loopMode = false;
}

void QorRdgEasyRenderDialog::WatchViewpoint() {
    if (viewpointCookie != 0 || viewpoint == nullptr)
        return;
    viewpointNotifier = viewpoint;
    viewpointCookie = viewpointNotifier->GetCallbackManager()->AddCallback(
        this, QorViewpoint::VIEWPOINT_MODIFIED, &QorRdgEasyRenderDialog::ViewpointEndModifyCB);
}

void QorRdgEasyRenderDialog::WatchSupport() {
    if (resizeCookie == 0 && support != nullptr)
        resizeCookie = support->GetCallbackManager()->AddCallback(
            this, QorGraphicWindow::GRAPHICWINDOW_RESIZE, &QorRdgEasyRenderDialog::WindowResizedCB);
}

void QorRdgEasyRenderDialog::RenderLoopCB(QorCommand* /*iCommand*/,
                                          QorNotification* /*iNotification*/,
                                          QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::RenderLoopCB) \n");
    if (renderCheck->GetState() == QorDlgUncheck) {
        LeaveLoop();
        return;
    }
    // A dialog that has just been opened knows no viewpoint and never gets here: that is meant.
    if (loopMode || viewer == nullptr || viewpoint == nullptr || support == nullptr)
        return;
    if (viewer->GetMain3DViewpoint() != viewpoint) {
        if (viewpointNotifier)
            viewpointNotifier->GetCallbackManager()->RemoveCallback(viewpointCookie);
        viewpointNotifier.Reset();
        viewpoint = viewer->GetMain3DViewpoint();
    }
    WatchViewpoint();
    WatchSupport();
    loopMode = true;
}

void QorRdgEasyRenderDialog::ViewpointEndModifyCB(QorEventName /*iEvent*/,
                                                  QorBaseUnknown* /*iPublisher*/,
                                                  QorNotification* /*iNotification*/,
                                                  QorSubscriberData /*iData*/,
                                                  QorCallbackId /*iCookie*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::ViewpointEndModifyCB) \n");
    if (viewpoint == nullptr || !viewpoint->IsAnimated())
        Render();
}

void QorRdgEasyRenderDialog::WindowResizedCB(QorEventName /*iEvent*/,
                                             QorBaseUnknown* /*iPublisher*/,
                                             QorNotification* /*iNotification*/,
                                             QorSubscriberData /*iData*/,
                                             QorCallbackId /*iCookie*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::WindowResizedCB) \n");
    Render();
}

void QorRdgEasyRenderDialog::ViewerActivatedCB(QorEventName /*iEvent*/,
                                               QorBaseUnknown* iPublisher,
                                               QorNotification* /*iNotification*/,
                                               QorSubscriberData /*iData*/,
                                               QorCallbackId /*iCookie*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::ViewerActivatedCB) \n");
    const auto* activated = dynamic_cast<QorFrmWindow*>(iPublisher);
    if (viewer == nullptr || viewpoint == nullptr || support == nullptr || activated == nullptr ||
        activated->GetViewer() == viewer)
        return;
    DropView();
    SetViewer(QorRdgSceneViewer::GetCurrent());
    if (viewer == nullptr)
        return;
    viewpoint = viewer->GetMain3DViewpoint();
    support = viewer->GetSupport();
    if (!loopMode)
        return;
    WatchViewpoint();
    WatchSupport();
}
