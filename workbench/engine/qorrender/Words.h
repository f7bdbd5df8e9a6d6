#pragma once

#include <CLI/CLI.hpp>

#include <array>
#include <string>
#include <vector>

/// What the words of a command line may be. Numbers are read the same in every locale.
namespace qor::render {

/// Whole numbers of \p text, so many as \p count, with \p separator between them; empty when it is
/// anything else.
std::vector<int> wholeNumbersOf(const std::string& text, char separator, std::size_t count);

/// x, y and z with commas between them. Throws CLI::ValidationError in the name of \p option, also
/// for what is not finite or too far away to be drawn.
std::array<double, 3> pointOf(const std::string& option, const std::string& text);

/// A check for a number from \p low to \p high; what is no number at all is none of these.
CLI::Validator between(double low, double high);
/// The same for whole numbers in their usual notation.
CLI::Validator wholeBetween(long low, long high);

/// What is wrong with the name of a scene, or nothing.
std::string isScene(const std::string& name);

} // namespace qor::render
