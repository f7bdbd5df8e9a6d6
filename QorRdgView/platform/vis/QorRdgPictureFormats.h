#pragma once

#include "platform/dialog/QorDlgFile.h"

#include <span>

/// A way to write a picture file, as every dialog of the library offers it.
struct QorRdgPictureFormat {
    const char* labelKey;  ///< of its label in the message catalog "QorRdgShootingPictureFrame"
    const char* pattern;   ///< of its files, "*.tif"
    const char* extension; ///< added to a name that has none, with the dot
    const char* keyword;   ///< what pictures are written under
};

/// The one table of picture formats: dialogs list its rows in order. A filter index counts from 0,
/// a format code from 1.
class QorRdgPictureFormats {
public:
    [[nodiscard]] static std::span<const QorRdgPictureFormat> GetAll();

    /// ".tif" for an index that is no filter.
    [[nodiscard]] static const char* GetExtension(int iFilterIndex);
    /// "TIFF" for a code that is none.
    [[nodiscard]] static const char* GetKeyword(int iCode);

    /// \p iPath as it is typed, with the extension of the filter when there is no dot in it. A dot
    /// in a folder's name counts too, and a dot is all that counts: the filter alone decides what
    /// is written. Both are meant.
    [[nodiscard]] static QorUnicodeString AddExtension(const QorUnicodeString& iPath,
                                                       int iFilterIndex);

    /// The extensions that are known, each once, without dots.
    [[nodiscard]] static std::vector<QorString> GetExtensions();
    /// Gives a file dialog all rows as its filters; the first is active then.
    static void SetFilters(QorDlgFile& ioDialog);
};
