// TavoXML::SAXWriter: SAX1 events written at once through an XMLFormatter.
#include "TavoXMLUtils/output/SAXWriter.hpp"

#include "TavoXMLUtils/output/internal/SAXEventText.hpp"

#include <xercesc/framework/XMLFormatter.hpp>
#include <xercesc/sax/AttributeList.hpp>

namespace TavoXML {

namespace {

using xercesc::XMLFormatter;

using detail::gSAXEndElement;

} // namespace

SAXWriter::SAXWriter(XMLFormatter& formatter) : formatter(formatter) {
    detail::WriteSAXDeclaration(formatter);
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
    formatter << XMLFormatter::NoEscapes << gSAXEndElement << name << u'>';
}

void SAXWriter::characters(XMLCh const* const chars, XMLSize_t const length) {
    detail::WriteSAXCharacters(formatter, chars, length);
}

void SAXWriter::ignorableWhitespace(XMLCh const* const chars, XMLSize_t const length) {
    detail::WriteSAXIgnorable(formatter, chars, length);
}

void SAXWriter::processingInstruction(XMLCh const* const target, XMLCh const* const data) {
    detail::WriteSAXProcessingInstruction(formatter, target, data);
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
