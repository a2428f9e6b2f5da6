#include "parsing/ParsingTestSupport.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <tuple>

using namespace ParsingTest;

TEST(ParseXMLDoc, WellFormedFromFileAndMemory) {
    NodeLocationInfo line{99};
    Tavo::UniString message("untouched");
    Document fromFile(
        ParseXMLDoc(DataLocation("wellformed.xml"), Parser::Val_Auto, true, nullptr, &line, &message));
    ASSERT_TRUE(fromFile);
    EXPECT_EQ(Utf8(fromFile->getDocumentElement()->getAttribute(u"id")), "7");
    EXPECT_EQ(line.lineNumber, 99u);
    EXPECT_EQ(Utf8(message), "untouched");
    // Warnings of a DTD-validating parse are not failures.
    EXPECT_TRUE(Document(ParseXMLDoc(DataLocation("dtd-warnings.xml"), Parser::Val_Always, true)));
    // The memory name becomes the document's URI.
    Document named = ParseText(ReadFileBytes(DataPath("wellformed.xml")), Parser::Val_Auto);
    ASSERT_TRUE(named);
    EXPECT_EQ(Utf8(named->getDocumentURI()), "memory.xml");
}

TEST(ParseXMLDoc, FailuresGiveLineAndParserText) {
    for (auto [file, scheme, lineNumber, text] :
         {std::tuple{"broken.xml", Parser::Val_Never, 4u, "expected end of tag 'item'"},
          std::tuple{"empty.xml", Parser::Val_Auto, 1u, "invalid document structure"},
          std::tuple{"dtd-invalid.xml", Parser::Val_Always, 3u, "no declaration found for element 'box'"}}) {
        SCOPED_TRACE(file);
        NodeLocationInfo line;
        Tavo::UniString message;
        EXPECT_FALSE(ParseXMLDoc(DataLocation(file), scheme, true, nullptr, &line, &message));
        EXPECT_EQ(line.lineNumber, lineNumber);
        EXPECT_EQ(Utf8(message), text);
        line.lineNumber = 0;
        message.Clear();
        EXPECT_FALSE(ParseText(ReadFileBytes(DataPath(file)), scheme, &line, &message));
        EXPECT_EQ(line.lineNumber, lineNumber);
        EXPECT_EQ(Utf8(message), text);
    }
    EXPECT_TRUE(Document(ParseXMLDoc(DataLocation("dtd-invalid.xml"), Parser::Val_Never, true)));
    NodeLocationInfo line;
    Tavo::UniString message;
    EXPECT_FALSE(ParseXMLDoc(DataLocation("missing.xml"), Parser::Val_Auto, true, nullptr, &line, &message));
    EXPECT_NE(Utf8(message).find("missing.xml"), std::string::npos) << Utf8(message);

    // A stream failing with an exception that is not the parser's own.
    struct : xercesc::InputSource {
        xercesc::BinInputStream* makeStream() const override { throw std::runtime_error("no stream"); }
    } throwing;
    ValidatingXMLParser parser;
    line.lineNumber = 5;
    EXPECT_FALSE(parser.Parse(throwing, Parser::Val_Auto, true, nullptr, &line, &message));
    EXPECT_EQ(line.lineNumber, 0u);
    EXPECT_EQ(Utf8(message), "Failed to parse XML document");
}

TEST(ValidatingXMLParser, LoadedSchemaValidatesEveryLaterParseWithNamespaces) {
    ValidatingXMLParser parser;
    std::string const undeclared = "<p:a/>";
    auto parsePrefixed = [&] {
        return Document(parser.Parse(reinterpret_cast<unsigned char const*>(undeclared.data()), 6,
                                     Parser::Val_Never, true, Tavo::UniString("m")));
    };
    // Without a schema namespaces are off: a prefix needs no declaration.
    EXPECT_TRUE(parsePrefixed());

    NodeLocationInfo line;
    Tavo::UniString message;
    EXPECT_FALSE(parser.LoadSchema(DataLocation("missing.xsd"), &line, &message));
    EXPECT_EQ(Utf8(message), "Could not open the XML Schema file.");
    EXPECT_EQ(line.lineNumber, 0u);
    EXPECT_FALSE(parser.LoadSchema(DataLocation("order-broken.xsd"), &line, &message));
    EXPECT_EQ(line.lineNumber, 5u);
    EXPECT_TRUE(parsePrefixed()) << "failed loads switch nothing on";

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

TEST(ValidatingXMLParser, ExternalEntitiesResolveWithoutBase) {
    // Allowed on a parser of its own: a relative system id is taken from the working directory, not from
    // the document's folder.
    ValidatingXMLParser parser;
    parser.AllowExternalGeneralEntities(true);
    Tavo::UniString url;
    DataLocation("entity-text.ent").ToURL(&url);
    std::string const relative =
        std::filesystem::relative(DataPath("entity-text.ent"), std::filesystem::current_path()).string();
    Tavo::UniString message;
    for (std::string const& id : {relative, Utf8(url)}) {
        std::string const text = "<!DOCTYPE d [<!ENTITY e SYSTEM \"" + id + "\">]><d>&e;</d>";
        Document document(parser.Parse(reinterpret_cast<unsigned char const*>(text.data()),
                                       static_cast<unsigned int>(text.size()), Parser::Val_Never, true,
                                       Tavo::UniString("memory.xml"), nullptr, nullptr, &message));
        ASSERT_TRUE(document) << Utf8(message) << " " << id;
        EXPECT_EQ(Utf8(document->getDocumentElement()->getTextContent()), "Entity text from a file");
    }
    ASSERT_NE(std::filesystem::current_path(), std::filesystem::path(DataPath("")).parent_path());
    EXPECT_FALSE(
        parser.Parse(DataLocation("entity-beside.xml"), Parser::Val_Never, true, nullptr, nullptr, &message));
    EXPECT_NE(Utf8(message).find("entity-text.ent"), std::string::npos) << Utf8(message);
}
