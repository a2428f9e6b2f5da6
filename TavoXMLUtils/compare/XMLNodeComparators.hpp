// The node comparators: TavoXML::XMLNodeComparator walks one level of a comparison of two trees, and
// the three ready classes below it decide how the children of an element pair are paired.
//
//   XMLNodeComparator          abstract: compares a node pair, hands each child pair on
//     XMLCompareStrictOrder    children in document order
//     XMLCompareRotatedOrder   refuses: Tavo::TavoException "Rotated order walkthrough not yet supported."
//     XMLCompareNoOrder        refuses: Tavo::TavoException "No-order walkthrough not yet supported."
//
// State: CompareNodes fills the five fields (options, the two walkers, the two nodes the walkers stood
// on when it was entered); they stay meaningful afterwards. One object serves one level of one walk at
// a time. WalkThrough moves the walkers down to the children and calls ControlNodeComparison for each
// pair; ControlNodeComparison asks the options for a value comparator (texts) or for the next level's
// options and comparator (elements). Each level puts its walkers back on its nodes and frees its value
// comparator, its child comparator and its options clone on every way out, exceptions included.
//
// Failures: the first difference is thrown as a report of XMLCompareExceptions.hpp; exceptions of the
// DOM and of the options pass unchanged. The walk recurses once per element level, so it refuses trees
// nested deeper than kMaxDepth element levels below the compared nodes: ControlNodeComparison then
// throws a Tavo::TavoException (code Tavo::GeneralError) saying so, before the stack can run out. Null
// walkers, a walker not standing on a node, or options that hand out no comparator are refused the same
// way.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
class DOMNode;
class DOMTreeWalker;
XERCES_CPP_NAMESPACE_END

namespace TavoXML {

class IXMLCompareOptions;

class TAVOXMLUTILS_API XMLNodeComparator {
public:
    // Deepest element level below the compared nodes that a comparison descends to. A level takes
    // three stack frames, under 1 KB even in instrumented builds, so a walk stays within 2 MB of stack.
    // Real documents nest a few dozen levels.
    static constexpr unsigned int kMaxDepth = 2000;

    XMLNodeComparator() = default;
    XMLNodeComparator(XMLNodeComparator const&) = delete;
    XMLNodeComparator& operator=(XMLNodeComparator const&) = delete;

    // Pairs the children of leftNode and rightNode; the walkers stand on those two nodes when it is called.
    virtual void WalkThrough() = 0;
    virtual ~XMLNodeComparator();

    // Compares the two nodes the walkers stand on: for elements the names, then the attributes, then the
    // children by WalkThrough; for texts the values; equal special types by the options. Returns with
    // both walkers where they stood.
    void CompareNodes(xercesc::DOMTreeWalker* left, xercesc::DOMTreeWalker* right,
                      IXMLCompareOptions& options);
    // Compares the accepted attributes of two elements in any order; names are looked up exactly.
    static void CompareAttributes(xercesc::DOMElement const* left, xercesc::DOMElement const* right,
                                  IXMLCompareOptions const& options);
    // Compares the pair on which the walkers stand now, one step below leftNode and rightNode, and puts
    // the walkers back there.
    void ControlNodeComparison();

protected:
    IXMLCompareOptions* options = nullptr;
    xercesc::DOMTreeWalker* leftWalker = nullptr;
    xercesc::DOMTreeWalker* rightWalker = nullptr;
    xercesc::DOMNode* leftNode = nullptr;
    xercesc::DOMNode* rightNode = nullptr;

private:
    void ComparePair(xercesc::DOMNode* left, xercesc::DOMNode* right);
    void CompareElementChildren(xercesc::DOMElement const* left, xercesc::DOMElement const* right);
    void PutWalkersBack(xercesc::DOMNode* left, xercesc::DOMNode* right) const;

    unsigned int depth = 0; // element levels below the compared nodes
};

class TAVOXMLUTILS_API XMLCompareStrictOrder : public XMLNodeComparator {
public:
    void WalkThrough() override;
};

class TAVOXMLUTILS_API XMLCompareRotatedOrder : public XMLNodeComparator {
public:
    void WalkThrough() override;
};

class TAVOXMLUTILS_API XMLCompareNoOrder : public XMLNodeComparator {
public:
    void WalkThrough() override;
};

} // namespace TavoXML
