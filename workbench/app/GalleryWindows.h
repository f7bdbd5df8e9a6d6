#pragma once

#include "platform/dialog/QorDlgDialog.h"

#include <vector>

namespace qor::app {

/// Builds the section of buttons that open the toolkit's windows.
void buildWindows(QorDialog& section);

/// Whether \p widget is one of those buttons.
[[nodiscard]] bool opensWindow(const QorDialog& widget);

/// Makes the window that belongs to \p button as a child of \p father, hidden; a notification box
/// is shown and answered at once instead. Null for a box and for other buttons.
[[nodiscard]] QorDlgDialog* openWindow(QorDlgDialog& father, const QorString& button);

/// The notifications with which \p window asks to be destroyed.
[[nodiscard]] std::vector<QorNotification*> endsOf(QorDlgDialog& window);

} // namespace qor::app
