// Tree navigation of the DOM utilities: the element walkers, the text-tolerant walkers that step over
// the whitespace text between tags, the test of an element's name, and the sentry that releases a
// document at the end of a scope.
//
// The two walker families differ on purpose. The element walkers ignore everything that is no element.
// GetFirstChild and GetNextSibling skip at most one text node; SkipTextNodes(DOMNode*&) skips any run of
// text nodes; SkipTextNodes(DOMElement*&) skips everything up to an element; GetNextTag skips text and
// comments and refuses anything else. A CDATA section is never a text node here.
//
// State model: none, apart from the out-arguments and the cursor of GetNextTag.
//
// Failures: GetNextTag throws TavoXMLUtils::ConvException "Unexpected XML node" with the offending node's
// line, leaving the cursor on it. Whatever a DOM operation throws passes through. A null start node is
// outside the contract of the walkers; they answer it with a null result (a count of 0) instead of
// dereferencing it.
#pragma once

#include "TavoRoot/String.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/util/XercesDefs.hpp>

#include <cstdint>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace TavoXMLUtils {

using XERCES_CPP_NAMESPACE::DOMDocument;
using XERCES_CPP_NAMESPACE::DOMElement;
using XERCES_CPP_NAMESPACE::DOMNode;

// One step from `element`, then on in the same direction until an element stands there; null if none.
TAVOXMLUTILS_API DOMElement* GetFirstElementChild(const DOMElement* element);
TAVOXMLUTILS_API DOMElement* GetLastElementChild(const DOMElement* element);
TAVOXMLUTILS_API DOMElement* GetPreviousElementSibling(const DOMElement* element);
TAVOXMLUTILS_API DOMElement* GetNextElementSibling(const DOMElement* element);
TAVOXMLUTILS_API std::uint32_t GetChildElementCount(const DOMElement* element);

// The first child (the next sibling) of `node`, or, when that is a text node, the node behind it of
// whatever kind. The DOMElement forms give null when the chosen node is no element.
TAVOXMLUTILS_API void GetFirstChild(const DOMNode* node, DOMNode*& child);
TAVOXMLUTILS_API void GetFirstChild(const DOMNode* node, DOMElement*& child);
TAVOXMLUTILS_API void GetNextSibling(const DOMNode* node, DOMNode*& next);
TAVOXMLUTILS_API void GetNextSibling(const DOMNode* node, DOMElement*& next);

// Moves `node` over any run of text nodes. Null stays null.
TAVOXMLUTILS_API void SkipTextNodes(DOMNode*& node);
// Moves `node` along its siblings to the first element, starting with itself; null when none is left.
TAVOXMLUTILS_API void SkipTextNodes(DOMElement*& node);

// The element at the cursor after text and comments, with the cursor moved behind it; null (and a null
// cursor) when the siblings end first.
TAVOXMLUTILS_API DOMElement* GetNextTag(DOMNode*& cursor);

// True when `node` is an element named exactly `name`. The Tavo::String form takes the name in
// TavoCharCodeDefault.
TAVOXMLUTILS_API bool IsNodeOk(const DOMNode* node, const Tavo::UniString& name);
TAVOXMLUTILS_API bool IsNodeOk(const DOMNode* node, const Tavo::String& name);

// Releases the document it holds (if any) when the scope ends.
class TAVOXMLUTILS_API DOMDocumentSentry {
public:
    explicit DOMDocumentSentry(DOMDocument* document) noexcept : document(document) {}
    // A copy would release the document twice.
    DOMDocumentSentry(const DOMDocumentSentry&) = delete;
    DOMDocumentSentry& operator=(const DOMDocumentSentry&) = delete;
    ~DOMDocumentSentry();

private:
    DOMDocument* document;
};

} // namespace TavoXMLUtils
