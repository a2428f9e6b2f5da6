// The difference reports: the class, accessors, paths and exact text of each, as real comparisons make
// them, and the texts against golden files.
#include "compare/CompareTestSupport.hpp"

#include "common/GoldenFile.hpp"

using namespace CompareTest;
using Side = XMLCompareException::Side;

namespace {

void ExpectGoldenText(XMLCompareException const& report, std::string const& name) {
    TavoTest::ExpectGolden(Tavo::ToUTF8String(report.GetText()), "compare/" + name + ".expected");
}

} // namespace

TEST(CompareReports, AttributeReportsNameTheElementsAndTheAttribute) {
    auto const missing = ReportOf<TavoXML::AttributeMissingException>(
        R"(<root><item id="1" unit="mm"/></root>)", R"(<root><item id="1"/></root>)");
    ASSERT_TRUE(missing);
    EXPECT_EQ(Utf8(missing->GetAttributeName()), "unit");
    EXPECT_EQ(missing->GetWhereItIsMissing(), kRight);
    ExpectPaths(*missing, "root/item", "root/item");
    ExpectGoldenText(*missing, "AttributeMissingException");

    auto const onLeft = ReportOf<TavoXML::AttributeMissingException>("<root><item/></root>",
                                                                     R"(<root><item id="7"/></root>)");
    ASSERT_TRUE(onLeft);
    EXPECT_EQ(onLeft->GetWhereItIsMissing(), kLeft);
    EXPECT_NE(Utf8(onLeft->GetText()).find("Missing attribute \"id\" on the left."), std::string::npos);

    auto const values = ReportOf<TavoXML::AttributesDontMatchException>(
        R"(<root><item id="1" unit="mm"/></root>)", R"(<root><item unit="cm" id="1"/></root>)");
    ASSERT_TRUE(values);
    EXPECT_EQ(Utf8(values->GetAttributeName()), "unit");
    EXPECT_EQ(Utf8(values->GetAttributeValue(kLeft)), "mm");
    EXPECT_EQ(Utf8(values->GetAttributeValue(kRight)), "cm");
    EXPECT_EQ(Utf8(values->GetAttributeValue(static_cast<Side>(5))), "cm"); // any other side is the right
    ExpectGoldenText(*values, "AttributesDontMatchException");
}

TEST(CompareReports, NameAndChildReportsGiveThePathsOfTheNodes) {
    auto const names = ReportOf<TavoXML::NodeNamesDontMatchException>("<a><b/><c/></a>", "<a><c/><b/></a>");
    ASSERT_TRUE(names);
    ExpectPaths(*names, "a/b", "a/c");
    ExpectGoldenText(*names, "NodeNamesDontMatchException");

    using More = TavoXML::OneNodeHasMoreChildrenThanTheOtherException;
    auto const more = ReportOf<More>("<a><b><x/></b></a>", "<a><b><x/><y/></b></a>");
    ASSERT_TRUE(more);
    EXPECT_EQ(more->GetWhichHasMoreChildren(), kRight);
    ExpectPaths(*more, "a/b", "a/b"); // the parents, not the surplus child
    ExpectGoldenText(*more, "OneNodeHasMoreChildrenThanTheOtherException");
    auto const leftMore = ReportOf<More>("<a><b/></a>", "<a/>");
    ASSERT_TRUE(leftMore);
    EXPECT_EQ(leftMore->GetWhichHasMoreChildren(), kLeft);
}

TEST(CompareReports, TextReportsUseTheParentsPathsAndKeepTheValuesAsTheyAre) {
    using Texts = TavoXML::TextNodeValuesDontMatchException;
    auto const texts = ReportOf<Texts>("<a><b>1</b></a>", "<a><b>2</b></a>");
    ASSERT_TRUE(texts);
    ExpectPaths(*texts, "a/b", "a/b");
    EXPECT_EQ(Utf8(texts->GetTextNodeValue(kLeft)), "1");
    EXPECT_EQ(Utf8(texts->GetTextNodeValue(kRight)), "2");
    ExpectGoldenText(*texts, "TextNodeValuesDontMatchException");

    // A text of several lines stands in the message unescaped and uncut; characters that the default
    // character code lacks become '?' in the text but stay whole in the accessors.
    auto const lines =
        ReportOf<Texts>("<a>first\nsecond &amp; third</a>", "<a>caf\xC3\xA9 \xE2\x82\xAC \xE2\x9C\x93</a>");
    ASSERT_TRUE(lines);
    EXPECT_EQ(Utf8(lines->GetTextNodeValue(kRight)), "caf\xC3\xA9 \xE2\x82\xAC \xE2\x9C\x93");
    ExpectGoldenText(*lines, "TextNodeValuesDontMatchException.lines");

    using Mixed = TavoXML::OneNodeIsElementOneIsTextException;
    auto const mixed = ReportOf<Mixed>("<a><b/></a>", "<a>words</a>");
    ASSERT_TRUE(mixed);
    EXPECT_EQ(Utf8(mixed->GetTextValue()), "words");
    EXPECT_EQ(mixed->GetNodeType(kLeft), 1);
    EXPECT_EQ(mixed->GetNodeType(kRight), 3);
    // An element against a text: the "#text" segment (encoded as the URL form does) on one side only.
    ExpectPaths(*mixed, "a/b", "a/%23text");
    ExpectGoldenText(*mixed, "OneNodeIsElementOneIsTextException");
    auto const leftText = ReportOf<Mixed>("<a>left words</a>", "<a><b/></a>");
    ASSERT_TRUE(leftText);
    EXPECT_EQ(Utf8(leftText->GetTextValue()), "left words");
}

