#pragma once

#include "platform/text/QorString.h"

#include <optional>

/// The value of an environment variable, or nothing when it is not set.
[[nodiscard]] std::optional<QorUnicodeString> QorGetEnv(const QorString& iName);

/// Sets an environment variable of this process, or unsets it when \p iValue is nothing. Fails with
/// a name that is empty or holds "=". User-interface thread only; no thread may read the
/// environment meanwhile.
bool QorSetEnv(const QorString& iName, const std::optional<QorUnicodeString>& iValue);
