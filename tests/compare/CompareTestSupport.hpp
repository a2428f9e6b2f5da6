// What the comparison tests share: documents from text, a comparison of two texts, catching one report
// class, and options that count the objects they hand out, so that a test can tell that every clone,
// node comparator and value comparator of a walk was freed again.
#pragma once

#include "TavoXMLUtils/compare/AttrRuledCompareOptions.hpp"
#include "TavoXMLUtils/compare/DoXMLCompare.hpp"
#include "TavoXMLUtils/compare/StrictOrderAutoValueCompareOptions.hpp"
#include "TavoXMLUtils/compare/XMLCompareExceptions.hpp"
#include "TavoXMLUtils/compare/XMLNodeComparators.hpp"
#include "TavoXMLUtils/compare/XMLValueComparators.hpp"
#include "common/ParsedDocument.hpp"
#include "common/TestText.hpp"

#include <gtest/gtest.h>
#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMText.hpp>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>

namespace CompareTest {

using TavoTest::Utf8;
using TavoXML::XMLCompareException;
constexpr XMLCompareException::Side kLeft = XMLCompareException::Left, kRight = XMLCompareException::Right;

inline TavoTest::ParsedDocument Parse(std::string const& xml) {
    TavoTest::ParsedDocument document = TavoTest::ParsedDocument::FromText(xml);
    EXPECT_NE(document.Get(), nullptr) << "does not parse: " << xml;
    return document;
}

inline TavoXML::StrictOrderAutoValueCompareOptions WithEps(double eps) {
    TavoXML::StrictOrderAutoValueCompareOptions options;
    options.SetDoubleEps(eps);
    return options;
}

// Compares two documents given as text with a strict comparator at the root.
inline void
Compare(std::string const& left, std::string const& right,
        TavoXML::IXMLCompareOptions const& options = TavoXML::StrictOrderAutoValueCompareOptions(),
        xercesc::DOMNodeFilter* filter = nullptr) {
    TavoTest::ParsedDocument const l = Parse(left);
    TavoTest::ParsedDocument const r = Parse(right);
    TavoXML::XMLCompareStrictOrder comparator;
    TavoXML::DoXMLCompare(l.Get(), r.Get(), &comparator, filter, options);
}

// Whether the two documents compare equal under the options (the automatic ones by default).
inline bool
Equal(std::string const& left, std::string const& right,
      TavoXML::IXMLCompareOptions const& options = TavoXML::StrictOrderAutoValueCompareOptions()) {
    try {
        Compare(left, right, options);
        return true;
    } catch (TavoXML::XMLCompareException const&) {
        return false;
    }
}

// Each row: left document, right document, whether they compare equal under the options.
struct Outcome {
    char const* left;
    char const* right;
    bool equal;
};
inline void ExpectOutcomes(TavoXML::IXMLCompareOptions const& options, std::initializer_list<Outcome> rows) {
    for (Outcome const& row : rows) {
        EXPECT_EQ(Equal(row.left, row.right, options), row.equal) << row.left << " against " << row.right;
    }
}

// The report of class Report that `run` throws; a failure (and nothing) if it returns or throws another.
template <class Report>
std::optional<Report> Catch(std::function<void()> const& run) {
    try {
        run();
        ADD_FAILURE() << "no difference was reported";
    } catch (Report const& report) {
        return report;
    } catch (TavoXML::XMLCompareException const& other) {
        ADD_FAILURE() << "another report: " << Tavo::ToUTF8String(other.GetText());
    }
    return std::nullopt;
}

// The report of class Report that comparing the two texts with the automatic options throws.
template <class Report>
std::optional<Report> ReportOf(std::string const& left, std::string const& right,
                               xercesc::DOMNodeFilter* filter = nullptr) {
    return Catch<Report>(
        [&] { Compare(left, right, TavoXML::StrictOrderAutoValueCompareOptions(), filter); });
}

inline std::string Path(XMLCompareException const& report, XMLCompareException::Side side) {
    return Tavo::ToUTF8String(report.GetNodePathUniString(side));
}

inline void ExpectPaths(XMLCompareException const& report, std::string const& left,
                        std::string const& right) {
    EXPECT_EQ(Path(report, XMLCompareException::Left), left);
    EXPECT_EQ(Path(report, XMLCompareException::Right), right);
}

// Live objects handed out by CountingOptions.
struct Live {
    static inline int options = 0, nodeComparators = 0, valueComparators = 0, maxOptions = 0;
};

template <class Base, int* live>
class Counted : public Base {
public:
    Counted() { ++*live; }
    ~Counted() override { --*live; }
};
using CountingStrictOrder = Counted<TavoXML::XMLCompareStrictOrder, &Live::nodeComparators>;
using CountingAuto = Counted<TavoXML::XMLCompareAuto, &Live::valueComparators>;

// Attribute-ruled options (so that every element pair gets a clone) that count what they hand out.
class CountingOptions : public TavoXML::AttrRuledCompareOptions {
public:
    CountingOptions() { Count(); }
    CountingOptions(CountingOptions const& other) : TavoXML::AttrRuledCompareOptions(other) { Count(); }
    ~CountingOptions() override { --Live::options; }

    TavoXML::IXMLCompareOptions* Clone() const override { return new CountingOptions(*this); }
    TavoXML::XMLValueComparator* GetValueComparator() const override { return new CountingAuto(); }
    TavoXML::XMLValueComparator* GetAttributeValueComparator(xercesc::DOMAttr const*) const override {
        return new CountingAuto();
    }
    TavoXML::XMLNodeComparator* PrepareNodeComparator(xercesc::DOMElement const* left,
                                                      xercesc::DOMElement const* right) override {
        delete TavoXML::AttrRuledCompareOptions::PrepareNodeComparator(left, right);
        return new CountingStrictOrder();
    }

private:
    static void Count() {
        ++Live::options;
        Live::maxOptions = std::max(Live::maxOptions, Live::options);
    }
};

} // namespace CompareTest
