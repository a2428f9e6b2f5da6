// The value comparators on their own (each judgement, the tolerance rules, both forms of CompareValues,
// the reading of values anew on each IsEqual) and the ready options: the plain policy with its
// tolerance, and the rules that "tavo_type" and "tavo_eps" give, with their scope.
#include "compare/CompareTestSupport.hpp"

#include <memory>

using namespace CompareTest;
using TavoXML::XMLCompareAuto, TavoXML::XMLCompareDouble, TavoXML::XMLCompareInt, TavoXML::XMLCompareString;

namespace {

using Ruled = TavoXML::AttrRuledCompareOptions;
double const kEps = TavoXML::StrictOrderAutoValueCompareOptions::kDefaultDoubleEps;

// Every consecutive pair of values in `pairs` is judged `equal` by the comparator within the tolerance.
template <class Comparator>
void ExpectPairs(double eps, bool equal, std::initializer_list<char const*> pairs) {
    for (auto pair = pairs.begin(); pair != pairs.end(); pair += 2) {
        Comparator comparator;
        EXPECT_EQ(comparator.CompareValues(Tavo::UniString(pair[0], TavoCharCodeUTF8),
                                           Tavo::UniString(pair[1], TavoCharCodeUTF8), WithEps(eps)),
                  equal)
            << '"' << pair[0] << "\" against \"" << pair[1] << "\" within " << eps;
    }
}

// A comparator of a caller's own, built on the protected reading of the base class.
class SameLength : public TavoXML::XMLValueComparator {
public:
    bool IsEqual() const override { return GetLeftValue().GetLength() == GetRightValue().GetLength(); }
    void CopyInto(TavoXML::XMLValueComparator& other) const { HandStateTo(other); }
};

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

TEST(ValueComparators, RealsAreEqualOnlyStrictlyInsideTheTolerance) {
    // Blanks and exponents are read; 1e-05 apart is not below the tolerance.
    ExpectPairs<XMLCompareDouble>(kEps, true, {"1", "1.0", "1", "1.000001", " 2.5e3 ", "2500"});
    // A side that is no real makes the pair unequal, even against itself; the difference of two
    // infinities is no number, so not below any tolerance.
    ExpectPairs<XMLCompareDouble>(kEps, false, {"1", "1.00001", "abc", "abc", "1", "", "inf", "inf"});
    // Exactly the tolerance apart is a difference (0.5 and 0.25 are exact in binary).
    ExpectPairs<XMLCompareDouble>(0.5, false, {"1", "1.5"});
    ExpectPairs<XMLCompareDouble>(0.5, true, {"1", "1.25"});
    // Tolerance 0 asks for exact equality; a negative one makes every pair differ.
    ExpectPairs<XMLCompareDouble>(0, false, {"1.0", "1.000001"});
    ExpectPairs<XMLCompareDouble>(0, true, {"1.0", "1.00"});
    ExpectPairs<XMLCompareDouble>(-1, false, {"1", "1"});
}

TEST(ValueComparators, IntegersTextsAndTheAutomaticChoice) {
    // No integer differs even from itself; 4294967296 is out of 32 bits.
    ExpectPairs<XMLCompareInt>(kEps, true, {"42", " +42 ", "-2147483648", "-2147483648"});
    ExpectPairs<XMLCompareInt>(kEps, false, {"1", "1.0", "x", "x", "4294967296", "4294967296"});
    // Texts are trimmed (blank ones to equal) and compared without the case of Latin-1 letters.
    ExpectPairs<XMLCompareString>(kEps, true, {"abc", "  ABC\t", "\xC3\x84rger", "\xC3\xA4rger", "  ", "\n"});
    ExpectPairs<XMLCompareString>(kEps, false, {"a b", "ab", "1.0", "1.00"});
    ExpectPairs<TavoXML::XMLCompareStringCaseSensitive>(kEps, false, {"abc", "ABC"});
    ExpectPairs<TavoXML::XMLCompareStringCaseSensitive>(kEps, true, {"abc", " abc "});
    ExpectPairs<XMLCompareAuto>(kEps, true, {"1", "1.000001", "Word", " word "});
    ExpectPairs<XMLCompareAuto>(kEps, false, {"abc", "1", "1", "1.00001"});
    ExpectPairs<XMLCompareAuto>(0, false, {"1", "1.000001"});

    // GetValueCmp decides the kind of the stored pair on each call and leaves the pair with the caller.
    auto const plain = WithEps(kEps);
    XMLCompareAuto automatic;
    EXPECT_TRUE(automatic.CompareValues(Tavo::UniString("3"), Tavo::UniString("3.0"), plain));
    std::unique_ptr<TavoXML::XMLValueComparator> const numeric(automatic.GetValueCmp());
    EXPECT_NE(dynamic_cast<XMLCompareDouble*>(numeric.get()), nullptr);
    EXPECT_FALSE(automatic.CompareValues(Tavo::UniString("3"), Tavo::UniString("three"), plain));
    std::unique_ptr<TavoXML::XMLValueComparator> const words(automatic.GetValueCmp());
    EXPECT_NE(dynamic_cast<XMLCompareString*>(words.get()), nullptr);
    EXPECT_EQ(dynamic_cast<TavoXML::XMLCompareStringCaseSensitive*>(words.get()), nullptr);
}

TEST(ValueComparators, TextNodesAreReadAnewAndStateHandsOver) {
    TavoTest::ParsedDocument const document = Parse("<a><b>1.5</b><c>1.5</c></a>");
    auto* const left = static_cast<xercesc::DOMText*>(document.Root()->getFirstChild()->getFirstChild());
    auto* const right = static_cast<xercesc::DOMText*>(document.Root()->getLastChild()->getFirstChild());
    TavoXML::StrictOrderAutoValueCompareOptions options;
    XMLCompareAuto automatic;
    EXPECT_TRUE(automatic.CompareValues(left, right, options));
    right->setData(u"2.5");
    EXPECT_FALSE(automatic.IsEqual()); // the node's value now
    right->setData(u" 1.5000001 ");
    EXPECT_TRUE(automatic.IsEqual());
    options.SetDoubleEps(1e-9); // the tolerance is read from the options on each judgement too
    EXPECT_FALSE(automatic.IsEqual());

    // A null node (an attribute without text) reads as the empty value.
    XMLCompareString blank;
    EXPECT_TRUE(blank.CompareValues(static_cast<xercesc::DOMText const*>(nullptr), nullptr, options));

    // A caller's comparator reads through the base class and can hand its state on.
    SameLength own;
    EXPECT_TRUE(own.CompareValues(Tavo::UniString("abc"), Tavo::UniString("ABC"), options));
    EXPECT_FALSE(own.CompareValues(left, right, options)); // "1.5" against " 1.5000001 "
    XMLCompareDouble handed;
    own.CopyInto(handed);
    EXPECT_FALSE(handed.IsEqual()); // the text pair under 1e-9
    options.SetDoubleEps(1e-5);
    EXPECT_TRUE(handed.IsEqual());
}

TEST(ReadyOptions, PlainPolicyAndItsTolerance) {
    TavoXML::StrictOrderAutoValueCompareOptions options;
    EXPECT_EQ(options.GetDoubleEps(), 1e-05);
    EXPECT_FALSE(options.CanOptionsChangeAndEffectNotChildNodes());
    std::unique_ptr<TavoXML::IXMLCompareOptions> const clone(options.Clone());
    options.SetDoubleEps(0.25);
    EXPECT_EQ(clone->GetDoubleEps(), 1e-05); // a clone is a copy, not a view
    EXPECT_EQ(std::unique_ptr<TavoXML::IXMLCompareOptions>(options.Clone())->GetDoubleEps(), 0.25);

    ExpectOutcomes(WithEps(kEps), {{"<v>1</v>", "<v>1.0</v>", true},
                                   {"<v>1</v>", "<v>1.000001</v>", true},
                                   {"<v>1</v>", "<v>1.00001</v>", false},
                                   {"<v>abc</v>", "<v>1</v>", false},
                                   {"<Item><SUB/></Item>", "<item><sub/></item>", true}});
    ExpectOutcomes(WithEps(0),
                   {{"<v>1.0</v>", "<v>1.000001</v>", false}, {"<v>1.0</v>", "<v>1.00</v>", true}});
    ExpectOutcomes(WithEps(0.5),
                   {{"<v a='10'>10</v>", "<v a='10.4'>10.4</v>", true}}); // attributes and texts
}

TEST(ReadyOptions, TypeWordsChooseTheComparisonOfTheTextsBelow) {
    ExpectOutcomes(
        Ruled(),
        {
            {"<v tavo_type='int'>x</v>", "<v tavo_type='int'>x</v>", false},
            {"<v tavo_type='int'>1</v>", "<v tavo_type='int'>1.0</v>", false},
            {"<v tavo_type='INT'>7</v>", "<v tavo_type='int'> 7</v>", true},
            {"<v tavo_type='INT'>1</v>", "<v tavo_type='Int'>1.0</v>", false}, // words without case
            {"<v tavo_type='string'>1.0</v>", "<v tavo_type='string'>1.00</v>", false},
            {"<v tavo_type='string'>Abc</v>", "<v tavo_type='string'>aBC </v>", true},
            {"<v tavo_type='double'>abc</v>", "<v tavo_type='double'>abc</v>", false},
            {"<v tavo_type='double'>2</v>", "<v tavo_type='double'>2.000001</v>", true},
            {"<v tavo_type='date'>1.0</v>", "<v tavo_type='date'>1.00</v>", true}, // unknown: automatic
            // A word holds for the element's own texts only, not for its children's.
            {"<v tavo_type='string'><w>1.0</w></v>", "<v tavo_type='string'><w>1.00</w></v>", true},
            {"<v TAVO_TYPE='int'>x</v>", "<v TAVO_TYPE='int'>x</v>", true}, // names are taken exactly
        });
    // Differing words: the attribute itself differs first.
    auto const words = Catch<TavoXML::AttributesDontMatchException>(
        [] { Compare("<v tavo_type='int'>1</v>", "<v tavo_type='double'>1</v>", Ruled()); });
    ASSERT_TRUE(words);
    EXPECT_EQ(Utf8(words->GetAttributeName()), "tavo_type");
    // With the attributes kept out of the attribute comparison, the one-sided and differing rules show.
    ExpectOutcomes(SteeringOnlyOptions(),
                   {{"<v tavo_type='string'>1.0</v>", "<v>1.00</v>", false},
                    {"<v tavo_type='int'>1.0</v>", "<v tavo_type='string'>1.00</v>", true}});
}

TEST(ReadyOptions, ToleranceAttributeHoldsForTheSubtreeOnly) {
    // The subtree of the element passes; its sibling and its parent start from the parent's tolerance.
    std::string const left = "<r><a tavo_eps='0.1'><b>1.0</b><c x='1.0'/></a><d>1.0</d></r>";
    EXPECT_TRUE(Equal(left, "<r><a tavo_eps='0.1'><b>1.05</b><c x='1.05'/></a><d>1.0</d></r>", Ruled()));
    auto const sibling = Catch<TavoXML::TextNodeValuesDontMatchException>(
        [&] { Compare(left, "<r><a tavo_eps='0.1'><b>1.05</b><c x='1.0'/></a><d>1.05</d></r>", Ruled()); });
    ASSERT_TRUE(sibling);
    EXPECT_EQ(Path(*sibling, XMLCompareException::Left), "r/d");
    ExpectOutcomes(Ruled(),
                   {
                       // A descendant sets another; the root's own tolerance reaches the whole tree.
                       {"<r tavo_eps='0.1'><a tavo_eps='0.01'>1.0</a></r>",
                        "<r tavo_eps='0.1'><a tavo_eps='0.01'>1.05</a></r>", false},
                       {"<r tavo_eps='0.1'><a>1.0</a></r>", "<r tavo_eps='0.1'><a>1.05</a></r>", true},
                       // A value that is no number leaves the tolerance as it was; 0 asks for exact equality.
                       {"<r tavo_eps='wide'>1</r>", "<r tavo_eps='wide'>1.000001</r>", true},
                       {"<r tavo_eps='0'>1</r>", "<r tavo_eps='0'>1.000001</r>", false},
                   });
    // On both sides they must agree within 1e-12, else the tolerance stays; one side is enough.
    ExpectOutcomes(SteeringOnlyOptions(),
                   {{"<r tavo_eps='0.1'>1</r>", "<r tavo_eps='0.1000000000001'>1.05</r>", true},
                    {"<r tavo_eps='0.1'>1</r>", "<r tavo_eps='0.2'>1.05</r>", false},
                    {"<r>1</r>", "<r tavo_eps='0.1'>1.05</r>", true}});
}

TEST(ReadyOptions, AttributeNamesCanBeChangedOrSwitchedOff) {
    TavoTest::ParsedDocument const document = Parse("<v tavo_type='int' kind='string' tavo_eps='0.5'/>");
    Ruled options;
    EXPECT_EQ(Utf8(options.GetTypeDeciderAtt()), "tavo_type");
    EXPECT_EQ(Utf8(options.GetEpsAtt()), "tavo_eps");
    EXPECT_TRUE(options.CanOptionsChangeAndEffectNotChildNodes());
    ASSERT_NE(options.GetTypeAttribute(document.Root()), nullptr);
    EXPECT_EQ(options.GetTypeAttribute(nullptr), nullptr);
    options.SetTypeDeciderAtt(Tavo::UniString("kind"));
    EXPECT_EQ(Utf8(options.GetTypeAttribute(document.Root())->getValue()), "string");
    options.SetTypeDeciderAtt(Tavo::UniString());
    EXPECT_EQ(options.GetTypeAttribute(document.Root()), nullptr);
    // Switched off, the type word no longer steers a comparison.
    EXPECT_NO_THROW(Compare("<v tavo_type='string'>1.0</v>", "<v tavo_type='string'>1.00</v>", options));

    // The preparation of a pair sets the tolerance on the object it runs on; switched off, it does not.
    Ruled prepared;
    delete prepared.PrepareNodeComparator(document.Root(), document.Root());
    EXPECT_EQ(prepared.GetDoubleEps(), 0.5);
    Ruled off;
    off.SetEpsAtt(Tavo::UniString());
    delete off.PrepareNodeComparator(document.Root(), document.Root());
    EXPECT_EQ(off.GetDoubleEps(), 1e-05);
    std::unique_ptr<TavoXML::IXMLCompareOptions> const clone(off.Clone()); // carries the names
    EXPECT_EQ(static_cast<Ruled&>(*clone).GetEpsAtt().GetLength(), 0u);
}
