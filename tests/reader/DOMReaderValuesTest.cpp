// The typed value readers: their messages with lines, the cursor after each read, and the conversions.
#include "reader/ReaderTestSupport.hpp"

#include <gtest/gtest.h>

#include <cstring>

using ReaderTest::After;
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

    EXPECT_EQ(After(r.ReadXML("missing", text), r), "fail S:root");
    EXPECT_EQ(After(r.ReadXML("num", number), r), "fail E:num");
    EXPECT_EQ(number, 7);
    EXPECT_EQ(After(r.ReadXML("nested", text), r), "ok E:nested");
    EXPECT_EQ(Utf8(text), "keep");

    ASSERT_EQ(r.ReadStartElement("item"), Tavo::NoError);
    EXPECT_EQ(r.ReadXMLAttr("n", number), Tavo::GeneralError);
    EXPECT_EQ(After(r.ReadXMLAttr("zz", text), r), "fail S:item");
    EXPECT_FALSE(r.HasXMLAttr("zz"));
    EXPECT_TRUE(r.HasXMLAttr("n"));

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

TEST(DOMReaderValues, TextsAndNumbersAtTheirEdges) {
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

    // Out of range: refused, the value kept.
    short small = 3;
    unsigned long unsignedWide = 5;
    EXPECT_EQ(r.ReadXML("short", small), Tavo::GeneralError);
    EXPECT_EQ(r.ReadXML("long", unsignedWide), Tavo::GeneralError);
    EXPECT_EQ(small, 3);
    EXPECT_EQ(unsignedWide, 5u);
    long wide = 0;
    EXPECT_EQ(r.ReadXML("long", wide), Tavo::NoError);
    EXPECT_EQ(wide, -9000000000L);

    // Only the low 8 bits of a char are kept.
    char c = 0;
    unsigned char uc = 0;
    signed char sc = 0;
    EXPECT_EQ(r.ReadXML("big", c) | r.ReadXML("big", uc) | r.ReadXML("big", sc), Tavo::NoError);
    EXPECT_EQ(c, 44);
    EXPECT_EQ(uc, 44);
    EXPECT_EQ(sc, 44);
    EXPECT_EQ(r.ReadXML("num", c), Tavo::GeneralError);
    EXPECT_EQ(c, 44);

    // Guids, from an element and an attribute.
    Tavo::Guid const guid = Tavo::Guid::Generate();
    std::string const written = Utf8(guid.ToUniString());
    auto guids = Open("<r a=\"" + written + "\"><g>" + written + "</g><bad>not a guid</bad></r>");
    Tavo::Guid read;
    EXPECT_EQ(guids->ReadXMLAttr("a", read), Tavo::NoError);
    EXPECT_EQ(read, guid);
    read = Tavo::Guid();
    EXPECT_EQ(guids->ReadXML("g", read), Tavo::NoError);
    EXPECT_EQ(read, guid);
    EXPECT_NE(guids->ReadXML("bad", read), Tavo::NoError);
    EXPECT_EQ(read, guid);
}

TEST(DOMReaderValues, BoolLiterals) {
    auto reader =
        Open("<r><a>FALSE</a><b>0</b><c>No</c><d>tRUE</d><e>1</e><f>YeS</f><y>y</y><g> true </g></r>");
    // A lone letter and a padded literal fail without a message and leave the value.
    struct Case {
        char const* tag;
        int status;
        bool expected;
    };
    for (Case const& c :
         {Case{"a", Tavo::NoError, false}, Case{"b", Tavo::NoError, false}, Case{"c", Tavo::NoError, false},
          Case{"d", Tavo::NoError, true}, Case{"e", Tavo::NoError, true}, Case{"f", Tavo::NoError, true},
          Case{"y", Tavo::GeneralError, true}, Case{"g", Tavo::GeneralError, true}}) {
        SCOPED_TRACE(c.tag);
        bool value = c.status == Tavo::NoError ? !c.expected : c.expected;
        EXPECT_EQ(reader->ReadXML(c.tag, value), c.status);
        EXPECT_EQ(value, c.expected);
    }
    EXPECT_EQ(reader->GetNumberOfMessage(), 0);
}

