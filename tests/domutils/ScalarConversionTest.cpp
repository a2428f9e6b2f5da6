// Scalar conversion: the parsers at and beyond every limit with the exact message of each failure, the
// trimming sets, the unquoting, the 8-bit conversion, and ConvException's line bookkeeping.
#include "TavoXMLUtils/domutils/ScalarConversion.hpp"
#include "TavoXMLUtils/domutils/ConvException.hpp"
#include "TavoXMLUtils/parsing/NodeLocations.hpp"

#include <gtest/gtest.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMImplementation.hpp>
#include <xercesc/dom/DOMImplementationRegistry.hpp>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>

using namespace TavoXMLUtils;

namespace {

// The message of the ConvException that `call` throws, as UTF-8; fails the test when nothing is thrown.
std::string MessageOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const ConvException& e) {
        EXPECT_EQ(e.line, 0u);
        Tavo::UniString::CStrHolder text = e.message.ToCStr(0, Tavo::UniString::kAll, TavoCharCodeUTF8);
        return std::string(text.Get());
    }
    ADD_FAILURE() << "no ConvException";
    return "<nothing thrown>";
}

struct ArrayDelete {
    void operator()(char* text) const noexcept { delete[] text; }
};
using CharArray = std::unique_ptr<char, ArrayDelete>;

} // namespace

TEST(ScalarConversion, GetIntNumLimitsAndMessages) {
    EXPECT_EQ(GetIntNum("0"), 0u);
    EXPECT_EQ(GetIntNum("0012"), 12u);
    EXPECT_EQ(GetIntNum("000000000012"), 12u);
    EXPECT_EQ(GetIntNum("4294967295"), 4294967295u);
    EXPECT_EQ(GetIntNum("0000004294967295"), 4294967295u);
    EXPECT_EQ(GetIntNum("429496729"), 429496729u);
    EXPECT_EQ(MessageOf([] { GetIntNum("4294967296"); }), "Integer Overflow");
    EXPECT_EQ(MessageOf([] { GetIntNum("4294967300"); }), "Integer Overflow");
    EXPECT_EQ(MessageOf([] { GetIntNum("99999999999999999999"); }), "Integer Overflow");
    EXPECT_EQ(MessageOf([] { GetIntNum("4294967295x"); }), "Too many data");
    EXPECT_EQ(MessageOf([] { GetIntNum("42949672950"); }), "Integer Overflow");
    EXPECT_EQ(MessageOf([] { GetIntNum(""); }), "");
    EXPECT_EQ(MessageOf([] { GetIntNum(" 12"); }), "Too many data");
    EXPECT_EQ(MessageOf([] { GetIntNum("12 "); }), "Too many data");
    EXPECT_EQ(MessageOf([] { GetIntNum("12.5"); }), "Too many data");
    EXPECT_EQ(MessageOf([] { GetIntNum("+12"); }), "Too many data");
    EXPECT_EQ(MessageOf([] { GetIntNum("0x1F"); }), "Too many data");
}

