#pragma once

#include "platform/vis/QorPixelImage.h"

#include <atomic>
#include <future>
#include <memory>

/// A picture in a private TIFF file of the temporary directory, for whoever reads files. A worker
/// writes it; it goes with this. User-interface thread.
class QorRdgTemporaryPicture {
public:
    explicit QorRdgTemporaryPicture(const QorPixelImage& iPicture);
    /// Removes the file, or has the worker remove it.
    ~QorRdgTemporaryPicture();
    QorRdgTemporaryPicture(const QorRdgTemporaryPicture&) = delete;
    QorRdgTemporaryPicture& operator=(const QorRdgTemporaryPicture&) = delete;

    /// Waits until the file is whole. Empty when it could not be written.
    [[nodiscard]] QorUnicodeString GetPath() const;

private:
    void Write(const QorPixelImage& iPicture);

    QorUnicodeString path; ///< empty without a temporary directory
    std::shared_ptr<std::atomic<bool>> isWanted;
    std::shared_future<bool> written; ///< invalid without a path
};
