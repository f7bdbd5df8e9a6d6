#pragma once

#include "platform/vis/QorPixelImage.h"

class QorViewer;

/// Pictures of what viewers show, as a host takes them: background, space, and all that lies over
/// and under it. User-interface thread only. Without a host there are none.
class QorViewerPictureService {
public:
    QorViewerPictureService() = default;
    virtual ~QorViewerPictureService() = default;
    QorViewerPictureService(const QorViewerPictureService&) = delete;
    QorViewerPictureService& operator=(const QorViewerPictureService&) = delete;

    /// An opaque picture of the viewer's size in device pixels with one reference for the caller;
    /// null with a reason in \p oError that begins in lower case.
    [[nodiscard]] virtual QorPixelImage* Take(QorViewer& ioViewer, QorUnicodeString& oError) = 0;

    /// The service in use, never null.
    [[nodiscard]] static QorViewerPictureService& Get();
    /// \p iService stays the caller's; null takes it away.
    static void Install(QorViewerPictureService* iService);
};
