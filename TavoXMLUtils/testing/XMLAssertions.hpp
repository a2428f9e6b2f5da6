// GoogleTest assertions for XML: whether two documents are equal as the library's comparison judges
// them, with the first difference as the failure message.
//
//   EXPECT_TRUE(TavoXML::testing::XMLEqual(expectedText, TavoXML::ExportOChannelToUniString(channel)));
//
// The comparison is DoXMLCompare in strict child order with StrictOrderAutoValueCompareOptions
// (names without regard to case, values as reals within the tolerance when both read as numbers, else as
// trimmed text without regard to case), or AttrRuledCompareOptions with `attributeRuled`.
//
// On a difference the message is the report's text, then the source line of the differing node on each
// side ("expected line 3, actual line 4"): texts are parsed with line tables; a document or node gives
// lines when its document carries a NodeLocations table as user data under "NodeLocations". A text that
// does not parse fails with the parser's line and message. Nothing here throws.
//
// Part of the optional library TavoXMLUtils::Testing, built and installed when GoogleTest is found.
#pragma once

#include "TavoRoot/UniString.hpp"

#include <gtest/gtest.h>
#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMNode;
XERCES_CPP_NAMESPACE_END

// Export macro of the TavoXMLUtils::Testing library: symbols are hidden unless marked.
#define TAVOXMLUTILS_TESTING_API __attribute__((visibility("default")))

namespace TavoXML::testing {

struct XMLCompareSettings {
    double eps = 1e-05;          // tolerance for values read as reals
    bool attributeRuled = false; // "tavo_type" and "tavo_eps" in the documents steer the comparison
    bool skipWhitespace = false; // text nodes of white space alone take no part
};

TAVOXMLUTILS_TESTING_API ::testing::AssertionResult XMLEqual(Tavo::UniString const& expected,
                                                             Tavo::UniString const& actual,
                                                             XMLCompareSettings const& settings = {});
TAVOXMLUTILS_TESTING_API ::testing::AssertionResult XMLEqual(xercesc::DOMDocument const* expected,
                                                             xercesc::DOMDocument const* actual,
                                                             XMLCompareSettings const& settings = {});
TAVOXMLUTILS_TESTING_API ::testing::AssertionResult XMLEqual(xercesc::DOMNode const* expected,
                                                             xercesc::DOMNode const* actual,
                                                             XMLCompareSettings const& settings = {});

} // namespace TavoXML::testing
