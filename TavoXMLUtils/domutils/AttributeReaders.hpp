// Attribute readers of the DOM utilities: a typed value read from the text of one attribute, trimmed of
// tabs and blanks (a line feed stays and makes the number fail). A missing attribute reads as the empty
// text.
//
// State model: none.
//
// Failures: TavoXMLUtils::ConvException. A conversion failure gets "Attribute: '…' (missing or
// incorrect); " in front of its message and the element's line unless it has one, and the same object is
// thrown again. An attribute value that cannot be converted to TavoCharCodeDefault fails before that, as
// "Failed to transcode string." without prefix or line. Booleans accept exactly "true", "yes", "1",
// "false", "no", "0".
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "TavoXMLUtils/domutils/ConvException.hpp"

#include <xercesc/util/XercesDefs.hpp>

#include <cstdint>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace TavoXMLUtils {

TAVOXMLUTILS_API std::int32_t GetSLongAttr(const XERCES_CPP_NAMESPACE::DOMElement* tag,
                                           const Tavo::UniString& name);
TAVOXMLUTILS_API std::uint32_t GetULongAttr(const XERCES_CPP_NAMESPACE::DOMElement* tag,
                                            const Tavo::UniString& name);
TAVOXMLUTILS_API bool GetBooleanAttr(const XERCES_CPP_NAMESPACE::DOMElement* tag,
                                     const Tavo::UniString& name);

} // namespace TavoXMLUtils
