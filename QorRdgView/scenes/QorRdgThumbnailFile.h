#pragma once

#include "platform/vis/QorPixelImage.h"

/// One thumbnail and the file that it is kept in.
class QorRdgThumbnailFile {
public:
    /// The directory of thumbnails, made if it is missing; empty when there is none that is the
    /// user's own and closed to others. User-interface thread only.
    [[nodiscard]] static QorUnicodeString GetDirectory();

    /// The thumbnail of \p iImage: read from \p iDirectory, else made, and then kept there. Null
    /// when neither file can be read. Thread-safe.
    [[nodiscard]] static QorPixelImage_var ReadOrMake(const QorUnicodeString& iDirectory,
                                                      const QorUnicodeString& iImage);
};
