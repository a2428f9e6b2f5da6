// The value comparators on their own: each judgement, the tolerance rules, both forms of CompareValues
// and the reading of values anew on each IsEqual.
#include "compare/CompareTestSupport.hpp"

#include "common/TestText.hpp"

#include <gtest/gtest.h>
#include <xercesc/dom/DOMText.hpp>

#include <memory>
#include <string>

using namespace CompareTest;

namespace {

// Options whose only meaningful answer is the tolerance.
TavoXML::StrictOrderAutoValueCompareOptions WithEps(double eps) {
    TavoXML::StrictOrderAutoValueCompareOptions options;
    options.SetDoubleEps(eps);
    return options;
}

template <class Comparator>
bool Judge(char const* left, char const* right, TavoXML::IXMLCompareOptions const& options) {
    Comparator comparator;
    return comparator.CompareValues(Tavo::UniString(left, TavoCharCodeUTF8),
                                    Tavo::UniString(right, TavoCharCodeUTF8), options);
}

// A comparator of a caller's own, built on the protected reading of the base class.
class SameLength : public TavoXML::XMLValueComparator {
public:
    bool IsEqual() const override { return GetLeftValue().GetLength() == GetRightValue().GetLength(); }
    void CopyInto(TavoXML::XMLValueComparator& other) const { HandStateTo(other); }
};

} // namespace

TEST(ValueComparators, RealsAreEqualOnlyStrictlyInsideTheTolerance) {
    auto const plain = WithEps(TavoXML::StrictOrderAutoValueCompareOptions::kDefaultDoubleEps);
    EXPECT_TRUE(Judge<TavoXML::XMLCompareDouble>("1", "1.0", plain));
    EXPECT_TRUE(Judge<TavoXML::XMLCompareDouble>("1", "1.000001", plain));
    EXPECT_TRUE(Judge<TavoXML::XMLCompareDouble>(" 2.5e3 ", "2500", plain)); // blanks and exponents read
    EXPECT_FALSE(Judge<TavoXML::XMLCompareDouble>("1", "1.00001", plain));   // not below 1e-05
    // Exactly the tolerance apart is a difference (0.5 and 0.25 are exact in binary).
    EXPECT_FALSE(Judge<TavoXML::XMLCompareDouble>("1", "1.5", WithEps(0.5)));
    EXPECT_TRUE(Judge<TavoXML::XMLCompareDouble>("1", "1.25", WithEps(0.5)));
    // Tolerance 0 asks for exact equality; a negative one makes every pair differ.
    EXPECT_FALSE(Judge<TavoXML::XMLCompareDouble>("1.0", "1.000001", WithEps(0)));
    EXPECT_TRUE(Judge<TavoXML::XMLCompareDouble>("1.0", "1.00", WithEps(0)));
    EXPECT_FALSE(Judge<TavoXML::XMLCompareDouble>("1", "1", WithEps(-1)));
    // A side that is no real makes the pair unequal, even against itself.
    EXPECT_FALSE(Judge<TavoXML::XMLCompareDouble>("abc", "abc", plain));
    EXPECT_FALSE(Judge<TavoXML::XMLCompareDouble>("1", "", plain));
    // The difference of two infinities is no number, so not below any tolerance.
    EXPECT_FALSE(Judge<TavoXML::XMLCompareDouble>("inf", "inf", plain));
}

