#pragma once

#include "platform/dialog/QorDlgStyle.h"
#include "workbench/automation/Json.h"

#include <string>

class QorDialog;

namespace qor::automation {

/// A new value from a person, and how it comes about.
struct NewValue {
    const Json* value = nullptr; ///< null when none was given
    std::string via = "modify";  ///< or "drag", "up", "down"
};

/// Gives \p widget the value as a person does. Throws Error: invalidParams for a value or way that
/// is nothing, wrongKind when this kind of widget has no value or not this way.
QorUserResult setWidgetValue(QorDialog& widget, const NewValue& change);

} // namespace qor::automation
