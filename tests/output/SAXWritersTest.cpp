// The SAX writers: fed by real SAX2 and SAX1 parses, and event by event for the edge cases.
#include "TavoXMLUtils/output/SAX2Writer.hpp"
#include "TavoXMLUtils/output/SAXWriter.hpp"

#include "common/GoldenFile.hpp"

#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLFormatter.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/TranscodingException.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace xercesc;

// A formatter writing into memory, in the given encoding and escape mode.
struct MemoryFormatter {
    explicit MemoryFormatter(char const* encoding = "UTF-8",
                             XMLFormatter::EscapeFlags escape = XMLFormatter::NoEscapes,
                             XMLFormatter::UnRepFlags unRep = XMLFormatter::UnRep_CharRef)
        : formatter(encoding, &target, escape, unRep) {}
    std::string Bytes() const {
        return std::string(reinterpret_cast<char const*>(target.getRawBuffer()), target.getLen());
    }
    MemBufFormatTarget target;
    XMLFormatter formatter;
};

// An attribute list given by hand: URI, local name, qualified name and value of each attribute.
class HandAttributes final : public Attributes {
public:
    struct Entry {
        char16_t const* uri;
        char16_t const* localName;
        char16_t const* qName;
        char16_t const* value;
    };
    explicit HandAttributes(std::vector<Entry> entries) : entries(std::move(entries)) {}
    XMLSize_t getLength() const override { return entries.size(); }
    XMLCh const* getURI(XMLSize_t index) const override { return entries[index].uri; }
    XMLCh const* getLocalName(XMLSize_t index) const override { return entries[index].localName; }
    XMLCh const* getQName(XMLSize_t index) const override { return entries[index].qName; }
    XMLCh const* getType(XMLSize_t) const override { return u"CDATA"; }
    XMLCh const* getValue(XMLSize_t index) const override { return entries[index].value; }
    bool getIndex(XMLCh const*, XMLCh const*, XMLSize_t&) const override { return false; }
    int getIndex(XMLCh const*, XMLCh const*) const override { return -1; }
    bool getIndex(XMLCh const*, XMLSize_t&) const override { return false; }
    int getIndex(XMLCh const*) const override { return -1; }
    XMLCh const* getType(XMLCh const*, XMLCh const*) const override { return nullptr; }
    XMLCh const* getType(XMLCh const*) const override { return nullptr; }
    XMLCh const* getValue(XMLCh const*, XMLCh const*) const override { return nullptr; }
    XMLCh const* getValue(XMLCh const*) const override { return nullptr; }

private:
    std::vector<Entry> entries;
};

// The SAX1 form: names and values.
class HandAttributeList final : public AttributeList {
public:
    explicit HandAttributeList(std::vector<std::pair<char16_t const*, char16_t const*>> entries)
        : entries(std::move(entries)) {}
    XMLSize_t getLength() const override { return entries.size(); }
    XMLCh const* getName(XMLSize_t index) const override { return entries[index].first; }
    XMLCh const* getType(XMLSize_t) const override { return u"CDATA"; }
    XMLCh const* getValue(XMLSize_t index) const override { return entries[index].second; }
    XMLCh const* getType(XMLCh const*) const override { return nullptr; }
    XMLCh const* getValue(XMLCh const*) const override { return nullptr; }
    XMLCh const* getValue(char const*) const override { return nullptr; }

private:
    std::vector<std::pair<char16_t const*, char16_t const*>> entries;
};

std::string const gDecl = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

