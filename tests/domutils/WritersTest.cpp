// The tree writers and the lenient accessors: whole layouts against golden files, the number and string
// forms, the quoting and CDATA protection, both failure styles; what the lenient readers store for every
// kind of node; and what the writers write, the throwing readers read back.
#include "domutils/DomTestSupport.hpp"

#include "TavoXMLUtils/domutils/AttributeReaders.hpp"
#include "TavoXMLUtils/domutils/TagReaders.hpp"
#include "TavoXMLUtils/domutils/TagWriters.hpp"
#include "TavoXMLUtils/domutils/TypedNodeAccessors.hpp"
#include "common/GoldenFile.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

using namespace TavoXMLUtils;
using DomTest::DOMCodeOf;
using DomTest::Outcomes;
using DomTest::ScratchDocument;
using DomTest::Serialise;
using DomTest::Text;
using DomTest::Utf8;
using xercesc::DOMElement;
using xercesc::DOMException;
using xercesc::DOMNode;

namespace {

const Tavo::UniString gName(u"V");

// The content of the one CDATA section of a string tag.
std::string SectionOf(const DOMElement* element) {
    const DOMNode* section = element->getFirstChild();
    EXPECT_EQ(section->getNodeType(), DOMNode::CDATA_SECTION_NODE);
    EXPECT_EQ(section->getNextSibling(), nullptr);
    return Text(section);
}

template <class Change>
std::string Changed(const char* text, Change change) {
    Tavo::UniString value(text, TavoCharCodeUTF8);
    change(value);
    return Utf8(value);
}

template <class Write>
void ExpectMemoryError(const char* what, Write write) {
    SCOPED_TRACE(what);
    try {
        write();
        ADD_FAILURE() << "no exception";
    } catch (const DOMException& error) {
        const DOMException copy(error); // a copy shares the constant text
        EXPECT_EQ(copy.code, 0);
        EXPECT_EQ(Utf8(Tavo::UniString(copy.getMessage())), "Memory error");
    }
}

// An element V below the root with one text node.
DOMElement* Element(const ScratchDocument& doc, const std::u16string& text) {
    DOMElement* element = doc.Document()->createElement(u"V");
    element->appendChild(doc.Document()->createTextNode(text.c_str()));
    doc.Root()->appendChild(element);
    return element;
}

// What a number reader stores for an element V with the text; the output starts as 99.
template <class Value>
Value NumberOf(const ScratchDocument& doc, const std::u16string& text,
               bool (*read)(const DOMNode*, const Tavo::UniString&, Value&)) {
    Value value = 99;
    EXPECT_TRUE(read(Element(doc, text), gName, value));
    return value;
}

bool BooleanOf(const DOMNode* node) {
    bool value = true;
    EXPECT_TRUE(ReadBooleanNode(node, gName, value));
    return value;
}

// The element the lenient writers wrote last, before its line feed.
DOMElement* LastWritten(const DOMElement* parent) {
    return static_cast<DOMElement*>(parent->getLastChild()->getPreviousSibling());
}

std::string StringBack(const DOMElement* tag) {
    return std::unique_ptr<char[]>(GetStringTag(tag, nullptr)).get();
}

std::u16string StringBackU(const DOMElement* tag) {
    const std::unique_ptr<unsigned short[]> text(GetStringTagU(tag, nullptr));
    return std::u16string(reinterpret_cast<const char16_t*>(text.get()));
}

} // namespace

