// CDATA readers of the DOM utilities: the one CDATA section of an element, the undoing of the "]]>"
// protection that the writers apply, and the section's text as a Tavo::UniString, as 8-bit text in
// TavoCharCodeDefault and as 16-bit text.
//
// State model: none. The char* and unsigned short* results are fresh arrays that the caller frees with
// delete[]. The 8-bit reader turns line feeds into carriage returns; the other two keep them.
//
// Failures: TavoXMLUtils::ConvException, with the line of the node concerned when the document carries
// its node locations: "Missing CDATA section in tag '…'", "More than one CDATA section in tag '…'",
// "Unexpected XML node in tag '…'", "CDATA section could not be transcoded in tag '…'; " + cause, and
// "Memory error". A character that the 8-bit code cannot represent is no failure: GetCDATANode then
// converts lossily and appends one warning to the caller's list, if it gave one. Everything allocated on
// the way is freed before an exception leaves.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoRoot/VAArray.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "TavoXMLUtils/domutils/ConvException.hpp"
#include "TavoXMLUtils/domutils/WarningData.hpp"

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMCDATASection;
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace TavoXMLUtils {

// The one CDATA section among the children of `tag`; text and comment children are skipped.
TAVOXMLUTILS_API XERCES_CPP_NAMESPACE::DOMCDATASection*
GetFirstCDataChild(const XERCES_CPP_NAMESPACE::DOMElement* tag);

// Removes the blank of every "]] " in place, scanning from the start. Strings shorter than 3 stay.
TAVOXMLUTILS_API void ConvertCDATA(Tavo::UniString& text);

// The data of the section after ConvertCDATA.
TAVOXMLUTILS_API Tavo::UniString GetCDATANodeUniString(const XERCES_CPP_NAMESPACE::DOMElement* tag);
// The same in TavoCharCodeDefault, line feeds turned into carriage returns. `warnings` may be null.
TAVOXMLUTILS_API char* GetCDATANode(const XERCES_CPP_NAMESPACE::DOMElement* tag,
                                    Tavo::VAArray<WarningData>* warnings);
// A zero-terminated 16-bit copy of the same; `warnings` is never added to.
TAVOXMLUTILS_API unsigned short* GetCDATANodeU(const XERCES_CPP_NAMESPACE::DOMElement* tag,
                                               Tavo::VAArray<WarningData>* warnings);

} // namespace TavoXMLUtils
