#pragma once

#include "platform/vis/QorViewerPictureService.h"
#include "workbench/paint/ViewerPicture.h"

namespace qor::paint {

/// The library's pictures of viewers for a program without windows; installed while it lives.
/// Needs a QGuiApplication (the offscreen platform is enough) from the first picture on.
class HeadlessPictures : public QorViewerPictureService {
public:
    /// Without \p drawSpace viewers of space have no pictures.
    explicit HeadlessPictures(SpaceDrawer drawSpace);
    ~HeadlessPictures() override;
    HeadlessPictures(const HeadlessPictures&) = delete;
    HeadlessPictures& operator=(const HeadlessPictures&) = delete;

    QorPixelImage* Take(QorViewer& ioViewer, QorUnicodeString& oError) override;

private:
    SpaceDrawer drawSpace_;
    PictureCache pictures_;
};

} // namespace qor::paint