TEST(TagWriters, FamilyLayoutMatchesGolden) {
    ScratchDocument doc;
    DOMElement* root = doc.Root();
    NewLine(root);
    NewSLongTag(root, "Count", -1, 1);
    NewSLongTag(root, "Smallest", std::numeric_limits<int>::min(), 1);
    NewULongTag(root, "Size", 4294967295u, 1);
    NewDoubleTag(root, "Ratio", 0.1, 1);
    NewDoubleTag(root, "Huge", 1e20, 1);
    NewTextTag(root, "Text", "a < b & c > d", 1);
    NewTextTag(root, "Gr\xFC\xDF", "\xE9t\xE9 \x80", 1); // Windows-1252
    NewTextTag(root, Tavo::UniString(u"\u0394elta"), Tavo::UniString(u"\u03B1\u03B2 \u20AC"), 1);
    NewBoolTag(root, "On", true, 1);
    NewBoolTag(root, "Off", false, 1);
    NewLegacyBoolTag(root, "Yes", true, 1);
    NewLegacyBoolTag(root, "No", false, 1);
    NewStringTag(root, "Name", "alpha beta", 1);
    NewStringTag(root, "Wide", reinterpret_cast<unsigned short const*>(u"\u03A9 <&>"), 1);
    NewStringWLenTag(root, "Part", reinterpret_cast<unsigned short const*>(u"abcdefgh") + 2, 3, 1);
    NewTag(root, "Empty", nullptr, 1, false, nullptr);
    NewTag(root, "EmptyText", "", 1, false, nullptr);
    NewTag(root, "QuotesOnly", nullptr, 1, true, nullptr);
    NewStringTag(root, "NullString", static_cast<char const*>(nullptr), 1);
    auto const* wide = reinterpret_cast<unsigned short const*>(u"16-bit");
    NewTag(root, "Both", "8-bit", 1, false, wide); // the 8-bit text wins
    NewTag(root, "BothQuoted", "8-bit", 1, true, wide);
    NewTag(root, "Wide16", nullptr, 1, false, wide);
    NewTextTag(root, "Unquoted", "\"q\" ]]>", 1);
    SetSLongAttr(root, "neg", -1);
    SetSLongAttr(root, "min", std::numeric_limits<int>::min());
    SetULongAttr(root, "max", 4294967295u);
    SetBooleanAttr(root, "t", true);
    SetBooleanAttr(root, "f", false);
    SetLegacyBooleanAttr(root, "y", true);
    SetLegacyBooleanAttr(root, "n", false);
    SetLegacyBooleanAttr(root, "\xFC", false);
    SetLegacyBooleanAttr(root, "\xFC", true); // replaces
    DOMElement* group = NewTag(root, "Group", nullptr, 1, false, nullptr);
    SetULongAttr(group, "count", 2);
    NewLine(group);
    NewSLongTag(group, "Inner", 5, 2);
    NewStringTag(group, "Note", "x]]>y", 2);
    Tabs(group, 1);
    NewSLongTag(root, "Flat", 0, 0);
    TavoTest::ExpectGolden(Serialise(root), "domutils/newtag_family.expected");
}

TEST(TagWriters, DoubleText) {
    ScratchDocument doc;
    constexpr double inf = std::numeric_limits<double>::infinity();
    unsigned int written = 0;
    EXPECT_EQ(Outcomes({0.1, 1e100, 1e20, 1e-5, -2.5e-7, 1e300, -1e-300, -0.0, 0.0, -1.0, 1.0 / 3.0,
                        123456789012.0, 1234567890123.0, 1234567890123456.0, -9.87654321098765e-100, inf,
                        -inf, std::numeric_limits<double>::denorm_min()},
                       [&](double value) {
                           ++written;
                           return Text(NewDoubleTag(doc.Root(), "D", value, 0));
                       }),
              "0.1 | 1e+100 | 1e+020 | 1e-005 | -2.5e-007 | 1e+300 | -1e-300 | 0 | 0 | -1 | 0.333333333333 | "
              "123456789012 | 1.23456789012e+012 | 1.23456789012e+015 | -9.87654321099e-100 | inf | -inf | "
              "4.94065645841e-324");
    // Tabs, element and line feed for every value.
    EXPECT_EQ(doc.Root()->getChildNodes()->getLength(), 3 * written);
}

