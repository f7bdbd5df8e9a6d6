#include "platform/vis/QorPictureService.h"

#include "platform/vis/QorPlainPictures.h"

namespace {

QorPictureService* installed = nullptr;

} // namespace

QorPictureService& QorPictureService::Get() {
    static QorPlainPictures plain;
    return installed != nullptr ? *installed : plain;
}

void QorPictureService::Install(QorPictureService* iService) {
    installed = iService;
}

QorPixelImage* QorPictureService::ReadReduced(const QorUnicodeString& iPath,
                                              int /*iSide*/,
                                              int& oWidth,
                                              int& oHeight,
                                              QorUnicodeString& oError) {
    QorPixelImage* picture = Read(iPath, oError);
    if (picture != nullptr)
        picture->GetSize(oWidth, oHeight);
    return picture;
}

int QorPictureService::WriteWatched(const QorPixelImage& iImage,
                                    const QorString& iFormat,
                                    const QorUnicodeString& iPath,
                                    const Watcher& /*iWatcher*/,
                                    QorUnicodeString& oError) {
    return Write(iImage, iFormat, iPath, oError);
}
