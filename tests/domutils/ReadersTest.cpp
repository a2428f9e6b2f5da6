// The throwing readers: the scalar parsers at and beyond every limit with the exact message of each
// failure, ConvException's line bookkeeping, the attribute readers, the CDATA readers and the tag readers
// with their messages growing through the wrapper and the line of the innermost node.
#include "domutils/DomTestSupport.hpp"

#include "TavoXMLUtils/domutils/AttributeReaders.hpp"
#include "TavoXMLUtils/domutils/CDATAReaders.hpp"
#include "TavoXMLUtils/domutils/ScalarConversion.hpp"
#include "TavoXMLUtils/domutils/TagReaders.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>

using namespace TavoXMLUtils;
using DomTest::Outcomes;
using DomTest::ThrownBy;
using DomTest::Utf8;

namespace {

// Each text fails with `message` and without a line.
template <class Parse>
void ExpectFailures(Parse parse, const char* message, std::initializer_list<const char*> texts) {
    for (const char* text : texts) {
        EXPECT_EQ(ThrownBy([&] { parse(text); }), std::string(message) + "@0") << text;
    }
}

std::string Text(char* owned) {
    const std::unique_ptr<char[]> holder(owned);
    return owned;
}

std::u16string TextU(unsigned short* owned) {
    const std::unique_ptr<unsigned short[]> holder(owned);
    return std::u16string(Tavo::UniString(owned).View());
}

std::string Converted(const char16_t* text) {
    Tavo::UniString string(text);
    ConvertCDATA(string);
    return Utf8(string);
}

} // namespace

TEST(ScalarConversion, GetIntNumLimitsAndMessages) {
    EXPECT_EQ(
        Outcomes({"0", "0012", "000000000012", "4294967295", "0000004294967295", "429496729"}, GetIntNum),
        "0 | 12 | 12 | 4294967295 | 4294967295 | 429496729");
    ExpectFailures(GetIntNum, "Integer Overflow",
                   {"4294967296", "4294967300", "99999999999999999999", "42949672950"});
    ExpectFailures(GetIntNum, "Too many data", {"4294967295x", " 12", "12 ", "12.5", "+12", "0x1F"});
    ExpectFailures(GetIntNum, "", {""});
}

TEST(ScalarConversion, GetSignedLongRange) {
    EXPECT_EQ(Outcomes({"2147483647", "+2147483647", "-2147483648", "-0", "-0012"}, GetSignedLong),
              "2147483647 | 2147483647 | -2147483648 | 0 | -12");
    // Beyond 32 bits the digit parser's overflow comes first, whatever the sign.
    ExpectFailures(GetSignedLong, "Integer Overflow",
                   {"2147483648", "+2147483648", "4294967295", "-4294967296"});
    ExpectFailures(GetSignedLong, "Integer Underflow", {"-2147483649", "-4294967295"});
    ExpectFailures(GetSignedLong, "Too many data", {"--5", "+-5"});
    ExpectFailures(GetSignedLong, "", {"-", "+"});
}

TEST(ScalarConversion, GetULongTakesOnePlusOnly) {
    EXPECT_EQ(Outcomes({"+4294967295", "17", "-1", "++1", "+", "+4294967296"}, GetULong),
              "4294967295 | 17 | !Too many data@0 | !Too many data@0 | !@0 | !Integer Overflow@0");
}

TEST(ScalarConversion, GetDoubleFollowsStrtod) {
    EXPECT_EQ(Outcomes({"1.5", " \t1.5", "-2.5e3", "0x10", "1e-999", "inf", "nan"}, GetDouble),
              "1.5 | 1.5 | -2500 | 16 | 0 | inf | nan");
    // A range error is reported before the rest of the text is looked at.
    ExpectFailures(GetDouble, "Floating point number error", {"abc", "", "1e999", "-1e999", "1e999x"});
    ExpectFailures(GetDouble, "Too many data", {"1.5x", "1.5 "});
}

