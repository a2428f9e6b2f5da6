// The lenient accessors: what the readers store for every kind of node, the standard library's cuts,
// the writers' layout and their false results, and round trips through both families of names.
#include "TavoXMLUtils/domutils/TypedNodeAccessors.hpp"

#include "TavoXMLUtils/domutils/TagWriters.hpp"
#include "common/GoldenFile.hpp"
#include "common/TestText.hpp"
#include "domutils/WriterTestSupport.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>

using namespace TavoXMLUtils;
using TavoTest::ScratchDocument;
using TavoTest::Serialise;
using xercesc::DOMElement;
using xercesc::DOMException;
using xercesc::DOMNode;

namespace {

Tavo::UniString const gName(u"V");

// An element V below the root with the given children, built by hand.
DOMElement* Element(ScratchDocument& doc, std::u16string const& text) {
    DOMElement* element = doc.Document()->createElement(u"V");
    element->appendChild(doc.Document()->createTextNode(text.c_str()));
    doc.Root()->appendChild(element);
    return element;
}

// What a number reader stores for an element V with the text; the output starts as 99.
template <class Value>
Value NumberOf(ScratchDocument& doc, std::u16string const& text,
               bool (*read)(DOMNode const*, Tavo::UniString const&, Value&)) {
    Value value = 99;
    EXPECT_TRUE(read(Element(doc, text), gName, value));
    return value;
}

bool BooleanOf(DOMNode const* node) {
    bool value = true;
    EXPECT_TRUE(ReadBooleanNode(node, gName, value));
    return value;
}

} // namespace

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
    auto last = [&] { return root->getLastChild()->getPreviousSibling(); };
    Tavo::UniString const text(u"  spaced \u4E2D \"q\" ]]> \n");
    ASSERT_TRUE(WriteTextElement(root, gName, text, 0));
    Tavo::UniString read;
    EXPECT_TRUE(ReadTextNode(last(), gName, read));
    EXPECT_EQ(read, text); // neither trimmed nor unquoted
    Tavo::String narrow;
    ASSERT_TRUE(WriteTextElement(root, Tavo::String("V"), Tavo::String("\xE9\x80"), 0)); // Windows-1252
    EXPECT_EQ(Tavo::UniString(last()->getTextContent()), Tavo::UniString(u"\u00E9\u20AC"));
    EXPECT_TRUE(ReadTextNode(last(), Tavo::String("V"), narrow));
    EXPECT_EQ(narrow, Tavo::String("\xE9\x80"));
    // The empty text is an empty text node, which reads as the empty string.
    ASSERT_TRUE(WriteTextElement(root, gName, Tavo::UniString(), 0));
    EXPECT_TRUE(ReadTextNode(last(), gName, read));
    EXPECT_EQ(read, Tavo::UniString());
}

TEST(TypedNodeAccessors, NumberConversionsAndCuts) {
    ScratchDocument doc;
    EXPECT_EQ(NumberOf<unsigned int>(doc, u"12abc", ReadULongNode), 12u);
    EXPECT_EQ(NumberOf<unsigned int>(doc, u"abc", ReadULongNode), 0u);
    EXPECT_EQ(NumberOf<unsigned int>(doc, u"4294967295", ReadULongNode), 4294967295u);
    EXPECT_EQ(NumberOf<unsigned int>(doc, u"4294967296", ReadULongNode), 0u); // cut to 32 bits
    EXPECT_EQ(NumberOf<unsigned int>(doc, u"99999999999999999999", ReadULongNode),
              4294967295u); // strtoul's limit, cut
    EXPECT_EQ(NumberOf<unsigned int>(doc, u"-1", ReadULongNode), 4294967295u);
    EXPECT_EQ(NumberOf<unsigned int>(doc, u"0x10", ReadULongNode), 0u); // base 10 only
    EXPECT_EQ(NumberOf<int>(doc, u" -42 tail", ReadLongNode), -42);
    EXPECT_EQ(NumberOf<int>(doc, u"-2147483648", ReadLongNode), std::numeric_limits<int>::min());
    EXPECT_EQ(NumberOf<int>(doc, u"2147483648", ReadLongNode), std::numeric_limits<int>::min()); // cut
    EXPECT_EQ(NumberOf<int>(doc, u"4294967297", ReadLongNode), 1);
    EXPECT_EQ(NumberOf<int>(doc, u"1e5", ReadLongNode), 1);
    EXPECT_EQ(NumberOf<short>(doc, u"65541", ReadShortNode), 5);
    EXPECT_EQ(NumberOf<short>(doc, u"32768", ReadShortNode), -32768);
    EXPECT_EQ(NumberOf<short>(doc, u"-1", ReadShortNode), -1);
    EXPECT_EQ(NumberOf<short>(doc, u"", ReadShortNode), 0);
    EXPECT_EQ(NumberOf<unsigned short>(doc, u"65535", ReadUShortNode), 65535);
    EXPECT_EQ(NumberOf<unsigned short>(doc, u"70000", ReadUShortNode), 4464);
    EXPECT_EQ(NumberOf<unsigned short>(doc, u"-1", ReadUShortNode), 65535);
    // A character outside Windows-1252 becomes '?', which ends the number.
    EXPECT_EQ(NumberOf<int>(doc, u"12\u4E2D3", ReadLongNode), 12);
}

