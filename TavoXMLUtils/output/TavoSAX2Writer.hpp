// TavoXML::TavoSAX2Writer: writes a whole XML document straight to a foundation channel, element by
// element, without a DOM. It puts a fixed UTF-8 XMLFormatter on an adapter of the channel and a
// SAX2Writer on that formatter, and adds indentation and Tavo::UniString arguments. Also
// TavoSAX2Writer::Attrs, a small attribute list for its start tags.
//
// State: `depth` counts the open elements (it starts at 0, and a surplus EndElement may take it below
// 0, where no indentation is written); `elementJustOpened` is true after a start tag until the next end
// tag. The capitalised operations keep both up to date; the lower-case ContentHandler operations only
// forward to the SAX2Writer and touch neither. Indentation is two blanks per open element:
//
//   elementJustOpened  event          written before the tag      afterwards
//   false              StartElement   indentation                 true
//   true               StartElement   line end, indentation       true
//   true               EndElement     nothing                     false, line end behind the tag
//   false              EndElement     indentation at new depth    false, line end behind the tag
//
// Text is not indented and leaves `elementJustOpened` alone. The constructor writes the declaration; the
// destructor writes nothing, so elements still open stay open in the output. Names are not checked
// against the open element.
//
// Failure: nothing is checked and nothing is caught. Exceptions of the adapter (a channel that refuses
// bytes throws Tavo::RunTimeErrorException) and of the formatter reach the caller, and the writer's state
// is not repaired afterwards. Xerces-C++ must be initialised (loading the library does that).
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "TavoXMLUtils/output/SAX2Writer.hpp"

#include "TavoRoot/Array.hpp"

#include <xercesc/framework/XMLFormatter.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/ContentHandler.hpp>

#include <memory>

XERCES_CPP_NAMESPACE_BEGIN
class Locator;
class XMLAttr;
XERCES_CPP_NAMESPACE_END

namespace Tavo {
class OChannel;
class OBinaryChannel;
class UniString;
} // namespace Tavo

namespace TavoXML {

class TAVOXMLUTILS_API TavoSAX2Writer : public XERCES_CPP_NAMESPACE::ContentHandler {
public:
    // An attribute list to be walked by index: every attribute has no namespace (a zero-length URI) and
    // the CDATA type, and its local and qualified names are the name given to Add. Lookup by name is
    // not served. An index past the end gives null (the one attribute-less answer that callers of
    // Attributes can survive) instead of reading out of bounds.
    class TAVOXMLUTILS_API Attrs : public XERCES_CPP_NAMESPACE::Attributes {
    public:
        Attrs();
        ~Attrs() override;
        Attrs(Attrs const&) = delete;
        Attrs& operator=(Attrs const&) = delete;

        void Add(Tavo::UniString const& name, Tavo::UniString const& value);

        XMLSize_t getLength() const override;
        XMLCh const* getURI(XMLSize_t const index) const override;
        XMLCh const* getLocalName(XMLSize_t const index) const override;
        XMLCh const* getQName(XMLSize_t const index) const override;
        XMLCh const* getType(XMLSize_t const index) const override;
        XMLCh const* getValue(XMLSize_t const index) const override;
        bool getIndex(XMLCh const* const uri, XMLCh const* const localPart, XMLSize_t& index) const override;
        int getIndex(XMLCh const* const uri, XMLCh const* const localPart) const override;
        bool getIndex(XMLCh const* const qName, XMLSize_t& index) const override;
        int getIndex(XMLCh const* const qName) const override;
        XMLCh const* getType(XMLCh const* const uri, XMLCh const* const localPart) const override;
        XMLCh const* getType(XMLCh const* const qName) const override;
        XMLCh const* getValue(XMLCh const* const uri, XMLCh const* const localPart) const override;
        XMLCh const* getValue(XMLCh const* const qName) const override;

    private:
        XERCES_CPP_NAMESPACE::XMLAttr const* At(XMLSize_t index) const noexcept;

        // Owns its elements; starts with room for four.
        class List : public Tavo::Array<XERCES_CPP_NAMESPACE::XMLAttr*> {
        public:
            List();
        };
        List attrs;
    };

    explicit TavoSAX2Writer(Tavo::OChannel& channel);
    explicit TavoSAX2Writer(Tavo::OBinaryChannel& channel);
    ~TavoSAX2Writer() override;
    TavoSAX2Writer(TavoSAX2Writer const&) = delete;
    TavoSAX2Writer& operator=(TavoSAX2Writer const&) = delete;

    void StartDocument();
    void EndDocument();
    void StartElement(Tavo::UniString const& name);
    void StartElement(Tavo::UniString const& name, XERCES_CPP_NAMESPACE::Attributes const& attributes);
    void EndElement(Tavo::UniString const& name);
    void Characters(Tavo::UniString const& text);
    void SimpleElement(Tavo::UniString const& name, Tavo::UniString const& text);
    void SimpleElement(Tavo::UniString const& name, XERCES_CPP_NAMESPACE::Attributes const& attributes,
                       Tavo::UniString const& text);
    void writeTabs();

    // ContentHandler: each forwards to the SAX2Writer, leaving depth and elementJustOpened alone.
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
    explicit TavoSAX2Writer(std::unique_ptr<XERCES_CPP_NAMESPACE::XMLFormatTarget> adapter);
    void LineEnd();

    // Declared in this order so that destruction runs writer, formatter, target; should the formatter's
    // constructor throw, the adapter is deleted with `target`.
    std::unique_ptr<XERCES_CPP_NAMESPACE::XMLFormatTarget> target;
    XERCES_CPP_NAMESPACE::XMLFormatter formatter;
    SAX2Writer writer;
    int depth = 0;
    bool elementJustOpened = false;
};

} // namespace TavoXML
