// TavoEntityResolver: turns the system id of an external entity into an input source. Relative ids
// are read as local files through LocationInputSource; absolute URLs of every scheme go to the
// parser's URLInputSource.
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
