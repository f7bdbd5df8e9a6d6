#pragma once

#include <cstddef>
#include <span>
#include <string_view>

// Reading of numbers as scanf does it, without regard to the locale: blanks before a number are
// skipped, what follows the number is ignored ("12 mm" is 12). Numbers out of range of their type,
// infinities and not-a-numbers count as failures. On failure the value stays as it was.

/// "%d".
[[nodiscard]] bool QorScanInteger(std::string_view iText, int& ioValue);
/// "%f" into a float or a double.
[[nodiscard]] bool QorScanFloat(std::string_view iText, float& ioValue);
[[nodiscard]] bool QorScanFloat(std::string_view iText, double& ioValue);
/// "%f,%f,…": as many floats as \p ioValues has room for, a comma right after each but the last.
/// Stops at the first that fails and leaves it and those after it as they were. Returns how many
/// were read.
std::size_t QorScanFloats(std::string_view iText, std::span<float> ioValues);