TEST(TagWriters, StringsAreQuotedAndProtected) {
    ScratchDocument doc;
    EXPECT_EQ(Outcomes({"a\"b", "a\"b'c", "a\"b'c`d", "it's", "x]]>y", "l1\r\nl2\rl3\n\r\n", "\x80 \xFF"},
                       [&](const char* text) { return SectionOf(NewStringTag(doc.Root(), "S", text, 0)); }),
              "'a\"b' | `a\"b'c` | \"a\"b'c`d\" | \"it's\" | \"x]] >y\" | \"l1\nl2\nl3\n\n\" | "
              "\"\xE2\x82\xAC \xC3\xBF\"");
    auto const* wide = reinterpret_cast<unsigned short const*>(u"\u4E2D\"]]>\r\n");
    EXPECT_EQ(SectionOf(NewStringTag(doc.Root(), "S", wide, 0)), "'\xE4\xB8\xAD\"]] >\n'");

    // The two text functions on their own.
    EXPECT_EQ(Outcomes({"", "plain", "`", "\"`", "'\"`"},
                       [](const char* text) { return Changed(text, MakeItKetraString); }),
              "\"\" | \"plain\" | \"`\" | '\"`' | \"'\"`\"");
    EXPECT_EQ(Outcomes({"", "\r", "\r\r\n\n", "]]]>", "]]>]]>", "]] >", "]]\r\n>"},
                       [](const char* text) { return Changed(text, CorrectCDATA); }),
              " | \n | \n\n\n | ]]] > | ]] >]] > | ]] > | ]]\n>");
}

TEST(TagWriters, StringWithLength) {
    ScratchDocument doc;
    DOMElement* root = doc.Root();
    const std::u16string source = u"abcdefgh";
    auto const* units = reinterpret_cast<unsigned short const*>(source.c_str());
    EXPECT_EQ(SectionOf(NewStringWLenTag(root, "S", units + 2, 3, 0)), "\"cde\"");
    EXPECT_EQ(SectionOf(NewStringWLenTag(root, "S", units, 0, 0)), "\"\"");
    EXPECT_EQ(SectionOf(NewStringWLenTag(root, "S", units, -4, 0)), "\"\"");
    EXPECT_EQ(SectionOf(NewStringWLenTag(root, "S", nullptr, 5, 0)), "\"\"");
    EXPECT_EQ(source, u"abcdefgh");

    // Around the size of the local buffer, and far beyond it.
    for (int length : {255, 256, 257, 5000}) {
        std::u16string long_(static_cast<std::size_t>(length) + 10, u'\u00E9');
        long_[static_cast<std::size_t>(length)] = u'X'; // beyond the length: not written
        DOMElement* element =
            NewStringWLenTag(root, "L", reinterpret_cast<unsigned short const*>(long_.c_str()), length, 0);
        const Tavo::UniString section(element->getFirstChild()->getNodeValue());
        EXPECT_EQ(section.GetLength(), static_cast<unsigned int>(length) + 2) << length;
        EXPECT_EQ(section.View().find(u'X'), std::u16string_view::npos) << length;
    }
}

TEST(TagWriters, LayoutNodes) {
    ScratchDocument doc;
    DOMElement* root = doc.Root();
    Tabs(root, 0);
    Tabs(root, -3);
    Tabs(root, 3);
    NewLine(root);
    EXPECT_TRUE(WriteTabs(root, 2));
    EXPECT_TRUE(WriteTabs(root, -1));
    EXPECT_TRUE(WriteNewLine(root));
    std::vector<std::string> actual;
    for (DOMNode* n = root->getFirstChild(); n != nullptr; n = n->getNextSibling()) {
        EXPECT_EQ(n->getNodeType(), DOMNode::TEXT_NODE);
        actual.push_back(Text(n));
    }
    EXPECT_EQ(actual, (std::vector<std::string>{"", "", "\t\t\t", "\n", "\t\t", "", "\n"}));

    // Deeper than any stack buffer.
    Tabs(root, 300);
    WriteTabs(root, 301);
    EXPECT_EQ(Text(root->getLastChild()->getPreviousSibling()), std::string(300, '\t'));
    EXPECT_EQ(Text(root->getLastChild()), std::string(301, '\t'));
}

