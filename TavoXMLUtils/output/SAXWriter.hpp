// TavoXML::SAXWriter: a SAX1 document handler that writes every event at once as XML text through an
// XMLFormatter. The constructor writes the declaration <?xml version="1.0" encoding="NAME"?> and a line
// feed, NAME being the formatter's encoding, in whatever escape mode the formatter has then.
//
// State: none beyond the formatter; no stack and no check of nesting. Elements are always written as a
// start and an end tag, with their names as given. Attribute values are written with the formatter's
// attribute escapes, characters with its character escapes, ignorable white space and processing
// instructions unescaped. endDocument neither writes nor flushes.
//
// Failure: nothing is checked; an exception of the formatter or its target passes to the caller. The
// formatter is not owned and must outlive the writer.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/sax/DocumentHandler.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class AttributeList;
class Locator;
class XMLFormatter;
XERCES_CPP_NAMESPACE_END

namespace TavoXML {

class TAVOXMLUTILS_API SAXWriter : public XERCES_CPP_NAMESPACE::DocumentHandler {
public:
    explicit SAXWriter(XERCES_CPP_NAMESPACE::XMLFormatter& formatter);
    SAXWriter(SAXWriter const&) = delete;
    SAXWriter& operator=(SAXWriter const&) = delete;
    ~SAXWriter() override;

    void characters(XMLCh const* const chars, XMLSize_t const length) override;
    void endDocument() override;
    void endElement(XMLCh const* const name) override;
    void ignorableWhitespace(XMLCh const* const chars, XMLSize_t const length) override;
    void processingInstruction(XMLCh const* const target, XMLCh const* const data) override;
    void resetDocument() override;
    void setDocumentLocator(XERCES_CPP_NAMESPACE::Locator const* const locator) override;
    void startDocument() override;
    void startElement(XMLCh const* const name, XERCES_CPP_NAMESPACE::AttributeList& attrs) override;

private:
    XERCES_CPP_NAMESPACE::Locator const* locator = nullptr;
    XERCES_CPP_NAMESPACE::XMLFormatter& formatter;
};

} // namespace TavoXML
