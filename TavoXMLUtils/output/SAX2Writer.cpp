// TavoXML::SAX2Writer: SAX2 events written at once through an XMLFormatter.
#include "TavoXMLUtils/output/SAX2Writer.hpp"

#include <xercesc/framework/XMLFormatter.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace TavoXML {

namespace {

using xercesc::XMLFormatter;

constexpr XMLCh gXMLDecl1[] = u"<?xml version=\"1.0\" encoding=\"";
constexpr XMLCh gXMLDecl2[] = u"\"?>\n";
constexpr XMLCh gEndElement[] = u"</";
constexpr XMLCh gStartPI[] = u"<?";
constexpr XMLCh gEndPI[] = u"?>";

// The zero-length string, not XMLUni::fgEmptyString: that one is the keyword "EMPTY". A parser never
// passes null; a caller that does gets the local name alone rather than a crash in the comparison.
bool IsEmptyURI(XMLCh const* uri) {
    return uri == nullptr || xercesc::XMLString::compareIString(uri, xercesc::XMLUni::fgZeroLenString) == 0;
}

} // namespace

SAX2Writer::SAX2Writer(XMLFormatter& formatter, bool expandNamespaces)
    : expandNamespaces(expandNamespaces), formatter(formatter) {
    formatter << gXMLDecl1 << formatter.getEncodingName() << gXMLDecl2;
}

SAX2Writer::~SAX2Writer() = default;

void SAX2Writer::writeName(XMLCh const* uri, XMLCh const* localname, XMLCh const* qname) {
    if (!expandNamespaces) {
        formatter << qname;
        return;
    }
    if (!IsEmptyURI(uri)) {
        formatter << uri << u':';
    }
    formatter << localname;
}

void SAX2Writer::startElement(XMLCh const* const uri, XMLCh const* const localname, XMLCh const* const qname,
                              xercesc::Attributes const& attrs) {
    formatter << XMLFormatter::NoEscapes << u'<';
    writeName(uri, localname, qname);
    XMLSize_t const count = attrs.getLength();
    for (XMLSize_t index = 0; index < count; ++index) {
        formatter << XMLFormatter::NoEscapes << u' ';
        writeName(attrs.getURI(index), attrs.getLocalName(index), attrs.getQName(index));
        formatter << u'=' << u'"' << XMLFormatter::AttrEscapes << attrs.getValue(index)
                  << XMLFormatter::NoEscapes << u'"';
    }
    formatter << u'>';
}

void SAX2Writer::endElement(XMLCh const* const uri, XMLCh const* const localname, XMLCh const* const qname) {
    formatter << XMLFormatter::NoEscapes << gEndElement;
    writeName(uri, localname, qname);
    formatter << u'>';
}

void SAX2Writer::characters(XMLCh const* const chars, XMLSize_t const length) {
    formatter.formatBuf(chars, length, XMLFormatter::CharEscapes, XMLFormatter::DefaultUnRep);
}

void SAX2Writer::ignorableWhitespace(XMLCh const* const chars, XMLSize_t const length) {
    formatter.formatBuf(chars, length, XMLFormatter::NoEscapes, XMLFormatter::DefaultUnRep);
}

void SAX2Writer::processingInstruction(XMLCh const* const target, XMLCh const* const data) {
    formatter << XMLFormatter::NoEscapes << gStartPI << target;
    if (data != nullptr) {
        formatter << u' ' << data;
    }
    formatter << XMLFormatter::NoEscapes << gEndPI;
}

void SAX2Writer::setDocumentLocator(xercesc::Locator const* const newLocator) {
    locator = newLocator;
}

void SAX2Writer::endDocument() {
    locator = nullptr;
}

void SAX2Writer::startDocument() {}

void SAX2Writer::startPrefixMapping(XMLCh const* const, XMLCh const* const) {}

void SAX2Writer::endPrefixMapping(XMLCh const* const) {}

void SAX2Writer::skippedEntity(XMLCh const* const) {}

} // namespace TavoXML
