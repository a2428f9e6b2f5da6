#include "TavoXMLUtils/domutils/ConvException.hpp"

#include "TavoXMLUtils/parsing/NodeLocations.hpp"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMNode.hpp>

namespace TavoXMLUtils {

namespace {

constexpr char16_t gNodeLocationsKey[] = u"NodeLocations";

std::uint32_t LineOf(const NodeLocationInfo* location) noexcept {
    return location != nullptr ? location->lineNumber : 0;
}

} // namespace

ConvException::ConvException(const char* message, const NodeLocationInfo* location)
    : message(message, TavoCharCodeDefault), line(LineOf(location)) {}

ConvException::ConvException(const Tavo::UniString& message, const NodeLocationInfo* location)
    : message(message), line(LineOf(location)) {}

ConvException::ConvException(const Tavo::UniString& message, const xercesc::DOMNode* node)
    : message(message) {
    StoreErrLoc(node);
}

void ConvException::StoreErrLoc(const xercesc::DOMNode* node) {
    if (node == nullptr || line != 0) {
        return;
    }
    // A document node has no owner document; it carries no line either.
    const xercesc::DOMDocument* const document = node->getOwnerDocument();
    if (document == nullptr) {
        return;
    }
    // Whatever stands under this key is taken to be a NodeLocations: that is the convention for callers
    // that want lines in the messages, and the type cannot be checked through a void pointer.
    const auto* const locations = static_cast<const NodeLocations*>(document->getUserData(gNodeLocationsKey));
    if (locations == nullptr) {
        return;
    }
    if (const NodeLocationInfo* const found = locations->Find(node)) {
        line = found->lineNumber;
    }
}

} // namespace TavoXMLUtils
