#include "platform/text/QorCatalogFile.h"

#include "platform/text/QorUtf8.h"
#include "platform/text/QorWarning.h"

#include <optional>

namespace {

constexpr std::string_view blanks = " \t\r\v\f";

std::string_view Trim(std::string_view iText) {
    const std::size_t first = iText.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return iText.substr(first, iText.find_last_not_of(blanks) - first + 1);
}

bool IsComment(std::string_view iLine) {
    return iLine.empty() || iLine.front() == '#' || iLine.starts_with("//");
}

char Unescape(char iCharacter) {
    switch (iCharacter) {
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case '"':
    case '\\':
        return iCharacter;
    default:
        return '\0';
    }
}

/// Cuts a value and its closing quote off \p ioText; nothing when the quote is missing.
std::optional<std::string> TakeValue(std::string_view& ioText) {
    std::string value;
    for (std::size_t i = 0; i < ioText.size(); ++i) {
        if (ioText[i] == '"') {
            ioText.remove_prefix(i + 1);
            return value;
        }
        const char escaped =
            ioText[i] == '\\' && i + 1 < ioText.size() ? Unescape(ioText[i + 1]) : '\0';
        value += escaped != '\0' ? escaped : ioText[i];
        if (escaped != '\0')
            ++i;
    }
    return std::nullopt;
}

struct Entry {
    std::string_view key;
    std::string value;
};

/// Reads one entry; else says what is wrong with it, and null is success.
const char* ReadEntry(std::string_view iLine, Entry& oEntry) {
    if (!QorIsUtf8(iLine))
        return "not UTF-8";
    if (iLine.find('\0') != std::string_view::npos)
        return "a zero byte";
    const std::size_t equals = iLine.find('=');
    if (equals == std::string_view::npos)
        return "no \"=\"";
    oEntry.key = Trim(iLine.substr(0, equals));
    if (oEntry.key.empty() || oEntry.key.find_first_of("\" \t") != std::string_view::npos)
        return "no key before the \"=\"";
    std::string_view rest = Trim(iLine.substr(equals + 1));
    if (!rest.starts_with('"'))
        return "no quote after the \"=\"";
    rest.remove_prefix(1);
    std::optional<std::string> value = TakeValue(rest);
    if (!value)
        return "no closing quote";
    rest = Trim(rest);
    if (!rest.starts_with(';'))
        return "no \";\" after the value";
    rest.remove_prefix(1);
    if (!IsComment(Trim(rest)))
        return "something after the \";\"";
    oEntry.value = std::move(*value);
    return nullptr;
}

/// Warns of a file's damaged lines, of the first ones each by itself.
class Complaints {
public:
    explicit Complaints(const std::string& iName) : name(iName) {}

    void Add(int iLine, const char* iWhat) {
        constexpr int most = 10;
        if (++count <= most)
            QorWarn(name + ", line " + std::to_string(iLine) + ": " + iWhat +
                    "; the line is left out");
        else
            ++others;
    }

    void Finish() const {
        if (others != 0)
            QorWarn(name + ": " + std::to_string(others) + " more lines are damaged and left out");
    }

private:
    const std::string& name;
    int count = 0;
    int others = 0;
};

} // namespace

void QorReadCatalogText(std::string_view iText,
                        const std::string& iName,
                        QorCatalogEntries& ioEntries) {
    if (iText.starts_with("\xEF\xBB\xBF"))
        iText.remove_prefix(3);
    Complaints complaints(iName);
    QorCatalogEntries found;
    for (int number = 1; !iText.empty(); ++number) {
        const std::size_t end = iText.find('\n');
        const std::string_view line = Trim(iText.substr(0, end));
        iText.remove_prefix(end == std::string_view::npos ? iText.size() : end + 1);
        if (IsComment(line))
            continue;
        Entry entry;
        if (const char* wrong = ReadEntry(line, entry); wrong != nullptr)
            complaints.Add(number, wrong);
        else
            found.insert_or_assign(std::string(entry.key), std::move(entry.value));
    }
    complaints.Finish();
    ioEntries.merge(found);
}

std::string QorWriteCatalogLine(std::string_view iKey, std::string_view iValue) {
    std::string line = std::string(iKey) + "=\"";
    for (const char character : iValue) {
        if (character == '"' || character == '\\')
            line += '\\';
        if (character == '\n')
            line += "\\n";
        else
            line += character;
    }
    return line + "\";";
}
