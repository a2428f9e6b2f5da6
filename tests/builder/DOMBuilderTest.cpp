// The DOMBuilder output channel: layout, values, refusals, the calls that used to do something else than
// they say (a text literal as a value, U+0000 inside a value, an export too large for the 32-bit length of
// the sinks), and the file it writes at destruction.
#include "TavoRoot/XMLOChannel.hpp"
#include "TavoXMLUtils/builder/TavoXMLDOMBuilder.hpp"
#include "TavoXMLUtils/builder/internal/ExportLength.hpp"
#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"
#include "Vesk/Location.hpp"
#include "common/TempFolder.hpp"
#include "common/TestData.hpp"

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

using TavoXML::DOMBuilder;

namespace {

constexpr char kDeclaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>";

// The UTF-8 export of the channel; also checks that the sink is called exactly once.
std::string Exported(DOMBuilder& channel, bool withDeclaration = true) {
    std::string text;
    int calls = 0;
    channel.Export(
        [&](char const* data, unsigned int length) {
            text.assign(data, length);
            ++calls;
        },
        withDeclaration);
    return calls == 1 ? text : "sink called " + std::to_string(calls) + " times";
}

TEST(DOMBuilderLayout, NestedDocumentIsLaidOutWithLineFeedsAndTabs) {
    DOMBuilder channel("root", true);
    EXPECT_EQ(channel.WriteStartDocument(), 0);
    channel.WriteStartElement("a");
    channel.WriteXMLAttr("k", 1);
    channel.WriteXML("b", 5);
    channel.WriteStartElement("empty"); // nothing inside: one line, no whitespace
    channel.WriteEndElement();
    channel.WriteStartElement("attrOnly"); // attributes do not count as content
    channel.WriteXMLAttr("x", Tavo::UniString("y"));
    channel.WriteEndElement();
    channel.WriteStartElement("c");
    channel.WriteComment(Tavo::UniString("only a comment")); // keeps the end tag on the comment's line
    channel.WriteEndElement();
    channel.WriteStartElement("d");
    channel.WriteXMLTextNode(Tavo::UniString("t"));
    channel.WriteEndElement();
    channel.WriteEndElement();
    EXPECT_EQ(channel.WriteEndDocument(), 0);
    std::string const body = "\n<root>\n"
                             "\t<a k=\"1\">\n"
                             "\t\t<b>5</b>\n"
                             "\t\t<empty/>\n"
                             "\t\t<attrOnly x=\"y\"/>\n"
                             "\t\t<c>\n\t\t\t<!--only a comment--></c>\n"
                             "\t\t<d>\n\t\t\tt\n\t\t</d>\n"
                             "\t</a>\n"
                             "</root>\n";
    EXPECT_EQ(Exported(channel), kDeclaration + body);
    EXPECT_EQ(Exported(channel), kDeclaration + body) << "export changes nothing";
    EXPECT_EQ(channel.Export(true), Tavo::UniString((kDeclaration + body).c_str(), TavoCharCodeUTF8));
}

TEST(DOMBuilderLayout, EmptyRootAndAutomaticTabsOff) {
    DOMBuilder empty("root", true);
    empty.WriteEndDocument();
    EXPECT_EQ(Exported(empty), std::string(kDeclaration) + "\n<root/>\n");
    DOMBuilder plain("root", false);
    plain.WriteStartElement("a");
    plain.WriteXML("b", 5);
    plain.WriteXMLTextNode(Tavo::UniString("t"));
    plain.WriteEndElement();
    plain.WriteEndDocument(); // adds only whitespace, so nothing here
    EXPECT_EQ(Exported(plain, false), "<root><a><b>5</b>t</a></root>");
    // Switched on midway, from the next write on.
    plain.SetAutoTabsHint(true);
    plain.WriteXML("n", 1);
    EXPECT_EQ(Exported(plain, false), "<root><a><b>5</b>t</a>\n\t<n>1</n></root>");
    // Line feed and tabs for any depth; "no depth" gives none.
    DOMBuilder tabs("root", true);
    xercesc::DOMElement const* root = tabs.GetDOMDocument()->getDocumentElement();
    for (auto [depth, count] : {std::pair{0xFFFFFFFFu, 0u}, {2u, 2u}, {300u, 300u}}) {
        tabs.WriteNewLineAndTabs(depth);
        EXPECT_EQ(std::u16string(root->getLastChild()->getNodeValue()), u"\n" + std::u16string(count, u'\t'));
    }
}

TEST(DOMBuilderLayout, DocumentWithoutTopLevelTagAndTheClosedRoot) {
    DOMBuilder channel(Tavo::XMLNoTopLevelTag, true);
    EXPECT_EQ(channel.WriteStartElement("top"), 0);
    channel.WriteXML("v", 1);
    EXPECT_EQ(channel.WriteEndElement(), 0);
    EXPECT_EQ(channel.GetActualNode(), channel.GetDOMDocument());
    EXPECT_EQ(channel.WriteStartElement("second"), Tavo::GeneralError);
    EXPECT_EQ(channel.WriteEndElement(), Tavo::GeneralError);
    EXPECT_EQ(channel.GetErrorStatus(), 0);
    channel.WriteEndDocument();
    EXPECT_EQ(Exported(channel), std::string(kDeclaration) + "\n<top>\n\t<v>1</v>\n</top>\n");
}

TEST(DOMBuilderValues, EveryValueTypeIsWrittenAsText) {
    DOMBuilder channel("root", false);
    channel.WriteXML("d", 2.5);
    channel.WriteXML("c", 'A'); // a char is a small number
    channel.WriteXML("n", static_cast<char>(-1));
    channel.WriteXML("u", static_cast<unsigned char>(255));
    channel.WriteXML("ull", 18446744073709551615ULL);
    channel.WriteXML("b", true);
    channel.WriteXML("t", "text", 0);
    channel.WriteXMLAttr("s", static_cast<signed char>(-5));
    channel.WriteXMLAttr("f", 0.25f);
    EXPECT_EQ(channel.WriteXMLVersionAttr(Tavo::ClassVersion(3, 5)), 0);
    EXPECT_EQ(Exported(channel, false),
              "<root Mv=\"3\" Sv=\"5\" f=\"0.25\" s=\"-5\"><d>2.5</d><c>65</c><n>-1</n><u>255</u>"
              "<ull>18446744073709551615</ull><b>true</b><t>text</t></root>");
    Tavo::Guid const guid = Tavo::Guid::Generate();
    Tavo::Guid back;
    channel.WriteXML("g", guid);
    xercesc::DOMElement const* root = channel.GetDOMDocument()->getDocumentElement();
    EXPECT_EQ(back.ConvertFromString(Tavo::UniString(root->getLastChild()->getTextContent())), 0);
    EXPECT_EQ(back, guid);
}

TEST(DOMBuilderValues, LineEndsAreNormalisedOnlyInElementValues) {
    DOMBuilder channel("root", false);
    Tavo::UniString const value(u"x\r\ny\rz");
    channel.WriteXML("on", value);
    channel.SetReplaceCR(false);
    channel.WriteXML("off", value);
    channel.SetReplaceCR(true);
    channel.WriteXMLAttr("attr", value);
    xercesc::DOMElement* root = channel.GetDOMDocument()->getDocumentElement();
    EXPECT_EQ(std::u16string(root->getFirstChild()->getTextContent()), u"x\ny\nz");
    EXPECT_EQ(std::u16string(root->getLastChild()->getTextContent()), u"x\r\ny\rz");
    EXPECT_EQ(std::u16string(root->getAttribute(u"attr")), u"x\r\ny\rz");
}

TEST(DOMBuilderValues, RefusedNamesAndValues) {
    DOMBuilder channel("root", false);
    std::string const before = Exported(channel);
    EXPECT_EQ(channel.WriteXML("a b", 1), 2);
    EXPECT_EQ(Exported(channel), before) << "a refused name leaves no trace";
    EXPECT_EQ(channel.GetNumberOfMessage(), 0);
    EXPECT_THROW(channel.WriteXML("1bad", 1), xercesc::DOMException);
    EXPECT_THROW(channel.WriteStartElement(""), xercesc::DOMException);
    // Invalid characters leave an empty element and a message.
    EXPECT_EQ(channel.WriteXML("bad", Tavo::UniString(u"a\uFFFFb")), Tavo::GeneralError);
    EXPECT_EQ(channel.WriteXML("good", Tavo::UniString(u"\u00E4\t\n\u0085")), 0);
    EXPECT_EQ(channel.GetErrorStatus(), 0);
    ASSERT_EQ(channel.GetNumberOfMessage(), 1);
    Tavo::UniString text;
    int line = 0;
    channel.GetMessage(0, text, line);
    EXPECT_EQ(text, Tavo::UniString("Content of bad contains invalid characters"));
    EXPECT_EQ(line, 1);
    channel.GetMessage(-1, text, line); // out of range as unsigned: out-arguments untouched
    channel.GetMessage(1, text, line);
    EXPECT_EQ(text, Tavo::UniString("Content of bad contains invalid characters"));
    xercesc::DOMNode* bad = channel.GetDOMDocument()->getDocumentElement()->getFirstChild();
    EXPECT_EQ(std::u16string(bad->getNodeName()), u"bad");
    EXPECT_FALSE(bad->hasChildNodes());
    EXPECT_EQ(channel.WriteXML("ctrl", Tavo::UniString(u"a\u0001b")), Tavo::GeneralError)
        << "restricted in XML 1.1";
    EXPECT_EQ(channel.GetNumberOfMessage(), 2);
    EXPECT_EQ(channel.WriteXML("empty", Tavo::UniString("")), 0);
    EXPECT_NE(Exported(channel, false).find("<empty/></root>"), std::string::npos);
}

TEST(DOMBuilderValues, SerialiserEscapesAndWritesUtf8) {
    DOMBuilder channel("root", false);
    Tavo::UniString const nonAscii("Zürich – Ærø €", TavoCharCodeUTF8);
    channel.WriteXMLAttr("q", Tavo::UniString("say \"hi\" & <go>"));
    channel.WriteXML("v", Tavo::UniString("a<b & c>d"));
    channel.WriteXML("u", nonAscii);
    channel.WriteXMLCDATAString(Tavo::UniString("raw ]]> text"));
    std::string const text = Exported(channel, false);
    EXPECT_EQ(text.substr(0, text.find("<![CDATA[")),
              "<root q=\"say &quot;hi&quot; &amp; &lt;go>\"><v>a&lt;b &amp; c&gt;d</v>"
              "<u>Z\xC3\xBCrich \xE2\x80\x93 \xC3\x86r\xC3\xB8 \xE2\x82\xAC</u>");
    // One CDATA node holding the text unchanged; how "]]>" is split in the text is the serialiser's affair.
    xercesc::DOMNode* cdata = channel.GetDOMDocument()->getDocumentElement()->getLastChild();
    EXPECT_EQ(cdata->getNodeType(), xercesc::DOMNode::CDATA_SECTION_NODE);
    EXPECT_EQ(std::u16string(cdata->getNodeValue()), u"raw ]]> text");
}

// Every numeric and inherited write ends in one virtual call of the string overload of its family, so
// a subclass that overrides the funnel sees each value.
TEST(DOMBuilderValues, NumericWritesReachTheOverriddenFunnel) {
    struct Recording : DOMBuilder {
        Recording() : DOMBuilder("root", false) {}
        std::vector<std::string> seen;
        int WriteXML(char const* name, Tavo::UniString const& value) override {
            seen.push_back(std::string(name) + "=" + value.ToCStr().Get());
            return 9;
        }
        int WriteXMLAttr(char const* name, Tavo::UniString const& value) override {
            seen.push_back(std::string("@") + name + "=" + value.ToCStr().Get());
            return 8;
        }
        using DOMBuilder::WriteXML;
        using DOMBuilder::WriteXMLAttr;
    } channel;
    EXPECT_EQ(channel.WriteXML("d", 0.1), 9);
    EXPECT_EQ(channel.WriteXML("l", -7L), 9);
    EXPECT_EQ(channel.WriteXML("c", 'A'), 9);
    EXPECT_EQ(channel.WriteXMLAttr("u", 65535u), 8);
    EXPECT_EQ(channel.WriteXMLVersionAttr(Tavo::ClassVersion(3, 5)), 8);
    EXPECT_EQ(channel.seen, (std::vector<std::string>{"d=0.1", "l=-7", "c=65", "@u=65535", "@Mv=3"}))
        << "a failed Mv stops before Sv";
}

// The message texts of the channel, one per line.
std::string MessagesOf(DOMBuilder& channel) {
    std::string all;
    for (int i = 0; i < channel.GetNumberOfMessage(); ++i) {
        Tavo::UniString text;
        int line = 0;
        channel.GetMessage(i, text, line);
        all += Tavo::ToUTF8String(text) + "\n";
    }
    return all;
}

TEST(DOMBuilderTraps, TextLiteralsAreWrittenAsTextNotAsBool) {
    DOMBuilder channel("root", false);
    Tavo::XMLOChannel& base = channel;
    EXPECT_EQ(base.WriteXML("Title", "Hello \x80"), Tavo::NoError);
    EXPECT_EQ(channel.WriteXML("Empty", static_cast<char const*>(nullptr)), Tavo::NoError);
    EXPECT_EQ(base.WriteStartElement("e"), Tavo::NoError);
    EXPECT_EQ(base.WriteXMLAttr("k", "v&"), Tavo::NoError);
    EXPECT_EQ(base.WriteXMLTextNode("x"), Tavo::NoError);
    EXPECT_EQ(channel.WriteXMLTextNode("y"), Tavo::NoError);
    base.WriteEndElement();
    // bool still means bool.
    EXPECT_EQ(base.WriteXML("Flag", true), Tavo::NoError);
    EXPECT_EQ(
        Exported(channel, false),
        "<root><Title>Hello \xE2\x82\xAC</Title><Empty/><e k=\"v&amp;\">xy</e><Flag>true</Flag></root>");
}

TEST(DOMBuilderTraps, NulInsideAValueIsRefusedNotCut) {
    DOMBuilder channel("root", false);
    Tavo::UniString const withNul(u"a\0b", 3);
    EXPECT_EQ(channel.WriteXML("v", withNul), Tavo::GeneralError);
    EXPECT_EQ(MessagesOf(channel), "Content of v contains invalid characters\n");
    // As for any refused character, the element stays, empty.
    EXPECT_EQ(Exported(channel, false), "<root><v/></root>");
    // The writers without a value check refuse it without touching the document.
    channel.WriteStartElement("e");
    std::string const before = Exported(channel, false);
    EXPECT_EQ(channel.WriteXMLAttr("k", withNul), Tavo::GeneralError);
    EXPECT_EQ(channel.WriteXMLTextNode(withNul), Tavo::GeneralError);
    EXPECT_EQ(channel.WriteXMLCDATAString(withNul), Tavo::GeneralError);
    EXPECT_EQ(Exported(channel, false), before);
    EXPECT_EQ(channel.GetNumberOfMessage(), 1);
    // What stands before the refused one is still written whole.
    EXPECT_EQ(channel.WriteXML("w", Tavo::UniString(u"ab")), Tavo::NoError);
}

TEST(DOMBuilderTraps, ExportOfFourGiBOrMoreIsRefused) {
    EXPECT_EQ(TavoXML::detail::ExportLength(0), 0u);
    EXPECT_EQ(TavoXML::detail::ExportLength(0xFFFFFFFFull), 0xFFFFFFFFu);
    try {
        TavoXML::detail::ExportLength(0x100000000ull);
        FAIL() << "no exception";
    } catch (TavoXML::DOMBuilderException const& refused) {
        EXPECT_EQ(Tavo::ToUTF8String(refused.GetMessage()),
                  "Document too large to export: 4294967296 bytes, the limit is 4294967295");
        EXPECT_EQ(refused.GetErrorCode(), Tavo::GeneralError);
    }
}

// A private folder, which is also the temporary folder (TMPDIR) while a test runs.
class FileTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directories(folder);
        setenv("TMPDIR", folder.c_str(), 1);
    }
    void TearDown() override { setenv("TMPDIR", TavoTest::TestTempFolder().c_str(), 1); }
    Vesk::Location LocationOf(char const* name) const { return Vesk::Location((folder / name).c_str()); }
    static std::string Read(std::filesystem::path const& path) {
        return TavoTest::ReadFileBytes(path.string());
    }
    std::filesystem::path const folder =
        TavoTest::TestTempFolder() / ::testing::UnitTest::GetInstance()->current_test_info()->name();
};

