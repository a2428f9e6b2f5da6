// The ready options: the plain policy with its tolerance, and the rules that "tavo_type" and "tavo_eps"
// give, with their scope.
#include "compare/CompareTestSupport.hpp"

#include "common/TestText.hpp"

#include <gtest/gtest.h>
#include <xercesc/dom/DOMAttr.hpp>

#include <memory>
#include <string>

using namespace CompareTest;

namespace {

using Ruled = TavoXML::AttrRuledCompareOptions;

TavoXML::StrictOrderAutoValueCompareOptions WithEps(double eps) {
    TavoXML::StrictOrderAutoValueCompareOptions options;
    options.SetDoubleEps(eps);
    return options;
}

// Ruled options that keep the two steering attributes out of the attribute comparison, so that the
// one-sided rules can be seen.
class SteeringOnlyOptions : public TavoXML::AttrRuledCompareOptions {
public:
    IXMLCompareOptions* Clone() const override { return new SteeringOnlyOptions(*this); }
    bool AcceptAttribute(xercesc::DOMAttr const* attribute) const override {
        Tavo::UniString const name(attribute->getName());
        return name != GetTypeDeciderAtt() && name != GetEpsAtt();
    }
};

} // namespace

TEST(ReadyOptions, PlainPolicyAndItsTolerance) {
    TavoXML::StrictOrderAutoValueCompareOptions options;
    EXPECT_EQ(options.GetDoubleEps(), 1e-05);
    EXPECT_FALSE(options.CanOptionsChangeAndEffectNotChildNodes());
    std::unique_ptr<TavoXML::IXMLCompareOptions> const clone(options.Clone());
    options.SetDoubleEps(0.25);
    EXPECT_EQ(clone->GetDoubleEps(), 1e-05); // a clone is a copy, not a view
    EXPECT_EQ(std::unique_ptr<TavoXML::IXMLCompareOptions>(options.Clone())->GetDoubleEps(), 0.25);

    EXPECT_TRUE(Equal("<v>1</v>", "<v>1.0</v>"));
    EXPECT_TRUE(Equal("<v>1</v>", "<v>1.000001</v>"));
    EXPECT_FALSE(Equal("<v>1</v>", "<v>1.00001</v>"));
    EXPECT_FALSE(Equal("<v>1.0</v>", "<v>1.000001</v>", WithEps(0)));
    EXPECT_TRUE(Equal("<v>1.0</v>", "<v>1.00</v>", WithEps(0)));
    EXPECT_TRUE(
        Equal("<v a='10'>10</v>", "<v a='10.4'>10.4</v>", WithEps(0.5))); // attributes and texts alike
    EXPECT_FALSE(Equal("<v>abc</v>", "<v>1</v>"));
    EXPECT_TRUE(Equal("<Item><SUB/></Item>", "<item><sub/></item>"));
}

TEST(ReadyOptions, TypeWordsChooseTheComparisonOfTheTextsBelow) {
    EXPECT_FALSE(Equal("<v tavo_type='int'>x</v>", "<v tavo_type='int'>x</v>", Ruled()));
    EXPECT_FALSE(Equal("<v tavo_type='int'>1</v>", "<v tavo_type='int'>1.0</v>", Ruled()));
    EXPECT_TRUE(
        Equal("<v tavo_type='INT'>7</v>", "<v tavo_type='int'> 7</v>", Ruled())); // words without case
    EXPECT_FALSE(Equal("<v tavo_type='string'>1.0</v>", "<v tavo_type='string'>1.00</v>", Ruled()));
    EXPECT_TRUE(Equal("<v tavo_type='string'>Abc</v>", "<v tavo_type='string'>aBC </v>", Ruled()));
    EXPECT_FALSE(Equal("<v tavo_type='double'>abc</v>", "<v tavo_type='double'>abc</v>", Ruled()));
    EXPECT_TRUE(Equal("<v tavo_type='double'>2</v>", "<v tavo_type='double'>2.000001</v>", Ruled()));
    EXPECT_TRUE(
        Equal("<v tavo_type='date'>1.0</v>", "<v tavo_type='date'>1.00</v>", Ruled())); // unknown: automatic
    // Differing words: the attribute itself differs first.
    auto const words = Catch<TavoXML::AttributesDontMatchException>([] {
        Compare("<v tavo_type='int'>1</v>", "<v tavo_type='double'>1</v>",
                TavoXML::AttrRuledCompareOptions());
    });
    ASSERT_TRUE(words);
    EXPECT_EQ(TavoTest::Utf8(words->GetAttributeName()), "tavo_type");
    // A word holds for the element's own texts only, not for its children's.
    EXPECT_TRUE(
        Equal("<v tavo_type='string'><w>1.0</w></v>", "<v tavo_type='string'><w>1.00</w></v>", Ruled()));
    // With the attributes kept out of the attribute comparison, the one-sided and differing rules show.
    EXPECT_FALSE(Equal("<v tavo_type='string'>1.0</v>", "<v>1.00</v>", SteeringOnlyOptions()));
    EXPECT_TRUE(Equal("<v tavo_type='int'>1.0</v>", "<v tavo_type='string'>1.00</v>", SteeringOnlyOptions()));
}

