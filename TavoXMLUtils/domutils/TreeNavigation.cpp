#include "TavoXMLUtils/domutils/TreeNavigation.hpp"

#include "TavoXMLUtils/domutils/ConvException.hpp"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNode.hpp>

namespace TavoXMLUtils {

namespace {

constexpr char gUnexpectedNode[] = "Unexpected XML node";

bool IsText(const DOMNode* node) noexcept {
    return node->getNodeType() == DOMNode::TEXT_NODE;
}

DOMElement* AsElement(DOMNode* node) noexcept {
    return node != nullptr && node->getNodeType() == DOMNode::ELEMENT_NODE ? static_cast<DOMElement*>(node)
                                                                           : nullptr;
}

// From `node` on along `step` to the first element, `node` included.
template <class Step>
DOMElement* FirstElementFrom(DOMNode* node, Step step) {
    while (node != nullptr && node->getNodeType() != DOMNode::ELEMENT_NODE) {
        node = (node->*step)();
    }
    return static_cast<DOMElement*>(node);
}

// The node itself, or the one behind it when it is a text node.
DOMNode* SkipOneText(DOMNode* node) {
    return node != nullptr && IsText(node) ? node->getNextSibling() : node;
}

} // namespace

DOMElement* GetFirstElementChild(const DOMElement* element) {
    return element == nullptr ? nullptr
                              : FirstElementFrom(element->getFirstChild(), &DOMNode::getNextSibling);
}

DOMElement* GetLastElementChild(const DOMElement* element) {
    return element == nullptr ? nullptr
                              : FirstElementFrom(element->getLastChild(), &DOMNode::getPreviousSibling);
}

DOMElement* GetPreviousElementSibling(const DOMElement* element) {
    return element == nullptr ? nullptr
                              : FirstElementFrom(element->getPreviousSibling(), &DOMNode::getPreviousSibling);
}

DOMElement* GetNextElementSibling(const DOMElement* element) {
    return element == nullptr ? nullptr
                              : FirstElementFrom(element->getNextSibling(), &DOMNode::getNextSibling);
}

std::uint32_t GetChildElementCount(const DOMElement* element) {
    std::uint32_t count = 0;
    for (const DOMElement* child = GetFirstElementChild(element); child != nullptr;
         child = GetNextElementSibling(child)) {
        ++count;
    }
    return count;
}

void GetFirstChild(const DOMNode* node, DOMNode*& child) {
    child = node == nullptr ? nullptr : SkipOneText(node->getFirstChild());
}

void GetFirstChild(const DOMNode* node, DOMElement*& child) {
    DOMNode* chosen = nullptr;
    GetFirstChild(node, chosen);
    child = dynamic_cast<DOMElement*>(chosen);
}

void GetNextSibling(const DOMNode* node, DOMNode*& next) {
    next = node == nullptr ? nullptr : SkipOneText(node->getNextSibling());
}

void GetNextSibling(const DOMNode* node, DOMElement*& next) {
    DOMNode* chosen = nullptr;
    GetNextSibling(node, chosen);
    next = dynamic_cast<DOMElement*>(chosen);
}

void SkipTextNodes(DOMNode*& node) {
    while (node != nullptr && IsText(node)) {
        node = node->getNextSibling();
    }
}

void SkipTextNodes(DOMElement*& node) {
    DOMNode* current = node;
    while (current != nullptr && (IsText(current) || dynamic_cast<DOMElement*>(current) == nullptr)) {
        current = current->getNextSibling();
    }
    node = static_cast<DOMElement*>(current);
}

DOMElement* GetNextTag(DOMNode*& cursor) {
    if (cursor == nullptr) {
        return nullptr;
    }
    for (;;) {
        const DOMNode::NodeType kind = cursor->getNodeType();
        if (kind != DOMNode::TEXT_NODE && kind != DOMNode::COMMENT_NODE) {
            break;
        }
        cursor = cursor->getNextSibling();
        if (cursor == nullptr) {
            return nullptr;
        }
    }
    DOMElement* const element = AsElement(cursor);
    if (element == nullptr) {
        throw ConvException(Tavo::UniString(gUnexpectedNode), cursor);
    }
    cursor = element->getNextSibling();
    return element;
}

bool IsNodeOk(const DOMNode* node, const Tavo::UniString& name) {
    if (node == nullptr || node->getNodeType() != DOMNode::ELEMENT_NODE) {
        return false;
    }
    // Compared without a copy; a null node name counts as the empty string.
    return name == reinterpret_cast<const unsigned short*>(node->getNodeName());
}

bool IsNodeOk(const DOMNode* node, const Tavo::String& name) {
    return IsNodeOk(node, Tavo::UniString(name.ToCStr(), TavoCharCodeDefault));
}

DOMDocumentSentry::~DOMDocumentSentry() {
    if (document == nullptr) {
        return;
    }
    try {
        document->release();
    } catch (...) {
        // Nothing may leave a destructor; a document that cannot be released is lost.
    }
}

} // namespace TavoXMLUtils
