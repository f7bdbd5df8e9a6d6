#include "platform/text/QorUtf8.h"

#include <array>
#include <cstddef>

namespace {

/// The well-formed sequences, by the first byte (The Unicode Standard, table 3-7).
struct Form {
    unsigned char first;
    unsigned char last;
    std::size_t length;
    unsigned char secondFrom;
    unsigned char secondTo;
};

constexpr std::array forms{
    Form{0x00, 0x7F, 1, 0x80, 0xBF}, Form{0xC2, 0xDF, 2, 0x80, 0xBF},
    Form{0xE0, 0xE0, 3, 0xA0, 0xBF}, Form{0xE1, 0xEC, 3, 0x80, 0xBF},
    Form{0xED, 0xED, 3, 0x80, 0x9F}, Form{0xEE, 0xEF, 3, 0x80, 0xBF},
    Form{0xF0, 0xF0, 4, 0x90, 0xBF}, Form{0xF1, 0xF3, 4, 0x80, 0xBF},
    Form{0xF4, 0xF4, 4, 0x80, 0x8F},
};

bool IsBetween(char iByte, unsigned char iFrom, unsigned char iTo) {
    const auto byte = static_cast<unsigned char>(iByte);
    return byte >= iFrom && byte <= iTo;
}

/// Length of the well-formed sequence at the front of \p iBytes, or 0.
std::size_t CountSequence(std::string_view iBytes) {
    for (const Form& form : forms) {
        if (!IsBetween(iBytes[0], form.first, form.last))
            continue;
        if (iBytes.size() < form.length)
            return 0;
        if (form.length > 1 && !IsBetween(iBytes[1], form.secondFrom, form.secondTo))
            return 0;
        for (std::size_t i = 2; i < form.length; ++i)
            if (!IsBetween(iBytes[i], 0x80, 0xBF))
                return 0;
        return form.length;
    }
    return 0;
}

} // namespace

bool QorIsUtf8(std::string_view iBytes) {
    while (!iBytes.empty()) {
        const std::size_t length = CountSequence(iBytes);
        if (length == 0)
            return false;
        iBytes.remove_prefix(length);
    }
    return true;
}
