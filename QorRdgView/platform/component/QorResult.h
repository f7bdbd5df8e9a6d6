#pragma once

#include <cstdint>

/// Outcome of an operation: 0 is success, negative is failure.
using QorResult = std::int32_t;

inline constexpr QorResult S_OK = 0;
inline constexpr QorResult E_FAIL = static_cast<QorResult>(0x80004005U);
/// The object does not offer the interface asked for.
inline constexpr QorResult E_NOINTERFACE = static_cast<QorResult>(0x80004002U);

[[nodiscard]] constexpr bool QorSucceeded(QorResult iResult) {
    return iResult >= 0;
}