TEST(ScalarConversion, GetStringValueUnquotesInPlace) {
    char doubleQuotes[] = "\"\"";
    EXPECT_STREQ(GetStringValue(doubleQuotes), "");
    char quoted[] = "'a\"b'";
    char* inner = GetStringValue(quoted);
    EXPECT_EQ(inner, quoted + 1);
    EXPECT_STREQ(inner, "a\"b");
    char backquoted[] = "`x`y`";
    EXPECT_STREQ(GetStringValue(backquoted), "x`y");
    for (const char* bad : {"\"", "\"a'", "abc", "", "'abc", "(a)"}) {
        std::string copy(bad);
        EXPECT_EQ(ThrownBy([&] { GetStringValue(copy.data()); }), "String value error@0") << bad;
        EXPECT_EQ(copy, bad) << "unchanged on failure";
    }

    std::u16string wide = u"'\x20AC'";
    auto* text = reinterpret_cast<unsigned short*>(wide.data());
    unsigned short* result = GetStringValueU(text);
    EXPECT_EQ(result, text + 1);
    EXPECT_EQ(result[0], 0x20AC);
    EXPECT_EQ(result[1], 0);
    std::u16string unmatched = u"\"a'";
    EXPECT_EQ(ThrownBy([&] { GetStringValueU(reinterpret_cast<unsigned short*>(unmatched.data())); }),
              "String value error@0");
    EXPECT_EQ(unmatched, u"\"a'");
}

TEST(ScalarConversion, TrimmingSets) {
    char mixed1[] = "\t a b \r\n", mixed2[] = "\t a b \r\n", blank[] = " \t\r\n ";
    char* text = mixed1;
    CutWhSpace(text);
    EXPECT_STREQ(text, "a b");
    text = mixed2;
    CutTabSpace(text);
    EXPECT_STREQ(text, "a b \r\n");
    EXPECT_EQ(text, mixed2 + 2);
    text = blank;
    CutWhSpace(text);
    EXPECT_STREQ(text, "");
    text = nullptr;
    CutWhSpace(text);
    EXPECT_EQ(text, nullptr);

    std::u16string wide = u"\n\t x\ty \r";
    auto* wideText = reinterpret_cast<unsigned short*>(wide.data());
    CutWhSpaceU(wideText);
    EXPECT_EQ(Tavo::UniString(wideText).View(), std::u16string_view(u"x\ty"));
}

TEST(ScalarConversion, UnicodeToStringStrictAndLossy) {
    EXPECT_EQ(Text(UnicodeToString(Tavo::UniString(), false)), "");
    EXPECT_EQ(Text(UnicodeToString(Tavo::UniString(u"a\x20AC\x00E9"), false)), "a\x80\xE9");
    const Tavo::UniString greek(u"x\x03A9y");
    EXPECT_EQ(ThrownBy([&] { Text(UnicodeToString(greek, false)); }), "Failed to transcode string.@0");
    const std::string lossy = Text(UnicodeToString(greek, true));
    ASSERT_EQ(lossy.size(), 3u);
    EXPECT_EQ(lossy[0], 'x');
    EXPECT_EQ(lossy[2], 'y');
}

