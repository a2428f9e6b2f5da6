// The difference reports: the class, accessors, paths and exact text of each, as real comparisons make
// them, and the texts against golden files.
#include "compare/CompareTestSupport.hpp"

#include "common/GoldenFile.hpp"
#include "common/TestText.hpp"

#include <gtest/gtest.h>
#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMText.hpp>

#include <string>

using namespace CompareTest;
using TavoTest::Utf8;
using TavoXML::XMLCompareException;
using Side = TavoXML::XMLCompareException::Side;

namespace {

void ExpectGoldenText(XMLCompareException const& report, std::string const& name) {
    TavoTest::ExpectGolden(Tavo::ToUTF8String(report.GetText()), "compare/" + name + ".expected");
}

} // namespace

TEST(CompareReports, AttributeReportsNameTheElementsAndTheAttribute) {
    auto const missing = Catch<TavoXML::AttributeMissingException>(
        [] { CompareAuto(R"(<root><item id="1" unit="mm"/></root>)", R"(<root><item id="1"/></root>)"); });
    ASSERT_TRUE(missing);
    EXPECT_EQ(Utf8(missing->GetAttributeName()), "unit");
    EXPECT_EQ(missing->GetWhereItIsMissing(), XMLCompareException::Right);
    EXPECT_EQ(Path(*missing, XMLCompareException::Left), "root/item");
    EXPECT_EQ(Path(*missing, XMLCompareException::Right), "root/item");
    ExpectGoldenText(*missing, "AttributeMissingException");

    auto const onLeft = Catch<TavoXML::AttributeMissingException>(
        [] { CompareAuto(R"(<root><item/></root>)", R"(<root><item id="7"/></root>)"); });
    ASSERT_TRUE(onLeft);
    EXPECT_EQ(onLeft->GetWhereItIsMissing(), XMLCompareException::Left);
    EXPECT_NE(Utf8(onLeft->GetText()).find("Missing attribute \"id\" on the left."), std::string::npos);

    auto const values = Catch<TavoXML::AttributesDontMatchException>([] {
        CompareAuto(R"(<root><item id="1" unit="mm"/></root>)", R"(<root><item unit="cm" id="1"/></root>)");
    });
    ASSERT_TRUE(values);
    EXPECT_EQ(Utf8(values->GetAttributeName()), "unit");
    EXPECT_EQ(Utf8(values->GetAttributeValue(XMLCompareException::Left)), "mm");
    EXPECT_EQ(Utf8(values->GetAttributeValue(XMLCompareException::Right)), "cm");
    EXPECT_EQ(Utf8(values->GetAttributeValue(static_cast<Side>(5))), "cm"); // any other side is the right
    ExpectGoldenText(*values, "AttributesDontMatchException");
}

TEST(CompareReports, NameAndChildReportsGiveThePathsOfTheNodes) {
    auto const names = Catch<TavoXML::NodeNamesDontMatchException>(
        [] { CompareAuto("<a><b/><c/></a>", "<a><c/><b/></a>"); });
    ASSERT_TRUE(names);
    EXPECT_EQ(Path(*names, XMLCompareException::Left), "a/b");
    EXPECT_EQ(Path(*names, XMLCompareException::Right), "a/c");
    ExpectGoldenText(*names, "NodeNamesDontMatchException");

    auto const more = Catch<TavoXML::OneNodeHasMoreChildrenThanTheOtherException>(
        [] { CompareAuto("<a><b><x/></b></a>", "<a><b><x/><y/></b></a>"); });
    ASSERT_TRUE(more);
    EXPECT_EQ(more->GetWhichHasMoreChildren(), XMLCompareException::Right);
    // The paths name the parents, not the surplus child.
    EXPECT_EQ(Path(*more, XMLCompareException::Left), "a/b");
    EXPECT_EQ(Path(*more, XMLCompareException::Right), "a/b");
    ExpectGoldenText(*more, "OneNodeHasMoreChildrenThanTheOtherException");

    auto const leftMore = Catch<TavoXML::OneNodeHasMoreChildrenThanTheOtherException>(
        [] { CompareAuto("<a><b/></a>", "<a/>"); });
    ASSERT_TRUE(leftMore);
    EXPECT_EQ(leftMore->GetWhichHasMoreChildren(), XMLCompareException::Left);
}

