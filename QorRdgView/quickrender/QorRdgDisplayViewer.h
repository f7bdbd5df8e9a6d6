#pragma once

#include "platform/engine/QorIRdgDisplay.h"
#include "platform/system/QorClock.h"
#include "quickrender/QorRdgViewerAdapter.h"

/// Shows a render's picture over the 3D viewer that it was made from. Moving the camera aborts the
/// render and wipes the picture. Operations always succeed where they do nothing for want of a
/// viewer or support.
class QorRdgDisplayViewer : public QorImplements<QorRdgViewerAdapter, QorIRdgDisplay> {
    QorDeclareClass(QorRdgDisplayViewer)

    explicit QorRdgDisplayViewer(QorBaseUnknown* iOwner);

    QorResult Draw(QorPixelImage* iImage) override;
    QorResult Clear() override;
    QorResult CheckAbort(unsigned char& ioAbort) override;
    QorResult SetProgress(int& iPercent) override;
    /// E_FAIL: the viewer shows no text.
    QorResult SetMessage(QorUnicodeString& iText) override;
    /// A text of more urgency; E_FAIL as well.
    virtual QorResult SetWarning(QorUnicodeString& iText);

protected:
    ~QorRdgDisplayViewer() override;
    void DoInit(Qor3DViewer& iViewer) override;
    void DoCleanUp(Qor3DViewer& iViewer) override;

private:
    void ViewerActivatedCB(QorEventName iEvent,
                           QorBaseUnknown* iPublisher,
                           QorNotification* iNotification,
                           QorSubscriberData iData,
                           QorCallbackId iCookie);
    void ViewpointBeginModifyCB(QorEventName iEvent,
                                QorBaseUnknown* iPublisher,
                                QorNotification* iNotification,
                                QorSubscriberData iData,
                                QorCallbackId iCookie);
    void ResizedCB(QorEventName iEvent,
                   QorBaseUnknown* iPublisher,
                   QorNotification* iNotification,
                   QorSubscriberData iData,
                   QorCallbackId iCookie);
    /// Repaints the program's windows, at most once in 40 ms of a second unless forced.
    void UpdateDisplay(unsigned char iForce);
    /// The part of the viewer that shows the main viewpoint, in the overlay's units.
    [[nodiscard]] Qor2DBoundingBox GetViewport() const;
    void ShowPicture();
    void Watch(Qor3DViewpoint* iViewpoint);
    void RemovePicture();

    QorCallbackId viewerActivatedCookie = 0;
    Qor2DViewpoint_var overlay;
    Qor3DViewpoint_var watchedViewpoint;
    QorCallbackId viewpointCookie = 0;
    QorTimeStamp lastUpdate;
    QorVar<Qor2DImagePixelRep> pictureRep;
    QorPixelImage_var image;
    QorMathPoint2D drawnFor; ///< the size of the viewport when the picture came
    int progress = -1;       ///< -1 when idle
    bool abort = false;
    float ratio = 1.0F; ///< of the support, width by height
};

QorDeclareBOA(QorIRdgDisplay, QorRdgDisplayViewer);
