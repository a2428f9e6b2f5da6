// The tree writers: typed elements and attributes added to a DOM tree that application code builds by
// hand, with the layout done by hand as well. Each writer that adds an element puts a tab text before
// it and a line feed behind it into the parent (LayoutText.hpp), at the level `tabs` that the caller
// passes along. State model: none; nothing keeps a level.
//
// Values travel as text: numbers and booleans as the element's text, strings quoted (WriterText.hpp)
// inside a CDATA section, so that the readers of this namespace can read them back. Names and 8-bit
// texts are in the default character code.
//
// Failures: a DOMException. The writers' own is the memory error (code 0, "Memory error"): the
// document gives no node, a buffer cannot be had, or the parent is null (outside the contract). What
// the document throws itself, such as an illegal name, passes unchanged. An element is finished before
// it is appended, so a failure while making it leaves the parent as it was. Only WriteStyleSheet
// catches anything.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "TavoXMLUtils/domutils/LayoutText.hpp"
#include "TavoXMLUtils/domutils/WriterText.hpp"

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace TavoXMLUtils {

// One row of a table that names the bits of a flag word. A table is an array of rows closed by a row
// whose `bit` is 0; a row applies when its mask and the value have any bit in common.
struct BitNames {
    unsigned int bit;
    char const* name;
};

// The core of the family: a new element `name`, appended to `parent` between its tabs and its line
// feed, and returned. `text` (8-bit) wins over `utext` (16-bit). With neither and `cdata` false the
// element stays empty; with `cdata` true the value is quoted and protected into a CDATA section (the
// empty value then reads as two double quotes); otherwise it becomes a text node as it stands.
TAVOXMLUTILS_API xercesc::DOMElement* NewTag(xercesc::DOMElement* parent, char const* name, char const* text,
                                             int tabs, bool cdata, unsigned short const* utext);

// Numbers as the element's text: "%lu", "%ld", and "%.12g" with the exponent widened to three digits
// (1e+020) and a negative zero written as "0".
TAVOXMLUTILS_API xercesc::DOMElement* NewULongTag(xercesc::DOMElement* parent, char const* name,
                                                  unsigned int value, int tabs);
TAVOXMLUTILS_API xercesc::DOMElement* NewSLongTag(xercesc::DOMElement* parent, char const* name, int value,
                                                  int tabs);
TAVOXMLUTILS_API xercesc::DOMElement* NewDoubleTag(xercesc::DOMElement* parent, char const* name,
                                                   double value, int tabs);

// Plain text, unquoted. The 16-bit form makes the element and its text without any 8-bit step.
TAVOXMLUTILS_API xercesc::DOMElement* NewTextTag(xercesc::DOMElement* parent, char const* name,
                                                 char const* text, int tabs);
TAVOXMLUTILS_API xercesc::DOMElement* NewTextTag(xercesc::DOMElement* parent, Tavo::UniString const& name,
                                                 Tavo::UniString const& text, int tabs);

// Booleans as words: "true"/"false", and the legacy "yes"/"no".
TAVOXMLUTILS_API xercesc::DOMElement* NewBoolTag(xercesc::DOMElement* parent, char const* name, bool value,
                                                 int tabs);
TAVOXMLUTILS_API xercesc::DOMElement* NewLegacyBoolTag(xercesc::DOMElement* parent, char const* name,
                                                       bool value, int tabs);

// Strings quoted in a CDATA section. A null text writes the empty string.
TAVOXMLUTILS_API xercesc::DOMElement* NewStringTag(xercesc::DOMElement* parent, char const* name,
                                                   char const* text, int tabs);
TAVOXMLUTILS_API xercesc::DOMElement* NewStringTag(xercesc::DOMElement* parent, char const* name,
                                                   unsigned short const* text, int tabs);
// The first `length` code units of `text`, which need not be terminated there. A length of zero or
// less, or a null text, writes the empty string.
TAVOXMLUTILS_API xercesc::DOMElement* NewStringWLenTag(xercesc::DOMElement* parent, char const* name,
                                                       unsigned short const* text, int length, int tabs);

// One attribute each, no layout: "%ld", "%lu", "true"/"false", "yes"/"no".
TAVOXMLUTILS_API void SetSLongAttr(xercesc::DOMElement* tag, char const* name, int value);
TAVOXMLUTILS_API void SetULongAttr(xercesc::DOMElement* tag, char const* name, unsigned int value);
TAVOXMLUTILS_API void SetBooleanAttr(xercesc::DOMElement* tag, char const* name, bool value);
TAVOXMLUTILS_API void SetLegacyBooleanAttr(xercesc::DOMElement* tag, char const* name, bool value);

// A flag word as the element `name` holding one empty element for each row of `table` that applies,
// at level `tabs + 1`, its closing tag lined up with its opening tag. A value of 0 adds nothing at all,
// not even layout. A null table counts as an empty one.
TAVOXMLUTILS_API void WriteBits(xercesc::DOMElement* parent, char const* name, unsigned int value,
                                BitNames const* table, int tabs);

// Puts the processing instruction xml-stylesheet with the data type="text/xsl" href="<href>" (and a
// closing blank) in front of the root, or at the end of a document without one. The href is written
// whole, whatever its length; a null href counts as empty. True when the instruction was made; a
// DOMException, or a null document, gives false.
TAVOXMLUTILS_API bool WriteStyleSheet(xercesc::DOMDocument* document, char const* href);

} // namespace TavoXMLUtils
