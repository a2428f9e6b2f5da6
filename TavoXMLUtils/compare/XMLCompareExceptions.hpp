// The difference reports of a comparison: TavoXML::XMLCompareException and the nine classes below it.
// A comparison throws one of them, by value of its concrete class, at the first difference.
//
//   XMLCompareException                          "Undefined problem." (never thrown by the comparison)
//     NoElementsInDocumentException              a document without a document element
//     AttributeMissingException                  an attribute on one side only
//     AttributesDontMatchException               two values of one attribute differ
//     NodeNamesDontMatchException                two element names differ
//     NodeTypesDontMatchException                two node types differ
//       OneNodeIsElementOneIsTextException       an element against a text
//     NotSupportedNodeTypesException             two nodes of a type the options do not compare
//     OneNodeHasMoreChildrenThanTheOtherException  one element has further children
//     TextNodeValuesDontMatchException           two text values differ
//
// The family has no base class of the foundation; a caller catches it by its own type. Every object
// keeps copies of what it reports (the two node paths, names, values, types), so it stays valid after
// the documents are gone. A node path holds the node names from the document element down to the node,
// without indices: it describes a place, it does not address one. GetNode gives, besides, the two nodes
// the report was made for, so that a caller that still holds the documents can look them up (a source
// line, for one); those pointers are valid only as long as their documents live.
//
// Constructors copy and fail only when memory runs out; they let that failure pass. GetText and the
// accessors never fail otherwise.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "Vesk/RelativeLocation.hpp"

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
class DOMAttr;
class DOMText;
XERCES_CPP_NAMESPACE_END

namespace TavoXML {

class TAVOXMLUTILS_API XMLCompareException {
public:
    // Which tree of the comparison: Left is the first, Right the second. Accessors taking a Side give
    // the left member for Left and the right member for any other value.
    enum Side : int {
        Left = 0,
        Right = 1,
    };

    // Both paths empty and no nodes.
    XMLCompareException();
    // The paths of the two nodes (either may be null, which gives an empty path).
    XMLCompareException(xercesc::DOMNode const* left, xercesc::DOMNode const* right);
    XMLCompareException(XMLCompareException const& other);
    XMLCompareException& operator=(XMLCompareException const& other);
    virtual ~XMLCompareException();

    // The report for a person, several lines separated by line feeds.
    virtual Tavo::UniString GetText() const;

    Vesk::RelativeLocation GetNodePath(Side side) const;
    // The URL form of the path without its "file://" prefix: the names joined by "/", each
    // percent-encoded where a URL path segment needs it.
    Tavo::UniString GetNodePathUniString(Side side) const;
    // The node the report was made for on that side: the node whose path is reported, except for
    // TextNodeValuesDontMatchException, which reports the parents' paths and gives the text nodes here.
    // Null for NoElementsInDocumentException. Not owned; valid only while its document lives.
    xercesc::DOMNode const* GetNode(Side side) const noexcept;

protected:
    // Paths of `leftPathNode` and `rightPathNode`, and `left` and `right` as the reported nodes.
    XMLCompareException(xercesc::DOMNode const* leftPathNode, xercesc::DOMNode const* rightPathNode,
                        xercesc::DOMNode const* left, xercesc::DOMNode const* right);

private:
    Vesk::RelativeLocation leftPath;
    Vesk::RelativeLocation rightPath;
    xercesc::DOMNode const* leftNode = nullptr;
    xercesc::DOMNode const* rightNode = nullptr;
};

class TAVOXMLUTILS_API NoElementsInDocumentException : public XMLCompareException {
public:
    explicit NoElementsInDocumentException(Side side);
    Tavo::UniString GetText() const override;

private:
    Side side;
};

class TAVOXMLUTILS_API AttributeMissingException : public XMLCompareException {
public:
    // `attribute` is the attribute that was found; `whereItIsMissing` the side that lacks it.
    AttributeMissingException(xercesc::DOMNode const* left, xercesc::DOMNode const* right,
                              xercesc::DOMAttr const* attribute, Side whereItIsMissing);
    Tavo::UniString GetText() const override;

    Tavo::UniString GetAttributeName() const { return attributeName; }
    Side GetWhereItIsMissing() const noexcept { return whereItIsMissing; }

private:
    Tavo::UniString attributeName;
    Side whereItIsMissing;
};

class TAVOXMLUTILS_API AttributesDontMatchException : public XMLCompareException {
public:
    // The name is the left attribute's.
    AttributesDontMatchException(xercesc::DOMNode const* left, xercesc::DOMNode const* right,
                                 xercesc::DOMAttr const* leftAttribute,
                                 xercesc::DOMAttr const* rightAttribute);
    Tavo::UniString GetText() const override;

    Tavo::UniString GetAttributeName() const { return attributeName; }
    Tavo::UniString GetAttributeValue(Side side) const { return side == Left ? leftValue : rightValue; }

private:
    Tavo::UniString attributeName;
    Tavo::UniString leftValue;
    Tavo::UniString rightValue;
};

class TAVOXMLUTILS_API NodeNamesDontMatchException : public XMLCompareException {
public:
    NodeNamesDontMatchException(xercesc::DOMNode const* left, xercesc::DOMNode const* right);
    Tavo::UniString GetText() const override;
};

class TAVOXMLUTILS_API NodeTypesDontMatchException : public XMLCompareException {
public:
    NodeTypesDontMatchException(xercesc::DOMNode const* left, xercesc::DOMNode const* right);
    Tavo::UniString GetText() const override;

    // The DOM node type number (1 element, 3 text, 4 CDATA section, 8 comment, ...).
    int GetNodeType(Side side) const noexcept { return side == Left ? leftType : rightType; }

private:
    int leftType;
    int rightType;
};

class TAVOXMLUTILS_API NotSupportedNodeTypesException : public XMLCompareException {
public:
    NotSupportedNodeTypesException(xercesc::DOMNode const* left, xercesc::DOMNode const* right);
    Tavo::UniString GetText() const override;

    int GetNodeType(Side side) const noexcept { return side == Left ? leftType : rightType; }

private:
    int leftType;
    int rightType;
};

class TAVOXMLUTILS_API OneNodeHasMoreChildrenThanTheOtherException : public XMLCompareException {
public:
    // `left` and `right` are the two parents.
    OneNodeHasMoreChildrenThanTheOtherException(xercesc::DOMNode const* left, xercesc::DOMNode const* right,
                                                Side whichHasMoreChildren);
    Tavo::UniString GetText() const override;

    Side GetWhichHasMoreChildren() const noexcept { return whichHasMoreChildren; }

private:
    Side whichHasMoreChildren;
};

class TAVOXMLUTILS_API OneNodeIsElementOneIsTextException : public NodeTypesDontMatchException {
public:
    // The text value is the left node's if it is a text, otherwise the right node's.
    OneNodeIsElementOneIsTextException(xercesc::DOMNode const* left, xercesc::DOMNode const* right);
    Tavo::UniString GetText() const override;

    Tavo::UniString GetTextValue() const { return textValue; }

private:
    Tavo::UniString textValue;
};

class TAVOXMLUTILS_API TextNodeValuesDontMatchException : public XMLCompareException {
public:
    // The paths are those of the two parents, so that they end at the elements holding the texts.
    TextNodeValuesDontMatchException(xercesc::DOMText const* left, xercesc::DOMText const* right);
    Tavo::UniString GetText() const override;

    Tavo::UniString GetTextNodeValue(Side side) const { return side == Left ? leftValue : rightValue; }

private:
    Tavo::UniString leftValue;
    Tavo::UniString rightValue;
};

} // namespace TavoXML
