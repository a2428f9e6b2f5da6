// The token cursor: the walk, the ring search of ReadStartElement, the climb of ReadEndElement, the
// named walk, the peeking operations and the failure table.
#include "reader/ReaderTestSupport.hpp"

#include <gtest/gtest.h>

#include <stdexcept>

using ReaderTest::Message;
using ReaderTest::Messages;
using ReaderTest::Open;
using ReaderTest::Token;

namespace {

constexpr char gEndOfXML[] = "End of XML reached, token with the specified name was not found";

// Every token from the cursor on, by plain ReadToken, until it fails.
std::vector<std::string> Walk(TavoXML::DOMReader& reader) {
    std::vector<std::string> tokens;
    while (reader.ReadToken() == Tavo::NoError) {
        tokens.push_back(Token(reader));
    }
    return tokens;
}

// Throws from a nested read, to see that peeking operations put the cursor back on every path.
class ThrowingReader : public TavoXML::DOMReader {
public:
    using DOMReader::DOMReader;
    Tavo::XMLTokenType GetTokenType() override { throw std::runtime_error("token"); }
    Tavo::XMLTokenType GetTokenTypeName(Tavo::UniString&) override { throw std::runtime_error("name"); }
    int ReadEndElement(char const*) override { throw std::runtime_error("end"); }
};

} // namespace

TEST(DOMReaderCursor, WalkVisitsEveryTokenOnceAndEndsOnTheDocument) {
    auto reader = Open("<a>lead<b/><!-- note --><?pi x?><c>text</c></a>");
    EXPECT_EQ(Token(*reader), "S:a");
    EXPECT_EQ(Walk(*reader), (std::vector<std::string>{"S:b", "E:b", "S:c", "E:c", "E:a", "E:#document"}));
    EXPECT_EQ(Token(*reader), "E:#document");
    EXPECT_EQ(Messages(*reader), (std::vector<Message>{{gEndOfXML, 0}}));
    EXPECT_EQ(reader->GetErrorStatus(), 0);
    // It stays failing at the end and adds one message per try.
    EXPECT_EQ(reader->ReadToken(), Tavo::GeneralError);
    EXPECT_EQ(reader->GetNumberOfMessage(), 2);
}

TEST(DOMReaderCursor, ReadTokenWithMask) {
    auto reader = Open("<a><b><x/></b><c/></a>");
    EXPECT_EQ(reader->ReadToken(0u), Tavo::NoError);
    EXPECT_EQ(Token(*reader), "S:b");
    EXPECT_EQ(reader->ReadToken(Tavo::XMLEndToken), Tavo::NoError);
    EXPECT_EQ(Token(*reader), "E:x");
    EXPECT_EQ(reader->ReadToken(Tavo::XMLStartToken), Tavo::NoError);
    EXPECT_EQ(Token(*reader), "S:c");
    EXPECT_EQ(reader->ReadToken(Tavo::XMLStartToken | Tavo::XMLEndToken), Tavo::NoError);
    EXPECT_EQ(Token(*reader), "E:c");
    // No start token is left: the walk runs to the end and fails there.
    EXPECT_EQ(reader->ReadToken(Tavo::XMLStartToken), Tavo::GeneralError);
    EXPECT_EQ(Token(*reader), "E:#document");
    // A mask without token bits also ends at the end of the document.
    auto other = Open("<a><b/></a>");
    EXPECT_EQ(other->ReadToken(Tavo::XMLNoToken), Tavo::GeneralError);
    EXPECT_EQ(Token(*other), "E:#document");
}

