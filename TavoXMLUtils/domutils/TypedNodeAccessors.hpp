// The lenient family of typed access, for code that walks a tree itself and knows the element names it
// expects. Nothing here reports an error: a reader leaves or zeroes its output and returns true, a
// writer returns false. Every function comes with Tavo::UniString names and values and with
// Tavo::String ones in the default character code; the latter convert and call the former. State
// model: none.
//
// Readers take the node, the name it must have, and the output. Only an element of that name whose
// first child is a text node gives a value; the text is not trimmed. The number readers convert with
// the standard library (strtol, strtoul), which stops at the first character it cannot use, and cut
// the result to the output's width; a node that does not match gives 0. ReadBooleanNode reads a
// number and is true exactly for 1, so the words that the NewTag family writes read as false here.
//
// Writers add an element with a plain, unquoted text, between the tab text and the line feed of its
// level, and return true when the element was written. A DOMException is caught and gives false;
// what was appended by then stays. Numbers are written by printf ("%d", "%u", "%ld", "%lu"), a boolean
// as "1" or "0".
//
// BeginWriteElement and EndWriteElement bracket a composite element. They have no guard: a DOMException
// of the document passes to the caller. Children written between them pass `tabs + 1` themselves.
// A null node or parent is outside the contract: readers treat it as a node that does not match,
// writers return false.
#pragma once

#include "TavoRoot/String.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace TavoXMLUtils {

// The first child's text, when `node` is an element `name` whose first child is a text node. The
// Tavo::UniString form otherwise leaves `text` as it was; the Tavo::String form empties it.
TAVOXMLUTILS_API bool ReadTextNode(xercesc::DOMNode const* node, Tavo::UniString const& name,
                                   Tavo::UniString& text);
TAVOXMLUTILS_API bool ReadTextNode(xercesc::DOMNode const* node, Tavo::String const& name,
                                   Tavo::String& text);

TAVOXMLUTILS_API bool ReadShortNode(xercesc::DOMNode const* node, Tavo::UniString const& name, short& value);
TAVOXMLUTILS_API bool ReadShortNode(xercesc::DOMNode const* node, Tavo::String const& name, short& value);
TAVOXMLUTILS_API bool ReadUShortNode(xercesc::DOMNode const* node, Tavo::UniString const& name,
                                     unsigned short& value);
TAVOXMLUTILS_API bool ReadUShortNode(xercesc::DOMNode const* node, Tavo::String const& name,
                                     unsigned short& value);
TAVOXMLUTILS_API bool ReadLongNode(xercesc::DOMNode const* node, Tavo::UniString const& name, int& value);
TAVOXMLUTILS_API bool ReadLongNode(xercesc::DOMNode const* node, Tavo::String const& name, int& value);
TAVOXMLUTILS_API bool ReadULongNode(xercesc::DOMNode const* node, Tavo::UniString const& name,
                                    unsigned int& value);
TAVOXMLUTILS_API bool ReadULongNode(xercesc::DOMNode const* node, Tavo::String const& name,
                                    unsigned int& value);
TAVOXMLUTILS_API bool ReadBooleanNode(xercesc::DOMNode const* node, Tavo::UniString const& name, bool& value);
TAVOXMLUTILS_API bool ReadBooleanNode(xercesc::DOMNode const* node, Tavo::String const& name, bool& value);

TAVOXMLUTILS_API bool WriteTextElement(xercesc::DOMElement* parent, Tavo::UniString const& name,
                                       Tavo::UniString const& value, int tabs);
TAVOXMLUTILS_API bool WriteTextElement(xercesc::DOMElement* parent, Tavo::String const& name,
                                       Tavo::String const& value, int tabs);
TAVOXMLUTILS_API bool WriteShortElement(xercesc::DOMElement* parent, Tavo::UniString const& name,
                                        short const& value, int tabs);
TAVOXMLUTILS_API bool WriteShortElement(xercesc::DOMElement* parent, Tavo::String const& name,
                                        short const& value, int tabs);
TAVOXMLUTILS_API bool WriteUShortElement(xercesc::DOMElement* parent, Tavo::UniString const& name,
                                         unsigned short const& value, int tabs);
TAVOXMLUTILS_API bool WriteUShortElement(xercesc::DOMElement* parent, Tavo::String const& name,
                                         unsigned short const& value, int tabs);
TAVOXMLUTILS_API bool WriteLongElement(xercesc::DOMElement* parent, Tavo::UniString const& name,
                                       int const& value, int tabs);
TAVOXMLUTILS_API bool WriteLongElement(xercesc::DOMElement* parent, Tavo::String const& name,
                                       int const& value, int tabs);
TAVOXMLUTILS_API bool WriteULongElement(xercesc::DOMElement* parent, Tavo::UniString const& name,
                                        unsigned int const& value, int tabs);
TAVOXMLUTILS_API bool WriteULongElement(xercesc::DOMElement* parent, Tavo::String const& name,
                                        unsigned int const& value, int tabs);
TAVOXMLUTILS_API bool WriteBooleanElement(xercesc::DOMElement* parent, Tavo::UniString const& name,
                                          bool const& value, int tabs);
TAVOXMLUTILS_API bool WriteBooleanElement(xercesc::DOMElement* parent, Tavo::String const& name,
                                          bool const& value, int tabs);

// Creates the element `name` in the parent's document, stores it in `element` (null when none was
// made) and gives it its line feed; the result is that of WriteNewLine, or false without an element.
// The element is not appended yet: the caller fills it and closes it with EndWriteElement.
TAVOXMLUTILS_API bool BeginWriteElement(xercesc::DOMElement* parent, xercesc::DOMElement*& element,
                                        Tavo::UniString const& name);
TAVOXMLUTILS_API bool BeginWriteElement(xercesc::DOMElement* parent, xercesc::DOMElement*& element,
                                        Tavo::String const& name);
// Tabs before the closing tag, tabs before the opening tag, the element appended to `parent`, and a
// line feed behind it; the result is that of the line feed.
TAVOXMLUTILS_API bool EndWriteElement(xercesc::DOMElement* parent, xercesc::DOMElement* element, int tabs);

} // namespace TavoXMLUtils
