// TavoEntityResolver: turns the system id of an external entity into an input source. Relative ids
// are read as local files through LocationInputSource; absolute URLs of every scheme become a
// URLInputSource that reads only a "file:" URL with an empty or "localhost" host, through Vesk. Only
// regular files are ever opened. Whether an entity may be read at all is decided before, by the
// parser (external general entities are off by default).
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/sax/EntityResolver.hpp>
#include <xercesc/sax/InputSource.hpp>

class TAVOXMLUTILS_API TavoEntityResolver : public xercesc::EntityResolver {
public:
    TavoEntityResolver() = default;
    ~TavoEntityResolver() override;

    // A new input source that the parser adopts. The public id is not looked at.
    xercesc::InputSource* resolveEntity(const XMLCh* const publicId, const XMLCh* const systemId) override;
};
