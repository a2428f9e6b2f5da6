// The typed value readers: their messages with lines, the cursor after each read, and the conversions.
#include "reader/ReaderTestSupport.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>

using ReaderTest::Message;
using ReaderTest::Messages;
using ReaderTest::Open;
using ReaderTest::Token;
using ReaderTest::Utf8;

namespace {

constexpr char gDocument[] = "<root>\n"                                                             // 1
                             "<num>abc</num>\n"                                                     // 2
                             "<empty></empty>\n"                                                    // 3
                             "<nested><inner/></nested>\n"                                          // 4
                             "<item a=\"x\" n=\"bad\" b=\"TrUe\" c=\"300\" m=\"-1\" s=\" 12 \"/>\n" // 5
                             "<commented><!--c-->42</commented>\n"                                  // 6
                             "<text>abcd</text>\n"                                                  // 7
                             "<abc>abc</abc>\n"                                                     // 8
                             "<flag>YeS</flag>\n"                                                   // 9
                             "<y>y</y>\n"                                                           // 10
                             "<big>300</big>\n"                                                     // 11
                             "<cdata>lead<![CDATA[first]]><![CDATA[second]]></cdata>\n"             // 12
                             "<spaced> 17 </spaced>\n"                                              // 13
                             "<v Mv=\"3\" Sv=\"250\"/><half Mv=\"1\"/>\n"                           // 14
                             "<short>40000</short><long>-9000000000</long>\n"                       // 15
                             "</root>\n";

} // namespace

TEST(DOMReaderValues, MessageTableWithLines) {
    auto reader = Open(gDocument, "root");
    TavoXML::DOMReader& r = *reader;
    Tavo::UniString text("keep");
    int number = 7;

    EXPECT_EQ(r.ReadXML("missing", text), Tavo::GeneralError);
    EXPECT_EQ(Token(r), "S:root");
    EXPECT_EQ(r.ReadXML("num", number), Tavo::GeneralError);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(Token(r), "E:num");
    EXPECT_EQ(r.ReadXML("nested", text), Tavo::NoError);
    EXPECT_EQ(Utf8(text), "keep");
    EXPECT_EQ(Token(r), "E:nested");

    ASSERT_EQ(r.ReadStartElement("item"), Tavo::NoError);
    EXPECT_EQ(r.ReadXMLAttr("n", number), Tavo::GeneralError);
    EXPECT_EQ(r.ReadXMLAttr("zz", text), Tavo::GeneralError);
    EXPECT_FALSE(r.HasXMLAttr("zz"));
    EXPECT_TRUE(r.HasXMLAttr("n"));
    EXPECT_EQ(Token(r), "S:item");

    ASSERT_EQ(r.ReadEndElement("root"), Tavo::NoError);
    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    EXPECT_FALSE(r.HasXMLAttr("a"));

    EXPECT_EQ(Messages(r), (std::vector<Message>{
                               {"Start element for missing tag not found", 1},
                               {"Value should be number, but is not. In tag: num", 2},
                               {"Reading tag content failed. Tag name: nested", 4},
                               {"Attribute should be number, but is not. AttributeName: n", 5},
                               {"Missing Attribute: zz", 5},
                               {"Invalid Node Type: a", 0},
                           }));
    EXPECT_EQ(r.GetErrorStatus(), 0);
}

TEST(DOMReaderValues, TextsAndTheirEdges) {
    auto reader = Open(gDocument);
    TavoXML::DOMReader& r = *reader;
    Tavo::UniString text("x");
    EXPECT_EQ(r.ReadXML("empty", text), Tavo::NoError);
    EXPECT_TRUE(text.IsEmpty());
    int number = 1;
    EXPECT_EQ(r.ReadXML("empty", number), Tavo::GeneralError);
    // A comment as first child is what is read.
    EXPECT_EQ(r.ReadXML("commented", text), Tavo::NoError);
    EXPECT_EQ(Utf8(text), "c");
    EXPECT_EQ(r.ReadXML("spaced", number), Tavo::NoError);
    EXPECT_EQ(number, 17);

    short small = 3;
    EXPECT_EQ(r.ReadXML("short", small), Tavo::GeneralError);
    EXPECT_EQ(small, 3);
    long wide = 0;
    EXPECT_EQ(r.ReadXML("long", wide), Tavo::NoError);
    EXPECT_EQ(wide, -9000000000L);
    unsigned long unsignedWide = 5;
    EXPECT_EQ(r.ReadXML("long", unsignedWide), Tavo::GeneralError);
    EXPECT_EQ(unsignedWide, 5u);

    // Only the low 8 bits of a char are kept.
    char c = 0;
    unsigned char uc = 0;
    signed char sc = 0;
    EXPECT_EQ(r.ReadXML("big", c), Tavo::NoError);
    EXPECT_EQ(r.ReadXML("big", uc), Tavo::NoError);
    EXPECT_EQ(r.ReadXML("big", sc), Tavo::NoError);
    EXPECT_EQ(c, 44);
    EXPECT_EQ(uc, 44);
    EXPECT_EQ(sc, 44);
    EXPECT_EQ(r.ReadXML("num", c), Tavo::GeneralError);
    EXPECT_EQ(c, 44);
}