TEST(CompareReports, TextReportsUseTheParentsPathsAndKeepTheValuesAsTheyAre) {
    auto const texts = Catch<TavoXML::TextNodeValuesDontMatchException>(
        [] { CompareAuto("<a><b>1</b></a>", "<a><b>2</b></a>"); });
    ASSERT_TRUE(texts);
    EXPECT_EQ(Path(*texts, XMLCompareException::Left), "a/b");
    EXPECT_EQ(Path(*texts, XMLCompareException::Right), "a/b");
    EXPECT_EQ(Utf8(texts->GetTextNodeValue(XMLCompareException::Left)), "1");
    EXPECT_EQ(Utf8(texts->GetTextNodeValue(XMLCompareException::Right)), "2");
    ExpectGoldenText(*texts, "TextNodeValuesDontMatchException");

    // A text of several lines stands in the message unescaped and uncut; characters that the default
    // character code lacks become '?' in the text but stay whole in the accessors.
    auto const lines = Catch<TavoXML::TextNodeValuesDontMatchException>([] {
        CompareAuto("<a>first\nsecond &amp; third</a>", "<a>caf\xC3\xA9 \xE2\x82\xAC \xE2\x9C\x93</a>");
    });
    ASSERT_TRUE(lines);
    EXPECT_EQ(Utf8(lines->GetTextNodeValue(XMLCompareException::Right)),
              "caf\xC3\xA9 \xE2\x82\xAC \xE2\x9C\x93");
    ExpectGoldenText(*lines, "TextNodeValuesDontMatchException.lines");

    auto const mixed = Catch<TavoXML::OneNodeIsElementOneIsTextException>(
        [] { CompareAuto("<a><b/></a>", "<a>words</a>"); });
    ASSERT_TRUE(mixed);
    EXPECT_EQ(Utf8(mixed->GetTextValue()), "words");
    EXPECT_EQ(mixed->GetNodeType(XMLCompareException::Left), 1);
    EXPECT_EQ(mixed->GetNodeType(XMLCompareException::Right), 3);
    // An element against a text: the "#text" segment (encoded as the URL form does) on one side only.
    EXPECT_EQ(Path(*mixed, XMLCompareException::Left), "a/b");
    EXPECT_EQ(Path(*mixed, XMLCompareException::Right), "a/%23text");
    ExpectGoldenText(*mixed, "OneNodeIsElementOneIsTextException");

    auto const leftText = Catch<TavoXML::OneNodeIsElementOneIsTextException>(
        [] { CompareAuto("<a>left words</a>", "<a><b/></a>"); });
    ASSERT_TRUE(leftText);
    EXPECT_EQ(Utf8(leftText->GetTextValue()), "left words");
}

TEST(CompareReports, TypeReportsAndTheirHandlers) {
    auto const types =
        Catch<TavoXML::NodeTypesDontMatchException>([] { CompareAuto("<a><![CDATA[x]]></a>", "<a>x</a>"); });
    ASSERT_TRUE(types);
    EXPECT_EQ(types->GetNodeType(XMLCompareException::Left), 4);
    EXPECT_EQ(types->GetNodeType(XMLCompareException::Right), 3);
    ExpectGoldenText(*types, "NodeTypesDontMatchException");

    auto const special = Catch<TavoXML::NotSupportedNodeTypesException>(
        [] { CompareAuto("<a><!--same--></a>", "<a><!--same--></a>"); });
    ASSERT_TRUE(special);
    EXPECT_EQ(special->GetNodeType(XMLCompareException::Left), 8);
    EXPECT_EQ(special->GetNodeType(XMLCompareException::Right), 8);
    EXPECT_EQ(Path(*special, XMLCompareException::Left), "a/%23comment");
    ExpectGoldenText(*special, "NotSupportedNodeTypesException");

    // A handler of NodeTypesDontMatchException takes the element-or-text report and gives its own
    // text; the not-supported report stands beside it.
    try {
        CompareAuto("<a><b/></a>", "<a>t</a>");
        ADD_FAILURE() << "no difference was reported";
    } catch (TavoXML::NodeTypesDontMatchException const& report) {
        EXPECT_NE(Utf8(report.GetText()).find("One node is Element, the other is Text."), std::string::npos);
    }
    bool passedTheHandler = false;
    try {
        try {
            CompareAuto("<a><?pi x?></a>", "<a><?pi x?></a>");
        } catch (TavoXML::NodeTypesDontMatchException const&) {
            ADD_FAILURE() << "caught by the wrong handler";
        }
    } catch (TavoXML::NotSupportedNodeTypesException const&) {
        passedTheHandler = true;
    }
    EXPECT_TRUE(passedTheHandler);
}

