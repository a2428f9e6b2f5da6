// TavoXML::SAXWriter: SAX1 events written at once through an XMLFormatter.
#include "TavoXMLUtils/output/SAXWriter.hpp"

#include <xercesc/framework/XMLFormatter.hpp>
#include <xercesc/sax/AttributeList.hpp>

namespace TavoXML {

namespace {

using xercesc::XMLFormatter;

constexpr XMLCh gXMLDecl1[] = u"<?xml version=\"1.0\" encoding=\"";
constexpr XMLCh gXMLDecl2[] = u"\"?>\n";
constexpr XMLCh gEndElement[] = u"</";
constexpr XMLCh gStartPI[] = u"<?";
constexpr XMLCh gEndPI[] = u"?>";

} // namespace

SAXWriter::SAXWriter(XMLFormatter& formatter) : formatter(formatter) {
    formatter << gXMLDecl1 << formatter.getEncodingName() << gXMLDecl2;
}

SAXWriter::~SAXWriter() = default;

void SAXWriter::startElement(XMLCh const* const name, xercesc::AttributeList& attrs) {
    formatter << XMLFormatter::NoEscapes << u'<' << name;
    XMLSize_t const count = attrs.getLength();
    for (XMLSize_t index = 0; index < count; ++index) {
        formatter << XMLFormatter::NoEscapes << u' ' << attrs.getName(index) << u'=' << u'"'
                  << XMLFormatter::AttrEscapes << attrs.getValue(index) << XMLFormatter::NoEscapes << u'"';
    }
    formatter << u'>';
}

void SAXWriter::endElement(XMLCh const* const name) {
    formatter << XMLFormatter::NoEscapes << gEndElement << name << u'>';
}

void SAXWriter::characters(XMLCh const* const chars, XMLSize_t const length) {
    formatter.formatBuf(chars, length, XMLFormatter::CharEscapes, XMLFormatter::DefaultUnRep);
}

void SAXWriter::ignorableWhitespace(XMLCh const* const chars, XMLSize_t const length) {
    formatter.formatBuf(chars, length, XMLFormatter::NoEscapes, XMLFormatter::DefaultUnRep);
}

void SAXWriter::processingInstruction(XMLCh const* const target, XMLCh const* const data) {
    formatter << XMLFormatter::NoEscapes << gStartPI << target;
    if (data != nullptr) {
        formatter << u' ' << data;
    }
    formatter << XMLFormatter::NoEscapes << gEndPI;
}

void SAXWriter::setDocumentLocator(xercesc::Locator const* const newLocator) {
    locator = newLocator;
}

void SAXWriter::endDocument() {
    locator = nullptr;
}

void SAXWriter::startDocument() {}

void SAXWriter::resetDocument() {}

} // namespace TavoXML
