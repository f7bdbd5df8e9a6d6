#pragma once

#include "platform/engine/QorRdgWindow.h"
#include "platform/vis/QorPixelImage.h"

#include <vector>

/// The pictures that were rendered last, kept as PNG files in a folder of the user's data that
/// nobody else may enter, so that a picture that was not saved is not lost:
/// `$XDG_DATA_HOME/qorworkbench/recent-renders` (`~/.local/share/…` when that is unset).
/// User-interface thread.
class QorRdgRecentRenders {
public:
    /// As many are kept; an older one goes for each that comes.
    static constexpr std::size_t most = 20;

    struct Picture {
        QorUnicodeString path;
        std::int64_t seconds = 0; ///< when it was rendered, since 1970-01-01 UTC
    };

    /// Keeps \p iRegion of a picture. A worker writes it; what waits when the program ends is
    /// written then. Failures are traced and nothing else.
    static void
    Add(const QorPixelImage& iImage, const QorRdgWindow& iRegion, double iPixelsPerInch);

    /// What is in the folder, newest first. Reads the folder.
    [[nodiscard]] static std::vector<Picture> List();

    /// Shows a picture in the desktop's program for pictures; false when the host cannot.
    static bool Open(const QorUnicodeString& iPath);

    /// Writes what waits, now. Waits for a worker that is writing.
    static void Finish();

    /// Empty without a home directory.
    [[nodiscard]] static QorUnicodeString GetDirectory();
};
