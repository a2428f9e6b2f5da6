// Scalar text conversion of the DOM utilities: 16-bit text to a zero-terminated 8-bit string in
// TavoCharCodeDefault, in-place trimming of 8-bit and 16-bit strings, and the parsers of integers,
// doubles and quoted strings that the tag and attribute readers use.
//
// State model: none. The trimming functions and the string parsers work in place on the caller's text;
// UnicodeToString returns a fresh array that the caller frees with delete[].
//
// Failures: every function that fails throws TavoXMLUtils::ConvException with line 0 and one of the
// messages "Too many data", "Integer Overflow", "Integer Underflow", "Floating point number error",
// "String value error", "Failed to transcode string." or "Memory error"; an empty digit string throws an
// exception with an empty message, which the readers' wrappers give words. A parser that throws has
// changed nothing. The parsers take their text as it stands: no blanks around it, except the leading
// white space that strtod itself skips.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "TavoXMLUtils/domutils/ConvException.hpp"

#include <cstdint>

namespace TavoXMLUtils {

// A fresh zero-terminated copy of `text` in TavoCharCodeDefault. With `lossy` characters the code cannot
// represent are let through (as the foundation's conversion replaces them) instead of failing. The empty
// string gives an empty string.
TAVOXMLUTILS_API char* UnicodeToString(Tavo::UniString text, bool lossy);

// In-place trimming of both ends: leading characters are skipped by moving the pointer, a trailing run
// is cut with a terminator. CutTabSpace trims tab and blank; CutWhSpace and CutWhSpaceU trim tab, line
// feed, carriage return and blank. A null pointer stays null.
TAVOXMLUTILS_API void CutTabSpace(char*& text);
TAVOXMLUTILS_API void CutWhSpace(char*& text);
TAVOXMLUTILS_API void CutWhSpaceU(unsigned short*& text);

// One or more decimal digits and nothing else, at most 4294967295. Leading zeros are allowed.
TAVOXMLUTILS_API std::uint32_t GetIntNum(const char* text);
// An optional "+" or "-", then digits as GetIntNum: -2147483648 to 2147483647.
TAVOXMLUTILS_API std::int32_t GetSignedLong(const char* text);
// An optional "+", then digits as GetIntNum.
TAVOXMLUTILS_API std::uint32_t GetULong(const char* text);
// Whatever strtod (in the current locale) consumes entirely, leading white space included.
TAVOXMLUTILS_API double GetDouble(const char* text);
// A text of two or more characters whose first character is a double quote, apostrophe or backquote
// and whose last character is the same: the closing quote becomes the terminator and the result points
// behind the opening one, into `text`.
TAVOXMLUTILS_API char* GetStringValue(char* text);
TAVOXMLUTILS_API unsigned short* GetStringValueU(unsigned short* text);

} // namespace TavoXMLUtils