TEST(ReadyOptions, ToleranceAttributeHoldsForTheSubtreeOnly) {
    // The subtree of the element passes; its sibling and its parent start from the parent's tolerance.
    std::string const left = "<r><a tavo_eps='0.1'><b>1.0</b><c x='1.0'/></a><d>1.0</d></r>";
    EXPECT_TRUE(Equal(left, "<r><a tavo_eps='0.1'><b>1.05</b><c x='1.05'/></a><d>1.0</d></r>", Ruled()));
    auto const sibling = Catch<TavoXML::TextNodeValuesDontMatchException>([&] {
        Compare(left, "<r><a tavo_eps='0.1'><b>1.05</b><c x='1.0'/></a><d>1.05</d></r>",
                TavoXML::AttrRuledCompareOptions());
    });
    ASSERT_TRUE(sibling);
    EXPECT_EQ(Path(*sibling, TavoXML::XMLCompareException::Left), "r/d");
    // A descendant sets another; the root's own tolerance reaches the whole tree.
    EXPECT_FALSE(Equal("<r tavo_eps='0.1'><a tavo_eps='0.01'>1.0</a></r>",
                       "<r tavo_eps='0.1'><a tavo_eps='0.01'>1.05</a></r>", Ruled()));
    EXPECT_TRUE(Equal("<r tavo_eps='0.1'><a>1.0</a></r>", "<r tavo_eps='0.1'><a>1.05</a></r>", Ruled()));
    // A value that is no number leaves the tolerance as it was; 0 asks for exact equality.
    EXPECT_TRUE(Equal("<r tavo_eps='wide'>1</r>", "<r tavo_eps='wide'>1.000001</r>", Ruled()));
    EXPECT_FALSE(Equal("<r tavo_eps='0'>1</r>", "<r tavo_eps='0'>1.000001</r>", Ruled()));
    // On both sides they must agree within 1e-12, else the tolerance stays.
    EXPECT_TRUE(
        Equal("<r tavo_eps='0.1'>1</r>", "<r tavo_eps='0.1000000000001'>1.05</r>", SteeringOnlyOptions()));
    EXPECT_FALSE(Equal("<r tavo_eps='0.1'>1</r>", "<r tavo_eps='0.2'>1.05</r>", SteeringOnlyOptions()));
    EXPECT_TRUE(Equal("<r>1</r>", "<r tavo_eps='0.1'>1.05</r>", SteeringOnlyOptions())); // one side is enough
}

TEST(ReadyOptions, AttributeNamesCanBeChangedOrSwitchedOff) {
    TavoTest::ParsedDocument const document = Parse("<v tavo_type='int' kind='string' tavo_eps='0.5'/>");
    TavoXML::AttrRuledCompareOptions options;
    EXPECT_EQ(TavoTest::Utf8(options.GetTypeDeciderAtt()), "tavo_type");
    EXPECT_EQ(TavoTest::Utf8(options.GetEpsAtt()), "tavo_eps");
    EXPECT_TRUE(options.CanOptionsChangeAndEffectNotChildNodes());
    ASSERT_NE(options.GetTypeAttribute(document.Root()), nullptr);
    EXPECT_EQ(options.GetTypeAttribute(nullptr), nullptr);
    options.SetTypeDeciderAtt(Tavo::UniString("kind"));
    EXPECT_EQ(TavoTest::Utf8(options.GetTypeAttribute(document.Root())->getValue()), "string");
    options.SetTypeDeciderAtt(Tavo::UniString());
    EXPECT_EQ(options.GetTypeAttribute(document.Root()), nullptr);

    // The preparation of a pair sets the tolerance on the object it runs on; switched off, it does not.
    TavoXML::AttrRuledCompareOptions prepared;
    delete prepared.PrepareNodeComparator(document.Root(), document.Root());
    EXPECT_EQ(prepared.GetDoubleEps(), 0.5);
    TavoXML::AttrRuledCompareOptions off;
    off.SetEpsAtt(Tavo::UniString());
    delete off.PrepareNodeComparator(document.Root(), document.Root());
    EXPECT_EQ(off.GetDoubleEps(), 1e-05);
    // A clone carries the names and the tolerance.
    std::unique_ptr<TavoXML::IXMLCompareOptions> const clone(off.Clone());
    EXPECT_EQ(static_cast<TavoXML::AttrRuledCompareOptions&>(*clone).GetEpsAtt().GetLength(), 0u);

    // Names are taken exactly, and the switched-off feature no longer steers a comparison.
    TavoXML::AttrRuledCompareOptions noTypes;
    noTypes.SetTypeDeciderAtt(Tavo::UniString());
    EXPECT_NO_THROW(Compare("<v tavo_type='string'>1.0</v>", "<v tavo_type='string'>1.00</v>", noTypes));
    EXPECT_TRUE(Equal("<v TAVO_TYPE='int'>x</v>", "<v TAVO_TYPE='int'>x</v>", Ruled()));
}
