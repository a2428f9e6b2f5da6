// The document formatter: exact bytes for every encoding class, escaping per node kind, document types,
// entities, failing channels and deep trees.
#include "TavoXMLUtils/output/FormatXMLDoc.hpp"

#include "common/GoldenFile.hpp"
#include "common/TestData.hpp"
#include "common/TestText.hpp"

#include "TavoRoot/OChannel.hpp"
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"

#include <xercesc/dom/DOM.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using namespace xercesc;

struct Release {
    void operator()(DOMDocument* document) const { document->release(); }
};
using Document = std::unique_ptr<DOMDocument, Release>;

// Parses UTF-8 text; entity reference nodes are kept when asked.
Document Parse(std::string const& text, bool entityRefs = false) {
    Tavo::UniString message;
    Document document(ParseXMLDoc(reinterpret_cast<unsigned char const*>(text.data()),
                                  static_cast<unsigned int>(text.size()), AbstractDOMParser::Val_Never,
                                  entityRefs, Tavo::UniString("memory.xml"), nullptr, nullptr, &message));
    EXPECT_NE(document, nullptr) << TavoTest::Utf8(message);
    return document;
}

Document NewDocument(char16_t const* rootName = nullptr) {
    DOMImplementation* implementation = DOMImplementationRegistry::getDOMImplementation(u"Core");
    Document document(implementation->createDocument());
    if (rootName != nullptr) {
        document->appendChild(document->createElement(rootName));
    }
    return document;
}

unsigned short const* U(char16_t const* text) {
    return reinterpret_cast<unsigned short const*>(text);
}

struct Formatted {
    bool ok = false;
    std::string bytes;
};

Formatted Format(DOMNode const* node, char16_t const* encoding, bool force = true) {
    Tavo::MemoryOChannel channel;
    bool const ok = FormatXMLDoc(node, &channel, U(encoding), force);
    return {ok, channel.GetData()};
}

// What the UTF-8 formatter writes in front of every node.
std::string const gUTF8Head = "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

// The formatted bytes of `node` behind the UTF-8 mark and declaration, which must be there.
std::string BodyUTF8(DOMNode const* node) {
    Tavo::MemoryOChannel channel;
    EXPECT_TRUE(FormatXMLDocUTF8(node, &channel));
    std::string const& bytes = channel.GetData();
    EXPECT_EQ(bytes.substr(0, gUTF8Head.size()), gUTF8Head);
    return bytes.substr(std::min(bytes.size(), gUTF8Head.size()));
}

// Takes bytes until the write with the given number (counted from 1) and refuses that one and all
// later ones, recording whether anything was offered after the refusal.
class FailingChannel final : public Tavo::OChannel {
public:
    explicit FailingChannel(int failingWrite) : failingWrite(failingWrite) {}
    int WriteBin(char const* data, unsigned int count, unsigned int*) override {
        ++writes;
        if (writes >= failingWrite) {
            offeredAfterFailure |= writes > failingWrite;
            return 5;
        }
        received.append(data, count);
        return 0;
    }
    int failingWrite;
    int writes = 0;
    bool offeredAfterFailure = false;
    std::string received;
};

