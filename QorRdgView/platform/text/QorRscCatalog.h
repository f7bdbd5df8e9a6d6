#pragma once

#include "platform/text/QorString.h"

/// Values that are data of the installation, by catalog and key. The first directory of the path
/// list that holds the catalog's file gives all of it: catalogs of the same name in two directories
/// are never mixed. For the files see QorCatalogs. User-interface thread only.
class QorRscCatalog {
public:
    /// Non-zero, and the value, when the catalog has the key; else 0, and \p oValue stays as it
    /// was.
    [[nodiscard]] static int
    BuildResource(const QorString& iCatalog, const QorString& iKey, QorString& oValue);
    [[nodiscard]] static int
    BuildResource(const QorString& iCatalog, const QorString& iKey, QorUnicodeString& oValue);
};
