#include "TavoXMLUtils/compare/XMLNodeComparators.hpp"

#include "TavoRoot/SharedPtr.hpp"
#include "TavoRoot/TavoException.hpp"
#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/compare/IXMLCompareOptions.hpp"
#include "TavoXMLUtils/compare/XMLCompareExceptions.hpp"
#include "TavoXMLUtils/compare/XMLValueComparators.hpp"
#include "TavoXMLUtils/compare/internal/MatchedAttributeNames.hpp"
#include "TavoXMLUtils/compare/internal/NodeCasts.hpp"
#include "TavoXMLUtils/support/internal/Throw.hpp"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/dom/DOMText.hpp>
#include <xercesc/dom/DOMTreeWalker.hpp>

#include <memory>

namespace TavoXML {

namespace {

using xercesc::DOMAttr;
using xercesc::DOMElement;
using xercesc::DOMNode;
using xercesc::DOMText;

// How a pair of node types is handled, tested in this order by CompareNodes and ControlNodeComparison.
enum class PairKind { BothText, BothElement, ElementAndText, TypesDiffer, SameSpecialType };

PairKind KindOf(DOMNode const* left, DOMNode const* right) noexcept {
    DOMNode::NodeType const l = left->getNodeType();
    DOMNode::NodeType const r = right->getNodeType();
    bool const leftText = l == DOMNode::TEXT_NODE;
    bool const rightText = r == DOMNode::TEXT_NODE;
    bool const leftElement = l == DOMNode::ELEMENT_NODE;
    bool const rightElement = r == DOMNode::ELEMENT_NODE;
    if (leftText && rightText) {
        return PairKind::BothText;
    }
    if (leftElement && rightElement) {
        return PairKind::BothElement;
    }
    if ((leftText && rightElement) || (leftElement && rightText)) {
        return PairKind::ElementAndText;
    }
    return l != r ? PairKind::TypesDiffer : PairKind::SameSpecialType;
}

// Options are free to hand out anything; a missing comparator stops the walk instead of a crash.
template <class Comparator>
std::unique_ptr<Comparator> Require(Comparator* comparator, char const* what) {
    if (comparator == nullptr) {
        detail::Throw<Tavo::TavoException>(what, Tavo::GeneralError);
    }
    return std::unique_ptr<Comparator>(comparator);
}

// Attribute values are judged on the attributes' text children. An attribute without one (an empty
// value) or whose first child is no text (an entity reference) is judged on its whole value instead,
// so such attributes compare by what they hold rather than as two empty texts.
bool AttributeValuesEqual(XMLValueComparator& comparator, DOMAttr const* left, DOMAttr const* right,
                          IXMLCompareOptions const& options) {
    DOMText const* const leftText = detail::AsText(left->getFirstChild());
    DOMText const* const rightText = detail::AsText(right->getFirstChild());
    if (leftText != nullptr && rightText != nullptr) {
        return comparator.CompareValues(leftText, rightText, options);
    }
    return comparator.CompareValues(Tavo::UniString(left->getValue()), Tavo::UniString(right->getValue()),
                                    options);
}

} // namespace

XMLNodeComparator::~XMLNodeComparator() = default;

void XMLNodeComparator::CompareNodes(xercesc::DOMTreeWalker* left, xercesc::DOMTreeWalker* right,
                                     IXMLCompareOptions& options) {
    if (left == nullptr || right == nullptr || left->getCurrentNode() == nullptr ||
        right->getCurrentNode() == nullptr) {
        detail::Throw<Tavo::TavoException>("CompareNodes needs two tree walkers standing on nodes.",
                                           Tavo::GeneralError);
    }
    leftWalker = left;
    rightWalker = right;
    leftNode = left->getCurrentNode();
    rightNode = right->getCurrentNode();
    this->options = &options;
    switch (KindOf(leftNode, rightNode)) {
        case PairKind::BothText:
            ControlNodeComparison();
            break;
        case PairKind::BothElement:
            if (!options.AreNodeNamesEqual(leftNode, rightNode)) {
                throw NodeNamesDontMatchException(leftNode, rightNode);
            }
            CompareAttributes(detail::AsElement(leftNode), detail::AsElement(rightNode), options);
            try {
                WalkThrough();
            } catch (...) {
                PutWalkersBack(leftNode, rightNode);
                throw;
            }
            break;
        case PairKind::ElementAndText:
            throw OneNodeIsElementOneIsTextException(leftNode, rightNode);
        case PairKind::TypesDiffer:
            throw NodeTypesDontMatchException(leftNode, rightNode);
        case PairKind::SameSpecialType:
            options.CompareSpecialTypeNodes(leftNode, rightNode);
            break;
    }
    PutWalkersBack(leftNode, rightNode);
}

void XMLNodeComparator::ControlNodeComparison() {
    DOMNode* const left = leftWalker->getCurrentNode();
    DOMNode* const right = rightWalker->getCurrentNode();
    try {
        ComparePair(left, right);
    } catch (...) {
        PutWalkersBack(left, right);
        throw;
    }
    PutWalkersBack(left, right);
}

void XMLNodeComparator::ComparePair(DOMNode* left, DOMNode* right) {
    switch (KindOf(left, right)) {
        case PairKind::BothText: {
            DOMText const* const leftText = detail::AsText(left);
            DOMText const* const rightText = detail::AsText(right);
            std::unique_ptr<XMLValueComparator> const comparator =
                Require(options->GetValueComparator(), "The compare options gave no value comparator.");
            if (!comparator->CompareValues(leftText, rightText, *options)) {
                throw TextNodeValuesDontMatchException(leftText, rightText);
            }
            break;
        }
        case PairKind::BothElement:
            CompareElementChildren(detail::AsElement(left), detail::AsElement(right));
            break;
        case PairKind::ElementAndText:
            throw OneNodeIsElementOneIsTextException(left, right);
        case PairKind::TypesDiffer:
            throw NodeTypesDontMatchException(left, right);
        case PairKind::SameSpecialType:
            options->CompareSpecialTypeNodes(left, right);
            break;
    }
}

void XMLNodeComparator::CompareElementChildren(DOMElement const* left, DOMElement const* right) {
    if (depth >= kMaxDepth) {
        detail::Throw<Tavo::TavoException>(
            Tavo::UniString::PrintfFwd("The trees are nested deeper than %u element levels; the comparison "
                                       "refuses them.",
                                       kMaxDepth),
            Tavo::GeneralError);
    }
    // Options that change per element pair get a clone of this level's state, so that the change
    // reaches this pair's subtree only. Options that never change are shared; the level that cloned
    // them (at the latest DoXMLCompare) keeps them alive.
    Tavo::SharedPtr<IXMLCompareOptions> clone;
    IXMLCompareOptions* childOptions = options;
    if (options->CanOptionsChangeAndEffectNotChildNodes()) {
        clone = Tavo::SharedPtr<IXMLCompareOptions>(
            Require(options->Clone(), "The compare options gave no clone.").release());
        childOptions = clone.Get();
    }
    std::unique_ptr<XMLNodeComparator> const child = Require(childOptions->PrepareNodeComparator(left, right),
                                                             "The compare options gave no node comparator.");
    child->depth = depth + 1;
    // The walkers stand on the pair already; CompareNodes reads them there and puts them back there.
    child->CompareNodes(leftWalker, rightWalker, *childOptions);
}

void XMLNodeComparator::CompareAttributes(DOMElement const* left, DOMElement const* right,
                                          IXMLCompareOptions const& options) {
    if (left == nullptr || right == nullptr) {
        detail::Throw<Tavo::TavoException>("CompareAttributes needs two elements.", Tavo::GeneralError);
    }
    xercesc::DOMNamedNodeMap const* const leftMap = left->getAttributes();
    xercesc::DOMNamedNodeMap const* const rightMap = right->getAttributes();
    detail::MatchedAttributeNames matched(leftMap);
    for (XMLSize_t i = 0; i < leftMap->getLength(); ++i) {
        DOMAttr const* const attribute = detail::AsAttr(leftMap->item(i));
        if (attribute == nullptr || !options.AcceptAttribute(attribute)) {
            continue;
        }
        DOMAttr const* const rightAttribute =
            detail::AsAttr(rightMap->getNamedItem(attribute->getNodeName()));
        if (rightAttribute == nullptr) {
            throw AttributeMissingException(left, right, attribute, XMLCompareException::Right);
        }
        std::unique_ptr<XMLValueComparator> const comparator = Require(
            options.GetAttributeValueComparator(attribute), "The compare options gave no value comparator.");
        if (!AttributeValuesEqual(*comparator, attribute, rightAttribute, options)) {
            throw AttributesDontMatchException(left, right, attribute, rightAttribute);
        }
        matched.Add(i);
    }
    if (matched.CoverAll(rightMap->getLength())) {
        return;
    }
    for (XMLSize_t i = 0; i < rightMap->getLength(); ++i) {
        DOMAttr const* const attribute = detail::AsAttr(rightMap->item(i));
        if (attribute != nullptr && !matched.Contains(attribute->getNodeName()) &&
            options.AcceptAttribute(attribute)) {
            throw AttributeMissingException(left, right, attribute, XMLCompareException::Left);
        }
    }
}

void XMLNodeComparator::PutWalkersBack(DOMNode* left, DOMNode* right) const {
    leftWalker->setCurrentNode(left);
    rightWalker->setCurrentNode(right);
}

// ---- the ready comparators

void XMLCompareStrictOrder::WalkThrough() {
    // Both walkers move before any test, so inside this loop they stand one step below the pair.
    DOMNode* l = leftWalker->firstChild();
    DOMNode* r = rightWalker->firstChild();
    while (l != nullptr && r != nullptr) {
        ControlNodeComparison();
        l = leftWalker->nextSibling();
        r = rightWalker->nextSibling();
    }
    if (l == nullptr && r == nullptr) {
        return;
    }
    throw OneNodeHasMoreChildrenThanTheOtherException(
        leftNode, rightNode, l == nullptr ? XMLCompareException::Right : XMLCompareException::Left);
}

void XMLCompareRotatedOrder::WalkThrough() {
    throw Tavo::TavoException("Rotated order walkthrough not yet supported.", nullptr, 0, nullptr,
                              Tavo::GeneralError);
}

void XMLCompareNoOrder::WalkThrough() {
    throw Tavo::TavoException("No-order walkthrough not yet supported.", nullptr, 0, nullptr,
                              Tavo::GeneralError);
}

} // namespace TavoXML
