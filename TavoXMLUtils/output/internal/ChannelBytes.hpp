// Hands the encoded bytes of an XMLFormatter to a foundation byte sink. Both format-target adapters
// write through this one function, so that they behave alike.
//
// The bytes go on in order and unchanged, in as few WriteBin calls as the channel's 32-bit count
// allows (one for every block the formatter hands over). Nothing is buffered, so nothing is left
// behind for a flush. A non-zero status of WriteBin throws Tavo::RunTimeErrorException carrying that
// status as its error code; the bytes of the failed call and all later ones do not reach the channel.
#pragma once

#include <xercesc/util/XercesDefs.hpp>

namespace Tavo {
class OChannel;
}

namespace TavoXML::detail {

void WriteFormattedBytes(Tavo::OChannel& channel, XMLByte const* bytes, XMLSize_t count);

} // namespace TavoXML::detail
