#include "platform/text/QorString.h"

std::size_t QorUnicodeString::CountCharacters() const {
    std::size_t count = 0;
    for (const char byte : Str())
        if ((static_cast<unsigned char>(byte) & 0xC0U) != 0x80U)
            ++count;
    return count;
}
