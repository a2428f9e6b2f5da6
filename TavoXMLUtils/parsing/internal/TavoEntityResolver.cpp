#include "TavoXMLUtils/parsing/internal/TavoEntityResolver.hpp"

#include "TavoXMLUtils/parsing/LocationInputSource.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/URLInputSource.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLURL.hpp>

namespace {

// An absolute URL is read by the parser's own URL layer, but only for the "file" scheme: a document
// must never make the library reach the network, so the stream of any other scheme is refused, which
// the parser reports as a source it could not open.
class LocalURLInputSource : public xercesc::URLInputSource {
public:
    using xercesc::URLInputSource::URLInputSource;

    xercesc::BinInputStream* makeStream() const override {
        if (urlSrc().getProtocol() != xercesc::XMLURL::File) {
            return nullptr;
        }
        return xercesc::URLInputSource::makeStream();
    }
};

} // namespace

TavoEntityResolver::~TavoEntityResolver() = default;

xercesc::InputSource* TavoEntityResolver::resolveEntity(const XMLCh* const, const XMLCh* const systemId) {
    // Reserved for a base and deliberately left empty: neither the referring document's folder nor a
    // working directory is put in front of a relative system id.
    XMLCh const base[] = {0};
    xercesc::MemoryManager* const manager = xercesc::XMLPlatformUtils::fgMemoryManager;
    xercesc::XMLURL const url(base, systemId, manager);
    if (!url.isRelative()) {
        return new LocalURLInputSource(url, manager);
    }
    // Only the path logic of LocalFileInputSource is wanted (joining base and relative path); its
    // own file layer is never read from.
    xercesc::LocalFileInputSource const joined(base, systemId, manager);
    Vesk::Location const location{Tavo::UniString(joined.getSystemId())};
    return new LocationInputSource(location);
}
