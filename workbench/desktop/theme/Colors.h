#pragma once

#include <QColor>
#include <QPalette>

namespace qor::desktop {

/// The colours of one theme. Greys are neutral, so that they do not tint the eye that judges a
/// picture; there is one accent. Texts have a contrast of at least 4.5 to 1 on what they stand on,
/// the edges of controls that can be used at least 3 to 1.
struct Colors {
    bool dark = false;
    QColor window;     ///< behind dialogs and tool bars
    QColor field;      ///< inside editors and lists
    QColor raised;     ///< buttons
    QColor hover;      ///< buttons under the mouse
    QColor pressed;    ///< buttons held down
    QColor edge;       ///< around controls
    QColor line;       ///< separators, frames of groups
    QColor groove;     ///< of sliders, scroll bars and progress bars
    QColor text;       ///< everything that is to be read
    QColor muted;      ///< what can be overlooked: hints, status
    QColor disabled;   ///< texts and marks of what cannot be used
    QColor accent;     ///< what is chosen, and the ring of focus
    QColor accentText; ///< on the accent
    QColor danger;
    QColor warning;

    [[nodiscard]] static const Colors& light();
    [[nodiscard]] static const Colors& darkOnes();

    [[nodiscard]] QPalette palette() const;
};

/// Contrast of two opaque colours, 1 to 21. Method: WCAG 2.1, relative luminance.
[[nodiscard]] double contrast(const QColor& one, const QColor& other);

} // namespace qor::desktop