TEST(TagWriters, MemoryErrorOutsideTheContract) {
    BitNames const table[] = {{1, "A"}, {0, nullptr}};
    ExpectMemoryError("NewTag", [] { NewTag(nullptr, "T", "x", 0, false, nullptr); });
    ExpectMemoryError("NewSLongTag", [] { NewSLongTag(nullptr, "T", 1, 0); });
    ExpectMemoryError("NewDoubleTag", [] { NewDoubleTag(nullptr, "T", 1.0, 0); });
    ExpectMemoryError("NewStringWLenTag", [] { NewStringWLenTag(nullptr, "T", nullptr, 300, 0); });
    ExpectMemoryError("NewTextTag",
                      [] { NewTextTag(nullptr, Tavo::UniString(u"T"), Tavo::UniString(u"x"), 0); });
    ExpectMemoryError("Tabs", [] { Tabs(nullptr, 1); });
    ExpectMemoryError("NewLine", [] { NewLine(nullptr); });
    ExpectMemoryError("WriteBits", [&] { WriteBits(nullptr, "F", 1, table, 0); });
    ExpectMemoryError("SetSLongAttr", [] { SetSLongAttr(nullptr, "a", 1); });
    ExpectMemoryError("SetBooleanAttr", [] { SetBooleanAttr(nullptr, "a", true); });
    EXPECT_FALSE(WriteTabs(nullptr, 1));
    EXPECT_FALSE(WriteNewLine(nullptr));
    EXPECT_FALSE(WriteStyleSheet(nullptr, "s.xsl"));
    WriteBits(nullptr, "F", 0, table, 0); // a value of 0 touches nothing
}

TEST(TagWriters, DocumentExceptionsPassOrBecomeFalse) {
    ScratchDocument doc;
    DOMElement* root = doc.Root();
    // An illegal name fails before anything is appended.
    EXPECT_EQ(DOMCodeOf([&] { NewSLongTag(root, "1st", 1, 1); }), DOMException::INVALID_CHARACTER_ERR);
    EXPECT_EQ(DOMCodeOf([&] { NewTextTag(root, Tavo::UniString(u"a b"), Tavo::UniString(u"x"), 1); }),
              DOMException::INVALID_CHARACTER_ERR);
    EXPECT_EQ(DOMCodeOf([&] { SetULongAttr(root, "", 1); }), DOMException::INVALID_CHARACTER_ERR);
    EXPECT_EQ(root->getFirstChild(), nullptr);

    // A read-only parent: the throwing pair passes the DOM's exception, the other pair says false.
    DomTest::ReadOnlyElement readOnly;
    DOMElement* inner = readOnly.Get();
    EXPECT_EQ(DOMCodeOf([&] { Tabs(inner, 1); }), DOMException::NO_MODIFICATION_ALLOWED_ERR);
    EXPECT_EQ(DOMCodeOf([&] { NewLine(inner); }), DOMException::NO_MODIFICATION_ALLOWED_ERR);
    EXPECT_EQ(DOMCodeOf([&] { NewBoolTag(inner, "B", true, 1); }), DOMException::NO_MODIFICATION_ALLOWED_ERR);
    EXPECT_FALSE(WriteTabs(inner, 1));
    EXPECT_FALSE(WriteNewLine(inner));
    EXPECT_EQ(inner->getFirstChild(), nullptr);
}

TEST(TagWriters, WriteBitsMatchesGolden) {
    BitNames const table[] = {{1, "Bold"},      {2, "Italic"}, {4, "Underline"},
                              {0x18, "Strike"}, {0, "Never"},  {32, "After"}};
    ScratchDocument doc;
    DOMElement* root = doc.Root();
    NewLine(root);
    WriteBits(root, "Flags", 5, table, 1);           // two rows
    WriteBits(root, "Flags", 0x10, table, 1);        // a row of two bits, one of them set
    WriteBits(root, "Flags", 0x40 | 0x20, table, 2); // rows behind the closing row are not read
    WriteBits(root, "Flags", 0x1F, nullptr, 0);      // no table: an element of text nodes only
    unsigned int const before = root->getChildNodes()->getLength();
    WriteBits(root, "Flags", 0, table, 1);
    EXPECT_EQ(root->getChildNodes()->getLength(), before);
    TavoTest::ExpectGolden(Serialise(root), "domutils/write_bits.expected");

    // The documented shape of two rows at level 1, as a literal.
    ScratchDocument small;
    WriteBits(small.Root(), "F", 3, table, 1);
    EXPECT_EQ(Serialise(small.Root()), "<Root>\t<F>\n\t\t<Bold/>\n\t\t<Italic/>\n\t</F>\n</Root>");
}

