#include "TavoXMLUtils/parsing/internal/TavoEntityResolver.hpp"

#include "TavoXMLUtils/parsing/LocationInputSource.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/URLInputSource.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLURL.hpp>

namespace {

// An absolute URL stays a URLInputSource, but the parser's own URL layer never reads it: that layer
// would hand a "file:" URL with a host (127.0.0.1 too) to its network accessor, and would open a FIFO
// or a device and wait on it for ever. Only a "file:" URL with no host or "localhost" is read, as a
// Vesk location, which opens regular files only. Any other URL gets no stream, which the parser
// reports as a source that it could not open.
class LocalURLInputSource : public xercesc::URLInputSource {
public:
    using xercesc::URLInputSource::URLInputSource;

    xercesc::BinInputStream* makeStream() const override {
        xercesc::XMLURL const& url = urlSrc();
        if (url.getProtocol() != xercesc::XMLURL::File || !IsLocalHost(url.getHost())) {
            return nullptr;
        }
        try {
            return LocationInputSource(Vesk::Location(Tavo::UniString(url.getURLText()))).makeStream();
        } catch (...) {
            return nullptr;
        }
    }

private:
    static bool IsLocalHost(XMLCh const* host) {
        return host == nullptr || *host == 0 || xercesc::XMLString::compareIString(host, u"localhost") == 0;
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
