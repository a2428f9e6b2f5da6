// Tag readers: typed values from tag text with the exact messages growing through the wrapper and the
// line of the innermost node, the two text readers, and the quoted strings of CDATA sections.
#include "domutils/DomTestSupport.hpp"

#include "TavoXMLUtils/domutils/TagReaders.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>

using namespace TavoXMLUtils;
using DomTest::Thrown;
using DomTest::ThrownBy;

namespace {

std::string Text(char* owned) {
    const std::unique_ptr<char[]> holder(owned);
    return owned;
}

std::u16string TextU(unsigned short* owned) {
    const std::unique_ptr<unsigned short[]> holder(owned);
    return std::u16string(Tavo::UniString(owned).View());
}

} // namespace

TEST(TagReaders, NumbersAndTheirMessages) {
    const DomTest::Parsed doc("<r>\n"                                                               // 1
                              "<count>x</count>\n"                                                  // 2
                              "<empty/>\n"                                                          // 3
                              "<blank> \t</blank>\n"                                                // 4
                              "<spaced\n>\n 12\t</spaced>\n"                                        // 5-7
                              "<commented>12<!--c--></commented>\n"                                 // 8
                              "<max>2147483647</max><min>-2147483648</min>\n"                       // 9
                              "<over>2147483648</over><under>-2147483649</under>\n"                 // 10
                              "<u>+4294967295</u><neg>-1</neg><long>4294967296</long>\n"            // 11
                              "<d> -1.5e3 </d><huge>1e999</huge><tiny>1e-999</tiny><dx>1.5x</dx>\n" // 12
                              "<greek>\xCE\xA9</greek>\n"                                           // 13
                              "</r>");
    auto at = [&](const char16_t* name) { return doc.Element(name); };

    EXPECT_EQ(ThrownBy([&] { GetSLongTag(at(u"count")); }), (Thrown{"Tag 'count'; Too many data", 2}));
    EXPECT_EQ(ThrownBy([&] { GetSLongTag(at(u"empty")); }),
              (Thrown{"Tag 'empty'; One text node expected in tag 'empty'", 3}));
    EXPECT_EQ(ThrownBy([&] { GetULongTag(at(u"blank")); }), (Thrown{"Tag 'blank'; ", 4}));
    EXPECT_EQ(GetSLongTag(at(u"spaced")), 12);
    EXPECT_EQ(GetULongTag(at(u"spaced")), 12u);
    EXPECT_EQ(ThrownBy([&] { GetULongTag(at(u"commented")); }),
              (Thrown{"Tag 'commented'; One text node expected in tag 'commented'", 8}));

    EXPECT_EQ(GetSLongTag(at(u"max")), 2147483647);
    EXPECT_EQ(GetSLongTag(at(u"min")), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ThrownBy([&] { GetSLongTag(at(u"over")); }), (Thrown{"Tag 'over'; Integer Overflow", 10}));
    EXPECT_EQ(ThrownBy([&] { GetSLongTag(at(u"under")); }), (Thrown{"Tag 'under'; Integer Underflow", 10}));
    EXPECT_EQ(GetULongTag(at(u"u")), 4294967295u);
    EXPECT_EQ(ThrownBy([&] { GetULongTag(at(u"neg")); }), (Thrown{"Tag 'neg'; Too many data", 11}));
    EXPECT_EQ(ThrownBy([&] { GetULongTag(at(u"long")); }), (Thrown{"Tag 'long'; Integer Overflow", 11}));

    EXPECT_EQ(GetDoubleTag(at(u"d")), -1500.0);
    EXPECT_EQ(GetDoubleTag(at(u"tiny")), 0.0);
    EXPECT_EQ(ThrownBy([&] { GetDoubleTag(at(u"huge")); }),
              (Thrown{"Tag 'huge'; Floating point number error", 12}));
    EXPECT_EQ(ThrownBy([&] { GetDoubleTag(at(u"dx")); }), (Thrown{"Tag 'dx'; Too many data", 12}));
    EXPECT_EQ(ThrownBy([&] { GetDoubleTag(at(u"empty")); }),
              (Thrown{"Tag 'empty'; One text node expected in tag 'empty'", 3}));

    // Tag text goes through the strict 8-bit conversion.
    EXPECT_EQ(ThrownBy([&] { GetSLongTag(at(u"greek")); }),
              (Thrown{"Tag 'greek'; Failed to transcode string.", 13}));
}

