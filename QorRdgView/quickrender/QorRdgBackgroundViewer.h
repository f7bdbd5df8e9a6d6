#pragma once

#include "platform/engine/QorIRdgViewerParts.h"
#include "quickrender/QorRdgTemporaryPicture.h"
#include "quickrender/QorRdgViewerAdapter.h"

/// The picture behind the product in a 3D viewer, kept covering it at every size.
class QorRdgBackgroundViewer : public QorImplements<QorRdgViewerAdapter, QorIRdgBackground> {
    QorDeclareClass(QorRdgBackgroundViewer)

    explicit QorRdgBackgroundViewer(QorBaseUnknown* iOwner);

    QorResult SetBackground(const QorString& iImage, bool iStretch) override;
    QorResult GetBackground(QorString& oImage, bool& oStretch) override;
    QorResult RemoveBackground() override;

    /// The picture loaded, or null.
    [[nodiscard]] QorPixelImage* GetPicture() const { return picture; }

    /// A private TIFF file with the picture, for an engine that reads files; empty when it could
    /// not be written. A worker writes it; this waits until it is whole.
    [[nodiscard]] QorUnicodeString GetTemporaryFile() const;

protected:
    ~QorRdgBackgroundViewer() override;
    void DoInit(Qor3DViewer& iViewer) override;
    void DoCleanUp(Qor3DViewer& iViewer) override;

private:
    void Load();
    void Rebuild();
    void RemovePictureRep();
    void ChangedCB(QorEventName iEvent,
                   QorBaseUnknown* iPublisher,
                   QorNotification* iNotification,
                   QorSubscriberData iData,
                   QorCallbackId iCookie);

    Qor2DViewpoint_var viewpoint;
    QorVar<Qor2DBagRep> bag;
    QorPixelImage_var picture;
    QorString name;
    bool stretch = true;
    std::unique_ptr<QorRdgTemporaryPicture> file;
};

QorDeclareBOA(QorIRdgBackground, QorRdgBackgroundViewer);