TEST(TagWriters, StyleSheet) {
    ScratchDocument doc;
    ASSERT_TRUE(WriteStyleSheet(doc.Document(), "view.xsl"));
    DOMNode* first = doc.Document()->getFirstChild();
    ASSERT_EQ(first->getNodeType(), DOMNode::PROCESSING_INSTRUCTION_NODE);
    EXPECT_EQ(first->getNextSibling(), doc.Root());
    EXPECT_EQ(Utf8(Tavo::UniString(first->getNodeName())), "xml-stylesheet");
    EXPECT_NE(
        Serialise(doc.Document()).find("<?xml-stylesheet type=\"text/xsl\" href=\"view.xsl\" ?><Root/>"),
        std::string::npos);

    // Far beyond the 512 bytes that callers were once asked to respect: written whole.
    const std::string longHref = "file:///" + std::string(3000, 'd') + "/\xE9.xsl";
    ASSERT_TRUE(WriteStyleSheet(doc.Document(), longHref.c_str()));
    EXPECT_EQ(Text(doc.Root()->getPreviousSibling()),
              "type=\"text/xsl\" href=\"file:///" + std::string(3000, 'd') + "/\xC3\xA9.xsl\" ");
    ASSERT_TRUE(WriteStyleSheet(doc.Document(), nullptr));
    EXPECT_EQ(Text(doc.Root()->getPreviousSibling()), "type=\"text/xsl\" href=\"\" ");

    // Without a root the instruction goes to the end of the document.
    xercesc::DOMDocument* bare = xercesc::DOMImplementation::getImplementation()->createDocument();
    xercesc::DOMComment* comment = bare->createComment(u"c");
    bare->appendChild(comment);
    EXPECT_TRUE(WriteStyleSheet(bare, "s.xsl"));
    EXPECT_EQ(bare->getFirstChild(), comment);
    EXPECT_EQ(bare->getLastChild()->getNodeType(), DOMNode::PROCESSING_INSTRUCTION_NODE);
    bare->release();
}

TEST(TypedNodeAccessors, ReadersOnNodesThatDoNotMatch) {
    ScratchDocument doc;
    DOMElement* other = doc.Document()->createElement(u"W");
    other->appendChild(doc.Document()->createTextNode(u"42"));
    doc.Root()->appendChild(other);

    Tavo::UniString uniText(u"kept");
    int number = 7;
    EXPECT_TRUE(ReadTextNode(other, gName, uniText));
    EXPECT_TRUE(ReadLongNode(other, gName, number));
    EXPECT_EQ(uniText, Tavo::UniString(u"kept"));
    EXPECT_EQ(number, 0);
    Tavo::String narrow("old");
    EXPECT_TRUE(ReadTextNode(other, Tavo::String("V"), narrow));
    EXPECT_EQ(narrow, Tavo::String(""));
    EXPECT_TRUE(ReadTextNode(other, Tavo::String("W"), narrow));
    EXPECT_EQ(narrow, Tavo::String("42"));
    EXPECT_TRUE(ReadTextNode(other, Tavo::UniString(u"w"), uniText)); // names are case-sensitive
    EXPECT_EQ(uniText, Tavo::UniString(u"kept"));

    // A first child that is a comment, or a CDATA section, hides the text behind it.
    DOMElement* commented = doc.Document()->createElement(u"V");
    commented->appendChild(doc.Document()->createComment(u"c"));
    commented->appendChild(doc.Document()->createTextNode(u"5"));
    EXPECT_TRUE(ReadTextNode(commented, gName, uniText));
    EXPECT_EQ(uniText, Tavo::UniString(u"kept"));
    DOMElement* section = doc.Document()->createElement(u"V");
    section->appendChild(doc.Document()->createCDATASection(u"5"));
    EXPECT_TRUE(ReadLongNode(section, gName, number));
    EXPECT_EQ(number, 0);

    // Null, a text node, an empty element: zero values, kept texts.
    EXPECT_TRUE(ReadLongNode(nullptr, gName, number));
    EXPECT_EQ(number, 0);
    EXPECT_TRUE(ReadTextNode(nullptr, gName, uniText));
    EXPECT_TRUE(ReadTextNode(other->getFirstChild(), Tavo::UniString(u"#text"), uniText));
    EXPECT_TRUE(ReadTextNode(doc.Document()->createElement(u"V"), gName, uniText));
    EXPECT_EQ(uniText, Tavo::UniString(u"kept"));
    commented->release();
    section->release();
}