TEST_F(FileTest, DestructionReplacesTheFileWithTheDocumentAsItStands) {
    std::ofstream(folder / "out.xml") << "an old and much longer content that must disappear entirely";
    {
        DOMBuilder channel(LocationOf("out.xml"), "root", true);
        channel.WriteStartElement("open"); // never closed, no WriteEndDocument
        channel.WriteXML("v", Tavo::UniString("\xC3\xA4", TavoCharCodeUTF8));
        EXPECT_EQ(Read(folder / "out.xml").substr(0, 6), "an old") << "nothing is written before destruction";
    }
    EXPECT_EQ(Read(folder / "out.xml"),
              kDeclaration + std::string("\n<root>\n\t<open>\n\t\t<v>\xC3\xA4</v></open></root>"));
}

TEST_F(FileTest, EmptyLocationWritesAScratchFileAndMemoryChannelsNothing) {
    { DOMBuilder memoryOnly("root", true); }
    EXPECT_TRUE(std::filesystem::is_empty(folder));
    {
        DOMBuilder channel(Vesk::Location(), Tavo::XMLNoTopLevelTag, true);
        channel.WriteStartElement("scratch");
        channel.WriteEndElement();
    }
    int files = 0;
    for (auto const& entry : std::filesystem::directory_iterator(folder)) {
        EXPECT_EQ(entry.path().filename().string().rfind("Scratch_", 0), 0u) << entry.path();
        EXPECT_EQ(entry.path().extension(), ".xml");
        EXPECT_EQ(Read(entry.path()), kDeclaration + std::string("\n<scratch/>"));
        ++files;
    }
    EXPECT_EQ(files, 1);
}

