#pragma once

#include "platform/vis/QorPictureService.h"

/// The picture service of a program without a host: uncompressed TGA files of 24 and 32 bits,
/// written under the keyword "TGA" and read back, and resampling by area.
class QorPlainPictures : public QorPictureService {
public:
    [[nodiscard]] QorPixelImage* Read(const QorUnicodeString& iPath,
                                      QorUnicodeString& oError) override;
    [[nodiscard]] int Write(const QorPixelImage& iImage,
                            const QorString& iFormat,
                            const QorUnicodeString& iPath,
                            QorUnicodeString& oError) override;
    [[nodiscard]] QorPixelImage*
    Resize(const QorPixelImage& iImage, int iWidth, int iHeight) override;
};