TEST(ScalarConversion, GetSignedLongRange) {
    EXPECT_EQ(GetSignedLong("2147483647"), 2147483647);
    EXPECT_EQ(GetSignedLong("+2147483647"), 2147483647);
    EXPECT_EQ(GetSignedLong("-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(GetSignedLong("-0"), 0);
    EXPECT_EQ(GetSignedLong("-0012"), -12);
    EXPECT_EQ(MessageOf([] { GetSignedLong("2147483648"); }), "Integer Overflow");
    EXPECT_EQ(MessageOf([] { GetSignedLong("+2147483648"); }), "Integer Overflow");
    EXPECT_EQ(MessageOf([] { GetSignedLong("4294967295"); }), "Integer Overflow");
    EXPECT_EQ(MessageOf([] { GetSignedLong("-2147483649"); }), "Integer Underflow");
    EXPECT_EQ(MessageOf([] { GetSignedLong("-4294967295"); }), "Integer Underflow");
    // Beyond 32 bits the digit parser's overflow comes first, whatever the sign.
    EXPECT_EQ(MessageOf([] { GetSignedLong("-4294967296"); }), "Integer Overflow");
    EXPECT_EQ(MessageOf([] { GetSignedLong("-"); }), "");
    EXPECT_EQ(MessageOf([] { GetSignedLong("+"); }), "");
    EXPECT_EQ(MessageOf([] { GetSignedLong("--5"); }), "Too many data");
    EXPECT_EQ(MessageOf([] { GetSignedLong("+-5"); }), "Too many data");
}

TEST(ScalarConversion, GetULongTakesOnePlusOnly) {
    EXPECT_EQ(GetULong("+4294967295"), 4294967295u);
    EXPECT_EQ(GetULong("17"), 17u);
    EXPECT_EQ(MessageOf([] { GetULong("-1"); }), "Too many data");
    EXPECT_EQ(MessageOf([] { GetULong("++1"); }), "Too many data");
    EXPECT_EQ(MessageOf([] { GetULong("+"); }), "");
    EXPECT_EQ(MessageOf([] { GetULong("+4294967296"); }), "Integer Overflow");
}

TEST(ScalarConversion, GetDoubleFollowsStrtod) {
    EXPECT_EQ(GetDouble("1.5"), 1.5);
    EXPECT_EQ(GetDouble(" \t1.5"), 1.5);
    EXPECT_EQ(GetDouble("-2.5e3"), -2500.0);
    EXPECT_EQ(GetDouble("0x10"), 16.0);
    EXPECT_EQ(GetDouble("1e-999"), 0.0);
    EXPECT_TRUE(std::isinf(GetDouble("inf")));
    EXPECT_TRUE(std::isnan(GetDouble("nan")));
    EXPECT_EQ(MessageOf([] { GetDouble("abc"); }), "Floating point number error");
    EXPECT_EQ(MessageOf([] { GetDouble(""); }), "Floating point number error");
    EXPECT_EQ(MessageOf([] { GetDouble("1e999"); }), "Floating point number error");
    EXPECT_EQ(MessageOf([] { GetDouble("-1e999"); }), "Floating point number error");
    EXPECT_EQ(MessageOf([] { GetDouble("1.5x"); }), "Too many data");
    EXPECT_EQ(MessageOf([] { GetDouble("1.5 "); }), "Too many data");
    // A range error is reported before the rest of the text is looked at.
    EXPECT_EQ(MessageOf([] { GetDouble("1e999x"); }), "Floating point number error");
}

TEST(ScalarConversion, GetStringValueUnquotesInPlace) {
    char doubleQuotes[] = "\"\"";
    EXPECT_STREQ(GetStringValue(doubleQuotes), "");
    char quoted[] = "'a\"b'";
    char* inner = GetStringValue(quoted);
    EXPECT_EQ(inner, quoted + 1);
    EXPECT_STREQ(inner, "a\"b");
    char backquoted[] = "`x`y`";
    EXPECT_STREQ(GetStringValue(backquoted), "x`y");
    for (const char* bad : {"\"", "\"a'", "abc", "", "'abc", "(a)"}) {
        std::string copy(bad);
        EXPECT_EQ(MessageOf([&] { GetStringValue(copy.data()); }), "String value error") << bad;
        EXPECT_EQ(copy, bad) << "unchanged on failure";
    }

    std::u16string wide = u"'\x20AC'";
    auto* text = reinterpret_cast<unsigned short*>(wide.data());
    unsigned short* result = GetStringValueU(text);
    EXPECT_EQ(result, text + 1);
    EXPECT_EQ(result[0], 0x20AC);
    EXPECT_EQ(result[1], 0);
    std::u16string unmatched = u"\"a'";
    EXPECT_EQ(MessageOf([&] { GetStringValueU(reinterpret_cast<unsigned short*>(unmatched.data())); }),
              "String value error");
    EXPECT_EQ(unmatched, u"\"a'");
}

TEST(ScalarConversion, TrimmingSets) {
    char mixed1[] = "\t a b \r\n";
    char* text = mixed1;
    CutWhSpace(text);
    EXPECT_STREQ(text, "a b");

    char mixed2[] = "\t a b \r\n";
    text = mixed2;
    CutTabSpace(text);
    EXPECT_STREQ(text, "a b \r\n");
    EXPECT_EQ(text, mixed2 + 2);

    char blank[] = " \t\r\n ";
    text = blank;
    CutWhSpace(text);
    EXPECT_STREQ(text, "");

    std::u16string wide = u"\n\t x\ty \r";
    auto* wideText = reinterpret_cast<unsigned short*>(wide.data());
    CutWhSpaceU(wideText);
    EXPECT_EQ(Tavo::UniString(wideText).View(), std::u16string_view(u"x\ty"));

    text = nullptr;
    CutWhSpace(text);
    EXPECT_EQ(text, nullptr);
}

TEST(ScalarConversion, UnicodeToStringStrictAndLossy) {
    CharArray empty(UnicodeToString(Tavo::UniString(), false));
    EXPECT_STREQ(empty.get(), "");
    CharArray euro(UnicodeToString(Tavo::UniString(u"a\x20AC\x00E9"), false));
    EXPECT_STREQ(euro.get(), "a\x80\xE9");

    const Tavo::UniString greek(u"x\x03A9y");
    EXPECT_EQ(MessageOf([&] { CharArray(UnicodeToString(greek, false)); }), "Failed to transcode string.");
    CharArray lossy(UnicodeToString(greek, true));
    ASSERT_NE(lossy, nullptr);
    EXPECT_EQ(std::string(lossy.get()).size(), 3u);
    EXPECT_EQ(lossy.get()[0], 'x');
    EXPECT_EQ(lossy.get()[2], 'y');
}

TEST(ConvExceptionTest, ConstructorsAndFirstLineWins) {
    const ConvException plain;
    EXPECT_TRUE(plain.message.IsEmpty());
    EXPECT_EQ(plain.line, 0u);

    NodeLocationInfo location;
    location.lineNumber = 42;
    const ConvException fromText("caf\xE9", &location);
    EXPECT_EQ(fromText.message.View(), std::u16string_view(u"caf\x00E9"));
    EXPECT_EQ(fromText.line, 42u);
    EXPECT_EQ(ConvException("x", static_cast<const NodeLocationInfo*>(nullptr)).line, 0u);
    EXPECT_EQ(ConvException(Tavo::UniString(u"y"), &location).line, 42u);

    xercesc::DOMImplementation* implementation =
        xercesc::DOMImplementationRegistry::getDOMImplementation(u"");
    ASSERT_NE(implementation, nullptr);
    std::unique_ptr<xercesc::DOMDocument, void (*)(xercesc::DOMDocument*)> document(
        implementation->createDocument(nullptr, u"root", nullptr),
        [](xercesc::DOMDocument* d) { d->release(); });
    xercesc::DOMElement* root = document->getDocumentElement();
    xercesc::DOMElement* first = document->createElement(u"first");
    xercesc::DOMElement* second = document->createElement(u"second");
    root->appendChild(first);
    root->appendChild(second);

    // Without node locations on the document no line is found.
    ConvException noTable(Tavo::UniString(u"m"), first);
    EXPECT_EQ(noTable.line, 0u);

    NodeLocations locations;
    locations.AddNew(second, 9);
    locations.AddNew(first, 5);
    locations.AddNew(first, 6);
    document->setUserData(u"NodeLocations", &locations, nullptr);

    ConvException e(Tavo::UniString(u"m"), root);
    EXPECT_EQ(e.line, 0u) << "the root has no entry";
    e.StoreErrLoc(nullptr);
    EXPECT_EQ(e.line, 0u);
    e.StoreErrLoc(first);
    EXPECT_EQ(e.line, 5u) << "the earliest entry of a node";
    e.StoreErrLoc(second);
    EXPECT_EQ(e.line, 5u) << "the first line found wins";
    e.StoreErrLoc(document.get());
    EXPECT_EQ(e.line, 5u);
    ConvException fresh;
    fresh.StoreErrLoc(document.get());
    EXPECT_EQ(fresh.line, 0u) << "the document node has no owner document";
    EXPECT_EQ(ConvException(Tavo::UniString(u"m"), second).line, 9u);
    document->setUserData(u"NodeLocations", nullptr, nullptr);
}
