// Character codes of the 8-bit string conversions, and the conversion functions between 16-bit text
// and 8-bit text in those codes.
//
// TavoCharCodeDefault is Windows-1252, fixed and independent of the process locale, so that results
// never depend on the environment. TavoCharCodeUTF8 is UTF-8 for all of Unicode.
#pragma once

#include "TavoRoot/TavoRootExport.hpp"

#include <cstddef>
#include <string>
#include <string_view>

enum TavoCharCode : int {
    TavoCharCodeDefault = 0, // Windows-1252
    TavoCharCodeUTF8 = 99,
};

namespace Tavo {

enum CaseComparison : int {
    CaseSensitive = 0,
    CaseInsensitive = 1,
};

// Opaque per-call cache of CHUnicode2ANSI; no conversion needs one, so callers pass null.
struct CHUnicode2ANSICache;

// The buffer-level conversions under the string classes. Any code other than TavoCharCodeUTF8 is
// treated as TavoCharCodeDefault.
//
// Converts `length` bytes to 16-bit text in `target`, which must have room for `length` units: no code
// makes more units than bytes. Returns the number of units written. Decodes as AppendAnsiToUnicode.
TAVOROOT_API std::size_t AnsiToUnicode(char16_t* target, char const* text, std::size_t length,
                                       TavoCharCode code) noexcept;

// Result of UnicodeToAnsi when a character cannot be represented and `lossy` is false.
inline constexpr std::size_t kNotConvertible = static_cast<std::size_t>(-1);

// Converts `length` 16-bit units to 8 bits in `code` and returns the number of bytes; with a null
// `target` only counts them. Writes no terminator. Encodes as AppendUnicodeToAnsi; in strict mode a
// character that cannot be represented gives kNotConvertible.
TAVOROOT_API std::size_t UnicodeToAnsi(char* target, char16_t const* text, std::size_t length,
                                       TavoCharCode code, bool lossy) noexcept;

// Appends the 16-bit form of the 8-bit text to `out`. Invalid UTF-8 sequences become U+FFFD, one per
// maximal invalid subsequence; Windows-1252 bytes without a character (0x81, 0x8D, 0x8F, 0x90, 0x9D)
// map to the C1 control of the same number, so every byte converts.
TAVOROOT_API void AppendAnsiToUnicode(std::u16string& out, std::string_view text, TavoCharCode code);

// Appends the 8-bit form of the 16-bit text to `out`. Returns false when a character cannot be
// represented in `code` (or is a lone surrogate in UTF-8); with `lossy` such a character (a surrogate
// pair counting as one) becomes '?' and the conversion goes on. Windows-1252 represents U+0000-U+007F,
// U+00A0-U+00FF, the 27 characters of its bytes 0x80-0x9F and the five C1 controls named above. In strict
// mode `out` holds the text converted up to the failure.
TAVOROOT_API bool AppendUnicodeToAnsi(std::string& out, std::u16string_view text, TavoCharCode code,
                                      bool lossy);

} // namespace Tavo

// Converts `sourceLength` 16-bit units (a negative length means up to the terminating zero) to 8 bits.
// With a null `target` and a `targetSize` of 0 returns the number of bytes needed, without a terminator.
// With a target returns the number of bytes written (a terminator is added when room is left).
// Returns a negative number when the text cannot be converted: a character is not representable and
// `lossy` is false, or the target is too small. An empty (or null) source gives 0 and an empty target
// string.
TAVOROOT_API int CHUnicode2ANSI(const unsigned short* source, int sourceLength, char* target, int targetSize,
                                TavoCharCode code, bool lossy, const Tavo::CHUnicode2ANSICache** cache);

// True if the zero-terminated 8-bit strings are equal. CaseSensitive compares the bytes; CaseInsensitive
// compares the characters of the code after Tavo::ToLowerCase. Two null pointers are equal, a null and a
// non-null one are not.
TAVOROOT_API bool CHEqualCStrings(const char* left, const char* right, Tavo::CaseComparison comparison,
                                  TavoCharCode code);
