#pragma once

#include "platform/engine/QorIRdgViewerParts.h"
#include "quickrender/QorRdgAreaSelector.h"
#include "quickrender/QorRdgViewerAdapter.h"

/// Lends a 3D viewer the area selector, and publishes its events again under the same names.
class QorRdgAreaViewer : public QorImplements<QorRdgViewerAdapter, QorIRdgArea> {
    QorDeclareClass(QorRdgAreaViewer)

    explicit QorRdgAreaViewer(QorBaseUnknown* iOwner);

    QorResult SetAreaMode(bool iOn) override;
    QorResult GetAreaMode(int& oOn) override;
    QorResult SetArea(int iX1, int iY1, int iX2, int iY2) override;
    QorResult GetArea(int& oX1, int& oY1, int& oX2, int& oY2) override;
    QorCallbackManager* GetAreaPublisher() override;
    QorEventName GetEndAreaEvent() override;

protected:
    ~QorRdgAreaViewer() override;
    void DoInit(Qor3DViewer& iViewer) override;
    void DoCleanUp(Qor3DViewer& iViewer) override;

private:
    void RemoveSelector();
    void AreaCB(QorEventName iEvent,
                QorBaseUnknown* iPublisher,
                QorNotification* iNotification,
                QorSubscriberData iData,
                QorCallbackId iCookie);

    QorVar<QorRdgAreaSelector> selector;
    QorCallbackManager selectorEvents;             ///< what the selector publishes
    std::unique_ptr<QorCallbackManager> publisher; ///< what is published again
};

QorDeclareBOA(QorIRdgArea, QorRdgAreaViewer);