TEST(ConvExceptionTest, ConstructorsAndFirstLineWins) {
    // The default exception, empty and without a line, is what the scalar parsers throw for empty text.
    NodeLocationInfo location;
    location.lineNumber = 42;
    const ConvException fromText("caf\xE9", &location);
    EXPECT_EQ(fromText.message.View(), std::u16string_view(u"caf\x00E9"));
    EXPECT_EQ(fromText.line, 42u);
    EXPECT_EQ(ConvException("x", static_cast<const NodeLocationInfo*>(nullptr)).line, 0u);
    EXPECT_EQ(ConvException(Tavo::UniString(u"y"), &location).line, 42u);

    DomTest::ScratchDocument document;
    xercesc::DOMElement* root = document.Root();
    xercesc::DOMElement* first = document.Document()->createElement(u"first");
    xercesc::DOMElement* second = document.Document()->createElement(u"second");
    root->appendChild(first);
    root->appendChild(second);
    // Without node locations on the document no line is found.
    EXPECT_EQ(ConvException(Tavo::UniString(u"m"), first).line, 0u);

    NodeLocations locations;
    locations.AddNew(second, 9);
    locations.AddNew(first, 5);
    locations.AddNew(first, 6);
    document.Document()->setUserData(u"NodeLocations", &locations, nullptr);
    ConvException e(Tavo::UniString(u"m"), root);
    EXPECT_EQ(e.line, 0u) << "the root has no entry";
    e.StoreErrLoc(nullptr);
    EXPECT_EQ(e.line, 0u);
    e.StoreErrLoc(first);
    EXPECT_EQ(e.line, 5u) << "the earliest entry of a node";
    e.StoreErrLoc(second);
    EXPECT_EQ(e.line, 5u) << "the first line found wins";
    e.StoreErrLoc(document.Document());
    EXPECT_EQ(e.line, 5u);
    ConvException fresh;
    fresh.StoreErrLoc(document.Document());
    EXPECT_EQ(fresh.line, 0u) << "the document node has no owner document";
    EXPECT_EQ(ConvException(Tavo::UniString(u"m"), second).line, 9u);
    document.Document()->setUserData(u"NodeLocations", nullptr, nullptr);
}

TEST(AttributeReaders, NumbersBooleansAndMessages) {
    const DomTest::Parsed doc(
        "<r>\n<e v=\" 12\t\" lf=\"12&#10;\" empty=\"\" min=\"-2147483648\" low=\"-2147483649\"\n"
        " big=\"+4294967295\" neg=\"-5\" yes=\" yes\" zero=\"0\" up=\"TRUE\" om=\"\xCE\xA9\"/>\n</r>");
    xercesc::DOMElement* e = doc.Element(u"e");
    // The line feed stays: only tabs and blanks are cut. The conversion to 8 bits stands outside the
    // guarded block.
    EXPECT_EQ(
        Outcomes({"v", "lf", "missing", "min", "low", "om"},
                 [&](const char* name) { return GetSLongAttr(e, Tavo::UniString(name)); }),
        "12 | !Attribute: 'lf' (missing or incorrect); Too many data@3 | "
        "!Attribute: 'missing' (missing or incorrect); @3 | -2147483648 | "
        "!Attribute: 'low' (missing or incorrect); Integer Underflow@3 | !Failed to transcode string.@0");
    EXPECT_EQ(Outcomes({"v", "empty", "big", "neg"},
                       [&](const char* name) { return GetULongAttr(e, Tavo::UniString(name)); }),
              "12 | !Attribute: 'empty' (missing or incorrect); @3 | 4294967295 | "
              "!Attribute: 'neg' (missing or incorrect); Too many data@3");
    EXPECT_EQ(Outcomes({"yes", "zero", "up", "missing"},
                       [&](const char* name) { return GetBooleanAttr(e, Tavo::UniString(name)); }),
              "1 | 0 | !Attribute: 'up' (missing or incorrect); 'yes/true' or 'no/false' expected, 'TRUE' "
              "found@3 | "
              "!Attribute: 'missing' (missing or incorrect); 'yes/true' or 'no/false' expected, '' found@3");
}

TEST(CDATAReaders, ConvertCDATARemovesEveryBlankBehindTwoBrackets) {
    // The scan goes on at the character behind the removed blank.
    EXPECT_EQ(Outcomes({u"]] >", u"]]  >", u"a]] x", u"]]] >", u"x]] >y]] >", u"]] ]] ", u"]] ] ", u"] ]",
                        u"]]", u""},
                       [](const char16_t* text) { return Converted(text); }),
              "]]> | ]] > | a]]x | ]]]> | x]]>y]]> | ]]]] | ]]]  | ] ] | ]] | ");
}

