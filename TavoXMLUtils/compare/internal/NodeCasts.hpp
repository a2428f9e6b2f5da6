// Checked casts from DOMNode to the node classes of a comparison: the result is null unless the node
// has the type. The DOM of Xerces-C++ gives every node of these types the class, so the type test is
// the check; a dynamic_cast would compare type names across libraries for every node of a walk.
// Library-internal.
#pragma once

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/dom/DOMText.hpp>

namespace TavoXML::detail {

inline xercesc::DOMText const* AsText(xercesc::DOMNode const* node) noexcept {
    return node != nullptr && node->getNodeType() == xercesc::DOMNode::TEXT_NODE
               ? static_cast<xercesc::DOMText const*>(node)
               : nullptr;
}

inline xercesc::DOMAttr const* AsAttr(xercesc::DOMNode const* node) noexcept {
    return node != nullptr && node->getNodeType() == xercesc::DOMNode::ATTRIBUTE_NODE
               ? static_cast<xercesc::DOMAttr const*>(node)
               : nullptr;
}

inline xercesc::DOMElement const* AsElement(xercesc::DOMNode const* node) noexcept {
    return node != nullptr && node->getNodeType() == xercesc::DOMNode::ELEMENT_NODE
               ? static_cast<xercesc::DOMElement const*>(node)
               : nullptr;
}

} // namespace TavoXML::detail