TEST(ValueComparators, IntegersTextsAndTheAutomaticChoice) {
    auto const plain = WithEps(TavoXML::StrictOrderAutoValueCompareOptions::kDefaultDoubleEps);
    EXPECT_TRUE(Judge<TavoXML::XMLCompareInt>("42", " +42 ", plain));
    EXPECT_FALSE(Judge<TavoXML::XMLCompareInt>("1", "1.0", plain));
    EXPECT_FALSE(Judge<TavoXML::XMLCompareInt>("x", "x", plain)); // no integer differs even from itself
    EXPECT_FALSE(Judge<TavoXML::XMLCompareInt>("4294967296", "4294967296", plain)); // out of 32 bits
    EXPECT_TRUE(Judge<TavoXML::XMLCompareInt>("-2147483648", "-2147483648", plain));

    EXPECT_TRUE(Judge<TavoXML::XMLCompareString>("abc", "  ABC\t", plain));
    EXPECT_TRUE(Judge<TavoXML::XMLCompareString>("\xC3\x84rger", "\xC3\xA4rger", plain)); // Latin-1 capitals
    EXPECT_FALSE(Judge<TavoXML::XMLCompareString>("a b", "ab", plain));
    EXPECT_TRUE(Judge<TavoXML::XMLCompareString>("  ", "\n", plain)); // blank texts trim to equal
    EXPECT_FALSE(Judge<TavoXML::XMLCompareStringCaseSensitive>("abc", "ABC", plain));
    EXPECT_TRUE(Judge<TavoXML::XMLCompareStringCaseSensitive>("abc", " abc ", plain));
    EXPECT_FALSE(Judge<TavoXML::XMLCompareString>("1.0", "1.00", plain));

    EXPECT_FALSE(Judge<TavoXML::XMLCompareAuto>("abc", "1", plain));
    EXPECT_TRUE(Judge<TavoXML::XMLCompareAuto>("1", "1.000001", plain));
    EXPECT_TRUE(Judge<TavoXML::XMLCompareAuto>("Word", " word ", plain));
    EXPECT_FALSE(Judge<TavoXML::XMLCompareAuto>("1", "1.00001", plain));
    EXPECT_FALSE(Judge<TavoXML::XMLCompareAuto>("1", "1.000001", WithEps(0)));

    // GetValueCmp decides the kind of the stored pair on each call and leaves the pair with the caller.
    TavoXML::XMLCompareAuto automatic;
    EXPECT_TRUE(automatic.CompareValues(Tavo::UniString("3"), Tavo::UniString("3.0"), plain));
    std::unique_ptr<TavoXML::XMLValueComparator> const numeric(automatic.GetValueCmp());
    EXPECT_NE(dynamic_cast<TavoXML::XMLCompareDouble*>(numeric.get()), nullptr);
    EXPECT_FALSE(automatic.CompareValues(Tavo::UniString("3"), Tavo::UniString("three"), plain));
    std::unique_ptr<TavoXML::XMLValueComparator> const text(automatic.GetValueCmp());
    EXPECT_NE(dynamic_cast<TavoXML::XMLCompareString*>(text.get()), nullptr);
    EXPECT_EQ(dynamic_cast<TavoXML::XMLCompareStringCaseSensitive*>(text.get()), nullptr);
}

TEST(ValueComparators, TextNodesAreReadAnewAndStateHandsOver) {
    TavoTest::ParsedDocument const document = Parse("<a><b>1.5</b><c>1.5</c></a>");
    auto* const left = static_cast<xercesc::DOMText*>(document.Root()->getFirstChild()->getFirstChild());
    auto* const right = static_cast<xercesc::DOMText*>(document.Root()->getLastChild()->getFirstChild());
    TavoXML::StrictOrderAutoValueCompareOptions options;
    TavoXML::XMLCompareAuto automatic;
    EXPECT_TRUE(automatic.CompareValues(left, right, options));
    right->setData(u"2.5");
    EXPECT_FALSE(automatic.IsEqual()); // the node's value now
    right->setData(u" 1.5000001 ");
    EXPECT_TRUE(automatic.IsEqual());
    // The tolerance is read from the options on each judgement too.
    options.SetDoubleEps(1e-9);
    EXPECT_FALSE(automatic.IsEqual());

    // A null node (an attribute without text) reads as the empty value.
    TavoXML::XMLCompareString blank;
    EXPECT_TRUE(blank.CompareValues(static_cast<xercesc::DOMText const*>(nullptr), nullptr, options));

    // A caller's comparator reads through the base class and can hand its state on.
    SameLength own;
    EXPECT_TRUE(own.CompareValues(Tavo::UniString("abc"), Tavo::UniString("ABC"), options));
    EXPECT_FALSE(own.CompareValues(left, right, options)); // "1.5" against " 1.5000001 "
    TavoXML::XMLCompareDouble handed;
    own.CopyInto(handed);
    EXPECT_FALSE(handed.IsEqual()); // the text pair under 1e-9
    options.SetDoubleEps(1e-5);
    EXPECT_TRUE(handed.IsEqual());
}
