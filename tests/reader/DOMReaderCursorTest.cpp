// The token cursor: the walk, the ring search of ReadStartElement, the climb of ReadEndElement, the
// named walk, the peeking operations and a reader without a document.
#include "reader/ReaderTestSupport.hpp"

#include "Vesk/Location.hpp"

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>

#include <stdexcept>

using namespace ReaderTest;

namespace {

constexpr char gEndOfXML[] = "End of XML reached, token with the specified name was not found";

// Throws from a nested read, to see that peeking operations put the cursor back on every path.
class ThrowingReader : public TavoXML::DOMReader {
public:
    using DOMReader::DOMReader;
    Tavo::XMLTokenType GetTokenType() override { throw std::runtime_error("token"); }
    Tavo::XMLTokenType GetTokenTypeName(Tavo::UniString&) override { throw std::runtime_error("name"); }
    int ReadEndElement(char const*) override { throw std::runtime_error("end"); }
};

} // namespace

TEST(DOMReaderCursor, WalkVisitsEveryTokenOnce) {
    auto reader = Open("<a>lead<b/><!-- note --><?pi x?><c>text</c></a>");
    std::vector<std::string> tokens{Token(*reader)};
    while (reader->ReadToken() == Tavo::NoError) {
        tokens.push_back(Token(*reader));
    }
    EXPECT_EQ(tokens, (std::vector<std::string>{"S:a", "S:b", "E:b", "S:c", "E:c", "E:a", "E:#document"}));
    EXPECT_EQ(Messages(*reader), (std::vector<Message>{{gEndOfXML, 0}}));
    // It stays failing at the end and adds one message per try.
    EXPECT_EQ(reader->ReadToken(), Tavo::GeneralError);
    EXPECT_EQ(reader->GetNumberOfMessage(), 2);

    // With a mask: the next token of that kind; none left runs to the end and fails there.
    auto masked = Open("<a><b><x/></b><c/></a>");
    TavoXML::DOMReader& r = *masked;
    EXPECT_EQ(After(r.ReadToken(Tavo::XMLEndToken), r), "ok E:x");
    EXPECT_EQ(After(r.ReadToken(Tavo::XMLStartToken), r), "ok S:c");
    EXPECT_EQ(After(r.ReadToken(Tavo::XMLStartToken), r), "fail E:#document");
}

TEST(DOMReaderCursor, ReadStartElementSearchesARing) {
    auto reader = Open("<a>\n<b/>\n<!-- c? -->text<c/>\n<d><e/></d>\n</a>");
    TavoXML::DOMReader& r = *reader;
    // From the start of a: its children, in any order.
    EXPECT_EQ(After(r.ReadStartElement("d"), r), "ok S:d");
    EXPECT_EQ(After(r.ReadEndElement("d"), r), "ok E:d");
    // From the end of d, the last child, the ring comes round to the first sibling.
    EXPECT_EQ(After(r.ReadStartElement("b"), r), "ok S:b");
    EXPECT_EQ(After(r.ReadToken(), r), "ok E:b");
    // The element itself is part of its own ring.
    EXPECT_EQ(After(r.ReadStartElement("b"), r), "ok S:b");
    // The search does not descend into grandchildren.
    EXPECT_EQ(After(r.ReadToken(), r), "ok E:b");
    EXPECT_EQ(After(r.ReadStartElement("e"), r), "fail E:b");
    // A null name takes the first candidate: from the end of b that is its next sibling.
    EXPECT_EQ(After(r.ReadStartElement(nullptr), r), "ok S:c");
    // A start token without element children has no candidate.
    EXPECT_EQ(After(r.ReadStartElement(nullptr), r), "fail S:c");
    EXPECT_EQ(r.GetNumberOfMessage(), 0);

    // The root's ring is the document's element children: the root itself.
    auto root = Open("<a><b/></a>");
    EXPECT_EQ(After(root->ReadEndElement("a"), *root), "ok E:a");
    EXPECT_EQ(After(root->ReadStartElement("a"), *root), "ok S:a");
    EXPECT_EQ(After(root->ReadEndElement("a"), *root), "ok E:a");
    EXPECT_EQ(After(root->ReadToken(), *root), "ok E:#document");
    // Behind the document node there is nothing to search.
    EXPECT_EQ(After(root->ReadStartElement("a"), *root), "fail E:#document");
}

TEST(DOMReaderCursor, ReadEndElementClimbs) {
    auto reader = Open("<a><b><c><d/></c></b><e/></a>");
    TavoXML::DOMReader& r = *reader;
    EXPECT_EQ(After(r.ReadStartElement("b"), r), "ok S:b");
    // Failures, also for a null name, leave the cursor.
    EXPECT_EQ(After(r.ReadEndElement(nullptr), r), "fail S:b");
    EXPECT_EQ(After(r.ReadToken(Tavo::XMLEndToken), r), "ok E:d");
    // From deep inside, straight to the end of b.
    EXPECT_EQ(After(r.ReadEndElement("b"), r), "ok E:b");
    // On the end token of b, the same call moves on to the next end token, over e's start.
    EXPECT_EQ(After(r.ReadEndElement("b"), r), "ok E:e");
    EXPECT_EQ(After(r.ReadEndElement("a"), r), "ok E:a");
    EXPECT_EQ(After(r.ReadEndElement("a"), r), "ok E:#document");
    EXPECT_EQ(r.GetNumberOfMessage(), 0);
}