// One document with every node kind that a parse gives, characters of each range (Latin-1,
// beyond Latin-1, beyond the 16-bit plane) in names, text, attributes, comments, CDATA sections and
// processing instructions, and every escaped character.
std::string const gEveryKind =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE d\xC3\xA4oc [\n"
    "<!ENTITY ent \"entity text\">\n"
    "]>\n"
    "<!-- comment \xC3\xA4 \xC4\x80 \xE2\x82\xAC -->\n"
    "<d\xC3\xA4oc attr=\"q&quot;a'l&lt;g>t&#9;tab&#10;lf&amp;\" \xC4\x80name=\"v\xC4\x80\">\n"
    "<?pi data \xC4\x80?>\n"
    "<child>a&lt;b>c&amp;d x]]&gt;y \"q\" 'a' \xC3\xA4 \xC4\x80 \xF0\x9F\x98\x80</child>\n"
    "<![CDATA[cdata <&> \xC3\xA4 \xC4\x80]]>\n"
    "<empty/><emptyText></emptyText>\n"
    "&ent;\n"
    "</d\xC3\xA4oc>\n";

TEST(Formatter, EveryEncodingClassGivesItsExactBytes) {
    Document const document = Parse(gEveryKind, true);
    ASSERT_NE(document, nullptr);
    struct Case {
        char16_t const* encoding;
        char const* golden;
    };
    for (Case const& c : {Case{u"UTF-8", "output/every-kind-utf8.expected"},
                          Case{u"utf-16", "output/every-kind-utf16.expected"},
                          Case{u"UTF-16LE", "output/every-kind-utf16le.expected"},
                          Case{u"UTF-16BE", "output/every-kind-utf16be.expected"},
                          Case{u"ISO-8859-1", "output/every-kind-latin1.expected"},
                          Case{u"US-ASCII", "output/every-kind-ascii.expected"}}) {
        SCOPED_TRACE(c.golden);
        Formatted const result = Format(document.get(), c.encoding);
        EXPECT_TRUE(result.ok);
        TavoTest::ExpectGolden(result.bytes, c.golden);
    }
}

TEST(Formatter, MarkAndDeclarationByEncodingClass) {
    Document const empty = NewDocument();
    EXPECT_EQ(Format(empty.get(), u"UTF-8").bytes, gUTF8Head);
    EXPECT_EQ(Format(empty.get(), u"utf-8").bytes,
              "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");

    // Plain UTF-16 is written little-endian; each byte-ordered form is declared as plain UTF-16.
    std::string const utf16Decl("<\0?\0x\0m\0l\0 \0v\0e\0r\0s\0i\0o\0n\0=\0\"\0001\0.\0000\0\"\0 \0"
                                "e\0n\0c\0o\0d\0i\0n\0g\0=\0\"\0U\0T\0F\0-\0001\0006\0\"\0?\0>\0\n\0",
                                80);
    EXPECT_EQ(Format(empty.get(), u"utf-16").bytes, "\xFF\xFE" + utf16Decl);
    EXPECT_EQ(Format(empty.get(), u"UTF-16LE").bytes, "\xFF\xFE" + utf16Decl);
    std::string const bigEndian = Format(empty.get(), u"UTF-16BE").bytes;
    ASSERT_EQ(bigEndian.size(), 82u);
    EXPECT_EQ(bigEndian.substr(0, 4), std::string("\xFE\xFF\0<", 4));
    EXPECT_EQ(bigEndian.substr(bigEndian.size() - 2), std::string("\0\n", 2));

    // Any other encoding has no mark; the name is the transcoder's.
    EXPECT_EQ(Format(empty.get(), u"ISO-8859-1").bytes, "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n");
    EXPECT_EQ(Format(empty.get(), u"windows-1252").bytes,
              "<?xml version=\"1.0\" encoding=\"WINDOWS-1252\"?>\n");
}

TEST(Formatter, EncodingChoiceBetweenArgumentAndDocument) {
    Document const latin1 = Parse("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r>\xE4</r>");
    ASSERT_NE(latin1, nullptr);
    // Forced: the argument wins; FormatXMLDocUTF8 writes UTF-8 and says so.
    EXPECT_EQ(BodyUTF8(latin1.get()), "<r>\xC3\xA4</r>\n");
    // Not forced: the document's own encoding wins over the argument.
    Formatted const own = Format(latin1.get(), u"UTF-16", false);
    EXPECT_TRUE(own.ok);
    EXPECT_EQ(own.bytes, "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<r>\xE4</r>\n");
    // A node inside the document finds the document's encoding too.
    EXPECT_EQ(Format(latin1->getDocumentElement(), nullptr, true).bytes,
              "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<r>\xE4</r>");
    // Neither names one: UTF-8.
    Document const plain = NewDocument(u"r");
    EXPECT_EQ(Format(plain.get(), nullptr, false).bytes, gUTF8Head + "<r/>\n");
    EXPECT_EQ(Format(plain.get(), u"US-ASCII", false).bytes,
              "<?xml version=\"1.0\" encoding=\"US-ASCII\"?>\n<r/>\n");
}

TEST(Formatter, TextEscapesAmpersandLessThanAndTheEndOfCDATAMarker) {
    Document const document = NewDocument(u"r");
    DOMElement* root = document->getDocumentElement();
    root->appendChild(document->createTextNode(u"a<b>c&d \"q\" 'a' x]]>y ]>z ]] >w"));
    EXPECT_EQ(BodyUTF8(root), "<r>a&lt;b>c&amp;d \"q\" 'a' x]]&gt;y ]>z ]] >w</r>");

    // "]]>" split over two text nodes is caught, even with an element between their parents' texts.
    root->setTextContent(nullptr);
    root->appendChild(document->createTextNode(u"x]"));
    root->appendChild(document->createTextNode(u"]"));
    root->appendChild(document->createTextNode(u">y"));
    EXPECT_EQ(BodyUTF8(root), "<r>x]]&gt;y</r>");

    // An escape resets what came before: "]]&" then ">" is no marker; nor is a line feed in between.
    root->setTextContent(u"]]&>]]\n>");
    EXPECT_EQ(BodyUTF8(root), "<r>]]&amp;>]]\n></r>");
}

TEST(Formatter, AttributesEscapeQuotesAndLessThanAndKeepTabs) {
    Document const document = NewDocument(u"r");
    DOMElement* root = document->getDocumentElement();
    root->setAttribute(u"a", u"\"'<>&\tx\ny");
    root->setAttribute(u"b", u"");
    EXPECT_EQ(BodyUTF8(root), "<r a=\"&quot;&apos;&lt;>&amp;\tx\ny\" b=\"\"/>");

    // An attribute with children writes its texts escaped and its entity references as such; other
    // kinds of children are skipped.
    DOMAttr* attribute = document->createAttribute(u"c");
    attribute->appendChild(document->createTextNode(u"1<"));
    attribute->appendChild(document->createEntityReference(u"ent"));
    attribute->appendChild(document->createTextNode(u"\"2"));
    root->removeAttribute(u"a");
    root->removeAttribute(u"b");
    root->setAttributeNode(attribute);
    EXPECT_EQ(BodyUTF8(root), "<r c=\"1&lt;&ent;&quot;2\"/>");
}

TEST(Formatter, EveryNodeKindWritesItsOwnForm) {
    Document const document = NewDocument(u"r");
    DOMElement* root = document->getDocumentElement();
    root->appendChild(document->createElement(u"short"));
    DOMElement* withEmptyText = document->createElement(u"long");
    withEmptyText->appendChild(document->createTextNode(u""));
    root->appendChild(withEmptyText);
    root->appendChild(document->createCDATASection(u"<&>\n]]"));
    root->appendChild(document->createComment(u" <&> "));
    root->appendChild(document->createProcessingInstruction(u"pi", u""));
    root->appendChild(document->createProcessingInstruction(u"pi", u"a<b"));
    EXPECT_EQ(BodyUTF8(root), "<r><short/><long></long><![CDATA[<&>\n]]]]><!-- <&> --><?pi?><?pi a<b?></r>");

    // The document writes each child followed by a line end, and nothing of its own.
    document->insertBefore(document->createComment(u"c"), root);
    EXPECT_EQ(BodyUTF8(document.get()),
              "<!--c-->\n<r><short/><long></long><![CDATA[<&>\n]]]]><!-- <&> --><?pi?><?pi a<b?></r>\n");

    // Attributes, fragments and the empty document write nothing.
    root->setAttribute(u"x", u"1");
    EXPECT_EQ(BodyUTF8(root->getAttributeNode(u"x")), "");
    DOMDocumentFragment* fragment = document->createDocumentFragment();
    fragment->appendChild(document->createElement(u"f"));
    EXPECT_EQ(BodyUTF8(fragment), "");
}

TEST(Formatter, DocumentTypesEntitiesAndEntityReferences) {
    Document const internal = Parse("<!DOCTYPE r [<!ENTITY e \"<b>x</b>\">]><r>&e;</r>", true);
    ASSERT_NE(internal, nullptr);
    // The entity reference is written as such; its children are not.
    EXPECT_EQ(BodyUTF8(internal.get()), "<!DOCTYPE r[<!ENTITY e \"<b>x</b>\">]>\n<r>&e;</r>\n");

    // Identifiers, built rather than parsed: nothing is to be loaded.
    DOMImplementation* implementation = DOMImplementationRegistry::getDOMImplementation(u"Core");
    Document const publicAndSystem(implementation->createDocument(
        nullptr, u"r", implementation->createDocumentType(u"r", u"-//T//X", u"file:///t.dtd")));
    EXPECT_EQ(BodyUTF8(publicAndSystem.get()), "<!DOCTYPE r PUBLIC \"-//T//X\" \"file:///t.dtd\">\n<r/>\n");
    Document const systemOnly(implementation->createDocument(
        nullptr, u"r", implementation->createDocumentType(u"r", u"", u"file:///t.dtd")));
    EXPECT_EQ(BodyUTF8(systemOnly.get()), "<!DOCTYPE r SYSTEM \"file:///t.dtd\">\n<r/>\n");
    Document const publicOnly(implementation->createDocument(
        nullptr, u"r", implementation->createDocumentType(u"r", u"-//T//X", nullptr)));
    EXPECT_EQ(BodyUTF8(publicOnly.get()), "<!DOCTYPE r PUBLIC \"-//T//X\">\n<r/>\n");

    Document const bare = Parse("<!DOCTYPE r><r/>");
    ASSERT_NE(bare, nullptr);
    EXPECT_EQ(BodyUTF8(bare->getDoctype()), "<!DOCTYPE r>");

    // An entity node, written on its own: the parts follow each other without a blank.
    Document const entities = Parse("<!DOCTYPE r [<!NOTATION n SYSTEM \"file:///n\">"
                                    "<!ENTITY u PUBLIC \"-//P\" \"file:///u\" NDATA n>"
                                    "<!ENTITY s SYSTEM \"file:///s\">]><r/>");
    ASSERT_NE(entities, nullptr);
    DOMNamedNodeMap* declared = entities->getDoctype()->getEntities();
    EXPECT_EQ(BodyUTF8(declared->getNamedItem(u"u")),
              "<!ENTITY uPUBLIC \"-//P\"SYSTEM \"file:///u\"NDATA \"n\">\n");
    EXPECT_EQ(BodyUTF8(declared->getNamedItem(u"s")), "<!ENTITY sSYSTEM \"file:///s\">\n");
}

// Fuzzer findings: the internal subset is the text that the parser rebuilds from the declarations, and
// the formatter writes it as it stands, even where that text no longer says what the source said.
TEST(Formatter, InternalSubsetIsWrittenAsTheDOMGivesIt) {
    struct Case {
        char const* file;
        char const* expected;
    };
    for (Case const& c : {Case{"output/fuzz/subset-entity-quote.xml",
                               "<!DOCTYPE doc[\n<!ELEMENT doc (#PCDATA)>\n<!ENTITY e \"\"\">\n]>\n<doc/>\n"},
                          Case{"output/fuzz/subset-parameter-entity.xml",
                               "<!DOCTYPE doc[\n<!ELEMENT doc (#PCDATA)>\n<!ENTITY e \"<foo>\">\n<!ENTITY e "
                               "\"\">\n]>\n<doc>&e;</doc>\n"}}) {
        SCOPED_TRACE(c.file);
        Document const document = Parse(TavoTest::ReadFileBytes(TavoTest::DataPath(c.file)), true);
        ASSERT_NE(document, nullptr);
        EXPECT_EQ(BodyUTF8(document.get()), c.expected);
    }
}

TEST(Formatter, UnrepresentableCharactersBecomeReferencesEverywhere) {
    Document const document = NewDocument(u"r\u0100");
    DOMElement* root = document->getDocumentElement();
    root->setAttribute(u"\u00E4", u"\u0101");
    root->appendChild(document->createComment(u"\u0102"));
    root->appendChild(document->createCDATASection(u"\u0103\U0001F600"));
    root->appendChild(document->createTextNode(u"\u00E4\u20AC"));
    // A surrogate pair becomes one reference per unit.
    EXPECT_EQ(Format(root, u"ISO-8859-1").bytes,
              "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n"
              "<r&#x100; "
              "\xE4=\"&#x101;\"><!--&#x102;--><![CDATA[&#x103;&#xD83D;&#xDE00;]]>\xE4&#x20AC;</r&#x100;>");
    EXPECT_EQ(
        Format(root, u"US-ASCII").bytes,
        "<?xml version=\"1.0\" encoding=\"US-ASCII\"?>\n"
        "<r&#x100; "
        "&#xE4;=\"&#x101;\"><!--&#x102;--><![CDATA[&#x103;&#xD83D;&#xDE00;]]>&#xE4;&#x20AC;</r&#x100;>");
}

TEST(Formatter, FailuresGiveFalse) {
    Document const document = NewDocument(u"r");
    Tavo::MemoryOChannel channel;
    EXPECT_FALSE(FormatXMLDoc(document.get(), nullptr, U(u"UTF-8"), true));
    EXPECT_FALSE(FormatXMLDocUTF8(nullptr, &channel));
    EXPECT_FALSE(FormatXMLDoc(document.get(), &channel, U(u"no-such-encoding"), true));
    EXPECT_EQ(channel.GetData(), "");

    // A lone leading surrogate cannot be written in UTF-8: false, and what was written stays.
    document->getDocumentElement()->setTextContent(u"a\xD800");
    EXPECT_FALSE(FormatXMLDocUTF8(document.get(), &channel));
    EXPECT_EQ(channel.GetData(), gUTF8Head + "<r>a");
}

TEST(Formatter, ChannelFailingPartWayGetsNothingMoreAndGivesFalse) {
    // Enough text for many blocks, with escapes between them.
    std::u16string text;
    for (int i = 0; i < 5000; ++i) {
        text += u"0123456789&<\n";
    }
    Document const document = NewDocument(u"r");
    document->getDocumentElement()->setTextContent(text.c_str());
    Tavo::MemoryOChannel whole;
    ASSERT_TRUE(FormatXMLDocUTF8(document.get(), &whole));

    for (int failing : {1, 2, 7, 100}) {
        FailingChannel channel(failing);
        EXPECT_FALSE(FormatXMLDocUTF8(document.get(), &channel));
        EXPECT_EQ(channel.writes, failing) << "nothing is offered after the failed write";
        EXPECT_FALSE(channel.offeredAfterFailure);
        EXPECT_EQ(whole.GetData().substr(0, channel.received.size()), channel.received);
    }
}

TEST(Formatter, HundredThousandNestedElementsAreFormatted) {
    constexpr int gDepth = 100000;
    Document const document = NewDocument();
    DOMNode* parent = document.get();
    for (int i = 0; i < gDepth; ++i) {
        parent = parent->appendChild(document->createElement(u"e"));
    }
    parent->appendChild(document->createTextNode(u"<"));
    std::string expected;
    for (int i = 0; i < gDepth; ++i) {
        expected += "<e>";
    }
    expected += "&lt;";
    for (int i = 0; i < gDepth; ++i) {
        expected += "</e>";
    }
    EXPECT_EQ(BodyUTF8(document.get()), expected + "\n");
}

TEST(Formatter, EncodeReplacesTheFiveCharactersInItsOrder) {
    EXPECT_EQ(TavoTest::Utf8(TavoXML::Encode(Tavo::UniString("'"))), "&amp;apos;");
    EXPECT_EQ(TavoTest::Utf8(TavoXML::Encode(Tavo::UniString("\""))), "&amp;quot;");
    EXPECT_EQ(TavoTest::Utf8(TavoXML::Encode(Tavo::UniString("a<b"))), "a&lt;b");
    EXPECT_EQ(TavoTest::Utf8(TavoXML::Encode(Tavo::UniString("x>&y"))), "x&gt;&amp;y");
    EXPECT_EQ(TavoTest::Utf8(TavoXML::Encode(Tavo::UniString(""))), "");
    EXPECT_EQ(TavoTest::Utf8(TavoXML::Encode(TavoTest::FromUtf8("\xC3\xA4 plain"))), "\xC3\xA4 plain");
}

} // namespace
