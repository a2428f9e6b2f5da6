// TavoXML::SAX2Writer: a SAX2 content handler that writes every event at once as XML text through an
// XMLFormatter. The constructor writes the declaration <?xml version="1.0" encoding="NAME"?> and a line
// feed, NAME being the formatter's encoding, in whatever escape mode the formatter has then.
//
// State: none beyond the arguments; no stack and no check of nesting. Elements are always written as a
// start and an end tag. With expandNamespaces true a name is written as namespace URI, colon and local
// name (the local name alone for an empty URI), and prefix mappings are not written as attributes, so
// the text is not namespace-correct XML; with false the qualified name is written. Attribute values are
// written with the formatter's attribute escapes, characters with its character escapes, ignorable white
// space and processing instructions unescaped. endDocument neither writes nor flushes.
//
// Failure: nothing is checked; an exception of the formatter or its target (for instance a character the
// encoding cannot represent under the formatter's UnRep_Fail) passes to the caller. The formatter is not
// owned and must outlive the writer.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/sax2/ContentHandler.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class Attributes;
class Locator;
class XMLFormatter;
XERCES_CPP_NAMESPACE_END

namespace TavoXML {

class TAVOXMLUTILS_API SAX2Writer : public XERCES_CPP_NAMESPACE::ContentHandler {
public:
    SAX2Writer(XERCES_CPP_NAMESPACE::XMLFormatter& formatter, bool expandNamespaces);
    SAX2Writer(SAX2Writer const&) = delete;
    SAX2Writer& operator=(SAX2Writer const&) = delete;
    ~SAX2Writer() override;

    void characters(XMLCh const* const chars, XMLSize_t const length) override;
    void endDocument() override;
    void endElement(XMLCh const* const uri, XMLCh const* const localname, XMLCh const* const qname) override;
    void ignorableWhitespace(XMLCh const* const chars, XMLSize_t const length) override;
    void processingInstruction(XMLCh const* const target, XMLCh const* const data) override;
    void setDocumentLocator(XERCES_CPP_NAMESPACE::Locator const* const locator) override;
    void startDocument() override;
    void startElement(XMLCh const* const uri, XMLCh const* const localname, XMLCh const* const qname,
                      XERCES_CPP_NAMESPACE::Attributes const& attrs) override;
    void startPrefixMapping(XMLCh const* const prefix, XMLCh const* const uri) override;
    void endPrefixMapping(XMLCh const* const prefix) override;
    void skippedEntity(XMLCh const* const name) override;

private:
    // The name written for an element or attribute under the namespace choice.
    void writeName(XMLCh const* uri, XMLCh const* localname, XMLCh const* qname);

    XERCES_CPP_NAMESPACE::Locator const* locator = nullptr;
    bool expandNamespaces;
    XERCES_CPP_NAMESPACE::XMLFormatter& formatter;
};

} // namespace TavoXML
