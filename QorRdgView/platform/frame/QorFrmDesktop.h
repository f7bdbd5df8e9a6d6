#pragma once

#include "platform/text/QorString.h"

/// What the desktop around the program does for it. A host installs one; without it there is none.
/// User-interface thread.
class QorFrmDesktop {
public:
    QorFrmDesktop() = default;
    virtual ~QorFrmDesktop() = default;
    QorFrmDesktop(const QorFrmDesktop&) = delete;
    QorFrmDesktop& operator=(const QorFrmDesktop&) = delete;

    /// Opens a file in the program that the person uses for such files; false when that cannot be
    /// started. Does not wait for it.
    virtual bool OpenDocument(const QorUnicodeString& iPath) = 0;

    /// The one in use, or null.
    [[nodiscard]] static QorFrmDesktop* GetInstalled();
    /// \p iDesktop stays the caller's; null takes it away.
    static void Install(QorFrmDesktop* iDesktop);
};
