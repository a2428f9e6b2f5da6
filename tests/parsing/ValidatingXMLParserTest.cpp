#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"
#include "ParsingTestSupport.hpp"

#include <gtest/gtest.h>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>

#include <filesystem>
#include <stdexcept>

using namespace ParsingTest;
using Parser = xercesc::AbstractDOMParser;

namespace {

Document ParseText(std::string const& text, Parser::ValSchemes scheme, NodeLocationInfo* line,
                   Tavo::UniString* message, Tavo::UniString const& name = "memory.xml") {
    return Document(ParseXMLDoc(reinterpret_cast<unsigned char const*>(text.data()),
                                static_cast<unsigned int>(text.size()), scheme, true, name, nullptr, line,
                                message));
}

// An input source whose stream fails with an exception that is not the parser's own.
class ThrowingSource : public xercesc::InputSource {
public:
    xercesc::BinInputStream* makeStream() const override { throw std::runtime_error("no stream"); }
};

} // namespace

TEST(ParseXMLDoc, WellFormedFromFileAndMemory) {
    NodeLocationInfo line{99};
    Tavo::UniString message("untouched");
    Document fromFile(
        ParseXMLDoc(DataLocation("wellformed.xml"), Parser::Val_Auto, true, nullptr, &line, &message));
    ASSERT_TRUE(fromFile);
    EXPECT_EQ(Utf8(fromFile->getDocumentElement()->getAttribute(u"id")), "7");
    EXPECT_EQ(line.lineNumber, 99u);
    EXPECT_EQ(Utf8(message), "untouched");

    // The memory name becomes the document's URI; a location gives its path.
    Document named = ParseText(ReadFile(DataPath("wellformed.xml")), Parser::Val_Auto, nullptr, nullptr);
    ASSERT_TRUE(named);
    EXPECT_EQ(Utf8(named->getDocumentURI()), "memory.xml");
    std::string const text = ReadFile(DataPath("wellformed.xml"));
    Document byLocation(ParseXMLDoc(reinterpret_cast<unsigned char const*>(text.data()),
                                    static_cast<unsigned int>(text.size()), Parser::Val_Auto, true,
                                    DataLocation("wellformed.xml")));
    ASSERT_TRUE(byLocation);
    // The parser turns a path used as name into a file URL.
    EXPECT_EQ(Utf8(byLocation->getDocumentURI()), "file://" + DataPath("wellformed.xml"));
}

TEST(ParseXMLDoc, FailuresGiveLineAndParserText) {
    NodeLocationInfo line;
    Tavo::UniString message;
    EXPECT_FALSE(ParseXMLDoc(DataLocation("broken.xml"), Parser::Val_Auto, true, nullptr, &line, &message));
    EXPECT_EQ(line.lineNumber, 4u);
    EXPECT_EQ(Utf8(message), "expected end of tag 'item'");

    line.lineNumber = 0;
    EXPECT_FALSE(ParseText(ReadFile(DataPath("broken.xml")), Parser::Val_Never, &line, &message));
    EXPECT_EQ(line.lineNumber, 4u);
    EXPECT_EQ(Utf8(message), "expected end of tag 'item'");

    // Without outputs a failure is only a null result.
    EXPECT_FALSE(ParseXMLDoc(DataLocation("broken.xml"), Parser::Val_Auto, true));
    EXPECT_FALSE(ParseText("<a>", Parser::Val_Auto, nullptr, nullptr));

    EXPECT_FALSE(ParseXMLDoc(DataLocation("empty.xml"), Parser::Val_Auto, true, nullptr, &line, &message));
    EXPECT_EQ(line.lineNumber, 1u);
    EXPECT_EQ(Utf8(message), "invalid document structure");

    message.Clear();
    EXPECT_FALSE(ParseXMLDoc(DataLocation("missing.xml"), Parser::Val_Auto, true, nullptr, &line, &message));
    EXPECT_NE(Utf8(message).find("missing.xml"), std::string::npos) << Utf8(message);

    ThrowingSource throwing;
    ValidatingXMLParser parser;
    line.lineNumber = 5;
    EXPECT_FALSE(parser.Parse(throwing, Parser::Val_Auto, true, nullptr, &line, &message));
    EXPECT_EQ(line.lineNumber, 0u);
    EXPECT_EQ(Utf8(message), "Failed to parse XML document");
}

