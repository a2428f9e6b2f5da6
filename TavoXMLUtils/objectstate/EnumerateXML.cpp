// EnumerateXML: the node as one object, walked in the dialect of the processor's provider.
#include "TavoXMLUtils/objectstate/EnumerateXML.hpp"

#include "TavoRoot/OnExit.hpp"
#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/objectstate/internal/XMLWalkers.hpp"

int EnumerateXML(XERCES_CPP_NAMESPACE::DOMNode const* node, XMLContentProcessor& processor) {
    processor.ObjectEntered();
    Tavo::OnExit const exit([&processor] { processor.ObjectExited(); });
    // This library's choice: a null node stands for an object without fields, reported as a failure.
    if (!node) {
        return Tavo::GeneralError;
    }
    if (processor.GetAttributeProvider()) {
        // The typed walk's status says nothing; it is GeneralError whatever happened.
        TavoXML::detail::EnumerateXMLNodeWithAttributeProvider(node, processor, false, 0);
        return Tavo::GeneralError;
    }
    return TavoXML::detail::EnumerateXMLNode(node, processor, false, 0);
}
