#pragma once

#include "platform/vis/QorViewerPictureService.h"

namespace qor::desktop {

/// Pictures of viewers that have windows: the pixels of their peers. Installed while it lives; a
/// viewer without a peer has no picture.
class ViewerPictures : public QorViewerPictureService {
public:
    ViewerPictures();
    ~ViewerPictures() override;
    ViewerPictures(const ViewerPictures&) = delete;
    ViewerPictures& operator=(const ViewerPictures&) = delete;

    QorPixelImage* Take(QorViewer& ioViewer, QorUnicodeString& oError) override;
};

} // namespace qor::desktop