TEST(CDATAReaders, ThreeFormsOfOneSection) {
    DomTest::Parsed doc(
        "<r>\n<s> <!--c-->\n<![CDATA[a]] >\nb\xC3\xA9]]> </s>\n<w><![CDATA[\xE2\x82\xAC\xCE\xA9]]></w>\n"
        "<cut><![CDATA[x\xF0\x9F\x98\x80]]></cut>\n<pi><?p?><![CDATA[x]]></pi></r>");
    xercesc::DOMElement* s = doc.Element(u"s");
    EXPECT_EQ(GetFirstCDataChild(s), s->getChildNodes()->item(3));
    EXPECT_EQ(Utf8(GetCDATANodeUniString(s)), "a]]>\nb\xC3\xA9");
    EXPECT_EQ(Text(GetCDATANode(s, nullptr)), "a]]>\rb\xE9");
    EXPECT_EQ(TextU(GetCDATANodeU(s, nullptr)), u"a]]>\nb\u00E9");

    // The euro sign is in Windows-1252, the omega is not; a surrogate pair is one lost character.
    Tavo::VAArray<WarningData> warnings;
    EXPECT_EQ(Text(GetCDATANode(doc.Element(u"w"), &warnings)), "\x80?");
    EXPECT_EQ(Text(GetCDATANode(doc.Element(u"cut"), &warnings)), "x?");
    ASSERT_EQ(warnings.GetSize(), 2u);
    EXPECT_EQ(Utf8(warnings[1].message),
              "Some characters cannot be converted correctly to local codepage in tag 'cut'");

    xercesc::DOMElement* pi = doc.Element(u"pi");
    doc.EnsureLine(pi->getFirstChild(), 9);
    EXPECT_EQ(ThrownBy([&] { GetCDATANodeUniString(pi); }), "Unexpected XML node in tag 'pi'@9");
}

TEST(CDATAReaders, WarningWithoutNodeLocationsHasNoLine) {
    const DomTest::Parsed doc("<r><![CDATA[\xCE\xA9]]></r>", false);
    Tavo::VAArray<WarningData> warnings;
    EXPECT_EQ(Text(GetCDATANode(doc.Root(), &warnings)), "?");
    ASSERT_EQ(warnings.GetSize(), 1u);
    EXPECT_EQ(warnings[0].line, 0u);
    EXPECT_EQ(ThrownBy([&] { GetFirstCDataChild(doc.Root()->getOwnerDocument()->createElement(u"x")); }),
              "Missing CDATA section in tag 'x'@0");
}

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
    // Tag text goes through the strict 8-bit conversion.
    EXPECT_EQ(
        Outcomes({u"count", u"empty", u"spaced", u"max", u"min", u"over", u"under", u"greek"},
                 [&](const char16_t* tag) { return GetSLongTag(doc.Element(tag)); }),
        "!Tag 'count'; Too many data@2 | !Tag 'empty'; One text node expected in tag 'empty'@3 | 12 | "
        "2147483647 | -2147483648 | !Tag 'over'; Integer Overflow@10 | !Tag 'under'; Integer Underflow@10 | "
        "!Tag 'greek'; Failed to transcode string.@13");
    EXPECT_EQ(Outcomes({u"blank", u"spaced", u"commented", u"u", u"neg", u"long"},
                       [&](const char16_t* tag) { return GetULongTag(doc.Element(tag)); }),
              "!Tag 'blank'; @4 | 12 | !Tag 'commented'; One text node expected in tag 'commented'@8 | "
              "4294967295 | !Tag 'neg'; Too many data@11 | !Tag 'long'; Integer Overflow@11");
    EXPECT_EQ(Outcomes({u"d", u"tiny", u"huge", u"dx", u"empty"},
                       [&](const char16_t* tag) { return GetDoubleTag(doc.Element(tag)); }),
              "-1500 | 0 | !Tag 'huge'; Floating point number error@12 | !Tag 'dx'; Too many data@12 | "
              "!Tag 'empty'; One text node expected in tag 'empty'@3");
}

