// The typed walker: names and types from the provider's attribute; nothing is caught.
#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/objectstate/TypeInfoProvider.hpp"
#include "TavoXMLUtils/objectstate/internal/ObjectStateChecks.hpp"
#include "TavoXMLUtils/objectstate/internal/XMLWalkers.hpp"
#include "TavoXMLUtils/support/internal/NameText.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLBigDecimal.hpp>
#include <xercesc/util/XMLDouble.hpp>
#include <xercesc/util/XMLString.hpp>

namespace TavoXML::detail {

namespace {

using xercesc::DOMNode;

TypeInfoProvider const& ProviderOf(XMLContentProcessor const& processor) {
    return *processor.GetAttributeProvider();
}

// The value of the attribute `name` of `node`, or null when there is none.
XMLCh const* AttributeValue(DOMNode const* node, char const* name) {
    NameText const attributeName(name);
    xercesc::DOMNamedNodeMap const* attributes = node->getAttributes();
    DOMNode const* attribute = attributes ? attributes->getNamedItem(attributeName.Get()) : nullptr;
    if (!attribute || attribute->getNodeType() != DOMNode::ATTRIBUTE_NODE) {
        return nullptr;
    }
    return static_cast<xercesc::DOMAttr const*>(attribute)->getValue();
}

// The type attribute that every non-empty element needs. This library's choice: an element without it
// is refused with an exception instead of being read through a null attribute.
XMLCh const* RequiredTypeAttribute(DOMNode const* node, TypeInfoProvider const& provider) {
    XMLCh const* value =
        AttributeValue(node, RequiredProviderWord(provider.GetTypeAttributeName(), "GetTypeAttributeName"));
    if (!value) {
        ThrowUnreadableXML("An element has no type attribute.");
    }
    return value;
}

// The text of the first child, which every non-empty element needs (for a structure it is the
// indentation, and unused). This library's choice: any other first child is refused with an exception.
XMLCh const* FirstText(DOMNode const* node) {
    DOMNode const* first = node->getFirstChild();
    auto const type = first->getNodeType();
    if (type != DOMNode::TEXT_NODE && type != DOMNode::CDATA_SECTION_NODE) {
        ThrowUnreadableXML("The first child of an element is no text.");
    }
    return first->getNodeValue();
}

// The value as a string, trimmed: the typed dialect drops the layout around it.
Tavo::UniString TrimmedText(XMLCh const* value) {
    Tavo::UniString text = NarrowText(value);
    text.Trim();
    return text;
}

// XMLString::parseInt of the decimal's digits: 32 bits, widened with sign. A zero has no digits and
// throws NumberFormatException here.
long long DigitsOf(xercesc::XMLBigDecimal const& decimal) {
    return xercesc::XMLString::parseInt(decimal.getValue(), xercesc::XMLPlatformUtils::fgMemoryManager);
}

void ReportBool(XMLContentProcessor& processor, XMLCh const* value) {
    Tavo::UniString const text = TrimmedText(value);
    if (text == "true") {
        processor.BoolFound(true);
    } else if (text == "false") {
        processor.BoolFound(false);
    }
}

void ReportInt(XMLContentProcessor& processor, XMLCh const* value) {
    xercesc::XMLBigDecimal const decimal(value, xercesc::XMLPlatformUtils::fgMemoryManager);
    processor.IntFound(decimal.getSign() * DigitsOf(decimal));
}

void ReportUInt(XMLContentProcessor& processor, XMLCh const* value) {
    xercesc::XMLBigDecimal const decimal(value, xercesc::XMLPlatformUtils::fgMemoryManager);
    processor.UIntFound(static_cast<unsigned long long>(DigitsOf(decimal)));
}

void ReportReal(XMLContentProcessor& processor, XMLCh const* value) {
    processor.RealFound(xercesc::XMLDouble(value, xercesc::XMLPlatformUtils::fgMemoryManager).getValue());
}

void ReportString(XMLContentProcessor& processor, XMLCh const* value) {
    processor.StringFound(TrimmedText(value));
}

// Whether `type` is the provider's name `word` (null and empty count as equal).
bool IsType(XMLCh const* type, char const* word) {
    if (!word) {
        return xercesc::XMLString::stringLen(type) == 0;
    }
    NameText const name(word);
    return xercesc::XMLString::equals(type, name.Get());
}

void ReportStructure(XMLContentProcessor& processor, DOMNode const* node, bool isList, unsigned int depth) {
    if (depth >= MaxObjectStateDepth) {
        // This library's choice: the typed dialect fails by exception, as for other unreadable XML.
        ThrowUnreadableXML("The XML is nested too deeply for an object state.");
    }
    if (isList) {
        processor.ListEntered();
        EnumerateXMLListWithAttributeProvider(node, processor, depth + 1);
        processor.ListExited();
    } else {
        processor.ObjectEntered();
        EnumerateXMLNodeWithAttributeProvider(node, processor, false, depth + 1);
        processor.ObjectExited();
    }
}

} // namespace

int EnumerateXMLNodeWithAttributeProvider(DOMNode const* node, XMLContentProcessor& processor, bool inList,
                                          unsigned int depth) {
    TypeInfoProvider const& provider = ProviderOf(processor);
    // Siblings rather than the child list by index, which Xerces-C++ walks from its start on every call.
    for (DOMNode const* child = node->getFirstChild(); child; child = child->getNextSibling()) {
        if (!child->hasChildNodes()) {
            continue;
        }
        XMLCh const* attribute = RequiredTypeAttribute(child, provider);
        bool const byType = provider.GetTagContent() != 0;
        XMLCh const* name = byType ? attribute : child->getNodeName();
        XMLCh const* type = byType ? child->getNodeName() : attribute;
        if (!inList) {
            processor.NameFound(Tavo::UniString(AsUShort(name)));
        }
        ProcessTypedXMLNode(processor, type, FirstText(child), child, depth);
    }
    return Tavo::GeneralError;
}

void EnumerateXMLListWithAttributeProvider(DOMNode const* node, XMLContentProcessor& processor,
                                           unsigned int depth) {
    TypeInfoProvider const& provider = ProviderOf(processor);
    XMLCh const* listType = nullptr;
    if (provider.AreListsHomogeneous()) {
        listType = AttributeValue(
            node, RequiredProviderWord(provider.GetListSubtypeAttribute(), "GetListSubtypeAttribute"));
    }
    for (DOMNode const* child = node->getFirstChild(); child; child = child->getNextSibling()) {
        if (!child->hasChildNodes()) {
            continue;
        }
        // The first non-empty element decides the type of all the others.
        if (!listType) {
            listType =
                provider.GetTagContent() == 0 ? RequiredTypeAttribute(child, provider) : child->getNodeName();
        }
        ProcessTypedXMLNode(processor, listType, FirstText(child), child, depth);
    }
}

void ProcessTypedXMLNode(XMLContentProcessor& processor, XMLCh const* type, XMLCh const* value,
                         DOMNode const* node, unsigned int depth) {
    TypeInfoProvider const& provider = ProviderOf(processor);
    if (IsType(type, provider.GetBoolTypeName())) {
        ReportBool(processor, value);
    } else if (IsType(type, provider.GetIntTypeName())) {
        ReportInt(processor, value);
    } else if (IsType(type, provider.GetUIntTypeName())) {
        ReportUInt(processor, value);
    } else if (IsType(type, provider.GetRealTypeName())) {
        ReportReal(processor, value);
    } else if (IsType(type, provider.GetStringTypeName())) {
        ReportString(processor, value);
    } else if (IsType(type, provider.GetListTypeName())) {
        ReportStructure(processor, node, true, depth);
    } else if (IsType(type, provider.GetObjectTypeName())) {
        ReportStructure(processor, node, false, depth);
    }
}

} // namespace TavoXML::detail