TEST(TypedNodeAccessors, TextReadsBackAsItStands) {
    ScratchDocument doc;
    DOMElement* root = doc.Root();
    const Tavo::UniString text(u"  spaced \u4E2D \"q\" ]]> \n");
    ASSERT_TRUE(WriteTextElement(root, gName, text, 0));
    Tavo::UniString read;
    EXPECT_TRUE(ReadTextNode(LastWritten(root), gName, read));
    EXPECT_EQ(read, text); // neither trimmed nor unquoted
    Tavo::String narrow;
    ASSERT_TRUE(WriteTextElement(root, Tavo::String("V"), Tavo::String("\xE9\x80"), 0)); // Windows-1252
    EXPECT_EQ(Tavo::UniString(LastWritten(root)->getTextContent()), Tavo::UniString(u"\u00E9\u20AC"));
    EXPECT_TRUE(ReadTextNode(LastWritten(root), Tavo::String("V"), narrow));
    EXPECT_EQ(narrow, Tavo::String("\xE9\x80"));
    // The empty text is an empty text node, which reads as the empty string.
    ASSERT_TRUE(WriteTextElement(root, gName, Tavo::UniString(), 0));
    EXPECT_TRUE(ReadTextNode(LastWritten(root), gName, read));
    EXPECT_EQ(read, Tavo::UniString());
}

TEST(TypedNodeAccessors, NumberConversionsAndCuts) {
    ScratchDocument doc;
    // Cuts to the width of the output; strtoul's limit for the longest; base 10 only.
    EXPECT_EQ(
        Outcomes({u"12abc", u"abc", u"4294967295", u"4294967296", u"99999999999999999999", u"-1", u"0x10"},
                 [&](const char16_t* text) { return NumberOf<unsigned int>(doc, text, ReadULongNode); }),
        "12 | 0 | 4294967295 | 0 | 4294967295 | 4294967295 | 0");
    // A character outside Windows-1252 becomes '?', which ends the number.
    EXPECT_EQ(Outcomes({u" -42 tail", u"-2147483648", u"2147483648", u"4294967297", u"1e5", u"12\u4E2D3"},
                       [&](const char16_t* text) { return NumberOf<int>(doc, text, ReadLongNode); }),
              "-42 | -2147483648 | -2147483648 | 1 | 1 | 12");
    EXPECT_EQ(Outcomes({u"65541", u"32768", u"-1", u""},
                       [&](const char16_t* text) { return NumberOf<short>(doc, text, ReadShortNode); }),
              "5 | -32768 | -1 | 0");
    EXPECT_EQ(
        Outcomes({u"65535", u"70000", u"-1"},
                 [&](const char16_t* text) { return NumberOf<unsigned short>(doc, text, ReadUShortNode); }),
        "65535 | 4464 | 65535");
}

