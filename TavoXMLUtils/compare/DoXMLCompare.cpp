#include "TavoXMLUtils/compare/DoXMLCompare.hpp"

#include "TavoRoot/SharedPtr.hpp"
#include "TavoRoot/TavoException.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/compare/IXMLCompareOptions.hpp"
#include "TavoXMLUtils/compare/XMLCompareExceptions.hpp"
#include "TavoXMLUtils/compare/XMLNodeComparators.hpp"
#include "TavoXMLUtils/compare/internal/NodeCasts.hpp"
#include "TavoXMLUtils/parsing/NodeLocations.hpp"
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"
#include "TavoXMLUtils/support/internal/Throw.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMTreeWalker.hpp>

#include <memory>

namespace TavoXML {

namespace {

// Every node type, the value the walkers are created with.
constexpr xercesc::DOMNodeFilter::ShowType gShowAllNodes = 0xFFFF;

struct DocumentRelease {
    void operator()(xercesc::DOMDocument* document) const noexcept { document->release(); }
};
using ParsedDocument = std::unique_ptr<xercesc::DOMDocument, DocumentRelease>;

// The walker only reads the tree; the DOM's interface merely takes the root as non-const.
xercesc::DOMTreeWalker* CreateWalker(xercesc::DOMNode const* root, xercesc::DOMNodeFilter* filter) {
    xercesc::DOMDocument* const document = root->getOwnerDocument();
    if (document == nullptr) {
        detail::Throw<Tavo::TavoException>("DoXMLCompare compares nodes of a document, not documents as "
                                           "nodes; use the document form.",
                                           Tavo::GeneralError);
    }
    return document->createTreeWalker(const_cast<xercesc::DOMNode*>(root), gShowAllNodes, filter, false);
}

ParsedDocument ParseOrRefuse(Vesk::Location const& location) {
    NodeLocationInfo errorLocation;
    Tavo::UniString errorMessage;
    ParsedDocument document(ParseXMLDoc(location, xercesc::AbstractDOMParser::Val_Auto, true, nullptr,
                                        &errorLocation, &errorMessage));
    if (!document) {
        Tavo::UniString const name = location.ToDisplayText();
        detail::Throw<Tavo::TavoException>(
            Tavo::UniString::PrintfFwd(
                "The file \"%ls\" could not be parsed for the comparison (line %u): %ls", name.GetUStr(),
                static_cast<unsigned int>(errorLocation.lineNumber), errorMessage.GetUStr()),
            Tavo::GeneralError);
    }
    return document;
}

} // namespace

void DoXMLCompare(xercesc::DOMDocument const* left, xercesc::DOMDocument const* right,
                  XMLNodeComparator* comparator, xercesc::DOMNodeFilter* filter,
                  IXMLCompareOptions const& options) {
    xercesc::DOMElement const* const leftRoot = left == nullptr ? nullptr : left->getDocumentElement();
    if (leftRoot == nullptr) {
        throw NoElementsInDocumentException(XMLCompareException::Left);
    }
    xercesc::DOMElement const* const rightRoot = right == nullptr ? nullptr : right->getDocumentElement();
    if (rightRoot == nullptr) {
        throw NoElementsInDocumentException(XMLCompareException::Right);
    }
    DoXMLCompare(static_cast<xercesc::DOMNode const*>(leftRoot),
                 static_cast<xercesc::DOMNode const*>(rightRoot), comparator, filter, options);
}

void DoXMLCompare(xercesc::DOMNode const* left, xercesc::DOMNode const* right, XMLNodeComparator* comparator,
                  xercesc::DOMNodeFilter* filter, IXMLCompareOptions const& options) {
    if (comparator == nullptr || left == nullptr || right == nullptr) {
        detail::Throw<Tavo::TavoException>("DoXMLCompare needs two nodes and a node comparator.",
                                           Tavo::GeneralError);
    }
    xercesc::DOMTreeWalker* const leftWalker = CreateWalker(left, filter);
    xercesc::DOMTreeWalker* const rightWalker = CreateWalker(right, filter);
    IXMLCompareOptions* const cloned = options.Clone();
    if (cloned == nullptr) {
        detail::Throw<Tavo::TavoException>("The compare options gave no clone.", Tavo::GeneralError);
    }
    Tavo::SharedPtr<IXMLCompareOptions> const clone(cloned);
    // Run for what it does to the clone (options may set themselves up from the roots); at the root the
    // caller's comparator walks, so the comparator it gives is not used.
    std::unique_ptr<XMLNodeComparator> const unused(
        clone->PrepareNodeComparator(detail::AsElement(left), detail::AsElement(right)));
    comparator->CompareNodes(leftWalker, rightWalker, *clone);
}

void DoXMLCompare(Vesk::Location const& left, Vesk::Location const& right, XMLNodeComparator* comparator,
                  xercesc::DOMNodeFilter* filter, IXMLCompareOptions const& options) {
    ParsedDocument leftDocument = ParseOrRefuse(left);
    ParsedDocument rightDocument = ParseOrRefuse(right);
    DoXMLCompare(leftDocument.get(), rightDocument.get(), comparator, filter, options);
    leftDocument.reset();
    rightDocument.reset();
}

} // namespace TavoXML