TEST(TypedNodeAccessors, BooleanReaderReadsDigitsOnly) {
    ScratchDocument doc;
    EXPECT_TRUE(BooleanOf(Element(doc, u"1")));
    EXPECT_TRUE(BooleanOf(Element(doc, u"01")));
    EXPECT_TRUE(BooleanOf(Element(doc, u"65537"))); // cut to 16 bits first
    EXPECT_FALSE(BooleanOf(Element(doc, u"2")));
    EXPECT_FALSE(BooleanOf(Element(doc, u"0")));
    EXPECT_FALSE(BooleanOf(Element(doc, u"true")));
    EXPECT_FALSE(BooleanOf(Element(doc, u"yes")));
    DOMElement* empty = doc.Document()->createElement(u"V");
    doc.Root()->appendChild(empty);
    EXPECT_FALSE(BooleanOf(empty));
    EXPECT_FALSE(BooleanOf(nullptr));

    // The words of the NewTag family read as false here; this family's digits read back.
    EXPECT_FALSE(BooleanOf(NewBoolTag(doc.Root(), "V", true, 0)));
    EXPECT_FALSE(BooleanOf(NewLegacyBoolTag(doc.Root(), "V", true, 0)));
    ASSERT_TRUE(WriteBooleanElement(doc.Root(), gName, true, 0));
    EXPECT_EQ(
        TavoTest::Utf8(Tavo::UniString(doc.Root()->getLastChild()->getPreviousSibling()->getTextContent())),
        "1");
    EXPECT_TRUE(BooleanOf(doc.Root()->getLastChild()->getPreviousSibling()));
    ASSERT_TRUE(WriteBooleanElement(doc.Root(), Tavo::String("V"), false, 0));
    bool value = true;
    EXPECT_TRUE(ReadBooleanNode(doc.Root()->getLastChild()->getPreviousSibling(), Tavo::String("V"), value));
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
    TavoTest::ReadOnlyElement readOnly;
    EXPECT_FALSE(WriteULongElement(readOnly.Get(), gName, 1u, 1));
    EXPECT_EQ(readOnly.Get()->getFirstChild(), nullptr);

    // The composite pair has no guard.
    DOMElement* element = root;
    try {
        BeginWriteElement(root, element, Tavo::UniString(u"<bad>"));
        ADD_FAILURE() << "no exception";
    } catch (DOMException const& error) {
        EXPECT_EQ(error.code, DOMException::INVALID_CHARACTER_ERR);
    }
    ASSERT_TRUE(BeginWriteElement(readOnly.Document()->getDocumentElement(), element, Tavo::UniString(u"E")));
    try {
        EndWriteElement(readOnly.Get(), element, 1);
        ADD_FAILURE() << "no exception";
    } catch (DOMException const& error) {
        EXPECT_EQ(error.code, DOMException::NO_MODIFICATION_ALLOWED_ERR);
    }
    EXPECT_FALSE(BeginWriteElement(nullptr, element, Tavo::UniString(u"E")));
    EXPECT_EQ(element, nullptr);
    EXPECT_FALSE(EndWriteElement(root, nullptr, 1));
    EXPECT_FALSE(EndWriteElement(nullptr, root, 1));
}
