#include "common/TestText.hpp"

#include <xercesc/dom/DOMNode.hpp>

namespace TavoTest {

std::string Utf8(XMLCh const* text) {
    return Utf8(Tavo::UniString(reinterpret_cast<unsigned short const*>(text)));
}

Tavo::UniString FromUtf8(std::string const& text) {
    return Tavo::UniString(text.c_str(), TavoCharCodeUTF8);
}

std::string NodeName(xercesc::DOMNode const* node) {
    return node != nullptr ? Utf8(node->getNodeName()) : std::string();
}

} // namespace TavoTest
