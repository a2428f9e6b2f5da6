// What the writers write, the throwing readers read back: numbers at their limits, quoted strings with
// every quote and the CDATA end marker, line ends, and both boolean vocabularies in both families.
#include "TavoXMLUtils/domutils/AttributeReaders.hpp"
#include "TavoXMLUtils/domutils/ConvException.hpp"
#include "TavoXMLUtils/domutils/TagReaders.hpp"
#include "TavoXMLUtils/domutils/TagWriters.hpp"
#include "TavoXMLUtils/domutils/TypedNodeAccessors.hpp"

#include "common/TestText.hpp"
#include "domutils/WriterTestSupport.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>

using namespace TavoXMLUtils;
using TavoTest::ScratchDocument;
using xercesc::DOMElement;

namespace {

std::string StringBack(DOMElement const* tag) {
    std::unique_ptr<char[]> text(GetStringTag(tag, nullptr));
    return text.get();
}

std::u16string StringBackU(DOMElement const* tag) {
    std::unique_ptr<unsigned short[]> text(GetStringTagU(tag, nullptr));
    return std::u16string(reinterpret_cast<char16_t const*>(text.get()));
}

std::string MessageOf(DOMElement const* tag) {
    try {
        std::unique_ptr<char[]> text(GetStringTag(tag, nullptr));
    } catch (ConvException const& error) {
        return TavoTest::Utf8(error.message);
    }
    return "no exception";
}

} // namespace

TEST(WriterRoundTrip, Numbers) {
    ScratchDocument doc;
    DOMElement* root = doc.Root();
    for (int v : {std::numeric_limits<int>::min(), -1, 0, 12, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(GetSLongTag(NewSLongTag(root, "N", v, 1)), v);
    }
    for (unsigned int v : {0u, 1u, 4294967295u}) {
        EXPECT_EQ(GetULongTag(NewULongTag(root, "N", v, 1)), v);
    }
    // Twelve significant digits survive; three-digit exponents read back.
    for (double v : {0.0, -0.0, 0.1, -2.5, 1e20, 1e-5, 1e100, -1e-300, 123456789012.0}) {
        EXPECT_EQ(GetDoubleTag(NewDoubleTag(root, "D", v, 1)), v) << v;
    }
    EXPECT_FALSE(std::signbit(GetDoubleTag(NewDoubleTag(root, "D", -0.0, 1))));
    EXPECT_DOUBLE_EQ(GetDoubleTag(NewDoubleTag(root, "D", 3.14159265358979, 1)), 3.14159265359);
    EXPECT_EQ(GetDoubleTag(NewDoubleTag(root, "D", std::numeric_limits<double>::infinity(), 1)),
              std::numeric_limits<double>::infinity());

    SetSLongAttr(root, "s", std::numeric_limits<int>::min());
    SetULongAttr(root, "u", 4294967295u);
    EXPECT_EQ(GetSLongAttr(root, Tavo::UniString(u"s")), std::numeric_limits<int>::min());
    EXPECT_EQ(GetULongAttr(root, Tavo::UniString(u"u")), 4294967295u);
}

TEST(WriterRoundTrip, QuotedStrings) {
    ScratchDocument doc;
    DOMElement* root = doc.Root();
    for (char const* text : {"", "plain", "a\"b", "a\"b'c", "a\"b'c`d", "'", "x]]>y", "]]>]]>", "  padded  ",
                             "\"", "\"\"", "<&>"}) {
        EXPECT_EQ(StringBack(NewStringTag(root, "S", text, 1)), text);
        Tavo::UniString const wide(text, TavoCharCodeDefault);
        EXPECT_EQ(StringBackU(NewStringTag(root, "S", wide.GetUStr(), 1)), wide.View()) << text;
    }
    // Characters beyond Windows-1252 come back whole through the 16-bit reader.
    std::u16string const greek = u"\u03B1\u03B2\u03B3 \u20AC";
    EXPECT_EQ(StringBackU(NewStringWLenTag(root, "S", reinterpret_cast<unsigned short const*>(greek.c_str()),
                                           static_cast<int>(greek.size()), 1)),
              greek);
    // Line ends are one line feed in the tree: carriage returns through the 8-bit reader, line feeds
    // through the 16-bit one.
    DOMElement* lines = NewStringTag(root, "S", "a\r\nb\rc\nd", 1);
    EXPECT_EQ(StringBack(lines), "a\rb\rc\rd");
    EXPECT_EQ(StringBackU(lines), u"a\nb\nc\nd");
    // The readers take the blank out of every "]] ", so a text that held one does not survive.
    EXPECT_EQ(StringBack(NewStringTag(root, "S", "a]] b", 1)), "a]]b");
    // A text node is no string tag.
    EXPECT_EQ(MessageOf(NewTextTag(root, "T", "\"plain\"", 1)), "Tag 'T'; Missing CDATA section in tag 'T'");
}

TEST(WriterRoundTrip, BooleanVocabularies) {
    ScratchDocument doc;
    DOMElement* root = doc.Root();
    // The NewTag family writes words, the lenient family digits; the throwing readers take all of them.
    EXPECT_TRUE(GetBoolTag(NewBoolTag(root, "B", true, 1)));
    EXPECT_FALSE(GetBoolTag(NewBoolTag(root, "B", false, 1)));
    EXPECT_TRUE(GetBoolTag(NewLegacyBoolTag(root, "B", true, 1)));
    EXPECT_FALSE(GetBoolTag(NewLegacyBoolTag(root, "B", false, 1)));
    ASSERT_TRUE(WriteBooleanElement(root, Tavo::UniString(u"B"), true, 1));
    EXPECT_TRUE(GetBoolTag(static_cast<DOMElement*>(root->getLastChild()->getPreviousSibling())));
    ASSERT_TRUE(WriteBooleanElement(root, Tavo::String("B"), false, 1));
    EXPECT_FALSE(GetBoolTag(static_cast<DOMElement*>(root->getLastChild()->getPreviousSibling())));

    SetBooleanAttr(root, "t", true);
    SetBooleanAttr(root, "f", false);
    SetLegacyBooleanAttr(root, "y", true);
    SetLegacyBooleanAttr(root, "n", false);
    EXPECT_TRUE(GetBooleanAttr(root, Tavo::UniString(u"t")));
    EXPECT_FALSE(GetBooleanAttr(root, Tavo::UniString(u"f")));
    EXPECT_TRUE(GetBooleanAttr(root, Tavo::UniString(u"y")));
    EXPECT_FALSE(GetBooleanAttr(root, Tavo::UniString(u"n")));

    // The lenient reader knows digits only: the words read as false.
    bool value = true;
    ReadBooleanNode(NewBoolTag(root, "B", true, 1), Tavo::UniString(u"B"), value);
    EXPECT_FALSE(value);
    ReadBooleanNode(NewTextTag(root, "B", "1", 1), Tavo::String("B"), value);
    EXPECT_TRUE(value);
}