TEST(TypedNodeAccessors, BooleanReaderReadsDigitsOnly) {
    ScratchDocument doc;
    // 65537 is cut to 16 bits first.
    EXPECT_EQ(Outcomes({u"1", u"01", u"65537", u"2", u"0", u"true", u"yes"},
                       [&](const char16_t* text) { return BooleanOf(Element(doc, text)); }),
              "1 | 1 | 1 | 0 | 0 | 0 | 0");
    EXPECT_FALSE(BooleanOf(doc.Root()->appendChild(doc.Document()->createElement(u"V"))));
    EXPECT_FALSE(BooleanOf(nullptr));

    // The words of the NewTag family read as false here; this family's digits read back.
    EXPECT_FALSE(BooleanOf(NewBoolTag(doc.Root(), "V", true, 0)));
    EXPECT_FALSE(BooleanOf(NewLegacyBoolTag(doc.Root(), "V", true, 0)));
    ASSERT_TRUE(WriteBooleanElement(doc.Root(), gName, true, 0));
    EXPECT_EQ(Text(LastWritten(doc.Root())), "1");
    EXPECT_TRUE(BooleanOf(LastWritten(doc.Root())));
    ASSERT_TRUE(WriteBooleanElement(doc.Root(), Tavo::String("V"), false, 0));
    bool value = true;
    EXPECT_TRUE(ReadBooleanNode(LastWritten(doc.Root()), Tavo::String("V"), value));
    EXPECT_FALSE(value);
}

TEST(TypedNodeAccessors, WritersLayoutMatchesGolden) {
    ScratchDocument doc;
    DOMElement* root = doc.Root();
    ASSERT_TRUE(WriteNewLine(root));
    EXPECT_TRUE(WriteTextElement(root, Tavo::UniString(u"Text"), Tavo::UniString(u"a \"b\" <c> & ]]>"), 1));
    EXPECT_TRUE(WriteTextElement(root, Tavo::String("Narrow"), Tavo::String("\xE9t\xE9"), 1));
    EXPECT_TRUE(WriteShortElement(root, Tavo::UniString(u"Short"), short{-32768}, 1));
    EXPECT_TRUE(WriteUShortElement(root, Tavo::String("UShort"), static_cast<unsigned short>(65535), 1));
    EXPECT_TRUE(WriteLongElement(root, Tavo::UniString(u"Long"), std::numeric_limits<int>::min(), 1));
    EXPECT_TRUE(WriteULongElement(root, Tavo::String("ULong"), 4294967295u, 1));
    EXPECT_TRUE(WriteBooleanElement(root, Tavo::UniString(u"Flag"), false, 1));

    DOMElement* group = nullptr;
    ASSERT_TRUE(BeginWriteElement(root, group, Tavo::UniString(u"Group")));
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->getParentNode(), nullptr); // not appended before the end
    EXPECT_TRUE(WriteLongElement(group, Tavo::UniString(u"First"), 1, 2));
    DOMElement* nested = nullptr;
    ASSERT_TRUE(BeginWriteElement(group, nested, Tavo::String("Nested")));
    EXPECT_TRUE(WriteLongElement(nested, Tavo::String("Deep"), -3, 3));
    EXPECT_TRUE(EndWriteElement(group, nested, 2));
    EXPECT_TRUE(WriteLongElement(group, Tavo::UniString(u"Second"), 2, 2));
    EXPECT_TRUE(EndWriteElement(root, group, 1));
    EXPECT_TRUE(WriteTextElement(root, Tavo::UniString(u"Flat"), Tavo::UniString(), 0));
    TavoTest::ExpectGolden(Serialise(root), "domutils/typed_writers.expected");

    // The documented composite as a literal: the closing tag lines up with the opening tag.
    ScratchDocument small;
    DOMElement* element = nullptr;
    BeginWriteElement(small.Root(), element, Tavo::UniString(u"E"));
    WriteLongElement(element, Tavo::UniString(u"A"), 1, 2);
    WriteLongElement(element, Tavo::UniString(u"B"), 2, 2);
    EndWriteElement(small.Root(), element, 1);
    EXPECT_EQ(Serialise(small.Root()), "<Root>\t<E>\n\t\t<A>1</A>\n\t\t<B>2</B>\n\t</E>\n</Root>");
}

