#include "quickrender/QorRdgDisplayViewer.h"

#include "platform/engine/QorRdgEngineManager.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/system/QorApplication.h"
#include "platform/system/QorTrace.h"

QorImplementClass(QorRdgDisplayViewer, QorRdgViewerAdapter)

QorDefineBOA(QorIRdgDisplay, QorRdgDisplayViewer)

    namespace {

    constexpr int overlayPriority = 6;
    constexpr long refreshInterval = 40000; // microseconds

} // namespace

QorRdgDisplayViewer::QorRdgDisplayViewer(QorBaseUnknown* iOwner) : QorImplements(iOwner) {
    QorTrace(2, "(QorRdgDisplayViewer::QorRdgDisplayViewer) Constructor\n");
}

QorRdgDisplayViewer::~QorRdgDisplayViewer() {
    QorTrace(2, "(QorRdgDisplayViewer::~QorRdgDisplayViewer) Destructor\n");
    CleanUp();
    QorTrace(2, "(QorRdgDisplayViewer::~QorRdgDisplayViewer) Done\n");
}

void QorRdgDisplayViewer::DoInit(Qor3DViewer& iViewer) {
    QorTrace(4, "(QorRdgDisplayViewer::Init) \n");
    if (const QorSupport* support = iViewer.GetSupport()) {
        ratio = support->GetRatioWH();
        overlay = MakePixelViewpoint(iViewer, overlayPriority);
        iViewer.AddViewpoint(overlay);
        iViewer.GetSupport()->GetCallbackManager()->AddCallback(
            this, QorGraphicWindow::GRAPHICWINDOW_RESIZE, &QorRdgDisplayViewer::ResizedCB);
    }
    if (QorFrmLayout* layout = QorFrmLayout::GetCurrentLayout())
        viewerActivatedCookie = layout->GetCallbackManager()->AddCallback(
            this, QorFrmWindow::VIEWER_ACTIVATED, &QorRdgDisplayViewer::ViewerActivatedCB);
}

void QorRdgDisplayViewer::DoCleanUp(Qor3DViewer& iViewer) {
    QorTrace(4, "(QorRdgDisplayViewer::CleanUp) \n");
    if (QorFrmLayout* layout = QorFrmLayout::GetCurrentLayout())
        layout->GetCallbackManager()->RemoveCallback(viewerActivatedCookie);
    if (QorSupport* support = iViewer.GetSupport())
        support->GetCallbackManager()->RemoveCallbacks(this,
                                                       QorGraphicWindow::GRAPHICWINDOW_RESIZE);
    Watch(nullptr);
    iViewer.RemoveViewpoint(overlay);
    overlay.Reset();
    pictureRep.Reset();
    image.Reset();
    QorTrace(4, "(QorRdgDisplayViewer::CleanUp) Done\n");
}

Qor2DBoundingBox QorRdgDisplayViewer::GetViewport() const {
    float width = 0.0F;
    float height = 0.0F;
    GetViewer()->GetGraphicSize(width, height);
    float x = 0.0F;
    float y = 0.0F;
    float viewWidth = 0.0F;
    float viewHeight = 0.0F;
    GetViewer()->GetMain3DViewpoint()->GetGLViewport(x, y, viewWidth, viewHeight);
    if (viewWidth == 0.0F || viewHeight == 0.0F) {
        viewWidth = width;
        viewHeight = height;
    }
    // The overlay's origin is the middle of the viewer, and its unit a pixel.
    const QorMathPoint2D lowerLeft{static_cast<double>(x) - 0.5 * static_cast<double>(width),
                                   static_cast<double>(y) - 0.5 * static_cast<double>(height)};
    const QorMathPoint2D size{static_cast<double>(viewWidth), static_cast<double>(viewHeight)};
    return {lowerLeft, lowerLeft + size};
}

/// The picture is as high as the viewport and keeps the shape that it was drawn for. At another
/// size of the viewer it so lies where the scene below it is, as both follow the height.
void QorRdgDisplayViewer::ShowPicture() {
    const Qor2DBoundingBox viewport = GetViewport();
    const QorMathPoint2D size = viewport.high - viewport.low;
    const double width = drawnFor.y > 0.0 ? drawnFor.x * (size.y / drawnFor.y) : size.x;
    const QorMathPoint2D corner{viewport.low.x + 0.5 * (size.x - width), viewport.low.y};
    const QorVar<Qor2DImagePixelRep> rep =
        QorMake<Qor2DImagePixelRep>(corner, image.Get(), 0, 0, 0, 0);
    rep->SetZoom(width / image->GetWidth(), size.y / image->GetHeight());
    rep->SetAlphaMode(1);
    rep->SetPickable(false);
    overlay->RemoveRep(pictureRep);
    overlay->AddRep(rep);
    pictureRep = rep;
    GetViewer()->Draw();
}

