// The document formatter: exact bytes for every encoding class, escaping per node kind, document types,
// entities, failing channels and deep trees.
#include "TavoXMLUtils/output/FormatXMLDoc.hpp"

#include "RecordingChannel.hpp"
#include "common/GoldenFile.hpp"
#include "common/TestData.hpp"
#include "common/TestText.hpp"

#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"

#include <xercesc/dom/DOM.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

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

// The every-kind goldens hold each encoding class's mark and declaration; here the empty document gives the
// head alone, under the transcoder's own spelling of the name.
TEST(Formatter, MarkAndDeclarationByEncodingClass) {
    Document const empty = NewDocument();
    EXPECT_EQ(Format(empty.get(), u"utf-8").bytes, gUTF8Head);
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

// The every-kind goldens hold the plain escapes of text and attribute values; these are the edge cases.
TEST(Formatter, TextEscapesAmpersandLessThanAndTheEndOfCDATAMarker) {
    Document const document = NewDocument(u"r");
    DOMElement* root = document->getDocumentElement();
    // "]]>" split over two text nodes is caught, even with an element between their parents' texts.
    root->appendChild(document->createTextNode(u"x]"));
    root->appendChild(document->createTextNode(u"]"));
    root->appendChild(document->createTextNode(u">y"));
    EXPECT_EQ(BodyUTF8(root), "<r>x]]&gt;y</r>");
    // Near misses are no marker: an escape resets what came before, and so does any other character.
    root->setTextContent(u"]>z ]] >w ]]&>]]\n>");
    EXPECT_EQ(BodyUTF8(root), "<r>]>z ]] >w ]]&amp;>]]\n></r>");
}

TEST(Formatter, AttributesEscapeQuotesAndLessThanAndKeepTabs) {
    Document const document = NewDocument(u"r");
    DOMElement* root = document->getDocumentElement();
    root->setAttribute(u"b", u"\"'<>&\t");
    root->setAttribute(u"e", u"");
    // An attribute with children writes its texts escaped and its entity references as such; other
    // kinds of children are skipped.
    DOMAttr* attribute = document->createAttribute(u"c");
    attribute->appendChild(document->createTextNode(u"1<"));
    attribute->appendChild(document->createEntityReference(u"ent"));
    attribute->appendChild(document->createTextNode(u"\"2"));
    root->setAttributeNode(attribute);
    EXPECT_EQ(BodyUTF8(root), "<r b=\"&quot;&apos;&lt;>&amp;\t\" c=\"1&lt;&ent;&quot;2\" e=\"\"/>");
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
    std::string const element = "<r><short/><long></long><![CDATA[<&>\n]]]]><!-- <&> --><?pi?><?pi a<b?></r>";
    EXPECT_EQ(BodyUTF8(root), element);
    // The document writes each child followed by a line end, and nothing of its own.
    document->insertBefore(document->createComment(u"c"), root);
    EXPECT_EQ(BodyUTF8(document.get()), "<!--c-->\n" + element + "\n");
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
    struct Ids {
        char16_t const* publicId;
        char16_t const* systemId;
        char const* expected;
    };
    for (Ids const& c :
         {Ids{u"-//T//X", u"file:///t.dtd", "<!DOCTYPE r PUBLIC \"-//T//X\" \"file:///t.dtd\">\n<r/>\n"},
          Ids{u"", u"file:///t.dtd", "<!DOCTYPE r SYSTEM \"file:///t.dtd\">\n<r/>\n"},
          Ids{u"-//T//X", nullptr, "<!DOCTYPE r PUBLIC \"-//T//X\">\n<r/>\n"}}) {
        Document const built(implementation->createDocument(
            nullptr, u"r", implementation->createDocumentType(u"r", c.publicId, c.systemId)));
        EXPECT_EQ(BodyUTF8(built.get()), c.expected);
    }
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
    // A surrogate pair becomes one reference per unit; only the a-umlaut differs between the two.
    for (auto const& [encoding, umlaut] :
         {std::pair{u"ISO-8859-1", "\xE4"}, std::pair{u"US-ASCII", "&#xE4;"}}) {
        EXPECT_EQ(Format(root, encoding).bytes,
                  "<?xml version=\"1.0\" encoding=\"" + TavoTest::Utf8(Tavo::UniString(encoding)) +
                      "\"?>\n<r&#x100; " + umlaut +
                      "=\"&#x101;\"><!--&#x102;--><![CDATA[&#x103;&#xD83D;&#xDE00;]]>" + umlaut +
                      "&#x20AC;</r&#x100;>");
    }
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
        PlainChannel channel;
        channel.refuseAt = failing;
        EXPECT_FALSE(FormatXMLDocUTF8(document.get(), &channel));
        EXPECT_EQ(channel.attempts, failing) << "nothing is offered after the failed write";
        EXPECT_EQ(whole.GetData().substr(0, channel.bytes.size()), channel.bytes);
    }
}

TEST(Formatter, HundredThousandNestedElementsAreFormatted) {
    Document const document = NewDocument();
    DOMNode* parent = document.get();
    std::string open, close;
    for (int i = 0; i < 100000; ++i) {
        parent = parent->appendChild(document->createElement(u"e"));
        open += "<e>";
        close += "</e>";
    }
    parent->appendChild(document->createTextNode(u"<"));
    EXPECT_EQ(BodyUTF8(document.get()), open + "&lt;" + close + "\n");
}

TEST(Formatter, EncodeReplacesTheFiveCharactersInItsOrder) {
    for (auto const& [in, out] : {std::pair{"'", "&amp;apos;"}, std::pair{"\"", "&amp;quot;"},
                                  std::pair{"a<b", "a&lt;b"}, std::pair{"x>&y", "x&gt;&amp;y"},
                                  std::pair{"", ""}, std::pair{"\xC3\xA4 plain", "\xC3\xA4 plain"}}) {
        EXPECT_EQ(TavoTest::Utf8(TavoXML::Encode(TavoTest::FromUtf8(in))), out);
    }
}

} // namespace
