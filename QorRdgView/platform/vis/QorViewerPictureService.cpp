#include "platform/vis/QorViewerPictureService.h"

namespace {

class NoPictures : public QorViewerPictureService {
public:
    QorPixelImage* Take(QorViewer& /*ioViewer*/, QorUnicodeString& oError) override {
        oError = "this program draws no viewers";
        return nullptr;
    }
};

QorViewerPictureService* installed = nullptr;

} // namespace

QorViewerPictureService& QorViewerPictureService::Get() {
    static NoPictures none;
    return installed != nullptr ? *installed : none;
}

void QorViewerPictureService::Install(QorViewerPictureService* iService) {
    installed = iService;
}
