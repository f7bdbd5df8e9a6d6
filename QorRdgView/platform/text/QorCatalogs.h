#pragma once

#include "platform/text/QorString.h"

/// Where catalogs come from, for all of them. User-interface thread only.
///
/// A catalog is looked for under each directory of the path list in the environment variable
/// QorStartupPath: `resources/NAME.QorRsc`, `messages/LANG/NAME.QorMsg`, `messages/NAME.QorMsg`.
/// LANG is taken from LANGUAGE, LC_ALL, LC_MESSAGES and LANG as gettext does: LANGUAGE is a list of
/// languages that counts unless the locale (the first of the other three that is set and not empty)
/// is "C" or "POSIX"; "fr_FR.UTF-8" looks under fr_FR, then under fr.
///
/// Files are read once and kept. Changes are noticed so: QorStartupPath is compared by every
/// look-up; the language and the files (their size, inode and time of change) of a catalog are
/// compared by the first look-up in it after Refresh. Each turn of the event loop and QorSetEnv
/// call Refresh.
class QorCatalogs {
public:
    /// Sets the program's own resource directory, which message catalogs fall back to when
    /// QorStartupPath has no text. Resource catalogs do not. Empty: none.
    static void SetProgramDirectory(const QorUnicodeString& iDirectory);
    [[nodiscard]] static const QorUnicodeString& GetProgramDirectory();

    /// Makes the next look-up in each catalog compare the language and its files. Costs one
    /// addition.
    static void Refresh();

    /// Forgets everything that was read.
    static void Clear();
};