TEST(DOMReaderCursor, ReadStartElementSearchesARing) {
    auto reader = Open("<a>\n<b/>\n<!-- c? -->text<c/>\n<d><e/></d>\n</a>");
    // From the start of a: its children, in any order.
    ASSERT_EQ(reader->ReadStartElement("d"), Tavo::NoError);
    EXPECT_EQ(Token(*reader), "S:d");
    ASSERT_EQ(reader->ReadEndElement("d"), Tavo::NoError);
    // From the end of d, the last child, the ring comes round to the first sibling.
    ASSERT_EQ(reader->ReadStartElement("b"), Tavo::NoError);
    EXPECT_EQ(Token(*reader), "S:b");
    ASSERT_EQ(reader->ReadToken(), Tavo::NoError);
    EXPECT_EQ(Token(*reader), "E:b");
    // The element itself is part of its own ring.
    ASSERT_EQ(reader->ReadStartElement("b"), Tavo::NoError);
    EXPECT_EQ(Token(*reader), "S:b");
    // The search does not descend into grandchildren.
    ASSERT_EQ(reader->ReadToken(), Tavo::NoError);
    EXPECT_EQ(reader->ReadStartElement("e"), Tavo::GeneralError);
    EXPECT_EQ(Token(*reader), "E:b");
    // A null name takes the first candidate: from the end of b that is its next sibling.
    ASSERT_EQ(reader->ReadStartElement(nullptr), Tavo::NoError);
    EXPECT_EQ(Token(*reader), "S:c");
    // A start token without element children has no candidate.
    EXPECT_EQ(reader->ReadStartElement(nullptr), Tavo::GeneralError);
    EXPECT_EQ(Token(*reader), "S:c");
    EXPECT_EQ(reader->GetNumberOfMessage(), 0);
}

TEST(DOMReaderCursor, ReadStartElementFromTheEndOfTheRoot) {
    auto reader = Open("<a><b/></a>");
    ASSERT_EQ(reader->ReadEndElement("a"), Tavo::NoError);
    // The root's ring is the document's element children: the root itself.
    ASSERT_EQ(reader->ReadStartElement("a"), Tavo::NoError);
    EXPECT_EQ(Token(*reader), "S:a");
    ASSERT_EQ(reader->ReadToken(Tavo::XMLStartToken), Tavo::NoError);
    ASSERT_EQ(reader->ReadEndElement("a"), Tavo::NoError);
    ASSERT_EQ(reader->ReadToken(), Tavo::NoError);
    EXPECT_EQ(Token(*reader), "E:#document");
    // Behind the document node there is nothing to search.
    EXPECT_EQ(reader->ReadStartElement("a"), Tavo::GeneralError);
    EXPECT_EQ(Token(*reader), "E:#document");
}

TEST(DOMReaderCursor, ReadEndElementClimbs) {
    auto reader = Open("<a><b><c><d/></c></b><e/></a>");
    ASSERT_EQ(reader->ReadToken(Tavo::XMLEndToken), Tavo::NoError);
    EXPECT_EQ(Token(*reader), "E:d");
    // From deep inside, straight to the end of a.
    ASSERT_EQ(reader->ReadEndElement("a"), Tavo::NoError);
    EXPECT_EQ(Token(*reader), "E:a");
    // On the end token of a, the same call moves on to the next end token instead of sticking.
    ASSERT_EQ(reader->ReadEndElement("a"), Tavo::NoError);
    EXPECT_EQ(Token(*reader), "E:#document");

    auto second = Open("<a><b><c/></b><e/></a>");
    ASSERT_EQ(second->ReadStartElement("b"), Tavo::NoError);
    // Leaving b without reading its child, then on to its sibling.
    ASSERT_EQ(second->ReadEndElement("b"), Tavo::NoError);
    EXPECT_EQ(Token(*second), "E:b");
    // Again on the end of b: on to the next end token, over the start of e.
    ASSERT_EQ(second->ReadEndElement("b"), Tavo::NoError);
    EXPECT_EQ(Token(*second), "E:e");
}

