// Decimal text of numbers, in 16-bit characters, and back.
//
// Writing: integers in plain decimal; reals as the shortest decimal text that reads back to the same
// value ("inf", "-inf" and "nan" for the special values). Reading with both modes 0: white space at
// both ends (Tavo::IsWhiteSpace) is skipped, and the rest must be exactly one decimal number of the
// type, in range, with nothing left over ("0x10", "1.0" for an integer and "1e400" are refused). A sign
// may lead, '+' included; reals may have a fraction and an exponent, and "inf", "-inf" and "nan" read
// back as written.
#pragma once

#include "TavoRoot/TavoRootExport.hpp"
#include "TavoRoot/UniString.hpp"

namespace Tavo {

enum ToValueMode : int {
    ToValueStrict = 0, // the whole text must be one number of the type, in range
};
enum TrimWSMode : int {
    TrimWSBothEnds = 0, // white space at both ends is skipped
};

// Writes the zero-terminated text of `value` into `buffer` of `size` 16-bit characters; false if the
// buffer is too small (it is then left holding an empty string when size > 0).
TAVOROOT_API bool valuetostr(short value, unsigned short* buffer, unsigned long size) noexcept;
TAVOROOT_API bool valuetostr(unsigned short value, unsigned short* buffer, unsigned long size) noexcept;
TAVOROOT_API bool valuetostr(int value, unsigned short* buffer, unsigned long size) noexcept;
TAVOROOT_API bool valuetostr(unsigned int value, unsigned short* buffer, unsigned long size) noexcept;
TAVOROOT_API bool valuetostr(long value, unsigned short* buffer, unsigned long size) noexcept;
TAVOROOT_API bool valuetostr(unsigned long value, unsigned short* buffer, unsigned long size) noexcept;
TAVOROOT_API bool valuetostr(long long value, unsigned short* buffer, unsigned long size) noexcept;
TAVOROOT_API bool valuetostr(unsigned long long value, unsigned short* buffer, unsigned long size) noexcept;
TAVOROOT_API bool valuetostr(float value, unsigned short* buffer, unsigned long size) noexcept;
TAVOROOT_API bool valuetostr(double value, unsigned short* buffer, unsigned long size) noexcept;

// Reads a number from zero-terminated 16-bit text; true on success. On failure `value` is unchanged.
// A null text fails.
TAVOROOT_API bool strtovalue(unsigned short const* text, signed char& value, ToValueMode mode = ToValueStrict,
                             TrimWSMode trim = TrimWSBothEnds) noexcept;
TAVOROOT_API bool strtovalue(unsigned short const* text, unsigned char& value,
                             ToValueMode mode = ToValueStrict, TrimWSMode trim = TrimWSBothEnds) noexcept;
TAVOROOT_API bool strtovalue(unsigned short const* text, char& value, ToValueMode mode = ToValueStrict,
                             TrimWSMode trim = TrimWSBothEnds) noexcept;
TAVOROOT_API bool strtovalue(unsigned short const* text, short& value, ToValueMode mode = ToValueStrict,
                             TrimWSMode trim = TrimWSBothEnds) noexcept;
TAVOROOT_API bool strtovalue(unsigned short const* text, unsigned short& value,
                             ToValueMode mode = ToValueStrict, TrimWSMode trim = TrimWSBothEnds) noexcept;
TAVOROOT_API bool strtovalue(unsigned short const* text, int& value, ToValueMode mode = ToValueStrict,
                             TrimWSMode trim = TrimWSBothEnds) noexcept;
TAVOROOT_API bool strtovalue(unsigned short const* text, unsigned int& value,
                             ToValueMode mode = ToValueStrict, TrimWSMode trim = TrimWSBothEnds) noexcept;
TAVOROOT_API bool strtovalue(unsigned short const* text, long& value, ToValueMode mode = ToValueStrict,
                             TrimWSMode trim = TrimWSBothEnds) noexcept;
TAVOROOT_API bool strtovalue(unsigned short const* text, unsigned long& value,
                             ToValueMode mode = ToValueStrict, TrimWSMode trim = TrimWSBothEnds) noexcept;
TAVOROOT_API bool strtovalue(unsigned short const* text, long long& value, ToValueMode mode = ToValueStrict,
                             TrimWSMode trim = TrimWSBothEnds) noexcept;
TAVOROOT_API bool strtovalue(unsigned short const* text, unsigned long long& value,
                             ToValueMode mode = ToValueStrict, TrimWSMode trim = TrimWSBothEnds) noexcept;
TAVOROOT_API bool strtovalue(unsigned short const* text, float& value, ToValueMode mode = ToValueStrict,
                             TrimWSMode trim = TrimWSBothEnds) noexcept;
TAVOROOT_API bool strtovalue(unsigned short const* text, double& value, ToValueMode mode = ToValueStrict,
                             TrimWSMode trim = TrimWSBothEnds) noexcept;

// The text of a number as a string: valuetostr into a buffer of 256 characters; empty if that fails.
template <class T>
UniString ValueToUniString(T const& value) {
    unsigned short buffer[256];
    if (!valuetostr(value, buffer, 256)) {
        return UniString();
    }
    return UniString(buffer);
}

// strtovalue on the 16-bit text of the string.
template <class T>
bool UniStringToValue(UniString const& text, T& value, ToValueMode mode = ToValueStrict,
                      TrimWSMode trim = TrimWSBothEnds) noexcept {
    return strtovalue(text.GetUStr(), value, mode, trim);
}

} // namespace Tavo
