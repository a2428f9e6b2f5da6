// Base64Converter: byte blocks to Base64 text in a Tavo::UniString and back, by the Base64 coder of
// Xerces-C++ under RFC 2045 rules. No format of its own is added: the text is exactly what
// Base64::encode makes, its line breaks included, and Decode accepts what Base64::decode accepts (line
// breaks and other white space in the text are skipped).
//
// Stateless: two static operations.
//
// Failure: nothing is reported. Encode gives the empty string for zero bytes or a failed coding; Decode
// gives an empty array for text that the RFC 2045 rules refuse (the empty text included). Decode
// narrows each 16-bit unit to its low byte first, without a test, so units above 255 are not refused as
// such. Only the foundation's containers and strings may throw (out of memory); what was held is freed.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include "TavoRoot/Array.hpp"
#include "TavoRoot/UniString.hpp"

class TAVOXMLUTILS_API Base64Converter {
public:
    static Tavo::UniString Encode(char const* data, unsigned int length);
    static Tavo::Array<char> Decode(Tavo::UniString const& text);
};
