#include "TavoXMLUtils/output/TavoSAX2Writer.hpp"

#include "TavoXMLUtils/output/OBinaryChannelXMLFormatTarget.hpp"
#include "TavoXMLUtils/output/OChannelXMLFormatTarget.hpp"

#include "TavoRoot/UniString.hpp"

#include <xercesc/internal/VecAttributesImpl.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

XERCES_CPP_NAMESPACE_USE

namespace TavoXML {

namespace {

constexpr XMLCh gIndent[] = u"  ";
constexpr XMLSize_t gIndentLength = 2;
constexpr XMLCh gLineEnd[] = u"\n";

XMLCh const* Text(Tavo::UniString const& text) noexcept {
    return text.GetU16Str();
}

} // namespace

TavoSAX2Writer::TavoSAX2Writer(Tavo::OChannel& channel)
    : TavoSAX2Writer(std::make_unique<OChannelXMLFormatTarget>(channel)) {}

TavoSAX2Writer::TavoSAX2Writer(Tavo::OBinaryChannel& channel)
    : TavoSAX2Writer(std::make_unique<OBinaryChannelXMLFormatTarget>(channel)) {}

// The writer's constructor puts the declaration out, in the formatter's NoEscapes mode.
TavoSAX2Writer::TavoSAX2Writer(std::unique_ptr<XMLFormatTarget> adapter)
    : target(std::move(adapter)),
      formatter(XMLUni::fgUTF8EncodingString, target.get(), XMLFormatter::NoEscapes,
                XMLFormatter::UnRep_CharRef, XMLPlatformUtils::fgMemoryManager),
      writer(formatter, false) {}

TavoSAX2Writer::~TavoSAX2Writer() = default;

void TavoSAX2Writer::StartDocument() {
    startDocument();
}

void TavoSAX2Writer::EndDocument() {
    endDocument();
}

void TavoSAX2Writer::StartElement(Tavo::UniString const& name) {
    VecAttributesImpl const noAttributes;
    StartElement(name, noAttributes);
}

void TavoSAX2Writer::StartElement(Tavo::UniString const& name, Attributes const& attributes) {
    // The parent's start tag gets its line end only now that a child proves to follow.
    if (elementJustOpened) {
        LineEnd();
    }
    writeTabs();
    XMLCh const* const text = Text(name);
    startElement(XMLUni::fgZeroLenString, text, text, attributes);
    ++depth;
    elementJustOpened = true;
}

void TavoSAX2Writer::EndElement(Tavo::UniString const& name) {
    --depth;
    // An element with child elements closes on a line of its own; one with text or nothing closes at once.
    if (!elementJustOpened) {
        writeTabs();
    }
    XMLCh const* const text = Text(name);
    endElement(XMLUni::fgZeroLenString, text, text);
    elementJustOpened = false;
    LineEnd();
}

void TavoSAX2Writer::Characters(Tavo::UniString const& text) {
    characters(Text(text), text.GetLength());
}

void TavoSAX2Writer::SimpleElement(Tavo::UniString const& name, Tavo::UniString const& text) {
    StartElement(name);
    Characters(text);
    EndElement(name);
}

void TavoSAX2Writer::SimpleElement(Tavo::UniString const& name, Attributes const& attributes,
                                   Tavo::UniString const& text) {
    StartElement(name, attributes);
    Characters(text);
    EndElement(name);
}

// Two blanks per open element, as text; no tab character despite the name.
void TavoSAX2Writer::writeTabs() {
    for (int level = 0; level < depth; ++level) {
        characters(gIndent, gIndentLength);
    }
}

void TavoSAX2Writer::LineEnd() {
    characters(gLineEnd, 1);
}

void TavoSAX2Writer::characters(XMLCh const* const chars, XMLSize_t const length) {
    writer.characters(chars, length);
}

void TavoSAX2Writer::endDocument() {
    writer.endDocument();
}

void TavoSAX2Writer::endElement(XMLCh const* const uri, XMLCh const* const localname,
                                XMLCh const* const qname) {
    writer.endElement(uri, localname, qname);
}

void TavoSAX2Writer::ignorableWhitespace(XMLCh const* const chars, XMLSize_t const length) {
    writer.ignorableWhitespace(chars, length);
}

void TavoSAX2Writer::processingInstruction(XMLCh const* const piTarget, XMLCh const* const data) {
    writer.processingInstruction(piTarget, data);
}

void TavoSAX2Writer::setDocumentLocator(Locator const* const locator) {
    writer.setDocumentLocator(locator);
}

void TavoSAX2Writer::startDocument() {
    writer.startDocument();
}

void TavoSAX2Writer::startElement(XMLCh const* const uri, XMLCh const* const localname,
                                  XMLCh const* const qname, Attributes const& attrs) {
    writer.startElement(uri, localname, qname, attrs);
}

void TavoSAX2Writer::startPrefixMapping(XMLCh const* const prefix, XMLCh const* const uri) {
    writer.startPrefixMapping(prefix, uri);
}

void TavoSAX2Writer::endPrefixMapping(XMLCh const* const prefix) {
    writer.endPrefixMapping(prefix);
}

void TavoSAX2Writer::skippedEntity(XMLCh const* const name) {
    writer.skippedEntity(name);
}

} // namespace TavoXML
