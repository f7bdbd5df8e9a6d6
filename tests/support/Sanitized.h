#pragma once

/// What tests do differently under a sanitizer. That makes all code many times as slow, and looks
/// for other faults than wrong means: tests run the same code on the same threads for fewer samples
/// and pixels, and leave to other builds what only many samples tell.

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool isSanitized = true;
#else
inline constexpr bool isSanitized = false;
#endif

/// \p full, or under a sanitizer \p few.
template <typename T>
constexpr T unlessSanitized(T full, T few) {
    return isSanitized ? few : full;
}
