// The XML assertion for GoogleTest: equal documents pass, and a difference fails with the comparison's
// report and the source line of each differing node.
#include "TavoXMLUtils/testing/XMLAssertions.hpp"

#include "common/ParsedDocument.hpp"

#include <xercesc/dom/DOMElement.hpp>

#include <gtest/gtest.h>

using TavoXML::testing::XMLEqual;

TEST(XMLAssertions, TextsCompareWithTheLibrarysRulesAndReportLines) {
    Tavo::UniString const expected("<a>\n<b x=\"1\">2.0</b>\n<c>Text</c>\n</a>");
    EXPECT_TRUE(XMLEqual(expected, Tavo::UniString("<A>\n<B x=\"1.000001\">2</B>\n<C> text </C>\n</A>")));

    ::testing::AssertionResult const result =
        XMLEqual(expected, Tavo::UniString("<a>\n<b x=\"1\">2.0</b>\n\n<c>Other</c>\n</a>"));
    ASSERT_FALSE(result);
    std::string const message = result.message();
    EXPECT_NE(message.find("Text"), std::string::npos) << message;
    EXPECT_NE(message.find("Other"), std::string::npos) << message;
    EXPECT_NE(message.find("(expected line 3, actual line 4)"), std::string::npos) << message;

    ::testing::AssertionResult const broken = XMLEqual(expected, Tavo::UniString("<a>\n<b>"));
    ASSERT_FALSE(broken);
    EXPECT_EQ(std::string(broken.message()).rfind("actual text does not parse: line ", 0), 0u)
        << broken.message();
}

TEST(XMLAssertions, SettingsReachTheComparison) {
    Tavo::UniString const left("<a><v>1.0</v></a>");
    Tavo::UniString const right("<a>\n  <v>1.3</v>\n</a>");
    EXPECT_FALSE(XMLEqual(left, right, {.eps = 0.5}));
    EXPECT_TRUE(XMLEqual(left, right, {.eps = 0.5, .skipWhitespace = true}));
    EXPECT_FALSE(XMLEqual(left, right, {.skipWhitespace = true}));
    EXPECT_TRUE(XMLEqual(Tavo::UniString("<a tavo_eps=\"0.5\"><v>1.0</v></a>"),
                         Tavo::UniString("<a tavo_eps=\"0.5\"><v>1.3</v></a>"), {.attributeRuled = true}));
}

TEST(XMLAssertions, DocumentsAndNodesGiveLinesWhenTheyCarryALineTable) {
    TavoTest::ParsedDocument left = TavoTest::ParsedDocument::FromText("<a>\n<b>1</b>\n</a>");
    TavoTest::ParsedDocument right = TavoTest::ParsedDocument::FromText("<a>\n\n<b>2</b>\n</a>");
    left.StoreLocations();
    right.StoreLocations();
    EXPECT_TRUE(XMLEqual(left.Get(), left.Get()));
    ::testing::AssertionResult const documents = XMLEqual(left.Get(), right.Get());
    ASSERT_FALSE(documents);
    EXPECT_NE(std::string(documents.message()).find("(expected line 2, actual line 3)"), std::string::npos)
        << documents.message();
    xercesc::DOMNode const* leftB = left.Root()->getFirstChild()->getNextSibling();
    xercesc::DOMNode const* rightB = right.Root()->getFirstChild()->getNextSibling();
    EXPECT_FALSE(XMLEqual(leftB, rightB));
    EXPECT_FALSE(XMLEqual(leftB, static_cast<xercesc::DOMNode const*>(nullptr)));
}
