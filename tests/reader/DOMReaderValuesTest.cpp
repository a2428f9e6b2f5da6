// The typed value readers: their messages with lines, the cursor after each read, and the conversions.
#include "reader/ReaderTestSupport.hpp"

#include <gtest/gtest.h>

#include <cstring>

using namespace ReaderTest;

namespace {

constexpr char gDocument[] = "<root>\n"                                                             // 1
                             "<num>abc</num>\n"                                                     // 2
                             "<empty></empty>\n"                                                    // 3
                             "<nested><inner/></nested>\n"                                          // 4
                             "<item a=\"x\" n=\"bad\" b=\"TrUe\" c=\"300\" m=\"-1\" s=\" 12 \"/>\n" // 5
                             "<commented><!--c-->42</commented>\n"                                  // 6
                             "<text>abcd</text>\n"                                                  // 7
                             "<abc>abc</abc>\n"                                                     // 8
                             "<big>300</big>\n"                                                     // 9
                             "<cdata>lead<![CDATA[first]]><![CDATA[second]]></cdata>\n"             // 10
                             "<spaced> 17 </spaced>\n"                                              // 11
                             "<half Mv=\"1\"/>\n"                                                   // 12
                             "<short>40000</short><long>-9000000000</long>\n"                       // 13
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
}

TEST(DOMReaderValues, TextsNumbersAndBuffersAtTheirEdges) {
    auto reader = Open(gDocument);
    TavoXML::DOMReader& r = *reader;
    Tavo::UniString text("x");
    EXPECT_EQ(r.ReadXML("empty", text), Tavo::NoError);
    EXPECT_TRUE(text.IsEmpty());
    int number = 1;
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
    // Only the low 8 bits of a char are kept.
    unsigned char uc = 0;
    EXPECT_EQ(r.ReadXML("big", uc), Tavo::NoError);
    EXPECT_EQ(uc, 44);

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
    EXPECT_EQ(read(r.ReadXML("abc", buffer, 6), 7), std::string("ok abc\0\0\0#", 10));
    // Attributes have no length check: the text is cut to the size.
    ASSERT_EQ(r.ReadStartElement("item"), Tavo::NoError);
    EXPECT_EQ(read(r.ReadXMLAttr("n", buffer, 2), 3), "ok bac");
}

TEST(DOMReaderValues, BoolLiterals) {
    auto reader =
        Open("<r><a>FALSE</a><b>0</b><c>No</c><d>tRUE</d><e>1</e><f>YeS</f><y>y</y><g> true </g></r>");
    // a-c are false, d-f true; a lone letter and a padded literal fail without a message, value kept.
    for (char const tag : std::string("abcdefyg")) {
        bool const ok = tag < 'g';
        bool const expected = tag >= 'd';
        bool value = ok ? !expected : expected;
        SCOPED_TRACE(tag);
        EXPECT_EQ(reader->ReadXML(std::string(1, tag).c_str(), value),
                  ok ? Tavo::NoError : Tavo::GeneralError);
        EXPECT_EQ(value, expected);
    }
    EXPECT_EQ(reader->GetNumberOfMessage(), 0);
}

TEST(DOMReaderValues, AttributeConversionsVersionsAndCDATA) {
    auto reader = Open(gDocument);
    TavoXML::DOMReader& r = *reader;
    Tavo::UniString text("keep");
    // The root has element and text children but no section.
    EXPECT_EQ(r.ReadXMLCDATAString(text), Tavo::GeneralError);
    ASSERT_EQ(r.ReadStartElement("item"), Tavo::NoError);
    bool flag = false;
    signed char sc = 0;
    long long big = 0;
    EXPECT_EQ(r.ReadXMLAttr("b", flag) | r.ReadXMLAttr("m", sc) | r.ReadXMLAttr("s", big), Tavo::NoError);
    EXPECT_TRUE(flag && sc == -1 && big == 12) << flag << int(sc) << big;
    unsigned int positive = 9;
    EXPECT_EQ(After(r.ReadXMLAttr("m", positive), r), "fail S:item");
    EXPECT_EQ(positive, 9u);

    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    ASSERT_EQ(r.ReadStartElement("cdata"), Tavo::NoError);
    EXPECT_EQ(After(r.ReadXMLCDATAString(text), r), "ok S:cdata");
    EXPECT_EQ(Utf8(text), "first");
    char buffer[4];
    EXPECT_EQ(r.ReadXMLCDATAString(buffer, sizeof buffer), Tavo::NoError);
    EXPECT_STREQ(buffer, "fir");

    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    ASSERT_EQ(r.ReadStartElement("half"), Tavo::NoError);
    Tavo::ClassVersion version(3, 250);
    EXPECT_EQ(r.ReadXMLVersionAttr(version), Tavo::GeneralError);
    EXPECT_EQ(version, Tavo::ClassVersion(3, 250));
    EXPECT_EQ(Messages(r).back(), (Message{"Missing Attribute: Sv", 12}));
}
