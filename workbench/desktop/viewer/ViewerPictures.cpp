#include "workbench/desktop/viewer/ViewerPictures.h"

#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/viewer/ViewerPeer.h"
#include "workbench/paint/Images.h"

namespace qor::desktop {

ViewerPictures::ViewerPictures() {
    QorViewerPictureService::Install(this);
}

ViewerPictures::~ViewerPictures() {
    if (&QorViewerPictureService::Get() == this)
        QorViewerPictureService::Install(nullptr);
}

QorPixelImage* ViewerPictures::Take(QorViewer& ioViewer, QorUnicodeString& oError) {
    ViewerPeer* peer = ViewerPeer::of(ioViewer);
    if (peer == nullptr) {
        oError = "the viewer has no window";
        return nullptr;
    }
    QString reason = QStringLiteral("memory is short");
    const QImage image = peer->picture(reason);
    QorPixelImage_var picture = image.isNull() ? nullptr : paint::copyOpaque(image);
    if (!picture)
        oError = fromQt(reason);
    return picture.Detach();
}

} // namespace qor::desktop
