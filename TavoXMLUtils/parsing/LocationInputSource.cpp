#include "TavoXMLUtils/parsing/LocationInputSource.hpp"
#include "TavoXMLUtils/parsing/internal/LocationBinInputStream.hpp"

#include "TavoXMLUtils/support/internal/XMLChText.hpp"

#include <xercesc/util/PlatformUtils.hpp>

LocationInputSource::LocationInputSource(Vesk::Location const& source)
    : xercesc::InputSource(xercesc::XMLPlatformUtils::fgMemoryManager) {
    // The system id is the location's URL, never a plain path: the parser shows it in its messages
    // and takes it as the base of relative references inside the document.
    Tavo::UniString url;
    source.ToURL(&url);
    setSystemId(TavoXML::AsXMLCh(url.ToUStr(0, Tavo::UniString::kAll)));
    location = source;
}

LocationInputSource::~LocationInputSource() = default;

xercesc::BinInputStream* LocationInputSource::makeStream() const {
    // A null stream makes the parser report that the source could not be opened; nothing is thrown
    // from here.
    try {
        auto* stream = new LocationBinInputStream(&location);
        if (!stream->IsOpened()) {
            delete stream;
            return nullptr;
        }
        return stream;
    } catch (...) {
        return nullptr;
    }
}