// Namespaces, escapes, non-ASCII text, processing instructions with and without data, and white space
// that the DTD makes ignorable.
std::string const gDocument =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE p:root [\n"
    "<!ELEMENT p:root (child, empty)>\n"
    "<!ATTLIST p:root xmlns:p CDATA #FIXED 'urn:p' xmlns CDATA #FIXED 'urn:d'\n"
    "                 a CDATA #IMPLIED p:b CDATA #IMPLIED>\n"
    "<!ELEMENT child (#PCDATA)>\n"
    "<!ELEMENT empty EMPTY>\n"
    "]>\n"
    "<?top?>\n"
    "<p:root a=\"1&quot;&lt;&amp;'>\" p:b=\"x\">\n"
    "  <child>text \"q\" 'a' &amp; &lt; &gt; ]]&gt; \xC3\xA9<?pi some data?></child>\n"
    "  <empty/>\n"
    "</p:root>\n";

void ParseInto(SAX2XMLReader& reader) {
    MemBufInputSource source(reinterpret_cast<XMLByte const*>(gDocument.data()), gDocument.size(), "sax.xml");
    reader.parse(source);
}

std::string ParseWithSAX2(bool expandNamespaces) {
    MemoryFormatter out;
    TavoXML::SAX2Writer writer(out.formatter, expandNamespaces);
    std::unique_ptr<SAX2XMLReader> reader(XMLReaderFactory::createXMLReader());
    reader->setFeature(XMLUni::fgSAX2CoreValidation, true);
    reader->setFeature(XMLUni::fgSAX2CoreNameSpaces, true);
    reader->setContentHandler(&writer);
    ParseInto(*reader);
    return out.Bytes();
}

TEST(SAXWriters, SAX2ParseWritesQualifiedOrExpandedNames) {
    TavoTest::ExpectGolden(ParseWithSAX2(false), "output/sax2-qualified.expected");
    // Expanded: URI, colon and local name at both ends; an attribute without a namespace by its local
    // name alone; prefix mappings are not written.
    TavoTest::ExpectGolden(ParseWithSAX2(true), "output/sax2-expanded.expected");
}

TEST(SAXWriters, SAX1ParseWritesEveryEvent) {
    MemoryFormatter out;
    TavoXML::SAXWriter writer(out.formatter);
    SAXParser parser;
    parser.setValidationScheme(SAXParser::Val_Always);
    parser.setDocumentHandler(&writer);
    MemBufInputSource source(reinterpret_cast<XMLByte const*>(gDocument.data()), gDocument.size(), "sax.xml");
    parser.parse(source);
    TavoTest::ExpectGolden(out.Bytes(), "output/sax1.expected");
}

TEST(SAXWriters, DeclarationComesFromTheConstructorInTheFormattersEncodingAndMode) {
    {
        MemoryFormatter out;
        TavoXML::SAX2Writer writer(out.formatter, false);
        writer.startDocument();
        writer.endDocument();
        EXPECT_EQ(out.Bytes(), gDecl);
    }
    {
        MemoryFormatter out("ISO-8859-1");
        TavoXML::SAXWriter writer(out.formatter);
        writer.resetDocument();
        EXPECT_EQ(out.Bytes(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n");
    }
    {
        // Under the formatter's attribute escapes the declaration is escaped too.
        MemoryFormatter out("UTF-8", XMLFormatter::AttrEscapes);
        TavoXML::SAX2Writer writer(out.formatter, true);
        EXPECT_EQ(out.Bytes(), "&lt;?xml version=&quot;1.0&quot; encoding=&quot;UTF-8&quot;?>&#xA;");
    }
}

TEST(SAXWriters, EventsByHand) {
    MemoryFormatter out;
    TavoXML::SAX2Writer expanded(out.formatter, true);
    HandAttributes const attributes({{u"", u"plain", u"plain", u"a\"<&'"}, {u"urn:a", u"l", u"p:l", u">"}});
    std::size_t const mark = out.Bytes().size();
    // An empty URI gives the local name alone; null counts as empty.
    expanded.startElement(u"", u"l", u"q:l", attributes);
    expanded.characters(u"\"x\" <&>", 7);
    expanded.ignorableWhitespace(u" <&\n", 4);
    expanded.processingInstruction(u"t", nullptr);
    expanded.processingInstruction(u"t", u"d <");
    expanded.skippedEntity(u"e");
    expanded.startPrefixMapping(u"q", u"urn:q");
    expanded.endPrefixMapping(u"q");
    expanded.endElement(nullptr, u"l", u"q:l");
    expanded.startElement(u"urn:u", u"m", u"q:m", attributes);
    expanded.endElement(u"urn:u", u"m", u"q:m");
    EXPECT_EQ(out.Bytes().substr(mark),
              "<l plain=\"a&quot;&lt;&amp;'\" urn:a:l=\">\">\"x\" &lt;&amp;&gt; <&\n"
              "<?t?><?t d <?></l><urn:u:m plain=\"a&quot;&lt;&amp;'\" urn:a:l=\">\"></urn:u:m>");

    // Qualified names ignore the URIs.
    MemoryFormatter qualifiedOut;
    TavoXML::SAX2Writer qualified(qualifiedOut.formatter, false);
    qualified.startElement(u"urn:u", u"m", u"q:m", attributes);
    qualified.endElement(u"urn:u", u"m", u"q:m");
    EXPECT_EQ(qualifiedOut.Bytes(), gDecl + "<q:m plain=\"a&quot;&lt;&amp;'\" p:l=\">\"></q:m>");

    // The SAX1 writer: names as given, the same escapes.
    MemoryFormatter firstOut;
    TavoXML::SAXWriter first(firstOut.formatter);
    HandAttributeList list({{u"a", u"1\"<&'>"}, {u"b", u""}});
    first.startElement(u"e", list);
    first.characters(u"a\"<", 3);
    first.ignorableWhitespace(u"<&", 2);
    first.processingInstruction(u"t", nullptr);
    first.processingInstruction(u"t", u"");
    first.endElement(u"e");
    EXPECT_EQ(firstOut.Bytes(), gDecl + "<e a=\"1&quot;&lt;&amp;'>\" b=\"\">a\"&lt;<&<?t?><?t ?></e>");
}

TEST(SAXWriters, FormatterExceptionsPassThrough) {
    MemoryFormatter out("US-ASCII", XMLFormatter::NoEscapes, XMLFormatter::UnRep_Fail);
    TavoXML::SAXWriter writer(out.formatter);
    EXPECT_THROW(writer.characters(u"\u00E9", 1), TranscodingException);
}

} // namespace