TEST(DOMReaderValues, CharBuffers) {
    auto reader = Open(gDocument);
    TavoXML::DOMReader& r = *reader;
    char buffer[8];
    auto read = [&](int status, std::size_t shown) {
        return (status == Tavo::NoError ? "ok " : "fail ") + std::string(buffer, shown);
    };
    std::memset(buffer, '#', sizeof buffer);
    // Longer than the size: refused, buffer untouched.
    EXPECT_EQ(read(r.ReadXML("text", buffer, 3), 1), "fail #");
    // Exactly the size: three bytes, no terminator.
    EXPECT_EQ(read(r.ReadXML("abc", buffer, 3), 4), "ok abc#");
    // Room to spare: terminated and zero-filled up to the size.
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(read(r.ReadXML("abc", buffer, 6), 7), std::string("ok abc\0\0\0#", 10));
    // An empty text writes one terminator only.
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(read(r.ReadXML("empty", buffer, 4), 2), std::string("ok \0#", 5));

    // Attributes have no length check: the text is cut to the size.
    ASSERT_EQ(r.ReadStartElement("item"), Tavo::NoError);
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(read(r.ReadXMLAttr("n", buffer, 2), 3), "ok ba#");
    EXPECT_EQ(read(r.ReadXMLAttr("n", buffer, 5), 6), std::string("ok bad\0\0#", 9));
    EXPECT_EQ(read(r.ReadXMLAttr("zz", buffer, 5), 1), "fail b");
}

TEST(DOMReaderValues, AttributeConversionsAndVersions) {
    auto reader = Open(gDocument);
    TavoXML::DOMReader& r = *reader;
    ASSERT_EQ(r.ReadStartElement("item"), Tavo::NoError);
    bool flag = false;
    EXPECT_EQ(r.ReadXMLAttr("b", flag), Tavo::NoError);
    EXPECT_TRUE(flag);
    EXPECT_EQ(r.ReadXMLAttr("a", flag), Tavo::GeneralError);
    EXPECT_TRUE(flag);
    char c = 0;
    unsigned char uc = 0;
    signed char sc = 0;
    long long big = 0;
    EXPECT_EQ(r.ReadXMLAttr("c", c) | r.ReadXMLAttr("m", uc) | r.ReadXMLAttr("m", sc) |
                  r.ReadXMLAttr("s", big),
              Tavo::NoError);
    EXPECT_EQ(c, 44);
    EXPECT_EQ(uc, 255);
    EXPECT_EQ(sc, -1);
    EXPECT_EQ(big, 12);
    unsigned int positive = 9;
    EXPECT_EQ(After(r.ReadXMLAttr("m", positive), r), "fail S:item");
    EXPECT_EQ(positive, 9u);
    EXPECT_EQ(r.GetNumberOfMessage(), 1);

    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    ASSERT_EQ(r.ReadStartElement("v"), Tavo::NoError);
    Tavo::ClassVersion version;
    EXPECT_EQ(r.ReadXMLVersionAttr(version), Tavo::NoError);
    EXPECT_EQ(version, Tavo::ClassVersion(3, 250));
    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    EXPECT_EQ(After(r.ReadToken(), r), "ok S:half");
    EXPECT_EQ(r.ReadXMLVersionAttr(version), Tavo::GeneralError);
    EXPECT_EQ(version, Tavo::ClassVersion(3, 250));
    EXPECT_EQ(Messages(r).back(), (Message{"Missing Attribute: Sv", 14}));
}

TEST(DOMReaderValues, CDATASections) {
    auto reader = Open(gDocument);
    TavoXML::DOMReader& r = *reader;
    Tavo::UniString text("keep");
    // The root has element and text children but no section.
    EXPECT_EQ(r.ReadXMLCDATAString(text), Tavo::GeneralError);
    ASSERT_EQ(r.ReadStartElement("cdata"), Tavo::NoError);
    EXPECT_EQ(After(r.ReadXMLCDATAString(text), r), "ok S:cdata");
    EXPECT_EQ(Utf8(text), "first");
    char buffer[4];
    EXPECT_EQ(r.ReadXMLCDATAString(buffer, sizeof buffer), Tavo::NoError);
    EXPECT_STREQ(buffer, "fir");
    // No children at all.
    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    ASSERT_EQ(r.ReadStartElement("v"), Tavo::NoError);
    text = Tavo::UniString("keep");
    EXPECT_EQ(r.ReadXMLCDATAString(text), Tavo::GeneralError);
    EXPECT_EQ(Utf8(text), "keep");
    EXPECT_EQ(r.GetNumberOfMessage(), 0);
}
