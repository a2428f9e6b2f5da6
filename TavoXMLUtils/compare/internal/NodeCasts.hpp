// Checked casts from DOMNode to the node classes of a comparison: the result is null unless the node
// has the type and is of the class, so a node of another DOM or kind never reaches code that assumes
// the class. Library-internal.
#pragma once

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/dom/DOMText.hpp>

namespace TavoXML::detail {

inline xercesc::DOMText const* AsText(xercesc::DOMNode const* node) noexcept {
    return node != nullptr && node->getNodeType() == xercesc::DOMNode::TEXT_NODE
               ? dynamic_cast<xercesc::DOMText const*>(node)
               : nullptr;
}

inline xercesc::DOMAttr const* AsAttr(xercesc::DOMNode const* node) noexcept {
    return node != nullptr && node->getNodeType() == xercesc::DOMNode::ATTRIBUTE_NODE
               ? dynamic_cast<xercesc::DOMAttr const*>(node)
               : nullptr;
}

inline xercesc::DOMElement const* AsElement(xercesc::DOMNode const* node) noexcept {
    return node != nullptr && node->getNodeType() == xercesc::DOMNode::ELEMENT_NODE
               ? dynamic_cast<xercesc::DOMElement const*>(node)
               : nullptr;
}

} // namespace TavoXML::detail
