#pragma once

#include "platform/dialog/QorPeer.h"

#include <memory>

class QorDialog;

/// A host's way of drawing. A program installs one, or none: then widgets live without peers and
/// behave the same.
class QorToolkit {
public:
    QorToolkit() = default;
    virtual ~QorToolkit() = default;
    QorToolkit(const QorToolkit&) = delete;
    QorToolkit& operator=(const QorToolkit&) = delete;

    /// The peer of \p iWidget, whose father has its peer already; null for kinds that the host does
    /// not draw.
    [[nodiscard]] virtual std::unique_ptr<QorPeer> CreatePeer(QorDialog& iWidget) = 0;

    /// The toolkit in use, or null.
    [[nodiscard]] static QorToolkit* GetInstalled();
    /// \p iToolkit stays the caller's and outlives every widget shown through it; null takes it
    /// away.
    static void Install(QorToolkit* iToolkit);
};
