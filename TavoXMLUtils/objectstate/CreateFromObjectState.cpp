// TavoXML::CreateFromObjectState: a state written through a ToXMLParser, into a caller's channel or into
// a string through a builder of its own.
#include "TavoXMLUtils/objectstate/CreateFromObjectState.hpp"

#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/builder/TavoXMLDOMBuilder.hpp"
#include "TavoXMLUtils/objectstate/internal/ToXMLParser.hpp"

#include <utility>

namespace TavoXML {

int CreateFromObjectState(Tavo::ObjectState const& state, Tavo::UniString& text,
                          TypeInfoProvider const* provider) {
    // Automatic tabs are needed, not a matter of looks: they give every structure the whitespace text
    // that the readers expect as its first child.
    DOMBuilder builder("root", true);
    detail::ToXMLParser parser(builder, provider);
    state.Enumerate(parser);
    // Exported before the parser ends the document, so nothing follows the root's end tag but what the
    // export adds.
    text = builder.Export(true);
    return Tavo::NoError;
}

int CreateFromObjectState(Tavo::ObjectState const& state, Tavo::XMLOChannel& channel,
                          TypeInfoProvider const* provider) {
    detail::ToXMLParser parser(channel, provider);
    state.Enumerate(parser);
    return Tavo::NoError;
}

} // namespace TavoXML
