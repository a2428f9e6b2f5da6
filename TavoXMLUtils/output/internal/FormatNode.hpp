// FormatNode: the formatter's walk, writing one node and what lies below it through an XMLPrint.
// Library-internal.
//
// The walk is iterative: it descends by first children and climbs back through a list of the entered
// nodes on the heap (one pointer per level), so it formats a tree of any depth without deep recursion.
// Elements and documents are entered; an entity reference is written as "&name;" and its children are not
// visited; attributes, document fragments and notations write nothing. Each child of a document is followed
// by a line end. The printer's default escape flags end as the last step set them.
//
// Failure: exceptions of the printer (transcoding) and of the DOM pass to the caller.
#pragma once

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace TavoXML::detail {

class XMLPrint;

// `node` must not be null.
void FormatNode(xercesc::DOMNode const* node, XMLPrint* printer);

} // namespace TavoXML::detail
