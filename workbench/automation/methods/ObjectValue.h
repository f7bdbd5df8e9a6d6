#pragma once

#include "platform/scene/QorAttribute.h"
#include "workbench/automation/Json.h"

namespace qor::automation {

/// A value as the port tells it: colours and points as lists of numbers, objects by name.
[[nodiscard]] Json writeValue(const QorAttributeValue& value);

/// \p value for \p attribute; names are looked up in the current document. Throws Error:
/// invalidParams when it is of another type, noSuchObject or ambiguousName for a name.
[[nodiscard]] QorAttributeValue readValue(const QorAttribute& attribute, const Json& value);

} // namespace qor::automation
