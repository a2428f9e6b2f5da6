// EnumerateXML: the node as one object, walked in the dialect of the processor's provider.
#include "TavoXMLUtils/objectstate/EnumerateXML.hpp"

#include "TavoRoot/OnExit.hpp"
#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/interface/XercescInitializer.hpp"
#include "TavoXMLUtils/interface/internal/LibraryStartup.hpp"
#include "TavoXMLUtils/objectstate/internal/XMLWalkers.hpp"

namespace TavoXML {
// The bridge's unit is the one whose initialiser starts Xerces-C++ for the whole library: the walkers
// transcode through its memory manager.
static XercescInitializer xercescInitializer TAVOXML_STARTUP_AT(TAVOXML_STARTUP_BRIDGE);
} // namespace TavoXML

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
