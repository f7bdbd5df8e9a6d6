#pragma once

#include "platform/component/QorExtension.h"
#include "platform/frame/QorFrmWindow.h"
#include "platform/vis/QorViewer.h"

/// What the adapters that lend a 3D viewer to a render have in common: they begin lazily, at the
/// first operation, and clean up once, when their window is deleted or they are destroyed. After
/// that their operations do nothing.
class QorRdgViewerAdapter
    : public QorExtension
    , public QorEventSubscriber {
    QorDeclareClass(QorRdgViewerAdapter)

    explicit QorRdgViewerAdapter(QorBaseUnknown* iOwner) : QorExtension(iOwner) {}

protected:
    ~QorRdgViewerAdapter() override = default;

    /// Begins unless that has been done, and tells whether there is a viewer to work on. For the
    /// start of every operation.
    bool Init();
    /// Ends unless that has been done. For the window's deletion and every destructor.
    void CleanUp();

    /// What an adapter does besides, called once each. \p iViewer is not null.
    virtual void DoInit(Qor3DViewer& iViewer) = 0;
    virtual void DoCleanUp(Qor3DViewer& iViewer) = 0;

    /// Null before Init and after CleanUp.
    [[nodiscard]] Qor3DViewer* GetViewer() const { return viewer; }

    /// A 2D viewpoint on the viewer in which one model unit is one pixel, its origin in the middle.
    [[nodiscard]] static Qor2DViewpoint_var MakePixelViewpoint(const QorViewer& iViewer,
                                                               int iPriority);

private:
    void WindowDeletedCB(QorEventName iEvent,
                         QorBaseUnknown* iPublisher,
                         QorNotification* iNotification,
                         QorSubscriberData iData,
                         QorCallbackId iCookie);

    bool initialised = false;
    bool cleanedUp = false;
    Qor3DViewer* viewer = nullptr;
    QorFrmWindow* window = nullptr;
    QorCallbackId windowDeletedCookie = 0;
};