TEST(TagReaders, BooleanVocabulary) {
    const DomTest::Parsed doc("<r>\n<a> yes </a><b>true</b><c>1</c><d>\nno\n</d><e>false</e><f>0</f>\n"
                              "<g>Yes</g><h> </h><i>2</i>\n</r>");
    for (const char16_t* name : {u"a", u"b", u"c"}) {
        EXPECT_TRUE(GetBoolTag(doc.Element(name)));
    }
    for (const char16_t* name : {u"d", u"e", u"f"}) {
        EXPECT_FALSE(GetBoolTag(doc.Element(name)));
    }
    EXPECT_EQ(ThrownBy([&] { GetBoolTag(doc.Element(u"g")); }),
              (Thrown{"Tag 'g'; 'yes/true' or 'no/false' expected, 'Yes' found", 5}));
    EXPECT_EQ(ThrownBy([&] { GetBoolTag(doc.Element(u"h")); }),
              (Thrown{"Tag 'h'; 'yes/true' or 'no/false' expected, '' found", 5}));
    EXPECT_EQ(ThrownBy([&] { GetBoolTag(doc.Element(u"i")); }),
              (Thrown{"Tag 'i'; 'yes/true' or 'no/false' expected, '2' found", 5}));
    // The text found is quoted as characters, Windows-1252 back to Unicode.
    const DomTest::Parsed accented("<a>oui\xC3\xAC</a>");
    EXPECT_EQ(ThrownBy([&] { GetBoolTag(accented.Root()); }),
              (Thrown{"Tag 'a'; 'yes/true' or 'no/false' expected, 'oui\xC3\xAC' found", 1}));
}

TEST(TagReaders, TextReadersTrimDifferently) {
    // No-break spaces are Unicode white space but not in the 8-bit trimming set.
    const DomTest::Parsed doc(
        "<r>\n<t>\t caf\xC3\xA9 \r\n</t><nb>\xC2\xA0x\xC2\xA0</nb>\n<e></e><c><!--x-->a</c></r>");
    EXPECT_EQ(Text(GetTagText(doc.Element(u"t"))), "caf\xE9");
    EXPECT_EQ(Text(GetTagText(doc.Element(u"nb"))), "\xA0x\xA0");
    EXPECT_EQ(DomTest::Utf8(GetTagTextU(doc.Element(u"t"))), "caf\xC3\xA9");
    EXPECT_EQ(DomTest::Utf8(GetTagTextU(doc.Element(u"nb"))), "x");
    EXPECT_EQ(ThrownBy([&] { GetTagText(doc.Element(u"e")); }),
              (Thrown{"One text node expected in tag 'e'", 4}));
    EXPECT_EQ(ThrownBy([&] { GetTagTextU(doc.Element(u"c")); }),
              (Thrown{"One text node expected in tag 'c'", 4}));
}

