// The walk: pairing of children and attributes, the filter, the order comparators, the three entry
// forms, what a comparison leaves unchanged and frees, and its depth bound.
#include "compare/CompareTestSupport.hpp"

#include "TavoRoot/TavoException.hpp"
#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/compare/SkipWhitespaceTextsCompareFilter.hpp"
#include "Vesk/Location.hpp"
#include "common/TempFolder.hpp"

#include <fstream>

using namespace CompareTest;
using TavoXML::DoXMLCompare;

namespace {

std::string Nested(unsigned int depth, char const* innermost) {
    std::string xml;
    for (unsigned int i = 0; i < depth; ++i) {
        xml = "<e>" + xml + "</e>";
    }
    return xml.insert(3 * depth, innermost);
}

std::string WriteFile(std::string const& name, std::string const& content) {
    std::string const path = (TavoTest::TestTempFolder() / name).string();
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

// Options of a caller's own: a prefix of attribute names is private to each side, and the order
// comparator of every level is the one asked for.
template <class Order>
class PrivateAttributesOptions : public TavoXML::StrictOrderAutoValueCompareOptions {
public:
    IXMLCompareOptions* Clone() const override { return new PrivateAttributesOptions(); }
    bool AcceptAttribute(xercesc::DOMAttr const* attribute) const override {
        return Tavo::ToUTF8String(Tavo::UniString(attribute->getName())).rfind("priv", 0) != 0;
    }
    TavoXML::XMLNodeComparator* PrepareNodeComparator(xercesc::DOMElement const*,
                                                      xercesc::DOMElement const*) override {
        return new Order();
    }
};

// The refusal `run` throws, with its message, file, line and code checked; `message` is a part of the text.
void ExpectRefusal(std::function<void()> const& run, std::string const& message) {
    try {
        run();
        ADD_FAILURE() << "no refusal";
    } catch (Tavo::TavoException const& refusal) {
        EXPECT_NE(Utf8(refusal.GetMessage()).find(message), std::string::npos) << Utf8(refusal.GetMessage());
        EXPECT_EQ(refusal.GetErrorCode(), Tavo::GeneralError);
    }
}

} // namespace

TEST(CompareWalk, ChildrenPairInOrderAttributesInAnyOrder) {
    // Attribute values are judged by the value comparator: reals with tolerance, text trimmed. An empty
    // value (an attribute without a text child) equals only another empty value.
    ExpectOutcomes(
        TavoXML::StrictOrderAutoValueCompareOptions(),
        {{R"(<a x="1" y="two"><b/>text<c z="3"/></a>)", R"(<A y="TWO" x="1.0"><B/>TEXT<c z="3"/></A>)", true},
         {"<a><b></b></a>", "<a><b/></a>", true}, // two empty elements
         {R"(<a v="0.5" w=" Yes"/>)", R"(<a w="yes" v="5e-1"/>)", true},
         {R"(<a v=""/>)", R"(<a v=""/>)", true},
         {R"(<a v=""/>)", R"(<a v="x"/>)", false}});
    // Names of attributes are looked up exactly, names of elements without regard to case.
    auto const caseOfAttribute =
        ReportOf<TavoXML::AttributeMissingException>(R"(<a Id="1"/>)", R"(<a id="1"/>)");
    ASSERT_TRUE(caseOfAttribute);
    EXPECT_EQ(Utf8(caseOfAttribute->GetAttributeName()), "Id");
    EXPECT_EQ(caseOfAttribute->GetWhereItIsMissing(), kRight);
    // Names first, attributes next, children last.
    EXPECT_TRUE(ReportOf<TavoXML::NodeNamesDontMatchException>(R"(<a x="1"><b/></a>)", "<z/>"));
    EXPECT_TRUE(
        ReportOf<TavoXML::AttributesDontMatchException>(R"(<a x="1"><b/></a>)", R"(<a x="2"><c/></a>)"));
}

TEST(CompareWalk, WhitespaceCommentsAndCDATAWithAndWithoutTheFilter) {
    TavoXML::SkipWhitespaceTextsCompareFilter filter;
    TavoXML::StrictOrderAutoValueCompareOptions const options;
    // Unfiltered, indentation is text like any other: one side has text nodes the other lacks.
    EXPECT_TRUE(ReportOf<TavoXML::OneNodeIsElementOneIsTextException>("<a>\n  <b/>\n</a>", "<a><b/></a>"));
    EXPECT_NO_THROW(Compare("<a>\n  <b/>\n</a>", "<a><b/></a>", options, &filter));
    // Two blank texts that differ only in their blanks trim to equal.
    EXPECT_TRUE(Equal("<a>\n  <b/>\n</a>", "<a>\n\t<b/>   </a>"));
    // Comments are not supported by the ready options, also when identical; the filter drops them.
    EXPECT_TRUE(ReportOf<TavoXML::NotSupportedNodeTypesException>("<a><!--c--></a>", "<a><!--c--></a>"));
    EXPECT_NO_THROW(Compare("<a><!--one--><b/><?pi?></a>", "<a><b/><!--two--></a>", options, &filter));
    // A CDATA section against a text: types 4 and 3 unfiltered; filtered, the section is gone and the
    // text side has a child more.
    EXPECT_TRUE(ReportOf<TavoXML::NodeTypesDontMatchException>("<a><![CDATA[x]]></a>", "<a>x</a>"));
    auto const more = ReportOf<TavoXML::OneNodeHasMoreChildrenThanTheOtherException>("<a><![CDATA[x]]></a>",
                                                                                     "<a>x</a>", &filter);
    ASSERT_TRUE(more);
    EXPECT_EQ(more->GetWhichHasMoreChildren(), kRight);

    TavoTest::ParsedDocument const document = Parse("<a> <b/><!--c--><![CDATA[d]]>e</a>");
    xercesc::DOMNode const* node = document.Root()->getFirstChild();
    for (auto const verdict : {xercesc::DOMNodeFilter::FILTER_SKIP, xercesc::DOMNodeFilter::FILTER_ACCEPT,
                               xercesc::DOMNodeFilter::FILTER_REJECT, xercesc::DOMNodeFilter::FILTER_REJECT,
                               xercesc::DOMNodeFilter::FILTER_ACCEPT}) {
        ASSERT_NE(node, nullptr);
        EXPECT_EQ(filter.acceptNode(node), verdict) << Utf8(node->getNodeName());
        node = node->getNextSibling();
    }
}

TEST(CompareWalk, OrderComparatorsAndTheNodeForm) {
    TavoTest::ParsedDocument const left = Parse(R"(<a k="1"><b>x</b></a>)");
    TavoTest::ParsedDocument const right = Parse(R"(<a k="1"><b>x</b></a>)");
    TavoTest::ParsedDocument const renamed = Parse("<z/>");
    TavoXML::StrictOrderAutoValueCompareOptions const options;
    TavoXML::XMLCompareRotatedOrder rotated;
    TavoXML::XMLCompareNoOrder none;
    // The refusals come once the roots have passed their name and attribute tests.
    EXPECT_TRUE(Catch<TavoXML::NodeNamesDontMatchException>(
        [&] { DoXMLCompare(left.Get(), renamed.Get(), &rotated, nullptr, options); }));
    for (TavoXML::XMLNodeComparator* order : {static_cast<TavoXML::XMLNodeComparator*>(&rotated),
                                              static_cast<TavoXML::XMLNodeComparator*>(&none)}) {
        try {
            DoXMLCompare(left.Get(), right.Get(), order, nullptr, options);
            ADD_FAILURE() << "no refusal";
        } catch (Tavo::TavoException const& refusal) {
            EXPECT_EQ(Utf8(refusal.GetMessage()), order == &rotated
                                                      ? "Rotated order walkthrough not yet supported."
                                                      : "No-order walkthrough not yet supported.");
            EXPECT_STREQ(refusal.GetFile(), "");
            EXPECT_EQ(refusal.GetLine(), 0u);
            EXPECT_EQ(refusal.GetErrorCode(), Tavo::GeneralError);
        }
    }
    // A caller's options bring the refusing order to the levels below the root.
    PrivateAttributesOptions<TavoXML::XMLCompareNoOrder> const noOrderBelow;
    TavoXML::XMLCompareStrictOrder strict;
    EXPECT_THROW(DoXMLCompare(left.Get(), right.Get(), &strict, nullptr, noOrderBelow), Tavo::TavoException);

    // The node form compares subtrees, or two texts.
    xercesc::DOMNode const* const leftB = left.Root()->getFirstChild();
    xercesc::DOMNode const* const rightB = right.Root()->getFirstChild();
    EXPECT_NO_THROW(DoXMLCompare(leftB, rightB, &strict, nullptr, options));
    EXPECT_NO_THROW(DoXMLCompare(leftB->getFirstChild(), rightB->getFirstChild(), &strict, nullptr, options));
    EXPECT_TRUE(Catch<TavoXML::OneNodeIsElementOneIsTextException>(
        [&] { DoXMLCompare(leftB, rightB->getFirstChild(), &strict, nullptr, options); }));
    // Outside the contract: a document as a node, null nodes, no comparator are refused, not followed.
    EXPECT_THROW(
        DoXMLCompare(static_cast<xercesc::DOMNode const*>(left.Get()), rightB, &strict, nullptr, options),
        Tavo::TavoException);
    EXPECT_THROW(DoXMLCompare(leftB, nullptr, &strict, nullptr, options), Tavo::TavoException);
    EXPECT_THROW(DoXMLCompare(left.Get(), right.Get(), nullptr, nullptr, options), Tavo::TavoException);
}

TEST(CompareWalk, CallersOptionsDecideWhichAttributesCount) {
    PrivateAttributesOptions<TavoXML::XMLCompareStrictOrder> const options;
    // Private attributes are left out on both sides...
    EXPECT_NO_THROW(
        Compare(R"(<a priv="1" x="1"><b privB="x"/></a>)", R"(<a x="1"><b privB="y"/></a>)", options));
    // ...but an accepted left attribute is compared whatever the options say of its right partner:
    // here both names are accepted, and the right one is missing on the left.
    auto const missing = Catch<TavoXML::AttributeMissingException>(
        [&] { Compare(R"(<a x="1"/>)", R"(<a x="1" y="2" priv="3"/>)", options); });
    ASSERT_TRUE(missing);
    EXPECT_EQ(Utf8(missing->GetAttributeName()), "y");
    EXPECT_EQ(missing->GetWhereItIsMissing(), kLeft);
}

TEST(CompareWalk, NothingChangesAndNothingIsLeftBehind) {
    char const* const original = R"(<r tavo_eps="0.1"><a tavo_type="int"><b>1</b></a><c>1.0</c></r>)";
    TavoTest::ParsedDocument const left = Parse(original);
    TavoTest::ParsedDocument const right =
        Parse(R"(<r tavo_eps="0.1"><a tavo_type="int"><b>1</b></a><c>1.2</c></r>)");
    Live::options = Live::nodeComparators = Live::valueComparators = Live::maxOptions = 0;
    {
        CountingOptions options;
        options.SetDoubleEps(0.5);
        TavoXML::XMLCompareStrictOrder comparator;
        auto const report = Catch<TavoXML::TextNodeValuesDontMatchException>(
            [&] { DoXMLCompare(left.Get(), right.Get(), &comparator, nullptr, options); });
        ASSERT_TRUE(report);
        // Every clone, node comparator and value comparator of the walk is gone; the caller's options
        // keep their state (the tree's tolerance of 0.1 did not reach them).
        EXPECT_EQ(Live::options, 1);
        EXPECT_GE(Live::maxOptions, 3);
        EXPECT_EQ(Live::nodeComparators, 0);
        EXPECT_EQ(Live::valueComparators, 0);
        EXPECT_EQ(options.GetDoubleEps(), 0.5);
        EXPECT_EQ(options.GetReferenceCount(), 0);
        // Both trees are as they were, and an equal comparison frees just as much.
        EXPECT_EQ(Utf8(report->GetNode(kRight)->getNodeValue()), "1.2");
        EXPECT_NO_THROW(DoXMLCompare(left.Get(), left.Get(), &comparator, nullptr, options));
        EXPECT_EQ(Live::options, 1);
        EXPECT_EQ(Live::nodeComparators + Live::valueComparators, 0);
        TavoTest::ParsedDocument const again = Parse(original);
        EXPECT_NO_THROW(DoXMLCompare(left.Get(), again.Get(), &comparator, nullptr, WithEps(0)));
    }
    EXPECT_EQ(Live::options, 0);
}

TEST(CompareWalk, FilesCompareOrTellThatTheyDoNotParse) {
    std::string const a = WriteFile("a.xml", "<?xml version=\"1.0\"?>\n<r>\n  <v>1.0</v>\n</r>\n");
    std::string const b = WriteFile("b.xml", "<r>\n  <v>1</v>\n</r>");
    std::string const c = WriteFile("c.xml", "<r>\n  <v>2</v>\n</r>");
    std::string const broken = WriteFile("broken.xml", "<r>\n  <v>1</w>\n</r>");
    TavoXML::StrictOrderAutoValueCompareOptions const options;
    TavoXML::XMLCompareStrictOrder comparator;
    Vesk::Location const la(a.c_str());
    EXPECT_NO_THROW(DoXMLCompare(la, Vesk::Location(b.c_str()), &comparator, nullptr, options));
    // A difference leaves as a report; the sanitizer run shows that both documents are released.
    auto const report = Catch<TavoXML::TextNodeValuesDontMatchException>(
        [&] { DoXMLCompare(la, Vesk::Location(c.c_str()), &comparator, nullptr, options); });
    ASSERT_TRUE(report);
    EXPECT_EQ(Path(*report, kLeft), "r/v");
    auto const compareWith = [&](std::string const& path) {
        return [&, path] { DoXMLCompare(la, Vesk::Location(path.c_str()), &comparator, nullptr, options); };
    };
    ExpectRefusal(compareWith(broken), broken);
    ExpectRefusal(compareWith(broken), "(line 2)");
    EXPECT_THROW(compareWith((TavoTest::TestTempFolder() / "none.xml").string())(), Tavo::TavoException);
}

TEST(CompareWalk, DepthIsBoundedWithAClearRefusal) {
    unsigned int const bound = TavoXML::XMLNodeComparator::kMaxDepth;
    // The root and kMaxDepth element levels below it compare, to the innermost text.
    EXPECT_TRUE(Equal(Nested(bound + 1, "1"), Nested(bound + 1, "1.0")));
    EXPECT_TRUE(
        ReportOf<TavoXML::TextNodeValuesDontMatchException>(Nested(bound + 1, "1"), Nested(bound + 1, "2")));
    // One level more, and a document 100,000 deep, are refused before the stack can run out; with
    // options that clone per level, every clone is freed on the way out.
    for (unsigned int depth : {bound + 2, 100000u}) {
        std::string const xml = Nested(depth, "");
        Live::options = Live::nodeComparators = Live::valueComparators = 0;
        ExpectRefusal([&] { Compare(xml, xml, CountingOptions()); }, "deeper than " + std::to_string(bound));
        EXPECT_EQ(Live::options + Live::nodeComparators + Live::valueComparators, 0) << depth;
    }
}

TEST(CompareWalk, ManyAttributesInAnyOrder) {
    // More attributes than the first pass marks by position: the rest are remembered by name.
    std::string forward = "<e";
    std::string backward;
    for (int i = 0; i < 70; ++i) {
        forward += " a" + std::to_string(i) + "='" + std::to_string(i) + "'";
        backward = " a" + std::to_string(i) + "='" + std::to_string(i) + ".0'" + backward;
    }
    backward = "<e" + backward;
    EXPECT_TRUE(Equal(forward + "/>", backward + "/>"));
    for (auto const& [l, r, name, side] :
         {std::tuple{forward + "/>", backward + " z='1'/>", "z", kLeft},
          std::tuple{forward + " a99='1'/>", backward + "/>", "a99", kRight}}) {
        auto const missing = ReportOf<TavoXML::AttributeMissingException>(l, r);
        ASSERT_TRUE(missing);
        EXPECT_EQ(Utf8(missing->GetAttributeName()), name);
        EXPECT_EQ(missing->GetWhereItIsMissing(), side);
    }
}
