#pragma once

#include "platform/scene/QorRscContainer.h"

#include <string>

namespace qor::automation {

/// What the current document holds; null while none is open.
[[nodiscard]] QorRscContainer* currentObjects();

/// Throws Error (invalidParams) for a kind that is unknown.
[[nodiscard]] const QorRscKind& findKind(const std::string& name);

/// The object of the current document that is called so. Throws Error: noSuchObject, ambiguousName
/// when several are.
[[nodiscard]] QorRscObject_var findObject(const QorRscKind& kind, const std::string& name);

/// The same among several kinds.
[[nodiscard]] QorRscObject_var findObject(const std::vector<QorString>& kinds,
                                          const std::string& name);

} // namespace qor::automation
