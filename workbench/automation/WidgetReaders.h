#pragma once

#include "workbench/automation/Json.h"

class QorDialog;

namespace qor::automation {

/// What widget.get tells of a widget: its name, class, kind, title, own visibility and
/// sensitivity, its grid cell if it has one, and the values of its kind.
[[nodiscard]] Json readWidget(const QorDialog& widget);

/// The same, with "children": the widgets in it, recursively, but no dialogs.
[[nodiscard]] Json readWidgetTree(const QorDialog& widget);

} // namespace qor::automation
