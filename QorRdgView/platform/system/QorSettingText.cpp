#include "platform/system/QorSettingText.h"

#include <array>
#include <charconv>
#include <utility>

namespace {

/// A character of a string and the letter that stands for it after a backslash.
constexpr std::array<std::pair<char, char>, 6> escapes{
    {{'"', '"'}, {'\\', '\\'}, {'\n', 'n'}, {'\r', 'r'}, {'\t', 't'}, {'\0', '0'}}};

std::string_view Trim(std::string_view iText) {
    constexpr std::string_view blanks = " \t";
    const std::size_t first = iText.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return iText.substr(first, iText.find_last_not_of(blanks) - first + 1);
}

const char* ReadString(std::string_view iText, std::string& oString) {
    for (std::size_t i = 1; i < iText.size(); ++i) {
        if (iText[i] == '"')
            return i + 1 == iText.size() ? nullptr : "something after the closing quote";
        if (iText[i] != '\\') {
            oString += iText[i];
            continue;
        }
        if (++i == iText.size())
            break;
        bool known = false;
        for (const auto& [character, letter] : escapes)
            if (letter == iText[i]) {
                oString += character;
                known = true;
            }
        if (!known)
            return "an unknown escape in the string";
    }
    return "no closing quote";
}

template <class Number>
bool ReadNumber(std::string_view iText, Number& oNumber) {
    const char* end = iText.data() + iText.size();
    const auto result = std::from_chars(iText.data(), end, oNumber);
    return result.ec == std::errc() && result.ptr == end;
}

const char* ReadNumbers(std::string_view iText, QorSettingValue& oValue) {
    std::vector<int> integers;
    std::vector<double> floats;
    for (bool more = true; more;) {
        const std::size_t comma = iText.find(',');
        const std::string_view token = Trim(iText.substr(0, comma));
        more = comma != std::string_view::npos;
        iText.remove_prefix(more ? comma + 1 : iText.size());
        int integer = 0;
        double number = 0;
        if (ReadNumber(token, integer))
            integers.push_back(integer);
        if (!ReadNumber(token, number))
            return "neither a number nor a string";
        floats.push_back(number);
    }
    if (integers.size() == floats.size())
        oValue = std::move(integers);
    else
        oValue = std::move(floats);
    return nullptr;
}

template <class Number>
std::string PrintNumber(Number iNumber) {
    std::array<char, 32> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), iNumber);
    return {digits.data(), result.ptr};
}

/// With a point where the number would look like an integer.
std::string PrintOne(double iNumber) {
    std::string text = PrintNumber(iNumber);
    if (text.find_first_not_of("-0123456789") == std::string::npos)
        text += ".0";
    return text;
}

std::string PrintOne(int iNumber) {
    return PrintNumber(iNumber);
}

template <class Number>
std::string PrintValue(const std::vector<Number>& iNumbers) {
    std::string text;
    for (const Number number : iNumbers)
        text += (text.empty() ? "" : ", ") + PrintOne(number);
    return text;
}

std::string PrintValue(const std::string& iString) {
    std::string text = "\"";
    for (const char one : iString) {
        char escape = '\0';
        for (const auto& [character, letter] : escapes)
            if (character == one)
                escape = letter;
        if (escape != '\0')
            text.append(1, '\\').append(1, escape);
        else
            text += one;
    }
    return text + '"';
}

} // namespace

const char* QorReadSettingLine(std::string_view iLine, QorSettingLine& oLine) {
    const std::size_t equals = iLine.find('=');
    if (equals == std::string_view::npos)
        return "no \"=\"";
    oLine.key = Trim(iLine.substr(0, equals));
    if (!QorSettingFile::IsKey(oLine.key))
        return "no key before the \"=\"";
    const std::string_view value = Trim(iLine.substr(equals + 1));
    if (!value.starts_with('"'))
        return ReadNumbers(value, oLine.value);
    return ReadString(value, oLine.value.emplace<std::string>());
}

std::string QorPrintSettingLine(std::string_view iKey, const QorSettingValue& iValue) {
    return std::string(iKey) + " = " +
           std::visit([](const auto& iOne) { return PrintValue(iOne); }, iValue);
}