TEST_F(FileTest, AttachedDocumentIsWrittenOnlyWhenOwned) {
    using namespace xercesc;
    Tavo::UniString url;
    LocationOf("attached.xml").ToURL(&url);
    DOMImplementation* const implementation = DOMImplementation::getImplementation();
    DOMDocument* foreign = implementation->createDocument();
    foreign->setDocumentURI(url.GetU16Str());
    {
        // A null element on a document without root: the first element becomes the root.
        DOMBuilder channel(foreign, nullptr, DOMBuilder::DoNotOwnDocument, 0);
        channel.WriteStartElement("top");
        channel.WriteStartElement("inner");
        channel.WriteXML("v", 2);
        channel.WriteEndElement();
        EXPECT_EQ(Exported(channel, false), "\n<top>\n\t<inner>\n\t\t<v>2</v>\n\t</inner></top>");
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << "a foreign document is neither written nor released";
    foreign->release();
    DOMDocument* owned = implementation->createDocument(nullptr, u"doc", nullptr); // released by the channel
    owned->setDocumentURI(url.GetU16Str());
    {
        DOMBuilder(owned, owned->getDocumentElement(), static_cast<DOMBuilder::OwnershipType>(1), 1)
            .WriteXML("v", 2);
    }
    EXPECT_EQ(Read(folder / "attached.xml"), kDeclaration + std::string("<doc>\n\t<v>2</v></doc>"));
}

} // namespace