TEST(CompareReports, TypeReportsAndTheirHandlers) {
    auto const types = ReportOf<TavoXML::NodeTypesDontMatchException>("<a><![CDATA[x]]></a>", "<a>x</a>");
    ASSERT_TRUE(types);
    EXPECT_EQ(types->GetNodeType(kLeft), 4);
    EXPECT_EQ(types->GetNodeType(kRight), 3);
    ExpectGoldenText(*types, "NodeTypesDontMatchException");

    auto const special =
        ReportOf<TavoXML::NotSupportedNodeTypesException>("<a><!--same--></a>", "<a><!--same--></a>");
    ASSERT_TRUE(special);
    EXPECT_EQ(special->GetNodeType(kLeft), 8);
    EXPECT_EQ(special->GetNodeType(kRight), 8);
    EXPECT_EQ(Path(*special, kLeft), "a/%23comment");
    ExpectGoldenText(*special, "NotSupportedNodeTypesException");

    // A handler of NodeTypesDontMatchException takes the element-or-text report and gives its own
    // text; the not-supported report stands beside it.
    try { // caught by reference: a copy of the base would lose the text
        Compare("<a><b/></a>", "<a>t</a>");
        ADD_FAILURE() << "no difference was reported";
    } catch (TavoXML::NodeTypesDontMatchException const& report) {
        EXPECT_NE(Utf8(report.GetText()).find("One node is Element, the other is Text."), std::string::npos);
    }
    bool passedTheHandler = false;
    try {
        try {
            Compare("<a><?pi x?></a>", "<a><?pi x?></a>");
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
    auto const against = [&](xercesc::DOMDocument const* left) {
        return Catch<TavoXML::NoElementsInDocumentException>([&] {
            TavoXML::XMLCompareStrictOrder comparator;
            TavoXML::DoXMLCompare(left, emptied.Get(), &comparator, nullptr,
                                  TavoXML::StrictOrderAutoValueCompareOptions());
        });
    };
    auto const none = against(full.Get());
    ASSERT_TRUE(none);
    EXPECT_EQ(Path(*none, kLeft), "");
    EXPECT_TRUE(none->GetNodePath(kRight).GetSegments().empty());
    EXPECT_EQ(none->GetNode(kLeft), nullptr);
    ExpectGoldenText(*none, "NoElementsInDocumentException");
    auto const both = against(emptied.Get()); // two empty documents report the left one
    ASSERT_TRUE(both);
    EXPECT_EQ(Utf8(both->GetText()), "There is no valid element in the XML-document on the left.");

    // The base class: the fallback text, paths from the document element down, a node without a parent
    // as its own name, and a text node given directly ending in its DOM name.
    TavoTest::ParsedDocument const document = Parse("<top><mid><low>v</low></mid></top>");
    xercesc::DOMNode* const low = document.Root()->getFirstChild()->getFirstChild();
    XMLCompareException const base(low, low->getFirstChild());
    ExpectPaths(base, "top/mid/low", "top/mid/low/%23text");
    ASSERT_EQ(base.GetNodePath(kLeft).GetSegments().size(), 3u);
    EXPECT_EQ(base.GetNode(kLeft), low);
    EXPECT_EQ(base.GetNode(kRight), low->getFirstChild());
    ExpectGoldenText(base, "XMLCompareException");
    xercesc::DOMElement* const loose = document.Get()->createElement(u"loose");
    ExpectPaths(XMLCompareException(loose, nullptr), "loose", "");
    loose->release();
}

TEST(CompareReports, TheReportedNodesAreTheNodesThatDiffer) {
    TavoTest::ParsedDocument left = Parse("<a>\n<b>1</b>\n<c k='1'/>\n</a>");
    TavoTest::ParsedDocument const right = Parse("<a>\n<b>2</b>\n<c k='1'/>\n</a>");
    auto const report = Catch<TavoXML::TextNodeValuesDontMatchException>([&] {
        TavoXML::XMLCompareStrictOrder comparator;
        TavoXML::DoXMLCompare(left.Get(), right.Get(), &comparator, nullptr,
                              TavoXML::StrictOrderAutoValueCompareOptions());
    });
    ASSERT_TRUE(report);
    xercesc::DOMNode const* const leftText = report->GetNode(kLeft);
    ASSERT_NE(leftText, nullptr);
    EXPECT_EQ(leftText->getOwnerDocument(), left.Get());
    EXPECT_EQ(leftText->getNodeType(), xercesc::DOMNode::TEXT_NODE);
    EXPECT_EQ(Utf8(leftText->getNodeValue()), "1");
    EXPECT_EQ(report->GetNode(kRight)->getOwnerDocument(), right.Get());
    // The source line of the differing node, as a diff tool would print it.
    NodeLocationInfo const* const line = left.Locations().Find(leftText);
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->lineNumber, 2u);
}
