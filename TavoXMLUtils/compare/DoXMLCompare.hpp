// TavoXML::DoXMLCompare: compares two XML trees and stops at the first difference. A normal return
// means the trees are equal; the first difference leaves as a thrown report of XMLCompareExceptions.hpp
// (catch TavoXML::XMLCompareException for all of them, GetText() for a person).
//
// `comparator` walks the children of the two compared nodes (XMLCompareStrictOrder for document
// order); every level below is walked by what the options' PrepareNodeComparator gives. `filter`, when
// not null, decides which nodes the walkers see (SkipWhitespaceTextsCompareFilter drops blank texts,
// comments and other special nodes). The comparison works on a clone of `options`: the caller's object
// and both trees are left as they were, also when a report is thrown.
//
// Failures besides the reports: Tavo::TavoException (code Tavo::GeneralError) for a null comparator, a
// null node, a document node given to the node form, trees nested deeper than
// XMLNodeComparator::kMaxDepth element levels, and, in the file form, a file that does not parse (the
// message names the file and gives the parser's line and text). The comparator's own refusals and
// exceptions of the DOM pass unchanged. The file form releases both documents on every way out.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMNode;
class DOMNodeFilter;
XERCES_CPP_NAMESPACE_END

namespace Vesk {
class Location;
}

namespace TavoXML {

class IXMLCompareOptions;
class XMLNodeComparator;

// The two document elements; a document without one is reported by NoElementsInDocumentException
// (the left document is tested first).
TAVOXMLUTILS_API void DoXMLCompare(xercesc::DOMDocument const* left, xercesc::DOMDocument const* right,
                                   XMLNodeComparator* comparator, xercesc::DOMNodeFilter* filter,
                                   IXMLCompareOptions const& options);
// Two nodes of documents (elements, or texts); the walkers are rooted at them.
TAVOXMLUTILS_API void DoXMLCompare(xercesc::DOMNode const* left, xercesc::DOMNode const* right,
                                   XMLNodeComparator* comparator, xercesc::DOMNodeFilter* filter,
                                   IXMLCompareOptions const& options);
// Two files, parsed without line tracking and validated where they ask for it.
TAVOXMLUTILS_API void DoXMLCompare(Vesk::Location const& left, Vesk::Location const& right,
                                   XMLNodeComparator* comparator, xercesc::DOMNodeFilter* filter,
                                   IXMLCompareOptions const& options);

} // namespace TavoXML
