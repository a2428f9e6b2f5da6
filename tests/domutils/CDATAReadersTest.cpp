// CDATA readers: the protection of "]]>" undone exactly as defined, the three result forms, and the
// choice of the one section among the children.
#include "domutils/DomTestSupport.hpp"

#include "TavoXMLUtils/domutils/CDATAReaders.hpp"

#include <gtest/gtest.h>

#include <xercesc/dom/DOMCDATASection.hpp>

#include <memory>
#include <string>

using namespace TavoXMLUtils;
using DomTest::Thrown;
using DomTest::ThrownBy;

namespace {

std::u16string Converted(const char16_t* text) {
    Tavo::UniString string(text);
    ConvertCDATA(string);
    return std::u16string(string.View());
}

} // namespace

TEST(CDATAReaders, ConvertCDATARemovesEveryBlankBehindTwoBrackets) {
    EXPECT_EQ(Converted(u"]] >"), u"]]>");
    EXPECT_EQ(Converted(u"]]  >"), u"]] >");
    EXPECT_EQ(Converted(u"a]] x"), u"a]]x");
    EXPECT_EQ(Converted(u"]]] >"), u"]]]>");
    EXPECT_EQ(Converted(u"x]] >y]] >"), u"x]]>y]]>");
    // The scan goes on at the character behind the removed blank.
    EXPECT_EQ(Converted(u"]] ]] "), u"]]]]");
    EXPECT_EQ(Converted(u"]] ] "), u"]]] ");
    EXPECT_EQ(Converted(u"] ]"), u"] ]");
    EXPECT_EQ(Converted(u"]]"), u"]]");
    EXPECT_EQ(Converted(u""), u"");
}

TEST(CDATAReaders, ThreeFormsOfOneSection) {
    DomTest::Parsed doc(
        "<r>\n<s> <!--c-->\n<![CDATA[a]] >\nb\xC3\xA9]]> </s>\n<w><![CDATA[\xE2\x82\xAC\xCE\xA9]]></w>\n"
        "<cut><![CDATA[x\xF0\x9F\x98\x80]]></cut>\n<pi><?p?><![CDATA[x]]></pi></r>");
    xercesc::DOMElement* s = doc.Element(u"s");
    EXPECT_EQ(GetFirstCDataChild(s), s->getChildNodes()->item(3));
    EXPECT_EQ(DomTest::Utf8(GetCDATANodeUniString(s)), "a]]>\nb\xC3\xA9");
    const std::unique_ptr<char[]> bytes(GetCDATANode(s, nullptr));
    EXPECT_STREQ(bytes.get(), "a]]>\rb\xE9");
    const std::unique_ptr<unsigned short[]> units(GetCDATANodeU(s, nullptr));
    EXPECT_EQ(Tavo::UniString(units.get()).View(), std::u16string_view(u"a]]>\nb\u00E9"));

    // The euro sign is in Windows-1252, the omega is not; a surrogate pair is one lost character.
    Tavo::VAArray<WarningData> warnings;
    const std::unique_ptr<char[]> lossy(GetCDATANode(doc.Element(u"w"), &warnings));
    EXPECT_STREQ(lossy.get(), "\x80?");
    const std::unique_ptr<char[]> pair(GetCDATANode(doc.Element(u"cut"), &warnings));
    EXPECT_STREQ(pair.get(), "x?");
    ASSERT_EQ(warnings.GetSize(), 2u);
    EXPECT_EQ(DomTest::Utf8(warnings[1].message),
              "Some characters cannot be converted correctly to local codepage in tag 'cut'");

    xercesc::DOMElement* pi = doc.Element(u"pi");
    doc.EnsureLine(pi->getFirstChild(), 9);
    EXPECT_EQ(ThrownBy([&] { GetCDATANodeUniString(pi); }), (Thrown{"Unexpected XML node in tag 'pi'", 9}));
}

TEST(CDATAReaders, WarningWithoutNodeLocationsHasNoLine) {
    const DomTest::Parsed doc("<r><![CDATA[\xCE\xA9]]></r>", false);
    Tavo::VAArray<WarningData> warnings;
    const std::unique_ptr<char[]> text(GetCDATANode(doc.Root(), &warnings));
    EXPECT_STREQ(text.get(), "?");
    ASSERT_EQ(warnings.GetSize(), 1u);
    EXPECT_EQ(warnings[0].line, 0u);
    EXPECT_EQ(
        ThrownBy([&] { GetFirstCDataChild(doc.Element(u"r")->getOwnerDocument()->createElement(u"x")); }),
        (Thrown{"Missing CDATA section in tag 'x'", 0}));
}
