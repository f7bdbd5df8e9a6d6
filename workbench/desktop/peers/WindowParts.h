#pragma once

#include <QPoint>
#include <Qt>

class QorDialog;
class QRect;
class QSize;
class QWidget;

namespace qor::desktop {

/// The Qt window that a window for \p widget stands before: its father's, else the main window;
/// null without either.
[[nodiscard]] QWidget* ownerFor(const QorDialog& widget);

/// Window flags and modality from the style of \p widget.
void applyWindowStyle(QWidget& window, const QorDialog& widget);

/// Shows a window, or hides it; one that is shown gets the keyboard.
void showWindow(QWidget& window, bool visible);

/// Where a window of \p size stands on \p screen without covering \p tools, the frame of tools that
/// opened it: to the left, below or to the right of it, whichever fits first; else as far right of
/// it as the screen goes. Sizes and places include the windows' frames.
[[nodiscard]] QPoint placeBeside(const QRect& tools, const QSize& size, const QRect& screen);

} // namespace qor::desktop
