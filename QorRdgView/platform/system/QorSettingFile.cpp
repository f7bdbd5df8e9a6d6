#include "platform/system/QorSettingFile.h"

#include "platform/system/QorSettingText.h"

#include <array>
#include <charconv>

namespace {

constexpr std::string_view headerStart = "# QorWorkbench settings, version ";
constexpr int thisVersion = 1;

/// Cuts a line and its end off.
std::string_view TakeLine(std::string_view& ioText) {
    const std::size_t end = std::min(ioText.find('\n'), ioText.size());
    std::string_view line = ioText.substr(0, end);
    ioText.remove_prefix(std::min(end + 1, ioText.size()));
    while (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

int ReadVersion(std::string_view iHeader) {
    int version = thisVersion;
    iHeader.remove_prefix(headerStart.size());
    std::from_chars(iHeader.data(), iHeader.data() + iHeader.size(), version);
    return version;
}

} // namespace

QorSettingFile::Damage QorSettingFile::Parse(std::string_view iText) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    laterHeader.clear();
    lines.clear();
    places.clear();
    if (iText.starts_with(byteOrderMark))
        iText.remove_prefix(byteOrderMark.size());
    Damage damage;
    const bool hasHeader = iText.starts_with(headerStart);
    if (hasHeader)
        ParseHeader(iText);
    for (int number = hasHeader ? 2 : 1; !iText.empty(); ++number)
        ParseLine(TakeLine(iText), number, damage);
    return damage;
}

void QorSettingFile::ParseHeader(std::string_view& ioText) {
    const std::string_view header = TakeLine(ioText);
    if (ReadVersion(header) > thisVersion)
        laterHeader = header;
}

void QorSettingFile::ParseLine(std::string_view iLine, int iNumber, Damage& ioDamage) {
    const bool isSilent =
        iLine.starts_with('#') || iLine.find_first_not_of(" \t") == std::string_view::npos;
    QorSettingLine setting;
    const char* wrong = isSilent ? nullptr : QorReadSettingLine(iLine, setting);
    if (isSilent || (wrong != nullptr && !laterHeader.empty()))
        lines.push_back({.text = std::string(iLine), .value = {}});
    else if (wrong == nullptr)
        Set(setting.key, std::move(setting.value));
    else if (ioDamage.count++ == 0)
        ioDamage = {.count = 1, .firstLine = iNumber, .reason = wrong};
}

std::string QorSettingFile::Print() const {
    std::string text =
        laterHeader.empty() ? std::string(headerStart) + std::to_string(thisVersion) : laterHeader;
    text += '\n';
    for (const Line& line : lines) {
        text += line.isSetting ? QorPrintSettingLine(line.text, line.value) : line.text;
        text += '\n';
    }
    return text;
}

const QorSettingValue* QorSettingFile::Find(std::string_view iKey) const {
    const auto found = places.find(iKey);
    return found == places.end() ? nullptr : &lines[found->second].value;
}

bool QorSettingFile::Set(std::string_view iKey, QorSettingValue iValue) {
    if (!IsKey(iKey))
        return false;
    const auto [found, isNew] = places.try_emplace(std::string(iKey), lines.size());
    if (isNew)
        lines.push_back({.text = std::string(iKey), .value = std::move(iValue), .isSetting = true});
    else
        lines[found->second].value = std::move(iValue);
    return true;
}

bool QorSettingFile::IsKey(std::string_view iKey) {
    if (iKey.empty() || iKey.front() == '#')
        return false;
    for (const char character : iKey)
        if (static_cast<unsigned char>(character) <= ' ' || character == '\x7F' ||
            character == '=' || character == '"')
            return false;
    return true;
}

double QorWidenFloat(float iValue) {
    std::array<char, 32> digits{};
    const auto printed = std::to_chars(digits.data(), digits.data() + digits.size(), iValue);
    double wide = 0;
    std::from_chars(digits.data(), printed.ptr, wide);
    // Rounding twice could give the neighbour; then the plain conversion is exact.
    return static_cast<float>(wide) == iValue ? wide : static_cast<double>(iValue);
}
