// TavoXML::OChannelXMLFormatTarget: an XMLFormatTarget that carries a formatter's encoded bytes into a
// foundation byte sink (Tavo::OChannel).
//
// State: the adapter refers to a channel that the caller owns and keeps alive; destroying the adapter
// leaves the channel open and untouched. Every writeChars hands exactly its bytes to the channel's
// WriteBin, in order, unchanged, with nothing added and nothing held back, so flush has nothing to do.
//
// Failure: a non-zero status of WriteBin throws Tavo::RunTimeErrorException with that status as error
// code, through the formatter to its caller; the refused bytes are lost.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/framework/XMLFormatter.hpp>

namespace Tavo {
class OChannel;
}

namespace TavoXML {

class TAVOXMLUTILS_API OChannelXMLFormatTarget : public XERCES_CPP_NAMESPACE::XMLFormatTarget {
public:
    explicit OChannelXMLFormatTarget(Tavo::OChannel& channel) noexcept;
    ~OChannelXMLFormatTarget() override;
    OChannelXMLFormatTarget(OChannelXMLFormatTarget const&) = delete;
    OChannelXMLFormatTarget& operator=(OChannelXMLFormatTarget const&) = delete;

    void writeChars(XMLByte const* const toWrite, XMLSize_t const count,
                    XERCES_CPP_NAMESPACE::XMLFormatter* const formatter) override;
    void flush() override;

private:
    Tavo::OChannel& channel;
};

} // namespace TavoXML
