// The character tables of the foundation's strings: Unicode white space, the simple lower case that
// SetToLowerCase and case-insensitive comparison use, and the zero-terminated 16-bit helpers.
#include "TavoRoot/UniString.hpp"

#include "TavoRoot/internal/UniStringBuffer.hpp"

#include <cstring>

namespace Tavo {

namespace {

// Capitals whose small letter lies at a fixed distance. The ranges hold no other characters than
// capitals, except the two that gIrregular maps to themselves.
struct ShiftedRange {
    char16_t first;
    char16_t last;
    char16_t offset;
};
constexpr ShiftedRange gShifted[] = {
    {0xC0, 0xDE, 32},     // Latin-1
    {0x391, 0x3AB, 32},   // Greek
    {0x400, 0x40F, 0x50}, // Cyrillic with diacritics
    {0x410, 0x42F, 32},   // Cyrillic
};

// Capitals outside those rules, and the two non-letters inside a range.
struct Irregular {
    char16_t upper;
    char16_t lower;
};
constexpr Irregular gIrregular[] = {
    {0xD7, 0xD7},   {0x3A2, 0x3A2}, {0x130, u'i'},  {0x178, 0xFF},  {0x386, 0x3AC}, {0x388, 0x3AD},
    {0x389, 0x3AE}, {0x38A, 0x3AF}, {0x38C, 0x3CC}, {0x38E, 0x3CD}, {0x38F, 0x3CE},
};

// Latin Extended-A: capitals and small letters alternate, with a shift at U+0139 and U+0179.
char16_t LatinExtendedALower(char16_t c) noexcept {
    if ((c >= 0x100 && c <= 0x137) || (c >= 0x14A && c <= 0x177)) {
        return char16_t(c | 1);
    }
    if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) {
        return (c & 1) ? char16_t(c + 1) : c;
    }
    return c;
}

} // namespace

bool IsWhiteSpace(char16_t c) noexcept {
    return (c >= 0x09 && c <= 0x0D) || c == 0x20 || c == 0x85 || c == 0xA0 || c == 0x1680 ||
           (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F ||
           c == 0x3000;
}

char16_t ToLowerCase(char16_t c) noexcept {
    if (c < 0x80) {
        return c >= 'A' && c <= 'Z' ? char16_t(c + 32) : c;
    }
    for (Irregular const& entry : gIrregular) {
        if (c == entry.upper) {
            return entry.lower;
        }
    }
    for (ShiftedRange const& range : gShifted) {
        if (c >= range.first && c <= range.last) {
            return char16_t(c + range.offset);
        }
    }
    return LatinExtendedALower(c);
}

unsigned int ucslen(unsigned short const* text) noexcept {
    return static_cast<unsigned int>(detail::Length16(detail::AsChar16(text)));
}

unsigned short* ucscpy(unsigned short* target, unsigned short const* source) noexcept {
    std::memcpy(target, source, (std::size_t(ucslen(source)) + 1) * sizeof(unsigned short));
    return target;
}

} // namespace Tavo
