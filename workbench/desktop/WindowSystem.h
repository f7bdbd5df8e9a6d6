#pragma once

class QWidget;

namespace qor::desktop {

/// Paints what is waiting to be painted in \p window, without running any other event.
void paintNow(QWidget& window);

/// Sends what was painted to the display server instead of waiting for the next turn of the loop.
void sendToScreen();

} // namespace qor::desktop