QorResult QorRdgDisplayViewer::Draw(QorPixelImage* iImage) {
    if (!Init() || !overlay)
        return S_OK;
    if (iImage == nullptr || iImage->IsEmpty())
        return E_FAIL;
    const Qor2DBoundingBox viewport = GetViewport();
    drawnFor = viewport.high - viewport.low;
    image = iImage;
    ShowPicture();
    Watch(GetViewer()->GetMain3DViewpoint());
    UpdateDisplay(0);
    return S_OK;
}

void QorRdgDisplayViewer::ResizedCB(QorEventName /*iEvent*/,
                                    QorBaseUnknown* /*iPublisher*/,
                                    QorNotification* /*iNotification*/,
                                    QorSubscriberData /*iData*/,
                                    QorCallbackId /*iCookie*/) {
    if (GetViewer() != nullptr && pictureRep)
        ShowPicture();
}

void QorRdgDisplayViewer::RemovePicture() {
    if (GetViewer() != nullptr && overlay && pictureRep) {
        overlay->RemoveRep(pictureRep);
        pictureRep.Reset();
        GetViewer()->Draw();
    }
    image.Reset();
}

QorResult QorRdgDisplayViewer::Clear() {
    Init();
    RemovePicture();
    return S_OK;
}

QorResult QorRdgDisplayViewer::CheckAbort(unsigned char& ioAbort) {
    Init();
    if (ioAbort != 0)
        abort = true;
    else
        ioAbort = abort ? 1 : 0;
    return S_OK;
}

QorResult QorRdgDisplayViewer::SetProgress(int& iPercent) {
    const bool hasViewer = Init();
    const bool runs = iPercent >= 0 && iPercent < 100;
    if (hasViewer && runs && progress < 0)
        Watch(GetViewer()->GetMain3DViewpoint()); // a move may come before the first picture
    progress = runs ? iPercent : -1;
    if (!runs)
        abort = false;
    return S_OK;
}

QorResult QorRdgDisplayViewer::SetMessage(QorUnicodeString& /*iText*/) {
    Init();
    return E_FAIL;
}

QorResult QorRdgDisplayViewer::SetWarning(QorUnicodeString& /*iText*/) {
    Init();
    return E_FAIL;
}

void QorRdgDisplayViewer::Watch(Qor3DViewpoint* iViewpoint) {
    if (watchedViewpoint && watchedViewpoint.Get() != iViewpoint)
        watchedViewpoint->GetCallbackManager()->RemoveCallback(viewpointCookie);
    watchedViewpoint = iViewpoint;
    if (watchedViewpoint)
        viewpointCookie = watchedViewpoint->GetCallbackManager()->AddCallback(
            this, QorViewpoint::VIEWPOINT_ANIMATION_STARTED,
            &QorRdgDisplayViewer::ViewpointBeginModifyCB);
}

void QorRdgDisplayViewer::ViewerActivatedCB(QorEventName /*iEvent*/,
                                            QorBaseUnknown* /*iPublisher*/,
                                            QorNotification* iNotification,
                                            QorSubscriberData /*iData*/,
                                            QorCallbackId /*iCookie*/) {
    const auto* activated = dynamic_cast<QorFrmWindowNotification*>(iNotification);
    if (activated == nullptr || GetViewer() == nullptr)
        return;
    Watch(activated->GetViewer() == GetViewer() ? GetViewer()->GetMain3DViewpoint() : nullptr);
}

void QorRdgDisplayViewer::ViewpointBeginModifyCB(QorEventName /*iEvent*/,
                                                 QorBaseUnknown* /*iPublisher*/,
                                                 QorNotification* /*iNotification*/,
                                                 QorSubscriberData /*iData*/,
                                                 QorCallbackId /*iCookie*/) {
    QorTrace(6, "(QorRdgDisplayViewer::ViewpointBeginModifyCB)\n");
    if (progress >= 1 && progress < 100)
        abort = true;
    Clear();
}

void QorRdgDisplayViewer::UpdateDisplay(unsigned char iForce) {
    QorTrace(4, "(QorRdgDisplayViewer::UpdateDisplay) iForce=%d\n", iForce);
    QorTimeStamp now;
    QorGetCurrentTime(&now);
    // Any change of the second refreshes, however little time has passed: that is meant.
    if (iForce == 0 && now.seconds <= lastUpdate.seconds &&
        now.microseconds - lastUpdate.microseconds <= refreshInterval)
        return;
    QorTrace(4, "(QorRdgDisplayViewer::UpdateDisplay) Updating...\n");
    lastUpdate = now;
    const auto* application =
        dynamic_cast<QorInteractiveApplication*>(QorApplication::MainApplication());
    const QorVar<QorRdgEngineManager> manager(QorRdgEngineManager::GetManager());
    if (application == nullptr || !manager)
        return;
    manager->BeginDisplayUpdate();
    application->UpdateDisplay();
    manager->EndDisplayUpdate();
}