TEST(TagReaders, StringTagsUnquoteTheirSection) {
    DomTest::Parsed doc("<r>\n"                                               // 1
                        "<plain><![CDATA[\"a]] >b\"]]></plain>\n"             // 2
                        "<around>\n  <!--c--> <![CDATA[ 'x' ]]>\n</around>\n" // 3-5
                        "<lines><![CDATA['a\r\nb\nc']]></lines>\n"            // 6-8
                        "<quotes><![CDATA[`say \"it's\"`]]></quotes>\n"       // 9
                        "<none/>\n"                                           // 10
                        "<two><![CDATA['1']]>\n<![CDATA['2']]></two>\n"       // 11-12
                        "<child>\n<![CDATA['1']]><sub\n/></child>\n"          // 13-15
                        "<bare><![CDATA[abc]]></bare>\n"                      // 16
                        "<empty><![CDATA[\"\"]]></empty>\n"                   // 17
                        "</r>");
    auto at = [&](const char16_t* name) { return doc.Element(name); };
    EXPECT_EQ(Text(GetStringTag(at(u"plain"), nullptr)), "a]]>b");
    EXPECT_EQ(TextU(GetStringTagU(at(u"plain"), nullptr)), u"a]]>b");
    EXPECT_EQ(Text(GetStringTag(at(u"around"), nullptr)), "x");
    // The parser normalises the carriage return; the 8-bit reader turns every line feed into one.
    EXPECT_EQ(Text(GetStringTag(at(u"lines"), nullptr)), "a\rb\rc");
    EXPECT_EQ(TextU(GetStringTagU(at(u"lines"), nullptr)), u"a\nb\nc");
    EXPECT_EQ(Text(GetStringTag(at(u"quotes"), nullptr)), "say \"it's\"");
    EXPECT_EQ(Text(GetStringTag(at(u"empty"), nullptr)), "");

    EXPECT_EQ(ThrownBy([&] { GetStringTag(at(u"none"), nullptr); }),
              (Thrown{"Tag 'none'; Missing CDATA section in tag 'none'", 10}));
    EXPECT_EQ(ThrownBy([&] { GetStringTagU(at(u"none"), nullptr); }),
              (Thrown{"Tag 'none'; Missing CDATA section in tag 'none'", 10}));
    // The innermost node's line survives the wrapper: the second section, the unexpected child.
    doc.EnsureLine(at(u"two")->getLastChild(), 12);
    EXPECT_EQ(ThrownBy([&] { GetStringTag(at(u"two"), nullptr); }),
              (Thrown{"Tag 'two'; More than one CDATA section in tag 'two'", 12}));
    EXPECT_EQ(ThrownBy([&] { GetStringTagU(at(u"child"), nullptr); }),
              (Thrown{"Tag 'child'; Unexpected XML node in tag 'child'", 15}));
    EXPECT_EQ(ThrownBy([&] { GetStringTag(at(u"bare"), nullptr); }),
              (Thrown{"Tag 'bare'; String value error", 16}));
    EXPECT_EQ(ThrownBy([&] { GetStringTagU(at(u"bare"), nullptr); }),
              (Thrown{"Tag 'bare'; String value error", 16}));
}

TEST(TagReaders, LossyStringsAddOneWarningBehindTheCallersEntries) {
    DomTest::Parsed doc("<r>\n<s>\n<![CDATA[\n'\xCE\xA9 x']]></s>\n</r>");
    xercesc::DOMElement* s = doc.Element(u"s");
    doc.EnsureLine(s->getLastChild(), 4);

    Tavo::VAArray<WarningData> warnings;
    warnings.Push(WarningData{Tavo::UniString("earlier"), 77});
    EXPECT_EQ(Text(GetStringTag(s, &warnings)), "? x");
    ASSERT_EQ(warnings.GetSize(), 2u);
    EXPECT_EQ(DomTest::Utf8(warnings[0].message), "earlier");
    EXPECT_EQ(warnings[0].line, 77u);
    EXPECT_EQ(DomTest::Utf8(warnings[1].message),
              "Some characters cannot be converted correctly to local codepage in tag 's'");
    EXPECT_EQ(warnings[1].line, 4u);

    EXPECT_EQ(Text(GetStringTag(s, nullptr)), "? x");
    EXPECT_EQ(TextU(GetStringTagU(s, &warnings)), u"\u03A9 x");
    EXPECT_EQ(warnings.GetSize(), 2u) << "the 16-bit reader converts nothing";
}