TEST(TagReaders, BooleanVocabulary) {
    const DomTest::Parsed doc("<r>\n<a> yes </a><b>true</b><c>1</c><d>\nno\n</d><e>false</e><f>0</f>\n"
                              "<g>Yes</g><h> </h><i>2</i>\n</r>");
    EXPECT_EQ(Outcomes({u"a", u"b", u"c", u"d", u"e", u"f", u"g", u"h", u"i"},
                       [&](const char16_t* tag) { return GetBoolTag(doc.Element(tag)); }),
              "1 | 1 | 1 | 0 | 0 | 0 | !Tag 'g'; 'yes/true' or 'no/false' expected, 'Yes' found@5 | "
              "!Tag 'h'; 'yes/true' or 'no/false' expected, '' found@5 | "
              "!Tag 'i'; 'yes/true' or 'no/false' expected, '2' found@5");
    // The text found is quoted as characters, Windows-1252 back to Unicode.
    const DomTest::Parsed accented("<a>oui\xC3\xAC</a>");
    EXPECT_EQ(ThrownBy([&] { GetBoolTag(accented.Root()); }),
              "Tag 'a'; 'yes/true' or 'no/false' expected, 'oui\xC3\xAC' found@1");
}

TEST(TagReaders, TextReadersTrimDifferently) {
    // No-break spaces are Unicode white space but not in the 8-bit trimming set.
    const DomTest::Parsed doc(
        "<r>\n<t>\t caf\xC3\xA9 \r\n</t><nb>\xC2\xA0x\xC2\xA0</nb>\n<e></e><c><!--x-->a</c></r>");
    EXPECT_EQ(Text(GetTagText(doc.Element(u"t"))), "caf\xE9");
    EXPECT_EQ(Text(GetTagText(doc.Element(u"nb"))), "\xA0x\xA0");
    EXPECT_EQ(Utf8(GetTagTextU(doc.Element(u"t"))), "caf\xC3\xA9");
    EXPECT_EQ(Utf8(GetTagTextU(doc.Element(u"nb"))), "x");
    EXPECT_EQ(ThrownBy([&] { GetTagText(doc.Element(u"e")); }), "One text node expected in tag 'e'@4");
    EXPECT_EQ(ThrownBy([&] { GetTagTextU(doc.Element(u"c")); }), "One text node expected in tag 'c'@4");
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

    // Both readers, and the innermost node's line surviving the wrapper: the second section, the
    // unexpected child.
    doc.EnsureLine(at(u"two")->getLastChild(), 12);
    const std::string failures =
        "!Tag 'none'; Missing CDATA section in tag 'none'@10 | "
        "!Tag 'two'; More than one CDATA section in tag 'two'@12 | "
        "!Tag 'child'; Unexpected XML node in tag 'child'@15 | !Tag 'bare'; String value error@16";
    EXPECT_EQ(Outcomes({u"none", u"two", u"child", u"bare"},
                       [&](const char16_t* tag) { return Text(GetStringTag(at(tag), nullptr)); }),
              failures);
    EXPECT_EQ(Outcomes({u"none", u"two", u"child", u"bare"},
                       [&](const char16_t* tag) {
                           return Utf8(Tavo::UniString(TextU(GetStringTagU(at(tag), nullptr))));
                       }),
              failures);
}

TEST(TagReaders, LossyStringsAddOneWarningBehindTheCallersEntries) {
    DomTest::Parsed doc("<r>\n<s>\n<![CDATA[\n'\xCE\xA9 x']]></s>\n</r>");
    xercesc::DOMElement* s = doc.Element(u"s");
    doc.EnsureLine(s->getLastChild(), 4);

    Tavo::VAArray<WarningData> warnings;
    warnings.Push(WarningData{Tavo::UniString("earlier"), 77});
    EXPECT_EQ(Text(GetStringTag(s, &warnings)), "? x");
    ASSERT_EQ(warnings.GetSize(), 2u);
    EXPECT_EQ(Utf8(warnings[0].message), "earlier");
    EXPECT_EQ(warnings[0].line, 77u);
    EXPECT_EQ(Utf8(warnings[1].message),
              "Some characters cannot be converted correctly to local codepage in tag 's'");
    EXPECT_EQ(warnings[1].line, 4u);

    EXPECT_EQ(Text(GetStringTag(s, nullptr)), "? x");
    EXPECT_EQ(TextU(GetStringTagU(s, &warnings)), u"\u03A9 x");
    EXPECT_EQ(warnings.GetSize(), 2u) << "the 16-bit reader converts nothing";
}
