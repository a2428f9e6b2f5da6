#include "TavoXMLUtils/compare/SkipWhitespaceTextsCompareFilter.hpp"

#include "TavoRoot/UniString.hpp"

#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/dom/DOMText.hpp>

#include <algorithm>
#include <string_view>

namespace TavoXML {

xercesc::DOMNodeFilter::FilterAction
SkipWhitespaceTextsCompareFilter::acceptNode(xercesc::DOMNode const* node) const {
    if (node == nullptr) {
        return FILTER_REJECT;
    }
    xercesc::DOMNode::NodeType const type = node->getNodeType();
    if (type == xercesc::DOMNode::ELEMENT_NODE) {
        return FILTER_ACCEPT;
    }
    if (type != xercesc::DOMNode::TEXT_NODE) {
        return FILTER_REJECT;
    }
    if (dynamic_cast<xercesc::DOMText const*>(node) == nullptr) {
        return FILTER_ACCEPT;
    }
    // Empty after Tavo::UniString::Trim is all white space; read in place rather than copied.
    XMLCh const* const value = node->getNodeValue();
    std::u16string_view const text = value == nullptr ? std::u16string_view() : std::u16string_view(value);
    return std::ranges::all_of(text, Tavo::IsWhiteSpace) ? FILTER_SKIP : FILTER_ACCEPT;
}

} // namespace TavoXML
