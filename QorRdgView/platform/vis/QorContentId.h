#pragma once

#include <cstdint>

/// Identity of the content of a mesh or picture: a number that no other content of this process has
/// or will have. Thread-safe.
[[nodiscard]] std::uint64_t QorNewContentId();
