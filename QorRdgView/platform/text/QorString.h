#pragma once

#include <compare>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

/// Common body of the two string classes: UTF-8 text by value. Lengths and positions are in bytes.
template <class Derived>
class QorText {
public:
    QorText() = default;

    QorText(const char* iText)
        : text(iText != nullptr ? iText : "") {} // NOLINT(google-explicit-constructor)

    QorText(std::string iText) : text(std::move(iText)) {} // NOLINT(google-explicit-constructor)

    explicit QorText(std::string_view iText) : text(iText) {}

    /// The text, valid as long as the string is neither changed nor destroyed.
    [[nodiscard]] const std::string& Str() const { return text; }

    [[nodiscard]] const char* CastToCharPtr() const { return text.c_str(); }

    [[nodiscard]] std::size_t GetLengthInChar() const { return text.size(); }

    [[nodiscard]] bool IsNull() const { return text.empty(); }

    /// A copy without the blanks (spaces, tabs, line ends) at both ends.
    [[nodiscard]] Derived Strip() const {
        constexpr std::string_view blanks = " \t\r\n\v\f";
        const auto first = text.find_first_not_of(blanks);
        if (first == std::string::npos)
            return Derived();
        return Derived(text.substr(first, text.find_last_not_of(blanks) - first + 1));
    }

    Derived& operator+=(const Derived& iOther) {
        text += iOther.Str();
        return static_cast<Derived&>(*this);
    }

    friend Derived operator+(Derived iFirst, const Derived& iSecond) {
        iFirst += iSecond;
        return iFirst;
    }

    friend bool operator==(const Derived& iFirst, const Derived& iSecond) {
        return iFirst.Str() == iSecond.Str();
    }

    friend auto operator<=>(const Derived& iFirst, const Derived& iSecond) {
        return iFirst.Str() <=> iSecond.Str();
    }

    friend std::ostream& operator<<(std::ostream& ioOut, const Derived& iText) {
        return ioOut << iText.Str();
    }

private:
    std::string text;
};

/// Keys, identifiers and names that a person does not read.
class QorString : public QorText<QorString> {
public:
    using QorText::QorText;
};

/// Text that a person reads, and names of files.
class QorUnicodeString : public QorText<QorUnicodeString> {
public:
    using QorText::QorText;

    /// Number of code points; a byte that is not valid UTF-8 counts as one.
    [[nodiscard]] std::size_t CountCharacters() const;

    /// Sets the text to one number through a printf format (see QorNumberFormat), without regard to
    /// the locale. A format that is not of one number, or null, counts as the default.
    QorUnicodeString& BuildFromNum(int iNumber, const char* iFormat = "%d");
    QorUnicodeString& BuildFromNum(double iNumber, const char* iFormat = "%f");
};

template <>
struct std::hash<QorString> {
    std::size_t operator()(const QorString& iText) const noexcept {
        return std::hash<std::string>()(iText.Str());
    }
};