TEST(ParseXMLDoc, DtdValidationStopsAtFirstErrorAndIgnoresWarnings) {
    NodeLocationInfo line;
    Tavo::UniString message;
    EXPECT_FALSE(
        ParseXMLDoc(DataLocation("dtd-invalid.xml"), Parser::Val_Always, true, nullptr, &line, &message));
    EXPECT_EQ(line.lineNumber, 3u);
    EXPECT_EQ(Utf8(message), "no declaration found for element 'box'");
    EXPECT_TRUE(Document(ParseXMLDoc(DataLocation("dtd-invalid.xml"), Parser::Val_Never, true)));
    EXPECT_TRUE(Document(ParseXMLDoc(DataLocation("dtd-valid.xml"), Parser::Val_Always, true)));

    // The document does raise warnings in a plain parser; the front-end drops them.
    struct WarningCounter : xercesc::HandlerBase {
        int warnings = 0;
        void warning(xercesc::SAXParseException const&) override { ++warnings; }
    } counter;
    xercesc::XercesDOMParser plain;
    plain.setValidationScheme(Parser::Val_Always);
    plain.setErrorHandler(&counter);
    plain.parse(DataPath("dtd-warnings.xml").c_str());
    ASSERT_GT(counter.warnings, 0);
    EXPECT_TRUE(Document(
        ParseXMLDoc(DataLocation("dtd-warnings.xml"), Parser::Val_Always, true, nullptr, &line, &message)));
}

TEST(ValidatingXMLParser, LoadedSchemaValidatesEveryLaterParseWithNamespaces) {
    // Without a schema namespaces are off: a prefix needs no declaration and stays in the name.
    Document prefixed = ParseText("<p:a/>", Parser::Val_Auto, nullptr, nullptr);
    ASSERT_TRUE(prefixed);
    EXPECT_EQ(Utf8(prefixed->getDocumentElement()->getNodeName()), "p:a");
    EXPECT_EQ(prefixed->getDocumentElement()->getNamespaceURI(), nullptr);

    ValidatingXMLParser parser;
    NodeLocationInfo line;
    Tavo::UniString message;
    EXPECT_FALSE(parser.LoadSchema(DataLocation("missing.xsd"), &line, &message));
    EXPECT_EQ(Utf8(message), "Could not open the XML Schema file.");
    EXPECT_EQ(line.lineNumber, 0u);
    EXPECT_FALSE(parser.GetParser().getDoSchema());
    EXPECT_EQ(parser.GetParser().getValidationScheme(), Parser::Val_Never);
    EXPECT_FALSE(parser.GetParser().getDoNamespaces());

    EXPECT_FALSE(parser.LoadSchema(DataLocation("order-broken.xsd"), &line, &message));
    EXPECT_EQ(line.lineNumber, 5u);
    EXPECT_FALSE(message.IsEmpty());

    ASSERT_TRUE(parser.LoadSchema(DataLocation("order.xsd"), &line, &message)) << Utf8(message);
    Document valid(parser.Parse(DataLocation("order-valid.xml"), Parser::Val_Never, true));
    ASSERT_TRUE(valid);
    EXPECT_EQ(Utf8(valid->getDocumentElement()->getNamespaceURI()), "urn:tavo:test:order");
    EXPECT_FALSE(
        parser.Parse(DataLocation("order-invalid.xml"), Parser::Val_Never, true, nullptr, &line, &message));
    EXPECT_EQ(line.lineNumber, 3u);
    EXPECT_NE(Utf8(message).find("price"), std::string::npos) << Utf8(message);
    // The grammar stays for later parses; an undeclared prefix is now an error.
    EXPECT_TRUE(Document(parser.Parse(DataLocation("order-valid.xml"), Parser::Val_Never, true)));
    std::string const undeclared = "<p:a/>";
    EXPECT_FALSE(parser.Parse(reinterpret_cast<unsigned char const*>(undeclared.data()), 6, Parser::Val_Never,
                              true, Tavo::UniString("m")));
}

TEST(ParseXMLDoc, ExternalEntitiesResolveWithoutBase) {
    // A relative system id is taken from the working directory, not from the document's folder.
    std::string const relative =
        std::filesystem::relative(DataPath("entity-text.ent"), std::filesystem::current_path()).string();
    std::string const text = "<!DOCTYPE d [<!ENTITY e SYSTEM \"" + relative + "\">]><d>&e;</d>";
    Tavo::UniString message;
    Document fromRelative = ParseText(text, Parser::Val_Never, nullptr, &message);
    ASSERT_TRUE(fromRelative) << Utf8(message) << " " << relative;
    EXPECT_EQ(Utf8(fromRelative->getDocumentElement()->getTextContent()), "Entity text from a file");

    Tavo::UniString url;
    DataLocation("entity-text.ent").ToURL(&url);
    Document fromURL = ParseText("<!DOCTYPE d [<!ENTITY e SYSTEM \"" + Utf8(url) + "\">]><d>&e;</d>",
                                 Parser::Val_Never, nullptr, nullptr);
    ASSERT_TRUE(fromURL);
    EXPECT_EQ(Utf8(fromURL->getDocumentElement()->getTextContent()), "Entity text from a file");

    NodeLocationInfo line;
    ASSERT_NE(std::filesystem::current_path(), std::filesystem::path(DataPath("")).parent_path());
    EXPECT_FALSE(
        ParseXMLDoc(DataLocation("entity-beside.xml"), Parser::Val_Never, true, nullptr, &line, &message));
    EXPECT_NE(Utf8(message).find("entity-text.ent"), std::string::npos) << Utf8(message);
}