TEST(DOMReaderValues, BoolLiterals) {
    auto reader =
        Open("<r><a>FALSE</a><b>0</b><c>No</c><d>tRUE</d><e>1</e><f>YeS</f><y>y</y><g> true </g></r>");
    TavoXML::DOMReader& r = *reader;
    struct Case {
        char const* tag;
        bool expected;
    };
    for (Case const& c : {Case{"a", false}, Case{"b", false}, Case{"c", false}, Case{"d", true},
                          Case{"e", true}, Case{"f", true}}) {
        bool value = !c.expected;
        EXPECT_EQ(r.ReadXML(c.tag, value), Tavo::NoError) << c.tag;
        EXPECT_EQ(value, c.expected) << c.tag;
    }
    // A lone letter and a padded literal fail without a message and leave the value.
    for (char const* tag : {"y", "g"}) {
        bool value = true;
        EXPECT_EQ(r.ReadXML(tag, value), Tavo::GeneralError) << tag;
        EXPECT_TRUE(value);
    }
    EXPECT_EQ(r.GetNumberOfMessage(), 0);
}

TEST(DOMReaderValues, CharBuffers) {
    auto reader = Open(gDocument);
    TavoXML::DOMReader& r = *reader;
    char buffer[8];
    std::memset(buffer, '#', sizeof buffer);
    // Longer than the size: refused, buffer untouched.
    EXPECT_EQ(r.ReadXML("text", buffer, 3), Tavo::GeneralError);
    EXPECT_EQ(buffer[0], '#');
    // Exactly the size: three bytes, no terminator.
    EXPECT_EQ(r.ReadXML("abc", buffer, 3), Tavo::NoError);
    EXPECT_EQ(std::string(buffer, 4), "abc#");
    // Room to spare: terminated and zero-filled up to the size.
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(r.ReadXML("abc", buffer, 6), Tavo::NoError);
    EXPECT_EQ(std::string(buffer, 7), std::string("abc\0\0\0#", 7));
    // An empty text writes one terminator only.
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(r.ReadXML("empty", buffer, 4), Tavo::NoError);
    EXPECT_EQ(std::string(buffer, 2), std::string("\0#", 2));

    // Attributes have no length check: the text is cut to the size.
    ASSERT_EQ(r.ReadStartElement("item"), Tavo::NoError);
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(r.ReadXMLAttr("n", buffer, 2), Tavo::NoError);
    EXPECT_EQ(std::string(buffer, 3), "ba#");
    EXPECT_EQ(r.ReadXMLAttr("n", buffer, 5), Tavo::NoError);
    EXPECT_EQ(std::string(buffer, 6), std::string("bad\0\0#", 6));
    EXPECT_EQ(r.ReadXMLAttr("zz", buffer, 5), Tavo::GeneralError);
    EXPECT_EQ(buffer[0], 'b');
}

TEST(DOMReaderValues, AttributeConversions) {
    auto reader = Open(gDocument);
    TavoXML::DOMReader& r = *reader;
    ASSERT_EQ(r.ReadStartElement("item"), Tavo::NoError);
    bool flag = false;
    EXPECT_EQ(r.ReadXMLAttr("b", flag), Tavo::NoError);
    EXPECT_TRUE(flag);
    EXPECT_EQ(r.ReadXMLAttr("a", flag), Tavo::GeneralError);
    EXPECT_TRUE(flag);
    char c = 0;
    EXPECT_EQ(r.ReadXMLAttr("c", c), Tavo::NoError);
    EXPECT_EQ(c, 44);
    unsigned char uc = 0;
    signed char sc = 0;
    EXPECT_EQ(r.ReadXMLAttr("m", uc), Tavo::NoError);
    EXPECT_EQ(r.ReadXMLAttr("m", sc), Tavo::NoError);
    EXPECT_EQ(uc, 255);
    EXPECT_EQ(sc, -1);
    long long big = 0;
    EXPECT_EQ(r.ReadXMLAttr("s", big), Tavo::NoError);
    EXPECT_EQ(big, 12);
    unsigned int positive = 9;
    EXPECT_EQ(r.ReadXMLAttr("m", positive), Tavo::GeneralError);
    EXPECT_EQ(positive, 9u);
    EXPECT_EQ(Token(r), "S:item");
    EXPECT_EQ(r.GetNumberOfMessage(), 1);
}