TEST(DOMReaderCursor, ReadEndElementFailures) {
    auto reader = Open("<a><b/></a>");
    ASSERT_EQ(reader->ReadStartElement("b"), Tavo::NoError);
    EXPECT_EQ(reader->ReadEndElement("zz"), Tavo::GeneralError);
    EXPECT_EQ(Token(*reader), "S:b");
    // A null name matches no node.
    EXPECT_EQ(reader->ReadEndElement(nullptr), Tavo::GeneralError);
    EXPECT_EQ(Token(*reader), "S:b");
    EXPECT_EQ(reader->GetNumberOfMessage(), 0);
    EXPECT_EQ(reader->GetErrorStatus(), 0);
}

TEST(DOMReaderCursor, ReadTokenWithName) {
    auto reader = Open("<a><b/><c><b/></c></a>");
    TavoXML::DOMReader& r = *reader;
    // Already there: the cursor stays.
    ASSERT_EQ(r.ReadTokenWithName(Tavo::UniString("a"), Tavo::XMLStartToken), Tavo::NoError);
    EXPECT_EQ(Token(r), "S:a");
    ASSERT_EQ(r.ReadTokenWithName(Tavo::UniString("b"), Tavo::XMLEndToken), Tavo::NoError);
    EXPECT_EQ(Token(r), "E:b");
    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    ASSERT_EQ(r.ReadTokenWithName(Tavo::UniString("b"), Tavo::XMLStartToken), Tavo::NoError);
    EXPECT_EQ(Token(r), "S:b");
    EXPECT_EQ(r.GetNumberOfMessage(), 0);

    // Not found: the walk's end message, then the search's own; the cursor comes back.
    EXPECT_EQ(r.ReadTokenWithName(Tavo::UniString("zz"), Tavo::XMLStartToken), Tavo::GeneralError);
    EXPECT_EQ(Token(r), "S:b");
    EXPECT_EQ(Messages(r),
              (std::vector<Message>{{gEndOfXML, 0}, {"Token with specified name was not found: zz", 0}}));
    EXPECT_EQ(r.GetErrorStatus(), 0);
}

TEST(DOMReaderCursor, PeekingLeavesTheCursor) {
    auto reader = Open("<a><b/></a>");
    TavoXML::DOMReader& r = *reader;
    EXPECT_EQ(r.GetNextTokenType(), Tavo::XMLStartToken);
    Tavo::UniString name;
    EXPECT_EQ(r.GetNextTokenTypeName(name), Tavo::XMLStartToken);
    EXPECT_EQ(ReaderTest::Utf8(name), "b");
    EXPECT_EQ(Token(r), "S:a");

    ASSERT_EQ(r.ReadStartElement("b"), Tavo::NoError);
    EXPECT_EQ(r.GetNextTokenTypeName(name), Tavo::XMLEndToken);
    EXPECT_EQ(ReaderTest::Utf8(name), "b");
    // The next start token lies behind the end: there is none.
    EXPECT_EQ(r.GetNextStartTokenName(name), Tavo::XMLNoToken);
    EXPECT_TRUE(name.IsEmpty());
    EXPECT_EQ(Token(r), "S:b");
    EXPECT_EQ(r.GetNumberOfMessage(), 1);

    // At the very end: no token, one more message, the cursor stays.
    ASSERT_EQ(r.ReadEndElement("a"), Tavo::NoError);
    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    EXPECT_EQ(r.GetNextTokenType(), Tavo::XMLNoToken);
    name = Tavo::UniString("stale");
    EXPECT_EQ(r.GetNextTokenTypeName(name), Tavo::XMLNoToken);
    EXPECT_TRUE(name.IsEmpty());
    EXPECT_EQ(Token(r), "E:#document");
    EXPECT_EQ(r.GetNumberOfMessage(), 3);

    auto starts = Open("<a><b><c/></b><d/></a>");
    ASSERT_EQ(starts->ReadStartElement("b"), Tavo::NoError);
    EXPECT_EQ(starts->GetNextStartTokenName(name), Tavo::XMLStartToken);
    EXPECT_EQ(ReaderTest::Utf8(name), "c");
    ASSERT_EQ(starts->ReadToken(Tavo::XMLEndToken), Tavo::NoError);
    EXPECT_EQ(starts->GetNextStartTokenName(name), Tavo::XMLStartToken);
    EXPECT_EQ(ReaderTest::Utf8(name), "d");
    EXPECT_EQ(Token(*starts), "E:c");
}

