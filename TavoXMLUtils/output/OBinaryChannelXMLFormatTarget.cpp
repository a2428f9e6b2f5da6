#include "TavoXMLUtils/output/OBinaryChannelXMLFormatTarget.hpp"

#include "TavoXMLUtils/output/internal/ChannelBytes.hpp"

#include "TavoRoot/OChannel.hpp"

namespace TavoXML {

OBinaryChannelXMLFormatTarget::OBinaryChannelXMLFormatTarget(Tavo::OBinaryChannel& channel) noexcept
    : channel(channel) {}

OBinaryChannelXMLFormatTarget::~OBinaryChannelXMLFormatTarget() = default;

void OBinaryChannelXMLFormatTarget::writeChars(XMLByte const* const toWrite, XMLSize_t const count,
                                               XERCES_CPP_NAMESPACE::XMLFormatter* const) {
    detail::WriteFormattedBytes(channel, toWrite, count);
}

// Nothing is buffered here, and the stream has no flush of its own.
void OBinaryChannelXMLFormatTarget::flush() {}

} // namespace TavoXML
