#include "workbench/engine/qorrender/Words.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace qor::render {

namespace {

/// Farther than this, squares of distances leave the range of single floats.
constexpr double farthestMm = 1e12;

/// Numbers with \p separator between them, no more and no fewer than \p count; else none.
template <typename Number>
std::vector<Number> numbersOf(const std::string& text, char separator, std::size_t count) {
    std::vector<Number> numbers;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (numbers.size() < count) {
        Number value{};
        const auto [next, error] = std::from_chars(at, end, value);
        if (error != std::errc())
            break;
        numbers.push_back(value);
        at = next;
        if (at == end || *at != separator)
            break;
        ++at;
    }
    if (numbers.size() != count || at != end)
        return {};
    return numbers;
}

std::string plain(double number) {
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

/// \p kind of number, for the complaint.
template <typename Number>
CLI::Validator range(const char* kind, Number low, Number high) {
    return {[=](const std::string& text) -> std::string {
                const std::vector<Number> numbers = numbersOf<Number>(text, ' ', 1);
                if (!numbers.empty() && numbers[0] >= low && numbers[0] <= high)
                    return {};
                return "\"" + text + "\" is not a " + kind + " from " +
                       plain(static_cast<double>(low)) + " to " + plain(static_cast<double>(high));
            },
            ""};
}

} // namespace

std::vector<int> wholeNumbersOf(const std::string& text, char separator, std::size_t count) {
    return numbersOf<int>(text, separator, count);
}

std::array<double, 3> pointOf(const std::string& option, const std::string& text) {
    const std::vector<double> numbers = numbersOf<double>(text, ',', 3);
    if (numbers.empty())
        throw CLI::ValidationError(option, "\"" + text + "\" is not 3 numbers, separated by ','");
    for (const double number : numbers)
        if (!(std::abs(number) <= farthestMm))
            throw CLI::ValidationError(option, "\"" + text +
                                                   "\" holds what is not a number from -" +
                                                   plain(farthestMm) + " to " + plain(farthestMm));
    return {numbers[0], numbers[1], numbers[2]};
}

CLI::Validator between(double low, double high) {
    return range("number", low, high);
}

CLI::Validator wholeBetween(long low, long high) {
    return range("whole number", low, high);
}

std::string isScene(const std::string& name) {
    constexpr std::size_t longest = 6;
    const bool isNumber =
        !name.empty() && name.size() <= longest && name.front() != '0' &&
        std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; });
    return isNumber || name == "custom"
               ? std::string()
               : "\"" + name + "\" is no scene: a number from 1 on, or custom";
}

} // namespace qor::render
