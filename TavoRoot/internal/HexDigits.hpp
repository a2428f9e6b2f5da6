// Hex digits in 16-bit text: shared by the text of Tavo::Guid and the hex CDATA of the XML channels.
// Internal to the foundation; nothing here is exported.
#pragma once

#include <string>

namespace Tavo::HexDigits {

// Appends the two upper-case hex digits of `byte`.
inline void AppendByte(std::u16string& text, unsigned char byte) {
    constexpr char16_t digits[] = u"0123456789ABCDEF";
    text += digits[byte >> 4];
    text += digits[byte & 0x0F];
}

// The value of a hex digit of either case, or -1.
inline int DigitValue(char16_t c) noexcept {
    if (c >= u'0' && c <= u'9') {
        return c - u'0';
    }
    if (c >= u'A' && c <= u'F') {
        return c - u'A' + 10;
    }
    if (c >= u'a' && c <= u'f') {
        return c - u'a' + 10;
    }
    return -1;
}

// The byte of the two digits at `text[0]` and `text[1]`, or -1 if either is no hex digit.
inline int PairValue(char16_t const* text) noexcept {
    int const high = DigitValue(text[0]);
    int const low = DigitValue(text[1]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

} // namespace Tavo::HexDigits
