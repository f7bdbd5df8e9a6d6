#include "quickrender/QorRdgViewerAdapter.h"

#include "platform/frame/QorFrmLayout.h"

QorImplementClass(QorRdgViewerAdapter, QorExtension)

bool QorRdgViewerAdapter::Init() {
    if (initialised)
        return viewer != nullptr;
    initialised = true;
    viewer = dynamic_cast<Qor3DViewer*>(GetOwner());
    if (viewer == nullptr)
        return false;
    if (QorFrmLayout* layout = QorFrmLayout::GetCurrentLayout()) {
        window = layout->GetCurrentWindow();
        windowDeletedCookie = layout->GetCallbackManager()->AddCallback(
            this, QorFrmWindow::WINDOW_DELETED, &QorRdgViewerAdapter::WindowDeletedCB);
    }
    DoInit(*viewer);
    return true;
}

void QorRdgViewerAdapter::CleanUp() {
    if (cleanedUp)
        return;
    cleanedUp = true;
    initialised = true; // what has ended does not begin again
    if (QorFrmLayout* layout = QorFrmLayout::GetCurrentLayout())
        layout->GetCallbackManager()->RemoveCallback(windowDeletedCookie);
    if (viewer != nullptr)
        DoCleanUp(*viewer);
    viewer = nullptr;
    window = nullptr;
}

Qor2DViewpoint_var QorRdgViewerAdapter::MakePixelViewpoint(const QorViewer& iViewer,
                                                           int iPriority) {
    const QorSupport& support = *iViewer.GetSupport();
    Qor2DViewpoint_var viewpoint = QorMake<Qor2DViewpoint>(
        QorMathPoint2D{}, 1.0 / static_cast<double>(support.GetMMInSupportUnit()));
    viewpoint->SetRatioWH(1.0F / support.GetRatioWH());
    viewpoint->SetPriority(iPriority);
    return viewpoint;
}

void QorRdgViewerAdapter::WindowDeletedCB(QorEventName /*iEvent*/,
                                          QorBaseUnknown* iPublisher,
                                          QorNotification* /*iNotification*/,
                                          QorSubscriberData /*iData*/,
                                          QorCallbackId /*iCookie*/) {
    if (window != nullptr && iPublisher == window)
        CleanUp();
}
