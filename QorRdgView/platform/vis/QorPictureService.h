#pragma once

#include "platform/vis/QorPixelImage.h"

#include <functional>

/// Picture files, as a host offers them. Callable from any thread. Without a host a service of the
/// library's own reads and writes uncompressed TGA and resamples by area.
class QorPictureService {
public:
    QorPictureService() = default;
    virtual ~QorPictureService() = default;
    QorPictureService(const QorPictureService&) = delete;
    QorPictureService& operator=(const QorPictureService&) = delete;

    /// A picture with one reference for the caller, or null with a reason in \p oError that names
    /// the file.
    [[nodiscard]] virtual QorPixelImage* Read(const QorUnicodeString& iPath,
                                              QorUnicodeString& oError) = 0;
    /// The same for a picture that is shown much smaller: where its format gives it sooner, a
    /// smaller version whose longer side still has \p iSide pixels. \p oWidth and \p oHeight are
    /// the whole picture's. The default reads all of it.
    [[nodiscard]] virtual QorPixelImage* ReadReduced(const QorUnicodeString& iPath,
                                                     int iSide,
                                                     int& oWidth,
                                                     int& oHeight,
                                                     QorUnicodeString& oError);
    /// 0 on success; else a code that is not 0, and the reason in \p oError. An old file stays
    /// whole then.
    [[nodiscard]] virtual int Write(const QorPixelImage& iImage,
                                    const QorString& iFormat,
                                    const QorUnicodeString& iPath,
                                    QorUnicodeString& oError) = 0;
    /// Told how far a long write is, 0 to 100, on the thread that writes; false gives it up.
    using Watcher = std::function<bool(int iPercent)>;
    /// The same for a picture that takes a while. Given up, it answers a code that is not 0 and
    /// leaves no file. A service that cannot tell writes without calling \p iWatcher.
    [[nodiscard]] virtual int WriteWatched(const QorPixelImage& iImage,
                                           const QorString& iFormat,
                                           const QorUnicodeString& iPath,
                                           const Watcher& iWatcher,
                                           QorUnicodeString& oError);
    [[nodiscard]] virtual QorPixelImage*
    Resize(const QorPixelImage& iImage, int iWidth, int iHeight) = 0;

    /// The service in use, never null.
    [[nodiscard]] static QorPictureService& Get();
    /// \p iService stays the caller's; null brings the library's own back.
    static void Install(QorPictureService* iService);
};
