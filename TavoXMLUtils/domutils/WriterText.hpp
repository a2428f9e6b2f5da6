// The text functions of the tree writers: the protection of a text that goes into a CDATA section,
// and the quoting of a string value. Strings written by the NewTag family are first quoted, then
// protected; the readers undo the protection and then the quoting. State model: none.
//
// Both work in place on a Tavo::UniString. CorrectCDATA throws the writers' memory error, a
// DOMException with code 0 and the text "Memory error", should a non-empty text end up empty;
// MakeItKetraString reports nothing. Both let the string's own exceptions through.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

namespace TavoXMLUtils {

// Turns every "\r\n" and then every remaining "\r" into "\n", and every "]]>" into "]] >", so that
// the text can stand inside one CDATA section. An empty text stays as it is.
TAVOXMLUTILS_API void CorrectCDATA(Tavo::UniString& text);

// Puts the text between quotes, the string form of the Ketra script language: the first of double
// quote, apostrophe and backquote that the text does not hold. A text that holds all three gets
// double quotes and stays unescaped, so it cannot be read back as it was meant. The empty text
// becomes two double quotes.
TAVOXMLUTILS_API void MakeItKetraString(Tavo::UniString& text);

} // namespace TavoXMLUtils
