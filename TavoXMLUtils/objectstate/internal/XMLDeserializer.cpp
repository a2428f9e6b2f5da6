// XMLDeserializer: EnumerateXML through the visitor that feeds the state's builder.
#include "TavoXMLUtils/objectstate/internal/XMLDeserializer.hpp"

#include "TavoXMLUtils/objectstate/EnumerateXML.hpp"
#include "TavoXMLUtils/objectstate/internal/ObjectStateVisitor.hpp"

namespace TavoXML::detail {

XMLDeserializer::XMLDeserializer(xercesc::DOMNode const* node, TypeInfoProvider const* provider) noexcept
    : node(node), provider(provider) {}

void XMLDeserializer::Enumerate(Tavo::ObjectState::ContentProcessor& contentProcessor) const {
    ObjectStateVisitor visitor(provider, contentProcessor);
    // The status is dropped: the typed walk always says GeneralError, and Build checks the events.
    EnumerateXML(node, visitor);
}

} // namespace TavoXML::detail
