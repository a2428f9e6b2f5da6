// Tag readers of the DOM utilities: the trimmed text of an element that holds exactly one text node,
// typed values read from that text, and quoted strings read from the element's CDATA section (the form
// in which the writers store strings).
//
// State model: none. The char* and unsigned short* results are fresh arrays that the caller frees with
// delete[].
//
// Failures: TavoXMLUtils::ConvException. GetTagText and GetTagTextU throw "One text node expected in tag
// '…'" with the tag's line. The typed and string readers catch every ConvException of their reading and
// conversion, put "Tag '…'; " in front of its message, give it the tag's line unless it has one, and
// throw the same object again; an empty digit string thus reads as "Tag '…'; ". Booleans accept exactly
// "true", "yes", "1", "false", "no", "0"; anything else is "'yes/true' or 'no/false' expected, '…'
// found". Everything allocated on the way is freed before an exception leaves.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoRoot/VAArray.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "TavoXMLUtils/domutils/ConvException.hpp"
#include "TavoXMLUtils/domutils/WarningData.hpp"

#include <xercesc/util/XercesDefs.hpp>

#include <cstdint>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace TavoXMLUtils {

// The single text child of `tag` in TavoCharCodeDefault, trimmed of tab, line feed, carriage return and
// blank. A character the code cannot represent fails with "Failed to transcode string.".
TAVOXMLUTILS_API char* GetTagText(const XERCES_CPP_NAMESPACE::DOMElement* tag);
// The same text untranscoded, trimmed of Unicode white space.
TAVOXMLUTILS_API Tavo::UniString GetTagTextU(const XERCES_CPP_NAMESPACE::DOMElement* tag);

// The tag text converted by GetSignedLong, GetULong, GetDouble and the boolean vocabulary.
TAVOXMLUTILS_API std::int32_t GetSLongTag(const XERCES_CPP_NAMESPACE::DOMElement* tag);
TAVOXMLUTILS_API std::uint32_t GetULongTag(const XERCES_CPP_NAMESPACE::DOMElement* tag);
TAVOXMLUTILS_API double GetDoubleTag(const XERCES_CPP_NAMESPACE::DOMElement* tag);
TAVOXMLUTILS_API bool GetBoolTag(const XERCES_CPP_NAMESPACE::DOMElement* tag);

// The quoted string of the CDATA section, trimmed and unquoted: 8-bit (line ends as carriage returns,
// lossy characters reported in `warnings` when it is not null) and 16-bit (line ends as line feeds).
TAVOXMLUTILS_API char* GetStringTag(const XERCES_CPP_NAMESPACE::DOMElement* tag,
                                    Tavo::VAArray<WarningData>* warnings);
TAVOXMLUTILS_API unsigned short* GetStringTagU(const XERCES_CPP_NAMESPACE::DOMElement* tag,
                                               Tavo::VAArray<WarningData>* warnings);

} // namespace TavoXMLUtils
