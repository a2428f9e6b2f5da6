// The formatter's walk over the tree, one node kind at a time.
#include "TavoXMLUtils/output/internal/FormatNode.hpp"

#include "TavoXMLUtils/output/internal/XMLPrint.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocumentType.hpp>
#include <xercesc/dom/DOMEntity.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/util/XMLString.hpp>

#include <vector>

namespace TavoXML::detail {

namespace {

using xercesc::DOMNode;

constexpr XMLCh EndL[] = u"\n";
constexpr XMLCh gStartPI[] = u"<?";
constexpr XMLCh gEndPI[] = u"?>";
constexpr XMLCh gEndElement[] = u"</";
constexpr XMLCh gStartCDATA[] = u"<![CDATA[";
constexpr XMLCh gEndCDATA[] = u"]]>";
constexpr XMLCh gStartComment[] = u"<!--";
constexpr XMLCh gEndComment[] = u"-->";
constexpr XMLCh gStartDoctype[] = u"<!DOCTYPE ";
constexpr XMLCh gStartEntity[] = u"<!ENTITY ";
constexpr XMLCh gPublic[] = u"PUBLIC \"";
constexpr XMLCh gSystem[] = u"SYSTEM \"";
constexpr XMLCh gNotation[] = u"NDATA \"";

// The printer takes the channels' 16-bit text; the DOM gives XMLCh of the same layout.
XMLPrint& operator<<(XMLPrint& printer, XMLCh const* text) {
    return printer << AsUShort(text);
}

XMLPrint& operator<<(XMLPrint& printer, char16_t unit) {
    return printer << static_cast<unsigned short>(unit);
}

bool IsEmpty(XMLCh const* text) noexcept {
    return text == nullptr || *text == 0;
}

void NoEscapes(XMLPrint& printer) {
    printer.escapeFlags = XMLPrint::NoEscapes;
}

void FormatEntityReference(DOMNode const* node, XMLPrint& printer) {
    NoEscapes(printer);
    printer << u'&' << node->getNodeName() << u';';
}

// An attribute's value: its children when it has any (texts escaped, entity references as such),
// otherwise its node value.
void FormatAttribute(DOMNode const* attribute, XMLPrint& printer) {
    NoEscapes(printer);
    printer << u' ' << attribute->getNodeName() << u'=' << u'"';
    if (DOMNode const* child = attribute->getFirstChild()) {
        for (; child != nullptr; child = child->getNextSibling()) {
            if (child->getNodeType() == DOMNode::ENTITY_REFERENCE_NODE) {
                FormatEntityReference(child, printer);
            } else if (child->getNodeType() == DOMNode::TEXT_NODE) {
                XMLCh const* value = child->getNodeValue();
                if (value != nullptr) {
                    printer.formatBuf(AsUShort(value), xercesc::XMLString::stringLen(value),
                                      XMLPrint::AttrEscapes);
                }
            }
        }
    } else {
        printer.escapeFlags = XMLPrint::AttrEscapes;
        printer << attribute->getNodeValue();
    }
    NoEscapes(printer);
    printer << u'"';
}

// The start tag with its attributes; true when the element has children to enter.
bool FormatElementStart(DOMNode const* element, XMLPrint& printer) {
    NoEscapes(printer);
    printer << u'<' << element->getNodeName();
    if (xercesc::DOMNamedNodeMap const* attributes = element->getAttributes()) {
        XMLSize_t const count = attributes->getLength();
        for (XMLSize_t index = 0; index < count; ++index) {
            FormatAttribute(attributes->item(index), printer);
        }
    }
    if (element->getFirstChild() != nullptr) {
        printer << u'>';
        return true;
    }
    printer << u'/' << u'>';
    return false;
}

void FormatDocumentType(DOMNode const* node, XMLPrint& printer) {
    NoEscapes(printer);
    printer << gStartDoctype << node->getNodeName();
    // Only the DOM's own document type nodes carry identifiers; anything else writes its name alone.
    if (auto const* type = dynamic_cast<xercesc::DOMDocumentType const*>(node)) {
        XMLCh const* publicId = type->getPublicId();
        XMLCh const* systemId = type->getSystemId();
        if (!IsEmpty(publicId)) {
            printer << u' ' << gPublic << publicId << u'"';
            if (!IsEmpty(systemId)) {
                printer << u' ' << u'"' << systemId << u'"';
            }
        } else if (!IsEmpty(systemId)) {
            printer << u' ' << gSystem << systemId << u'"';
        }
        XMLCh const* subset = type->getInternalSubset();
        if (!IsEmpty(subset)) {
            printer << u'[' << subset << u']';
        }
    }
    printer << u'>';
}

// No blank separates the parts of the declaration: that is the form this printer has always written.
void FormatEntity(DOMNode const* node, XMLPrint& printer) {
    NoEscapes(printer);
    printer << gStartEntity << node->getNodeName();
    if (auto const* entity = dynamic_cast<xercesc::DOMEntity const*>(node)) {
        struct Part {
            XMLCh const* keyword;
            XMLCh const* text;
        };
        for (Part const part : {Part{gPublic, entity->getPublicId()}, Part{gSystem, entity->getSystemId()},
                                Part{gNotation, entity->getNotationName()}}) {
            if (!IsEmpty(part.text)) {
                printer << part.keyword << part.text << u'"';
            }
        }
    }
    printer << u'>' << u'\n';
}

// Writes everything of a node that comes before its children; true when its children are to be
// entered (an element or a document that has any).
bool FormatNodeStart(DOMNode const* node, XMLPrint& printer) {
    XMLCh const* value = node->getNodeValue();
    switch (node->getNodeType()) {
        case DOMNode::ELEMENT_NODE:
            return FormatElementStart(node, printer);
        case DOMNode::TEXT_NODE:
            if (value != nullptr) {
                printer.formatBuf(AsUShort(value), xercesc::XMLString::stringLen(value),
                                  XMLPrint::CharEscapes);
            }
            return false;
        case DOMNode::CDATA_SECTION_NODE:
            NoEscapes(printer);
            printer << gStartCDATA << value << gEndCDATA;
            return false;
        case DOMNode::ENTITY_REFERENCE_NODE:
            FormatEntityReference(node, printer);
            return false;
        case DOMNode::ENTITY_NODE:
            FormatEntity(node, printer);
            return false;
        case DOMNode::PROCESSING_INSTRUCTION_NODE:
            NoEscapes(printer);
            printer << gStartPI << node->getNodeName();
            if (!IsEmpty(value)) {
                printer << u' ' << value;
            }
            printer << gEndPI;
            return false;
        case DOMNode::COMMENT_NODE:
            NoEscapes(printer);
            printer << gStartComment << value << gEndComment;
            return false;
        case DOMNode::DOCUMENT_NODE:
            return node->getFirstChild() != nullptr;
        case DOMNode::DOCUMENT_TYPE_NODE:
            FormatDocumentType(node, printer);
            return false;
        default: // attribute, document fragment, notation
            return false;
    }
}

// Writes what follows the children of an entered node: an element's end tag.
void FormatNodeEnd(DOMNode const* node, XMLPrint& printer) {
    if (node->getNodeType() == DOMNode::ELEMENT_NODE) {
        NoEscapes(printer);
        printer << gEndElement << node->getNodeName() << u'>';
    }
}

} // namespace

void FormatNode(DOMNode const* node, XMLPrint* printer) {
    // The entered nodes, innermost last: the way back up without asking the DOM for parents.
    std::vector<DOMNode const*> open;
    DOMNode const* current = node;
    for (;;) {
        if (FormatNodeStart(current, *printer)) {
            open.push_back(current);
            current = current->getFirstChild();
            continue;
        }
        // `current` is complete: climb until a next sibling is found or the starting node is complete.
        for (;;) {
            if (open.empty()) {
                return;
            }
            DOMNode const* parent = open.back();
            if (parent->getNodeType() == DOMNode::DOCUMENT_NODE) {
                *printer << EndL;
            }
            if (DOMNode const* next = current->getNextSibling()) {
                current = next;
                break;
            }
            open.pop_back();
            FormatNodeEnd(parent, *printer);
            current = parent;
        }
    }
}

} // namespace TavoXML::detail
