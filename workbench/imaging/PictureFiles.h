#pragma once

#include "platform/vis/QorPictureService.h"

namespace qor::imaging {

/// Picture files of the eleven formats. What Write answers besides 0 is a WriteFailure.
class PictureFiles : public QorPictureService {
public:
    enum WriteFailure { unknownFormat = 1, notEncoded = 2, notWritten = 3 };

    QorPixelImage* Read(const QorUnicodeString& path, QorUnicodeString& error) override;
    /// Smaller versions come from JPEG files alone.
    QorPixelImage* ReadReduced(const QorUnicodeString& path,
                               int side,
                               int& width,
                               int& height,
                               QorUnicodeString& error) override;
    int Write(const QorPixelImage& image,
              const QorString& format,
              const QorUnicodeString& path,
              QorUnicodeString& error) override;
    int WriteWatched(const QorPixelImage& image,
                     const QorString& format,
                     const QorUnicodeString& path,
                     const Watcher& watcher,
                     QorUnicodeString& error) override;
    QorPixelImage* Resize(const QorPixelImage& image, int width, int height) override;
};

} // namespace qor::imaging
