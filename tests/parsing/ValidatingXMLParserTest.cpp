#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"
#include "ParsingTestSupport.hpp"

#include <gtest/gtest.h>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>

#include <filesystem>
#include <stdexcept>

using namespace ParsingTest;
using Parser = xercesc::AbstractDOMParser;

namespace {

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

    // The memory name becomes the document's URI; a location used as name becomes a file URL.
    std::string const text = ReadFile(DataPath("wellformed.xml"));
    Document named = ParseText(text, Parser::Val_Auto);
    ASSERT_TRUE(named);
    EXPECT_EQ(Utf8(named->getDocumentURI()), "memory.xml");
    Document byLocation(ParseXMLDoc(reinterpret_cast<unsigned char const*>(text.data()),
                                    static_cast<unsigned int>(text.size()), Parser::Val_Auto, true,
                                    DataLocation("wellformed.xml")));
    ASSERT_TRUE(byLocation);
    EXPECT_EQ(Utf8(byLocation->getDocumentURI()), "file://" + DataPath("wellformed.xml"));
}

TEST(ParseXMLDoc, FailuresGiveLineAndParserText) {
    struct Case {
        char const* file;
        Parser::ValSchemes scheme;
        unsigned int line;
        char const* message;
    };
    Case const cases[] = {
        {"broken.xml", Parser::Val_Never, 4, "expected end of tag 'item'"},
        {"empty.xml", Parser::Val_Auto, 1, "invalid document structure"},
        {"dtd-invalid.xml", Parser::Val_Always, 3, "no declaration found for element 'box'"},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.file);
        NodeLocationInfo line;
        Tavo::UniString message;
        EXPECT_FALSE(ParseXMLDoc(DataLocation(c.file), c.scheme, true, nullptr, &line, &message));
        EXPECT_EQ(line.lineNumber, c.line);
        EXPECT_EQ(Utf8(message), c.message);
        line.lineNumber = 0;
        message.Clear();
        EXPECT_FALSE(ParseText(ReadFile(DataPath(c.file)), c.scheme, &line, &message));
        EXPECT_EQ(line.lineNumber, c.line);
        EXPECT_EQ(Utf8(message), c.message);
        // Without outputs a failure is only a null result.
        EXPECT_FALSE(ParseXMLDoc(DataLocation(c.file), c.scheme, true));
    }
    EXPECT_TRUE(Document(ParseXMLDoc(DataLocation("dtd-invalid.xml"), Parser::Val_Never, true)));

    NodeLocationInfo line;
    Tavo::UniString message;
    EXPECT_FALSE(ParseXMLDoc(DataLocation("missing.xml"), Parser::Val_Auto, true, nullptr, &line, &message));
    EXPECT_NE(Utf8(message).find("missing.xml"), std::string::npos) << Utf8(message);

    ThrowingSource throwing;
    ValidatingXMLParser parser;
    line.lineNumber = 5;
    EXPECT_FALSE(parser.Parse(throwing, Parser::Val_Auto, true, nullptr, &line, &message));
    EXPECT_EQ(line.lineNumber, 0u);
    EXPECT_EQ(Utf8(message), "Failed to parse XML document");
}

TEST(ParseXMLDoc, DtdValidationIgnoresWarnings) {
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
    EXPECT_TRUE(Document(ParseXMLDoc(DataLocation("dtd-warnings.xml"), Parser::Val_Always, true)));
}

TEST(ValidatingXMLParser, LoadedSchemaValidatesEveryLaterParseWithNamespaces) {
    ValidatingXMLParser parser;
    std::string const undeclared = "<p:a/>";
    auto parsePrefixed = [&] {
        return Document(parser.Parse(reinterpret_cast<unsigned char const*>(undeclared.data()), 6,
                                     Parser::Val_Never, true, Tavo::UniString("m")));
    };
    // Without a schema namespaces are off: a prefix needs no declaration and stays in the name.
    Document prefixed = parsePrefixed();
    ASSERT_TRUE(prefixed);
    EXPECT_EQ(Utf8(prefixed->getDocumentElement()->getNodeName()), "p:a");
    EXPECT_EQ(prefixed->getDocumentElement()->getNamespaceURI(), nullptr);

    NodeLocationInfo line;
    Tavo::UniString message;
    EXPECT_FALSE(parser.LoadSchema(DataLocation("missing.xsd"), &line, &message));
    EXPECT_EQ(Utf8(message), "Could not open the XML Schema file.");
    EXPECT_EQ(line.lineNumber, 0u);
    EXPECT_FALSE(parser.LoadSchema(DataLocation("order-broken.xsd"), &line, &message));
    EXPECT_EQ(line.lineNumber, 5u);
    EXPECT_FALSE(message.IsEmpty());
    // Failed loads switch nothing on.
    EXPECT_FALSE(parser.GetParser().getDoSchema());
    EXPECT_TRUE(parsePrefixed());

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
    EXPECT_FALSE(parsePrefixed());
}

TEST(ParseXMLDoc, ExternalEntitiesResolveWithoutBase) {
    // A relative system id is taken from the working directory, not from the document's folder.
    Tavo::UniString url;
    DataLocation("entity-text.ent").ToURL(&url);
    std::string const relative =
        std::filesystem::relative(DataPath("entity-text.ent"), std::filesystem::current_path()).string();
    Tavo::UniString message;
    for (std::string const& id : {relative, Utf8(url)}) {
        Document document = ParseText("<!DOCTYPE d [<!ENTITY e SYSTEM \"" + id + "\">]><d>&e;</d>",
                                      Parser::Val_Never, nullptr, &message);
        ASSERT_TRUE(document) << Utf8(message) << " " << id;
        EXPECT_EQ(Utf8(document->getDocumentElement()->getTextContent()), "Entity text from a file");
    }
    ASSERT_NE(std::filesystem::current_path(), std::filesystem::path(DataPath("")).parent_path());
    EXPECT_FALSE(
        ParseXMLDoc(DataLocation("entity-beside.xml"), Parser::Val_Never, true, nullptr, nullptr, &message));
    EXPECT_NE(Utf8(message).find("entity-text.ent"), std::string::npos) << Utf8(message);
}