TEST(DOMReaderCursor, ReadTokenWithName) {
    auto reader = Open("<a><b/><c><b/></c></a>");
    TavoXML::DOMReader& r = *reader;
    // Already there: the cursor stays.
    EXPECT_EQ(After(r.ReadTokenWithName(Tavo::UniString("a"), Tavo::XMLStartToken), r), "ok S:a");
    EXPECT_EQ(After(r.ReadTokenWithName(Tavo::UniString("b"), Tavo::XMLEndToken), r), "ok E:b");
    EXPECT_EQ(After(r.ReadTokenWithName(Tavo::UniString("b"), Tavo::XMLStartToken), r), "ok S:b");

    // Not found: the walk's end message, then the search's own; the cursor comes back.
    EXPECT_EQ(After(r.ReadTokenWithName(Tavo::UniString("zz"), Tavo::XMLStartToken), r), "fail S:b");
    EXPECT_EQ(Messages(r),
              (std::vector<Message>{{gEndOfXML, 0}, {"Token with specified name was not found: zz", 0}}));
}

TEST(DOMReaderCursor, PeekingLeavesTheCursor) {
    auto reader = Open("<a><b/><c/></a>");
    TavoXML::DOMReader& r = *reader;
    Tavo::UniString name;
    EXPECT_EQ(r.GetNextTokenTypeName(name), Tavo::XMLStartToken);
    EXPECT_EQ(Utf8(name), "b");
    EXPECT_EQ(Token(r), "S:a");
    ASSERT_EQ(r.ReadStartElement("c"), Tavo::NoError);
    EXPECT_EQ(r.GetNextTokenTypeName(name), Tavo::XMLEndToken);
    EXPECT_EQ(Utf8(name), "c");
    // The next start token lies behind the end: there is none.
    EXPECT_EQ(r.GetNextStartTokenName(name), Tavo::XMLNoToken);
    EXPECT_TRUE(name.IsEmpty());
    EXPECT_EQ(Token(r), "S:c");
    // HasXMLTag searches the ring without moving.
    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    EXPECT_TRUE(r.HasXMLTag("b"));
    EXPECT_FALSE(r.HasXMLTag("x"));
    EXPECT_EQ(Token(r), "E:c");

    // At the very end: no token, one more message, the cursor stays.
    ASSERT_EQ(r.ReadEndElement("a"), Tavo::NoError);
    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    name = Tavo::UniString("stale");
    EXPECT_EQ(r.GetNextTokenTypeName(name), Tavo::XMLNoToken);
    EXPECT_TRUE(name.IsEmpty());
    EXPECT_EQ(Token(r), "E:#document");
    EXPECT_EQ(r.GetNumberOfMessage(), 2);
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

TEST(DOMReaderCursor, NullElementFailsAndSetsTheStatus) {
    TavoXML::DOMReader reader(nullptr, "a");
    EXPECT_EQ(reader.GetFirstElementChild(), nullptr);
    EXPECT_EQ(reader.GetNextElementSibling(), nullptr);
    Vesk::Location found;
    EXPECT_FALSE(reader.CheckTopLevelTag("a") || reader.GetLocation(found));
    Tavo::UniString text("kept");
    EXPECT_EQ(reader.ReadToken(), Tavo::GeneralError);
    EXPECT_EQ(reader.GetErrorStatus(), 3);
    reader.ClearErrorStatus();
    EXPECT_EQ(reader.ReadXML("a", text), Tavo::GeneralError);
    EXPECT_EQ(reader.GetErrorStatus(), 3);
    // The failing cursor moves leave a set status alone.
    EXPECT_EQ(reader.ReadEndElement("a"), Tavo::GeneralError);
    reader.ReadStartElement("a");
    EXPECT_EQ(reader.GetErrorStatus(), 3);
    // From a clear status a failed search clears it as a side effect, with a result of its own.
    reader.ClearErrorStatus();
    EXPECT_EQ(reader.ReadStartElement("a"), 2);
    EXPECT_EQ(reader.GetErrorStatus(), 0);
    EXPECT_EQ(reader.ReadTokenWithName(Tavo::UniString("a"), Tavo::XMLStartToken), Tavo::GeneralError);
    EXPECT_EQ(Utf8(text), "kept");
    EXPECT_EQ(Messages(reader), (std::vector<Message>{{"Token with specified name was not found: a", 0}}));
}
