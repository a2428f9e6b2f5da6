// TavoXML::ConvertToObjectState: a state built from the children of a node, of a parsed text, or of the
// document element of a channel's file.
#include "TavoXMLUtils/objectstate/ConvertToObjectState.hpp"

#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"
#include "TavoXMLUtils/objectstate/internal/XMLDeserializer.hpp"
#include "TavoXMLUtils/reader/TavoXMLDOMReader.hpp"
#include "Vesk/Location.hpp"

#include <memory>

namespace TavoXML {

namespace {

struct DisposeChannel {
    void operator()(Tavo::XMLIChannel* channel) const noexcept { DisposeXMLIChannel(channel); }
};
using OwnedChannel = std::unique_ptr<Tavo::XMLIChannel, DisposeChannel>;

// The node form on the document element of a fresh reader, which is deleted on every way out, also when
// the conversion throws. This library's choice: input that gave no reader (unparsable text, an unreadable
// file) is reported as GeneralError and the state is left untouched.
int ConvertReader(OwnedChannel channel, Tavo::ObjectState& state, TypeInfoProvider const* provider) {
    auto* reader = dynamic_cast<DOMReader*>(channel.get());
    if (!reader) {
        return Tavo::GeneralError;
    }
    return ConvertToObjectState(reader->GetActualNode(), state, provider);
}

} // namespace

int ConvertToObjectState(xercesc::DOMNode const* node, Tavo::ObjectState& state,
                         TypeInfoProvider const* provider) {
    // This library's choice: no node, no state; the state stays as it is.
    if (!node) {
        return Tavo::GeneralError;
    }
    detail::XMLDeserializer const deserializer(node, provider);
    return state.Build(deserializer);
}

int ConvertToObjectState(Tavo::UniString const& text, Tavo::ObjectState& state,
                         TypeInfoProvider const* provider) {
    return ConvertReader(
        OwnedChannel(CreateXMLIChannelFromMemory(text, Tavo::XMLNoTopLevelTag, ReturnNullOnError)), state,
        provider);
}

int ConvertToObjectState(Tavo::XMLIChannel& channel, Tavo::ObjectState& state,
                         TypeInfoProvider const* provider) {
    // The channel is not read: its file is opened afresh. This library's choice: a channel without a
    // file location gives GeneralError and leaves the state untouched.
    Vesk::Location location;
    if (!channel.GetLocation(location)) {
        return Tavo::GeneralError;
    }
    return ConvertReader(OwnedChannel(CreateXMLIChannel(location, Tavo::XMLNoTopLevelTag, ReturnNullOnError)),
                         state, provider);
}

} // namespace TavoXML
