// Text helpers of the tests: library strings as UTF-8 std::string and back, and DOM names.
#pragma once

#include "TavoRoot/UniString.hpp"

#include <xercesc/util/XercesDefs.hpp>

#include <string>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace TavoTest {

inline std::string Utf8(Tavo::UniString const& text) {
    return Tavo::ToUTF8String(text);
}
std::string Utf8(XMLCh const* text);
Tavo::UniString FromUtf8(std::string const& text);
// The node's name as UTF-8; "" for null.
std::string NodeName(xercesc::DOMNode const* node);

} // namespace TavoTest
