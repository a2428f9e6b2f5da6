#include "TavoXMLUtils/compare/XMLCompareExceptions.hpp"

#include "Vesk/Name.hpp"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/dom/DOMText.hpp>

#include <algorithm>
#include <vector>

namespace TavoXML {

namespace {

using xercesc::DOMNode;

// The URL form of a path starts with "file://", which the text form leaves out.
constexpr unsigned int gURLPrefixLength = 7;

char const gUndefinedFormat[] = "Diff at nodes:\n\t- %s\n\t- %s\n\tUndefined problem.";
char const gAttributeMissingFormat[] =
    "Diff at nodes:\n\t- %s\n\t- %s\n\tMissing attribute \"%s\" on the %s.";
char const gAttributesDontMatchFormat[] =
    "Diff at nodes:\n\t- %s\n\t- %s\n\tValues of attribute \"%s\" don't match: \"%s\" and \"%s\".";
char const gNodeNamesFormat[] = "Diff at nodes:\n\t- %s\n\t- %s\n\tNode names don't match.";
char const gNodeTypesFormat[] =
    "Node type mismatch at nodes:\n\t- %s\n\t- %s\n\tThe nodes are not the same type.\n\tLeft node is type "
    "%d "
    "and the right node is type %d (see enum \"NodeType\" for their meaning).\n\tYou can skip these node "
    "types by rejecting themin the NodeFilter object given to the TreeWalker.";
char const gNotSupportedFormat[] =
    "Node type error at nodes:\n\t- %s\n\t- %s\n\tNot both nodes are supported for comparison:\n\tLeft node "
    "is type %d and the right node is type %d (see enum \"NodeType\" for their meaning).\n\tYou can skip "
    "these node types by rejecting themin the NodeFilter object given to the TreeWalker.";
char const gMoreChildrenFormat[] = "Diff at nodes:\n\t- %s\n\t- %s\n\tThe node on the %s has more children.";
char const gElementTextFormat[] = "Node type mismatch at nodes:\n\t- %s\n\t- %s\n\tOne node is Element, the "
                                  "other is Text.\n\tThe value of the text is \"%s\".";
char const gTextValuesFormat[] =
    "Diff at nodes:\n\t- %s\n\t- %s\n\tText node values \"%s\" and \"%s\" don't match.";
char const gNoElementsFormat[] = "There is no valid element in the XML-document on the %s.";

// The names from the document element (or the topmost ancestor) down to `node`; the document node
// itself is no segment. Collected upwards and turned round, so a deep node costs its depth, not its
// depth squared.
Vesk::RelativeLocation BuildNodePath(DOMNode const* node) {
    Vesk::RelativeLocation path;
    if (node == nullptr) {
        return path;
    }
    std::vector<DOMNode const*> chain;
    DOMNode const* const document = node->getOwnerDocument();
    for (DOMNode const* cursor = node; cursor != nullptr && (cursor == node || cursor != document);
         cursor = cursor->getParentNode()) {
        chain.push_back(cursor);
    }
    std::for_each(chain.rbegin(), chain.rend(), [&path](DOMNode const* segment) {
        path.Append(Vesk::Name(Tavo::UniString(segment->getNodeName())));
    });
    return path;
}

int NodeType(DOMNode const* node) noexcept {
    return node == nullptr ? 0 : static_cast<int>(node->getNodeType());
}

Tavo::UniString NodeValue(DOMNode const* node) {
    return node == nullptr ? Tavo::UniString() : Tavo::UniString(node->getNodeValue());
}

// 8-bit text in the default character code, characters it lacks replaced.
Tavo::UniString::CStrHolder Narrow(Tavo::UniString const& text) {
    return text.ToCStr(0, Tavo::UniString::kAll, TavoCharCodeDefault, Tavo::ConversionErrorReplace);
}

char const* SideWord(XMLCompareException::Side side) noexcept {
    return side == XMLCompareException::Left ? "left" : "right";
}

// The format of the reports that start with the two paths, filled with them and with `more`.
template <class... More>
Tavo::UniString FormatWithPaths(XMLCompareException const& report, char const* format, More... more) {
    Tavo::UniString::CStrHolder const left = Narrow(report.GetNodePathUniString(XMLCompareException::Left));
    Tavo::UniString::CStrHolder const right = Narrow(report.GetNodePathUniString(XMLCompareException::Right));
    return Tavo::UniString::PrintfFwd(format, left.Get(), right.Get(), more...);
}

} // namespace

// ---- XMLCompareException

XMLCompareException::XMLCompareException() = default;

XMLCompareException::XMLCompareException(DOMNode const* left, DOMNode const* right)
    : XMLCompareException(left, right, left, right) {}

XMLCompareException::XMLCompareException(DOMNode const* leftPathNode, DOMNode const* rightPathNode,
                                         DOMNode const* left, DOMNode const* right)
    : leftPath(BuildNodePath(leftPathNode)), rightPath(BuildNodePath(rightPathNode)), leftNode(left),
      rightNode(right) {}

XMLCompareException::XMLCompareException(XMLCompareException const& other) = default;
XMLCompareException& XMLCompareException::operator=(XMLCompareException const& other) = default;
XMLCompareException::~XMLCompareException() = default;

Tavo::UniString XMLCompareException::GetText() const {
    return FormatWithPaths(*this, gUndefinedFormat);
}

Vesk::RelativeLocation XMLCompareException::GetNodePath(Side side) const {
    return side == Left ? leftPath : rightPath;
}

Tavo::UniString XMLCompareException::GetNodePathUniString(Side side) const {
    Tavo::UniString text;
    (side == Left ? leftPath : rightPath).ToURL(&text);
    text.Delete(0, gURLPrefixLength);
    return text;
}

DOMNode const* XMLCompareException::GetNode(Side side) const noexcept {
    return side == Left ? leftNode : rightNode;
}

// ---- members of the family

NoElementsInDocumentException::NoElementsInDocumentException(Side side) : side(side) {}

Tavo::UniString NoElementsInDocumentException::GetText() const {
    return Tavo::UniString::PrintfFwd(gNoElementsFormat, SideWord(side));
}

AttributeMissingException::AttributeMissingException(DOMNode const* left, DOMNode const* right,
                                                     xercesc::DOMAttr const* attribute, Side whereItIsMissing)
    : XMLCompareException(left, right),
      attributeName(attribute == nullptr ? Tavo::UniString() : Tavo::UniString(attribute->getNodeName())),
      whereItIsMissing(whereItIsMissing) {}

Tavo::UniString AttributeMissingException::GetText() const {
    Tavo::UniString::CStrHolder const name = Narrow(attributeName);
    return FormatWithPaths(*this, gAttributeMissingFormat, name.Get(), SideWord(whereItIsMissing));
}

AttributesDontMatchException::AttributesDontMatchException(DOMNode const* left, DOMNode const* right,
                                                           xercesc::DOMAttr const* leftAttribute,
                                                           xercesc::DOMAttr const* rightAttribute)
    : XMLCompareException(left, right),
      attributeName(leftAttribute == nullptr ? Tavo::UniString()
                                             : Tavo::UniString(leftAttribute->getNodeName())),
      leftValue(leftAttribute == nullptr ? Tavo::UniString() : Tavo::UniString(leftAttribute->getValue())),
      rightValue(rightAttribute == nullptr ? Tavo::UniString()
                                           : Tavo::UniString(rightAttribute->getValue())) {}

Tavo::UniString AttributesDontMatchException::GetText() const {
    Tavo::UniString::CStrHolder const name = Narrow(attributeName);
    Tavo::UniString::CStrHolder const left = Narrow(leftValue);
    Tavo::UniString::CStrHolder const right = Narrow(rightValue);
    return FormatWithPaths(*this, gAttributesDontMatchFormat, name.Get(), left.Get(), right.Get());
}

NodeNamesDontMatchException::NodeNamesDontMatchException(DOMNode const* left, DOMNode const* right)
    : XMLCompareException(left, right) {}

Tavo::UniString NodeNamesDontMatchException::GetText() const {
    return FormatWithPaths(*this, gNodeNamesFormat);
}

NodeTypesDontMatchException::NodeTypesDontMatchException(DOMNode const* left, DOMNode const* right)
    : XMLCompareException(left, right), leftType(NodeType(left)), rightType(NodeType(right)) {}

Tavo::UniString NodeTypesDontMatchException::GetText() const {
    return FormatWithPaths(*this, gNodeTypesFormat, leftType, rightType);
}

NotSupportedNodeTypesException::NotSupportedNodeTypesException(DOMNode const* left, DOMNode const* right)
    : XMLCompareException(left, right), leftType(NodeType(left)), rightType(NodeType(right)) {}

Tavo::UniString NotSupportedNodeTypesException::GetText() const {
    return FormatWithPaths(*this, gNotSupportedFormat, leftType, rightType);
}

OneNodeHasMoreChildrenThanTheOtherException::OneNodeHasMoreChildrenThanTheOtherException(
    DOMNode const* left, DOMNode const* right, Side whichHasMoreChildren)
    : XMLCompareException(left, right), whichHasMoreChildren(whichHasMoreChildren) {}

Tavo::UniString OneNodeHasMoreChildrenThanTheOtherException::GetText() const {
    return FormatWithPaths(*this, gMoreChildrenFormat, SideWord(whichHasMoreChildren));
}

OneNodeIsElementOneIsTextException::OneNodeIsElementOneIsTextException(DOMNode const* left,
                                                                       DOMNode const* right)
    : NodeTypesDontMatchException(left, right),
      textValue(NodeValue(NodeType(left) == DOMNode::TEXT_NODE ? left : right)) {}

Tavo::UniString OneNodeIsElementOneIsTextException::GetText() const {
    Tavo::UniString::CStrHolder const text = Narrow(textValue);
    return FormatWithPaths(*this, gElementTextFormat, text.Get());
}

TextNodeValuesDontMatchException::TextNodeValuesDontMatchException(xercesc::DOMText const* left,
                                                                   xercesc::DOMText const* right)
    : XMLCompareException(left == nullptr ? nullptr : left->getParentNode(),
                          right == nullptr ? nullptr : right->getParentNode(), left, right),
      leftValue(NodeValue(left)), rightValue(NodeValue(right)) {}

Tavo::UniString TextNodeValuesDontMatchException::GetText() const {
    Tavo::UniString::CStrHolder const left = Narrow(leftValue);
    Tavo::UniString::CStrHolder const right = Narrow(rightValue);
    return FormatWithPaths(*this, gTextValuesFormat, left.Get(), right.Get());
}

} // namespace TavoXML
