// The layout of hand-built trees: indentation and line ends are real text nodes that these functions
// append to an element; serialisers add none. A level is a count of tab characters that the caller
// keeps and passes along; a level of zero or less appends an empty text node all the same. A line end
// is one line feed on every platform. State model: none.
//
// The two pairs do the same and fail differently, and callers rely on the difference:
// - Tabs and NewLine (used by the NewTag family) throw a DOMException: the memory error (code 0,
//   "Memory error") when the document gives no text node or no buffer can be had, or whatever the
//   document throws itself.
// - WriteTabs and WriteNewLine (used by the WriteTextElement family) catch every DOMException and
//   return false, and return false as well when the document gives no text node.
// Exceptions of other types pass through both. A null parent is outside the contract: the throwing
// pair raises the memory error, the other returns false.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace TavoXMLUtils {

// Appends a text node of `tabs` tab characters to `parent`.
TAVOXMLUTILS_API void Tabs(xercesc::DOMElement* parent, int tabs);
// Appends a text node holding one line feed to `parent`.
TAVOXMLUTILS_API void NewLine(xercesc::DOMElement* parent);

// As Tabs; true when the node was appended.
TAVOXMLUTILS_API bool WriteTabs(xercesc::DOMElement* parent, int tabs);
// As NewLine; true when the node was appended.
TAVOXMLUTILS_API bool WriteNewLine(xercesc::DOMElement* parent);

} // namespace TavoXMLUtils
