#pragma once

#include <Qt>

class QorDialog;
class QWidget;

namespace qor::desktop {

/// The Qt window that a window for \p widget stands before: its father's, else the main window;
/// null without either.
[[nodiscard]] QWidget* ownerFor(const QorDialog& widget);

/// Window flags and modality from the style of \p widget.
void applyWindowStyle(QWidget& window, const QorDialog& widget);

/// Shows a window, or hides it; one that is shown gets the keyboard.
void showWindow(QWidget& window, bool visible);

} // namespace qor::desktop
