#include "platform/text/QorString.h"

#include "platform/text/QorNumberFormat.h"

namespace {

/// The number through the format, or through \p iUsual when the format is none of one number.
template <class Number>
QorUnicodeString FormatNumber(Number iNumber, const char* iFormat, const char* iUsual) {
    const QorNumberFormat format(iFormat != nullptr ? iFormat : iUsual);
    return QorUnicodeString(format.IsValid() ? format.Format(iNumber)
                                             : QorNumberFormat(iUsual).Format(iNumber));
}

} // namespace

std::size_t QorUnicodeString::CountCharacters() const {
    std::size_t count = 0;
    for (const char byte : Str())
        if ((static_cast<unsigned char>(byte) & 0xC0U) != 0x80U)
            ++count;
    return count;
}

QorUnicodeString& QorUnicodeString::BuildFromNum(int iNumber, const char* iFormat) {
    return *this = FormatNumber(iNumber, iFormat, "%d");
}

QorUnicodeString& QorUnicodeString::BuildFromNum(double iNumber, const char* iFormat) {
    return *this = FormatNumber(iNumber, iFormat, "%f");
}
