// Attribute readers: the tab-and-blank trimming, the prefix naming the attribute, missing and empty
// attributes alike, and the unprefixed transcoding failure.
#include "domutils/DomTestSupport.hpp"

#include "TavoXMLUtils/domutils/AttributeReaders.hpp"

#include <gtest/gtest.h>

using namespace TavoXMLUtils;
using DomTest::Thrown;
using DomTest::ThrownBy;

TEST(AttributeReaders, NumbersBooleansAndMessages) {
    const DomTest::Parsed doc(
        "<r>\n<e v=\" 12\t\" lf=\"12&#10;\" empty=\"\" min=\"-2147483648\" low=\"-2147483649\"\n"
        " big=\"+4294967295\" neg=\"-5\" yes=\" yes\" zero=\"0\" up=\"TRUE\" om=\"\xCE\xA9\"/>\n</r>");
    xercesc::DOMElement* e = doc.Element(u"e");
    auto name = [](const char* text) { return Tavo::UniString(text); };

    EXPECT_EQ(GetSLongAttr(e, name("v")), 12);
    EXPECT_EQ(GetULongAttr(e, name("v")), 12u);
    // The line feed stays: only tabs and blanks are cut.
    EXPECT_EQ(ThrownBy([&] { GetSLongAttr(e, name("lf")); }),
              (Thrown{"Attribute: 'lf' (missing or incorrect); Too many data", 3}));
    EXPECT_EQ(ThrownBy([&] { GetSLongAttr(e, name("missing")); }),
              (Thrown{"Attribute: 'missing' (missing or incorrect); ", 3}));
    EXPECT_EQ(ThrownBy([&] { GetULongAttr(e, name("empty")); }),
              (Thrown{"Attribute: 'empty' (missing or incorrect); ", 3}));
    EXPECT_EQ(GetSLongAttr(e, name("min")), -2147483647 - 1);
    EXPECT_EQ(ThrownBy([&] { GetSLongAttr(e, name("low")); }),
              (Thrown{"Attribute: 'low' (missing or incorrect); Integer Underflow", 3}));
    EXPECT_EQ(GetULongAttr(e, name("big")), 4294967295u);
    EXPECT_EQ(ThrownBy([&] { GetULongAttr(e, name("neg")); }),
              (Thrown{"Attribute: 'neg' (missing or incorrect); Too many data", 3}));

    EXPECT_TRUE(GetBooleanAttr(e, name("yes")));
    EXPECT_FALSE(GetBooleanAttr(e, name("zero")));
    EXPECT_EQ(
        ThrownBy([&] { GetBooleanAttr(e, name("up")); }),
        (Thrown{"Attribute: 'up' (missing or incorrect); 'yes/true' or 'no/false' expected, 'TRUE' found",
                3}));
    EXPECT_EQ(
        ThrownBy([&] { GetBooleanAttr(e, name("missing")); }),
        (Thrown{"Attribute: 'missing' (missing or incorrect); 'yes/true' or 'no/false' expected, '' found",
                3}));

    // The conversion to 8 bits stands outside the guarded block.
    EXPECT_EQ(ThrownBy([&] { GetSLongAttr(e, name("om")); }), (Thrown{"Failed to transcode string.", 0}));
}