TEST(DOMReaderValues, VersionAttributes) {
    auto reader = Open(gDocument);
    TavoXML::DOMReader& r = *reader;
    ASSERT_EQ(r.ReadStartElement("v"), Tavo::NoError);
    Tavo::ClassVersion version;
    EXPECT_EQ(r.ReadXMLVersionAttr(version), Tavo::NoError);
    EXPECT_EQ(version, Tavo::ClassVersion(3, 250));
    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    ASSERT_EQ(Token(r), "S:half");
    EXPECT_EQ(r.ReadXMLVersionAttr(version), Tavo::GeneralError);
    EXPECT_EQ(version, Tavo::ClassVersion(3, 250));
    EXPECT_EQ(Messages(r), (std::vector<Message>{{"Missing Attribute: Sv", 14}}));
}

TEST(DOMReaderValues, CDATASections) {
    auto reader = Open(gDocument);
    TavoXML::DOMReader& r = *reader;
    Tavo::UniString text("keep");
    // The root has element and text children but no section.
    EXPECT_EQ(r.ReadXMLCDATAString(text), Tavo::GeneralError);
    ASSERT_EQ(r.ReadStartElement("cdata"), Tavo::NoError);
    EXPECT_EQ(r.ReadXMLCDATAString(text), Tavo::NoError);
    EXPECT_EQ(Utf8(text), "first");
    EXPECT_EQ(Token(r), "S:cdata");
    char buffer[4];
    EXPECT_EQ(r.ReadXMLCDATAString(buffer, sizeof buffer), Tavo::NoError);
    EXPECT_STREQ(buffer, "fir");
    // No children at all.
    ASSERT_EQ(r.ReadStartElement("v"), Tavo::GeneralError);
    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    ASSERT_EQ(r.ReadStartElement("v"), Tavo::NoError);
    text = Tavo::UniString("keep");
    EXPECT_EQ(r.ReadXMLCDATAString(text), Tavo::GeneralError);
    EXPECT_EQ(Utf8(text), "keep");
    EXPECT_EQ(r.GetNumberOfMessage(), 0);
}

TEST(DOMReaderValues, Guids) {
    Tavo::Guid const guid = Tavo::Guid::Generate();
    std::string const xml = "<r a=\"" + Utf8(guid.ToUniString()) + "\"><g>" + Utf8(guid.ToUniString()) +
                            "</g><bad>not a guid</bad></r>";
    auto reader = Open(xml);
    Tavo::Guid read;
    EXPECT_EQ(reader->ReadXMLAttr("a", read), Tavo::NoError);
    EXPECT_EQ(read, guid);
    read = Tavo::Guid();
    EXPECT_EQ(reader->ReadXML("g", read), Tavo::NoError);
    EXPECT_EQ(read, guid);
    EXPECT_NE(reader->ReadXML("bad", read), Tavo::NoError);
    EXPECT_EQ(read, guid);
}

TEST(DOMReaderValues, ErrorStateRefusesEveryRead) {
    TavoXML::DOMReader reader(nullptr, nullptr);
    Tavo::UniString text;
    int number = 0;
    EXPECT_EQ(reader.ReadXMLCDATAString(text), Tavo::GeneralError);
    Tavo::ClassVersion version;
    EXPECT_EQ(reader.ReadXMLVersionAttr(version), Tavo::GeneralError);
    // Those two leave the status alone; the others set it.
    EXPECT_EQ(reader.GetErrorStatus(), 0);
    EXPECT_EQ(reader.ReadXML("a", number), Tavo::GeneralError);
    EXPECT_EQ(reader.GetErrorStatus(), 3);
    reader.ClearErrorStatus();
    EXPECT_EQ(reader.ReadXMLAttr("a", text), Tavo::GeneralError);
    EXPECT_EQ(reader.GetErrorStatus(), 3);
    reader.ClearErrorStatus();
    EXPECT_FALSE(reader.HasXMLAttr("a"));
    EXPECT_EQ(reader.GetErrorStatus(), 3);
    EXPECT_EQ(reader.GetNumberOfMessage(), 0);
}
