// The SAX writers: fed by real SAX2 and SAX1 parses, and event by event for the edge cases.
#include "TavoXMLUtils/output/SAX2Writer.hpp"
#include "TavoXMLUtils/output/SAXWriter.hpp"
#include "TavoXMLUtils/output/TavoSAX2Writer.hpp"

#include "common/GoldenFile.hpp"

#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLFormatter.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/TranscodingException.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using namespace xercesc;
using TavoXML::TavoSAX2Writer;

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

MemBufInputSource Source() {
    return MemBufInputSource(reinterpret_cast<XMLByte const*>(gDocument.data()), gDocument.size(), "sax.xml");
}

std::string ParseWithSAX2(bool expandNamespaces) {
    MemoryFormatter out;
    TavoXML::SAX2Writer writer(out.formatter, expandNamespaces);
    std::unique_ptr<SAX2XMLReader> reader(XMLReaderFactory::createXMLReader());
    reader->setFeature(XMLUni::fgSAX2CoreValidation, true);
    reader->setFeature(XMLUni::fgSAX2CoreNameSpaces, true);
    reader->setContentHandler(&writer);
    reader->parse(Source());
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
    parser.parse(Source());
    TavoTest::ExpectGolden(out.Bytes(), "output/sax1.expected");
}

// The parse goldens hold the UTF-8 declaration and show that the document events add nothing to it.
TEST(SAXWriters, DeclarationComesFromTheConstructorInTheFormattersEncodingAndMode) {
    MemoryFormatter latin1("ISO-8859-1");
    TavoXML::SAXWriter first(latin1.formatter);
    first.resetDocument();
    EXPECT_EQ(latin1.Bytes(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n");
    // Under the formatter's attribute escapes the declaration is escaped too.
    MemoryFormatter escaping("UTF-8", XMLFormatter::AttrEscapes);
    TavoXML::SAX2Writer expanded(escaping.formatter, true);
    EXPECT_EQ(escaping.Bytes(), "&lt;?xml version=&quot;1.0&quot; encoding=&quot;UTF-8&quot;?>&#xA;");
}

// The SAX1 writer shares these event writers; its own element and attribute code is covered by its parse.
TEST(SAXWriters, EventsByHand) {
    MemoryFormatter out;
    TavoXML::SAX2Writer expanded(out.formatter, true);
    TavoSAX2Writer::Attrs attributes; // attributes without a namespace, by local name alone
    attributes.Add(Tavo::UniString("plain"), Tavo::UniString("a\"<&'"));
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
    EXPECT_EQ(out.Bytes(), gDecl + "<l plain=\"a&quot;&lt;&amp;'\">\"x\" &lt;&amp;&gt; <&\n"
                                   "<?t?><?t d <?></l><urn:u:m plain=\"a&quot;&lt;&amp;'\"></urn:u:m>");
}

TEST(SAXWriters, FormatterExceptionsPassThrough) {
    MemoryFormatter out("US-ASCII", XMLFormatter::NoEscapes, XMLFormatter::UnRep_Fail);
    TavoXML::SAXWriter writer(out.formatter);
    EXPECT_THROW(writer.characters(u"\u00E9", 1), TranscodingException);
}

} // namespace
