#pragma once

#include <string>
#include <string_view>
#include <vector>

class QorDialog;
class QorDlgDialog;

namespace qor::automation {

/// All dialogs that can be addressed, in the order of their making: those that are dying do not
/// count, and the application frame is none.
[[nodiscard]] std::vector<QorDlgDialog*> listDialogs();

/// The dialog or widget that \p address names: the dialog's name, then the names on the way to the
/// widget, separated by "/". Names in between may be left out while the rest stays unique; when it
/// is not, an address that leaves out nothing wins. In front of the dialog's name may stand names
/// of what it belongs to. Hidden widgets count, dying ones do not. A dialog is not part of the one
/// that it belongs to. Throws Error (noSuchObject, ambiguousName).
[[nodiscard]] QorDialog& findWidget(std::string_view address);

/// The same for a dialog.
[[nodiscard]] QorDlgDialog& findDialog(std::string_view address);

} // namespace qor::automation