TEST(TypedNodeAccessors, WriterFailures) {
    ScratchDocument doc;
    DOMElement* root = doc.Root();
    // The lenient writers turn the DOM's exception into false.
    EXPECT_FALSE(WriteTextElement(root, Tavo::UniString(u"a b"), Tavo::UniString(u"x"), 1));
    EXPECT_FALSE(WriteLongElement(root, Tavo::String("1st"), 1, 1));
    EXPECT_FALSE(WriteTextElement(nullptr, Tavo::UniString(u"a"), Tavo::UniString(u"x"), 1));
    EXPECT_FALSE(WriteBooleanElement(nullptr, Tavo::String("a"), true, 1));
    EXPECT_EQ(root->getFirstChild(), nullptr);

    // A read-only parent: the element is made, its layout and its appending fail, false comes back.
    DomTest::ReadOnlyElement readOnly;
    EXPECT_FALSE(WriteULongElement(readOnly.Get(), gName, 1u, 1));
    EXPECT_EQ(readOnly.Get()->getFirstChild(), nullptr);

    // The composite pair has no guard.
    DOMElement* element = root;
    EXPECT_EQ(DOMCodeOf([&] { BeginWriteElement(root, element, Tavo::UniString(u"<bad>")); }),
              DOMException::INVALID_CHARACTER_ERR);
    ASSERT_TRUE(BeginWriteElement(readOnly.Document()->getDocumentElement(), element, Tavo::UniString(u"E")));
    EXPECT_EQ(DOMCodeOf([&] { EndWriteElement(readOnly.Get(), element, 1); }),
              DOMException::NO_MODIFICATION_ALLOWED_ERR);
    EXPECT_FALSE(BeginWriteElement(nullptr, element, Tavo::UniString(u"E")));
    EXPECT_EQ(element, nullptr);
    EXPECT_FALSE(EndWriteElement(root, nullptr, 1));
    EXPECT_FALSE(EndWriteElement(nullptr, root, 1));
}

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
    for (const char* text : {"", "plain", "a\"b", "a\"b'c", "a\"b'c`d", "'", "x]]>y", "]]>]]>", "  padded  ",
                             "\"", "\"\"", "<&>"}) {
        EXPECT_EQ(StringBack(NewStringTag(root, "S", text, 1)), text);
        const Tavo::UniString wide(text, TavoCharCodeDefault);
        EXPECT_EQ(StringBackU(NewStringTag(root, "S", wide.GetUStr(), 1)), wide.View()) << text;
    }
    // Characters beyond Windows-1252 come back whole through the 16-bit reader.
    const std::u16string greek = u"\u03B1\u03B2\u03B3 \u20AC";
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
    EXPECT_EQ(DomTest::ThrownBy([&] { StringBack(NewTextTag(root, "T", "\"plain\"", 1)); }),
              "Tag 'T'; Missing CDATA section in tag 'T'@0");
}

TEST(WriterRoundTrip, BooleanVocabularies) {
    ScratchDocument doc;
    DOMElement* root = doc.Root();
    // The NewTag family writes words, the lenient family digits; the throwing readers take all of them.
    for (bool value : {true, false}) {
        EXPECT_EQ(GetBoolTag(NewBoolTag(root, "B", value, 1)), value);
        EXPECT_EQ(GetBoolTag(NewLegacyBoolTag(root, "B", value, 1)), value);
        ASSERT_TRUE(value ? WriteBooleanElement(root, Tavo::UniString(u"B"), value, 1)
                          : WriteBooleanElement(root, Tavo::String("B"), value, 1));
        EXPECT_EQ(GetBoolTag(LastWritten(root)), value);
        SetBooleanAttr(root, "a", value);
        EXPECT_EQ(GetBooleanAttr(root, Tavo::UniString(u"a")), value);
        SetLegacyBooleanAttr(root, "a", value);
        EXPECT_EQ(GetBooleanAttr(root, Tavo::UniString(u"a")), value);
    }
}
