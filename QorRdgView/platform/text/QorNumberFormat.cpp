#include "platform/text/QorNumberFormat.h"

#include "platform/text/QorCLocale.h"

#include <climits>
#include <cmath>
#include <cstdio>
#include <optional>

namespace {

constexpr std::string_view flagCharacters = "-+ #0";
constexpr std::string_view digits = "0123456789";
constexpr std::string_view lengthModifiers = "hlLqjzt";
constexpr std::string_view signedConversions = "di";
constexpr std::string_view unsignedConversions = "uoxX";
constexpr std::string_view floatConversions = "fFeEgG";

/// Cuts the leading characters of \p ioText that are in \p iAllowed.
std::string_view Take(std::string_view& ioText, std::string_view iAllowed) {
    const std::size_t end = std::min(ioText.find_first_not_of(iAllowed), ioText.size());
    const std::string_view taken = ioText.substr(0, end);
    ioText.remove_prefix(end);
    return taken;
}

/// Whether a width or precision is short enough to be harmless.
bool IsModest(std::string_view iNumber) {
    constexpr int most = 200;
    int value = 0;
    for (const char digit : iNumber)
        if ((value = value * 10 + (digit - '0')) > most)
            return false;
    return true;
}

bool Contains(std::string_view iCharacters, char iOne) {
    return iCharacters.find(iOne) != std::string_view::npos;
}

/// Moves literal text, "%%" undone, from \p ioText up to a conversion or the end into \p oLiteral.
void TakeLiteral(std::string_view& ioText, std::string& oLiteral) {
    while (!ioText.empty()) {
        const bool percent = ioText.front() == '%';
        if (percent && (ioText.size() < 2 || ioText[1] != '%'))
            return;
        oLiteral += ioText.front();
        ioText.remove_prefix(percent ? 2 : 1);
    }
}

/// One conversion at the front of \p ioText, without its length modifier; nothing when it is not
/// allowed.
std::optional<std::string> TakeConversion(std::string_view& ioText) {
    std::string conversion(Take(ioText, "%").substr(0, 1));
    conversion += Take(ioText, flagCharacters);
    const std::string_view width = Take(ioText, digits);
    std::string_view precision;
    const bool hasPrecision = !Take(ioText, ".").empty();
    if (hasPrecision)
        precision = Take(ioText, digits);
    Take(ioText, lengthModifiers);
    if (ioText.empty() || !IsModest(width) || !IsModest(precision))
        return std::nullopt;
    conversion += width;
    if (hasPrecision)
        conversion.append(".").append(precision);
    conversion += ioText.front();
    ioText.remove_prefix(1);
    return conversion;
}

template <class Number>
std::string Print(const std::string& iConversion, Number iNumber) {
    const QorCLocale locale;
    // The format was checked and put together by the constructor.
    const int length = std::snprintf(nullptr, 0, iConversion.c_str(), iNumber);
    std::string text(static_cast<std::size_t>(std::max(length, 0)), '\0');
    std::snprintf(text.data(), text.size() + 1, iConversion.c_str(), iNumber);
    return text;
}

long long Truncate(double iNumber) {
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (!std::isfinite(iNumber))
        return 0;
    if (iNumber >= limit)
        return LLONG_MAX;
    return iNumber < -limit ? LLONG_MIN : static_cast<long long>(iNumber);
}

/// The bits that printf would show: those of an int when the number is one.
unsigned long long ToUnsigned(long long iNumber) {
    if (iNumber >= INT_MIN && iNumber <= INT_MAX)
        return static_cast<unsigned>(iNumber);
    return static_cast<unsigned long long>(iNumber);
}

} // namespace

QorNumberFormat::QorNumberFormat(std::string_view iFormat) : conversion("%g") {
    if (iFormat.find('\0') != std::string_view::npos)
        return;
    std::string first;
    TakeLiteral(iFormat, first);
    const std::optional<std::string> found =
        iFormat.empty() ? std::nullopt : TakeConversion(iFormat);
    std::string second;
    TakeLiteral(iFormat, second);
    if (!found || !iFormat.empty())
        return;
    const char kind = found->back();
    isUnsigned = Contains(unsignedConversions, kind);
    integer = isUnsigned || Contains(signedConversions, kind);
    if (!integer && !Contains(floatConversions, kind))
        return;
    valid = true;
    conversion = *found;
    if (integer)
        conversion.insert(conversion.size() - 1, "ll");
    before = std::move(first);
    after = std::move(second);
}

std::string QorNumberFormat::Format(double iNumber) const {
    if (!integer)
        return before + Print(conversion, iNumber) + after;
    const long long number = Truncate(iNumber);
    if (isUnsigned)
        return before + Print(conversion, ToUnsigned(number)) + after;
    return before + Print(conversion, number) + after;
}

std::string QorNumberFormat::Format(int iNumber) const {
    return Format(static_cast<double>(iNumber));
}