TEST(DOMReaderCursor, HasXMLTagChangesNothing) {
    auto reader = Open("<a><b/><c/></a>");
    ASSERT_EQ(reader->ReadStartElement("c"), Tavo::NoError);
    ASSERT_EQ(reader->ReadToken(), Tavo::NoError);
    EXPECT_TRUE(reader->HasXMLTag("b"));
    EXPECT_EQ(Token(*reader), "E:c");
    EXPECT_FALSE(reader->HasXMLTag("x"));
    EXPECT_EQ(Token(*reader), "E:c");
    EXPECT_EQ(reader->GetNumberOfMessage(), 0);
    EXPECT_EQ(reader->GetErrorStatus(), 0);
}

TEST(DOMReaderCursor, CursorComesBackWhenAnExceptionPasses) {
    std::string const xml = "<a><b/></a>";
    ThrowingReader reader(reinterpret_cast<unsigned char const*>(xml.data()),
                          static_cast<unsigned int>(xml.size()), Tavo::XMLNoTopLevelTag);
    Tavo::UniString name;
    EXPECT_THROW(reader.GetNextTokenType(), std::runtime_error);
    EXPECT_THROW(reader.GetNextTokenTypeName(name), std::runtime_error);
    EXPECT_THROW(reader.GetNextStartTokenName(name), std::runtime_error);
    EXPECT_THROW(reader.HasXMLTag("b"), std::runtime_error);
    EXPECT_EQ(reader.GetActualNode(), reader.GetActualNode()->getOwnerDocument()->getDocumentElement());
    EXPECT_EQ(reader.ReadToken(), Tavo::NoError);
    EXPECT_EQ(reader.GetActualNode()->getNodeType(), xercesc::DOMNode::ELEMENT_NODE);
}

TEST(DOMReaderCursor, FailureTable) {
    TavoXML::DOMReader reader(nullptr, nullptr);
    // No node: the token queries fail and set the sticky status.
    EXPECT_EQ(reader.ReadToken(), Tavo::GeneralError);
    EXPECT_EQ(reader.GetErrorStatus(), 3);
    reader.ClearErrorStatus();
    Tavo::UniString name("kept");
    EXPECT_EQ(reader.GetTokenTypeName(name), Tavo::XMLNoToken);
    EXPECT_EQ(ReaderTest::Utf8(name), "kept");
    EXPECT_EQ(reader.GetErrorStatus(), 3);
    // ReadStartElement fails with 2 and leaves the status alone; ReadEndElement finds nothing.
    EXPECT_EQ(reader.ReadStartElement("a"), 2);
    EXPECT_EQ(reader.GetErrorStatus(), 3);
    EXPECT_EQ(reader.ReadEndElement("a"), Tavo::GeneralError);
    EXPECT_EQ(reader.GetErrorStatus(), 3);
    EXPECT_FALSE(reader.HasXMLTag("a"));
    EXPECT_EQ(reader.GetNextTokenType(), Tavo::XMLNoToken);
    EXPECT_EQ(reader.ReadTokenWithName(Tavo::UniString("a"), Tavo::XMLStartToken), Tavo::GeneralError);
    EXPECT_EQ(Messages(reader), (std::vector<Message>{{"Token with specified name was not found: a", 0}}));

    // A failed search clears the status as a side effect, where the search got past its first test.
    auto sound = Open("<a><b/></a>");
    EXPECT_EQ(sound->ReadStartElement("zz"), Tavo::GeneralError);
    EXPECT_EQ(sound->GetErrorStatus(), 0);
    EXPECT_EQ(Token(*sound), "S:a");
    EXPECT_EQ(sound->GetNumberOfMessage(), 0);
}
