#include "TavoXMLUtils/output/OChannelXMLFormatTarget.hpp"

#include "TavoXMLUtils/output/internal/ChannelBytes.hpp"

namespace TavoXML {

OChannelXMLFormatTarget::OChannelXMLFormatTarget(Tavo::OChannel& channel) noexcept : channel(channel) {}

OChannelXMLFormatTarget::~OChannelXMLFormatTarget() = default;

void OChannelXMLFormatTarget::writeChars(XMLByte const* const toWrite, XMLSize_t const count,
                                         XERCES_CPP_NAMESPACE::XMLFormatter* const) {
    detail::WriteFormattedBytes(channel, toWrite, count);
}

// Nothing is buffered here, and the channel has no flush of its own.
void OChannelXMLFormatTarget::flush() {}

} // namespace TavoXML