TEST(CompareReports, ReportsWithoutNodesAndMadeDirectly) {
    TavoTest::ParsedDocument const full = Parse("<a/>");
    TavoTest::ParsedDocument const emptied = Parse("<gone/>");
    emptied.Get()->removeChild(emptied.Get()->getDocumentElement())->release();
    auto const none = Catch<TavoXML::NoElementsInDocumentException>([&] {
        TavoXML::XMLCompareStrictOrder comparator;
        TavoXML::DoXMLCompare(full.Get(), emptied.Get(), &comparator, nullptr,
                              TavoXML::StrictOrderAutoValueCompareOptions());
    });
    ASSERT_TRUE(none);
    EXPECT_EQ(Path(*none, XMLCompareException::Left), "");
    EXPECT_TRUE(none->GetNodePath(XMLCompareException::Right).GetSegments().empty());
    EXPECT_EQ(none->GetNode(XMLCompareException::Left), nullptr);
    ExpectGoldenText(*none, "NoElementsInDocumentException");
    // Two empty documents report the left one.
    auto const both = Catch<TavoXML::NoElementsInDocumentException>([&] {
        TavoXML::XMLCompareStrictOrder comparator;
        TavoXML::DoXMLCompare(emptied.Get(), emptied.Get(), &comparator, nullptr,
                              TavoXML::StrictOrderAutoValueCompareOptions());
    });
    ASSERT_TRUE(both);
    EXPECT_EQ(Utf8(both->GetText()), "There is no valid element in the XML-document on the left.");

    // The base class: the fallback text, paths from the document element down, a node without a parent
    // as its own name, and a text node given directly ending in its DOM name.
    TavoTest::ParsedDocument const document = Parse("<top><mid><low>v</low></mid></top>");
    xercesc::DOMNode* const low = document.Root()->getFirstChild()->getFirstChild();
    xercesc::DOMNode* const text = low->getFirstChild();
    XMLCompareException const base(low, text);
    EXPECT_EQ(Path(base, XMLCompareException::Left), "top/mid/low");
    EXPECT_EQ(Path(base, XMLCompareException::Right), "top/mid/low/%23text");
    ASSERT_EQ(base.GetNodePath(XMLCompareException::Left).GetSegments().size(), 3u);
    EXPECT_EQ(base.GetNode(XMLCompareException::Left), low);
    EXPECT_EQ(base.GetNode(XMLCompareException::Right), text);
    ExpectGoldenText(base, "XMLCompareException");
    xercesc::DOMElement* const loose = document.Get()->createElement(u"loose");
    XMLCompareException const detached(loose, nullptr);
    EXPECT_EQ(Path(detached, XMLCompareException::Left), "loose");
    EXPECT_EQ(Path(detached, XMLCompareException::Right), "");
    loose->release();
}

TEST(CompareReports, TheReportedNodesAreTheNodesThatDiffer) {
    TavoTest::ParsedDocument left = Parse("<a>\n<b>1</b>\n<c k='1'/>\n</a>");
    TavoTest::ParsedDocument const right = Parse("<a>\n<b>2</b>\n<c k='1'/>\n</a>");
    try {
        TavoXML::XMLCompareStrictOrder comparator;
        TavoXML::DoXMLCompare(left.Get(), right.Get(), &comparator, nullptr,
                              TavoXML::StrictOrderAutoValueCompareOptions());
        ADD_FAILURE() << "no difference was reported";
    } catch (TavoXML::TextNodeValuesDontMatchException const& report) {
        xercesc::DOMNode const* const leftText = report.GetNode(XMLCompareException::Left);
        ASSERT_NE(leftText, nullptr);
        EXPECT_EQ(leftText->getOwnerDocument(), left.Get());
        EXPECT_EQ(leftText->getNodeType(), xercesc::DOMNode::TEXT_NODE);
        EXPECT_EQ(TavoTest::Utf8(leftText->getNodeValue()), "1");
        EXPECT_EQ(report.GetNode(XMLCompareException::Right)->getOwnerDocument(), right.Get());
        // The source line of the differing node, as a diff tool would print it.
        NodeLocationInfo const* const line = left.Locations().Find(leftText);
        ASSERT_NE(line, nullptr);
        EXPECT_EQ(line->lineNumber, 2u);
    }
}
