#pragma once

#include "platform/component/QorResult.h"
#include "platform/text/QorString.h"

#include <cstdint>
#include <optional>

/// What is known of a file without reading it.
struct QorFileInfo {
    std::uint64_t sizeInBytes = 0;
    std::int64_t modifiedInNanoseconds = 0; ///< since 1970-01-01 UTC
    bool isDirectory = false;
    bool isRegular = false;
};

/// 0 when \p iPath names something that exists (links are followed), else non-zero, with \p oInfo
/// as it was. \p oInfo may be null.
int QorGetFileInfo(const QorUnicodeString& iPath, QorFileInfo* oInfo = nullptr);

/// The full path of \p iRelative under the first directory of the path list \p iList ("/a:/b") that
/// holds it, or nothing. "\" counts as "/" in \p iRelative, so that names written on other systems
/// are found.
[[nodiscard]] std::optional<QorUnicodeString> QorFindPath(const QorUnicodeString& iRelative,
                                                          const QorUnicodeString& iList);

/// Splits at the last "/": "/a/b.png" gives "/a" and "b.png", "/b" gives "/" and "b", "b" gives ""
/// and "b".
void QorSplitPath(const QorUnicodeString& iPath,
                  QorUnicodeString& oDirectory,
                  QorUnicodeString& oName);

/// Makes a directory and those above it, with the access \p iMode less the umask. S_OK also when it
/// is there already; E_FAIL when it cannot be made or something else has that name.
QorResult QorCreateDirectory(const QorUnicodeString& iPath, unsigned iMode = 0777);

/// A directory for temporary files that nobody else can enter: $TMPDIR (or /tmp) itself if the user
/// owns it and nobody else may enter, else a folder of mode 0700 of ours inside it. Empty when none
/// can be had.
[[nodiscard]] QorUnicodeString QorGetTempDirectory();

/// Where the picture \p iName is: as it is, else in `rendering/` under each directory of
/// QorStartupPath, else in `rendering/` of the program's own resources; the name itself when it is
/// found nowhere.
[[nodiscard]] QorUnicodeString QorGetImagePathName(const QorUnicodeString& iName);
