#pragma once

/// Aspects of a widget's state; a peer is told which of them changed. Combined with |.
using QorAspects = unsigned;

enum QorAspect : unsigned {
    QorAspectTitle = 1U << 0U,
    QorAspectVisibility = 1U << 1U,
    QorAspectSensitivity = 1U << 2U,
    QorAspectLayout = 1U << 3U, ///< grid cells, attachments, visible widths
    QorAspectHelp = 1U << 4U,   ///< tooltip and long help
    QorAspectIcon = 1U << 5U,
    QorAspectChecked = 1U << 6U,
    QorAspectValue = 1U << 7U, ///< number or text
    QorAspectRange = 1U << 8U, ///< range, steps, format
    QorAspectLines = 1U << 9U,
    QorAspectSelection = 1U << 10U,
    QorAspectChildren = 1U << 11U, ///< a child was added or removed
    QorAspectEverything = ~0U,
};

/// What draws one widget. A toolkit derives one kind a widget kind. A peer holds no state: it reads
/// the widget when told that an aspect changed, and reports what a person did through the widget's
/// `User…` operations, in which the widget, and with it the peer, may be destroyed.
class QorPeer {
public:
    QorPeer() = default;
    virtual ~QorPeer() = default;
    QorPeer(const QorPeer&) = delete;
    QorPeer& operator=(const QorPeer&) = delete;

    /// Draws the state anew as far as \p iAspects changed.
    virtual void Update(QorAspects iAspects) = 0;

    /// Gives the widget the keyboard.
    virtual void TakeFocus() {}

    /// Brings a window to the front.
    virtual void Raise() {}
};
