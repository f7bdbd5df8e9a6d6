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

int QorPictureService::WriteWatched(const QorPixelImage& iImage,
                                    const QorString& iFormat,
                                    const QorUnicodeString& iPath,
                                    const Watcher& /*iWatcher*/,
                                    QorUnicodeString& oError) {
    return Write(iImage, iFormat, iPath, oError);
}
