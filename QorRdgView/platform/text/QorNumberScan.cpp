#include "platform/text/QorNumberScan.h"

#include "platform/text/QorCLocale.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

namespace {

constexpr std::string_view blanks = " \t\n\v\f\r";

/// Cuts blanks, and a plus sign that from_chars would not take.
void CutFront(std::string_view& ioText) {
    ioText.remove_prefix(std::min(ioText.find_first_not_of(blanks), ioText.size()));
    if (ioText.size() > 1 && ioText[0] == '+' && ioText[1] != '-')
        ioText.remove_prefix(1);
}

/// A number that from_chars calls out of range: too small ones are zero, too large ones infinite.
double ReadExtreme(const char* iFirst, const char* iLast) {
    const QorCLocale locale;
    return std::strtod(std::string(iFirst, iLast).c_str(), nullptr);
}

/// Reads a number at the front and cuts it off; on failure nothing is cut.
bool TakeFloat(std::string_view& ioText, double& oValue) {
    std::string_view text = ioText;
    CutFront(text);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::invalid_argument)
        return false;
    if (error == std::errc::result_out_of_range)
        value = ReadExtreme(text.data(), end);
    if (!std::isfinite(value))
        return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    ioText = text;
    oValue = value;
    return true;
}

/// The same into a float, rounded once.
bool TakeFloat(std::string_view& ioText, float& oValue) {
    std::string_view text = ioText;
    double wide = 0;
    if (!TakeFloat(text, wide) || std::abs(wide) > std::numeric_limits<float>::max())
        return false;
    CutFront(ioText);
    auto value = static_cast<float>(wide);
    float narrow = 0;
    const auto result = std::from_chars(ioText.data(), ioText.data() + ioText.size(), narrow);
    if (result.ec == std::errc())
        value = narrow;
    ioText = text;
    oValue = value;
    return true;
}

} // namespace

bool QorScanInteger(std::string_view iText, int& ioValue) {
    CutFront(iText);
    int value = 0;
    const auto result = std::from_chars(iText.data(), iText.data() + iText.size(), value);
    if (result.ec != std::errc())
        return false;
    ioValue = value;
    return true;
}

bool QorScanFloat(std::string_view iText, float& ioValue) {
    return TakeFloat(iText, ioValue);
}

bool QorScanFloat(std::string_view iText, double& ioValue) {
    return TakeFloat(iText, ioValue);
}

std::size_t QorScanFloats(std::string_view iText, std::span<float> ioValues) {
    std::size_t count = 0;
    for (float& value : ioValues) {
        if (count != 0) {
            if (!iText.starts_with(','))
                break;
            iText.remove_prefix(1);
        }
        if (!TakeFloat(iText, value))
            break;
        ++count;
    }
    return count;
}
