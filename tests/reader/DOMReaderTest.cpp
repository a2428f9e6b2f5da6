// The input channel over a DOM: construction and its composed reports, the token cursor (the walk, the
// ring search of ReadStartElement, the climb of ReadEndElement, the named walk, peeking, a reader without a
// document), the typed value readers with their messages, and inputs that the reader's fuzz target found.
#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLIChannel.hpp"
#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"
#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"
#include "TavoXMLUtils/reader/TavoXMLDOMReader.hpp"
#include "Vesk/Location.hpp"
#include "common/TestData.hpp"
#include "common/TestText.hpp"

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLNetAccessor.hpp>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using TavoTest::Utf8;

// A reader over the UTF-8 document `xml`, built from memory.
std::unique_ptr<TavoXML::DOMReader> Open(std::string_view xml, char const* topLevelTag = nullptr) {
    auto const* data = reinterpret_cast<unsigned char const*>(xml.data());
    auto const size = static_cast<unsigned int>(xml.size());
    if (topLevelTag == nullptr) {
        return std::make_unique<TavoXML::DOMReader>(data, size, Tavo::XMLNoTopLevelTag);
    }
    return std::make_unique<TavoXML::DOMReader>(data, size, topLevelTag);
}

// A message of the channel: its text and its line.
using Message = std::pair<std::string, int>;

std::vector<Message> Messages(Tavo::XMLIChannel& channel) {
    std::vector<Message> result(channel.GetNumberOfMessage());
    for (int index = 0; index < static_cast<int>(result.size()); ++index) {
        Tavo::UniString text;
        channel.GetMessage(index, text, result[index].second);
        result[index].first = Utf8(text);
    }
    return result;
}

// The cursor as "S:name" or "E:name" ("N" for no token); the error status is left as it was found.
std::string Token(TavoXML::DOMReader& reader) {
    if (reader.GetActualNode() == nullptr || reader.GetErrorStatus() != 0) {
        return "N";
    }
    Tavo::UniString name;
    Tavo::XMLTokenType const type = reader.GetTokenTypeName(name);
    return (type == Tavo::XMLStartToken ? "S:" : type == Tavo::XMLEndToken ? "E:" : "?:") + Utf8(name);
}

// The status of an operation and the cursor after it: "ok S:b", "fail E:a", or the status as a number.
std::string After(int status, TavoXML::DOMReader& reader) {
    return (status == Tavo::NoError        ? std::string("ok")
            : status == Tavo::GeneralError ? std::string("fail")
                                           : std::to_string(status)) +
           " " + Token(reader);
}

// Runs the cursor moves of `steps` on `r`, each "move = result" with the result as After gives it. The
// moves: "S name" ReadStartElement, "E name" ReadEndElement (no name: a null name), "T" ReadToken, "T S"
// and "T E" ReadToken with that mask, "NS name" and "NE name" ReadTokenWithName for a start or end token.
void Moves(TavoXML::DOMReader& r, std::initializer_list<std::string> steps) {
    for (std::string const& step : steps) {
        std::string const move = step.substr(0, step.find(" = ")), op = move.substr(0, move.find(' '));
        std::string const name = op.size() < move.size() ? move.substr(op.size() + 1) : "";
        char const* const arg = name.empty() ? nullptr : name.c_str();
        int const status = op == "S"     ? r.ReadStartElement(arg)
                           : op == "E"   ? r.ReadEndElement(arg)
                           : op == "NS"  ? r.ReadTokenWithName(Tavo::UniString(arg), Tavo::XMLStartToken)
                           : op == "NE"  ? r.ReadTokenWithName(Tavo::UniString(arg), Tavo::XMLEndToken)
                           : name == "S" ? r.ReadToken(Tavo::XMLStartToken)
                           : name == "E" ? r.ReadToken(Tavo::XMLEndToken)
                                         : r.ReadToken();
        EXPECT_EQ(After(status, r), step.substr(move.size() + 3)) << step;
    }
}

Vesk::Location DataFile(char const* name) {
    return Vesk::Location((std::string(TAVO_TEST_DATA_DIR) + "/reader/" + name).c_str());
}

// The lines of the report of the DOMReaderException that `construct` throws.
template <class Construct>
std::vector<std::string> ReportOf(Construct const& construct) {
    std::vector<std::string> lines;
    try {
        construct();
        ADD_FAILURE() << "no DOMReaderException";
    } catch (TavoXML::DOMReaderException const& exception) {
        EXPECT_STREQ(exception.GetName(), "DOMReaderException");
        EXPECT_EQ(exception.GetErrorCode(), -36);
        EXPECT_STREQ(exception.GetFile(), "TavoXMLDOMReader");
        std::string const report = Utf8(exception.GetMessage());
        EXPECT_NE(report.back(), '\n');
        std::istringstream in(report);
        for (std::string line; std::getline(in, line);) {
            lines.push_back(line);
        }
        EXPECT_EQ(lines.at(0), "ParseXMLDoc () failed.");
    }
    return lines;
}

// The parser's own text follows the prefix directly.
void ExpectXercesError(std::string const& line, std::string const& prefix) {
    EXPECT_EQ(line.rfind(prefix, 0), 0u) << line;
    EXPECT_NE(line.at(prefix.size()), ' ');
}

TEST(DOMReaderConstruction, ComposedReports) {
    Vesk::Location const location = DataFile("broken-line5.xml");
    std::vector<std::string> lines = ReportOf([&] { TavoXML::DOMReader reader(location, "root"); });
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[1], "  - XML file path: " + Utf8(location.ToDisplayText()));
    EXPECT_EQ(lines[2], "  - Line number:   5");
    ExpectXercesError(lines[3], "  - Xerces error:  ");
    std::string const xml = "<r>\n<a>\n</r>";
    auto const* data = reinterpret_cast<unsigned char const*>(xml.data());
    lines = ReportOf([&] { TavoXML::DOMReader reader(data, xml.size(), "r"); });
    ASSERT_EQ(lines.size(), 4u);
    std::ostringstream address;
    address << std::hex << reinterpret_cast<std::uintptr_t>(data);
    EXPECT_EQ(lines[1], "  - XML file is in the memory. Start address: 0x" + address.str());
    EXPECT_EQ(lines[2], "  - Line number:  3");
    ExpectXercesError(lines[3], "  - Xerces error: ");
}

TEST(DOMReaderConstruction, LocationLinesAndMessagesOfAFile) {
    Vesk::Location const location = DataFile("lines.xml");
    TavoXML::DOMReader reader(location, "root");
    Vesk::Location found;
    ASSERT_TRUE(reader.GetLocation(found));
    EXPECT_EQ(found.GetNativePath(), location.GetNativePath());
    reader.AddMessage(Tavo::UniString("at the root"));
    ASSERT_EQ(reader.ReadStartElement("second"), Tavo::NoError);
    // A start tag spread over lines counts where it ends.
    reader.AddMessage(Tavo::UniString("at second"));
    EXPECT_EQ(Messages(reader), (std::vector<Message>{{"at the root", 3}, {"at second", 6}}));
    ASSERT_EQ(reader.ReadEndElement("root"), Tavo::NoError);
    ASSERT_EQ(reader.ReadToken(), Tavo::NoError);
    // The document node has no line.
    EXPECT_EQ(reader.GetActLineNumber(), 0u);
}

TEST(DOMReaderConstruction, TopLevelTagAndForeignElements) {
    // Another root than the tag given: the check tells, the reader is built.
    auto reader = Open("<data/>", "other");
    Vesk::Location found;
    ASSERT_TRUE(reader->GetLocation(found));
    EXPECT_EQ(found, Vesk::Location(Tavo::UniString("DOMReaderCreationFromMemory")));
    EXPECT_FALSE(reader->CheckTopLevelTag("other"));
    EXPECT_TRUE(reader->CheckTopLevelTag("data"));
    // A reader on an element of a document it does not own.
    std::string const xml = "<r><a><x>1</x></a><b/></r>";
    xercesc::DOMDocument* document =
        ParseXMLDoc(reinterpret_cast<unsigned char const*>(xml.data()), static_cast<unsigned int>(xml.size()),
                    xercesc::AbstractDOMParser::Val_Auto, true, Tavo::UniString("foreign"));
    ASSERT_NE(document, nullptr);
    {
        TavoXML::DOMReader r(
            static_cast<xercesc::DOMElement*>(document->getDocumentElement()->getFirstChild()), "a");
        ASSERT_TRUE(r.GetLocation(found));
        EXPECT_EQ(found, Vesk::Location(Tavo::UniString("foreign")));
        // Not confined to the element: behind its end token the walk goes on to its sibling and up.
        Moves(r, {"E a = ok E:a", "T = ok S:b"});
    }
    // The reader released nothing: the document is still whole.
    EXPECT_NE(document->getDocumentElement(), nullptr);
    document->release();
}

constexpr char gEndOfXML[] = "End of XML reached, token with the specified name was not found";

// Throws from a nested read, to see that peeking operations put the cursor back on every path.
class ThrowingReader : public TavoXML::DOMReader {
public:
    using DOMReader::DOMReader;
    Tavo::XMLTokenType GetTokenType() override { throw std::runtime_error("token"); }
    Tavo::XMLTokenType GetTokenTypeName(Tavo::UniString&) override { throw std::runtime_error("name"); }
    int ReadEndElement(char const*) override { throw std::runtime_error("end"); }
};

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
    Moves(r, {"T E = ok E:x", "T S = ok S:c", "T S = fail E:#document"});
}

TEST(DOMReaderCursor, ReadStartElementSearchesARing) {
    auto reader = Open("<a>\n<b/>\n<!-- c? -->text<c/>\n<d><e/></d>\n</a>");
    TavoXML::DOMReader& r = *reader;
    // From the start of a: its children, in any order.
    Moves(r, {"S d = ok S:d", "E d = ok E:d",
              // From the end of d, the last child, the ring comes round to the first sibling.
              "S b = ok S:b", "T = ok E:b",
              // The element itself is part of its own ring.
              "S b = ok S:b",
              // The search does not descend into grandchildren.
              "T = ok E:b", "S e = fail E:b",
              // A null name takes the first candidate: from the end of b that is its next sibling.
              "S = ok S:c",
              // A start token without element children has no candidate.
              "S = fail S:c"});
    EXPECT_EQ(r.GetNumberOfMessage(), 0);
    // The root's ring is the document's element children: the root itself.
    auto root = Open("<a><b/></a>");
    Moves(*root, {"E a = ok E:a", "S a = ok S:a", "E a = ok E:a", "T = ok E:#document",
                  // Behind the document node there is nothing to search.
                  "S a = fail E:#document"});
}

TEST(DOMReaderCursor, ReadEndElementClimbs) {
    auto reader = Open("<a><b><c><d/></c></b><e/></a>");
    TavoXML::DOMReader& r = *reader;
    Moves(r, {"S b = ok S:b",
              // Failures, also for a null name, leave the cursor.
              "E = fail S:b", "T E = ok E:d",
              // From deep inside, straight to the end of b.
              "E b = ok E:b",
              // On the end token of b, the same call moves on to the next end token, over e's start.
              "E b = ok E:e", "E a = ok E:a", "E a = ok E:#document"});
    EXPECT_EQ(r.GetNumberOfMessage(), 0);
}

TEST(DOMReaderCursor, ReadTokenWithName) {
    auto reader = Open("<a><b/><c><b/></c></a>");
    TavoXML::DOMReader& r = *reader;
    // Already there: the cursor stays.
    Moves(r, {"NS a = ok S:a", "NE b = ok E:b", "NS b = ok S:b",
              // Not found: the walk's end message, then the search's own; the cursor comes back.
              "NS zz = fail S:b"});
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

constexpr char gDocument[] = "<root>\n"                                                             // 1
                             "<num>abc</num>\n"                                                     // 2
                             "<empty></empty>\n"                                                    // 3
                             "<nested><inner/></nested>\n"                                          // 4
                             "<item a=\"x\" n=\"bad\" b=\"TrUe\" c=\"300\" m=\"-1\" s=\" 12 \"/>\n" // 5
                             "<commented><!--c-->42</commented>\n"                                  // 6
                             "<text>abcd</text>\n"                                                  // 7
                             "<abc>abc</abc>\n"                                                     // 8
                             "<big>300</big>\n"                                                     // 9
                             "<cdata>lead<![CDATA[first]]><![CDATA[second]]></cdata>\n"             // 10
                             "<spaced> 17 </spaced>\n"                                              // 11
                             "<half Mv=\"1\"/>\n"                                                   // 12
                             "<short>40000</short><long>-9000000000</long>\n"                       // 13
                             "</root>\n";

TEST(DOMReaderValues, MessageTableWithLines) {
    auto reader = Open(gDocument, "root");
    TavoXML::DOMReader& r = *reader;
    Tavo::UniString text("keep");
    int number = 7;
    EXPECT_EQ(After(r.ReadXML("missing", text), r), "fail S:root");
    EXPECT_EQ(After(r.ReadXML("num", number), r), "fail E:num");
    EXPECT_EQ(number, 7);
    EXPECT_EQ(After(r.ReadXML("nested", text), r), "ok E:nested");
    EXPECT_EQ(Utf8(text), "keep");
    ASSERT_EQ(r.ReadStartElement("item"), Tavo::NoError);
    EXPECT_EQ(r.ReadXMLAttr("n", number), Tavo::GeneralError);
    EXPECT_EQ(After(r.ReadXMLAttr("zz", text), r), "fail S:item");
    EXPECT_TRUE(r.HasXMLAttr("n"));
    ASSERT_EQ(r.ReadEndElement("root"), Tavo::NoError);
    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    EXPECT_FALSE(r.HasXMLAttr("a"));
    EXPECT_EQ(Messages(r), (std::vector<Message>{
                               {"Start element for missing tag not found", 1},
                               {"Value should be number, but is not. In tag: num", 2},
                               {"Reading tag content failed. Tag name: nested", 4},
                               {"Attribute should be number, but is not. AttributeName: n", 5},
                               {"Missing Attribute: zz", 5},
                               {"Invalid Node Type: a", 0},
                           }));
}

TEST(DOMReaderValues, TextsNumbersAndBuffersAtTheirEdges) {
    auto reader = Open(gDocument);
    TavoXML::DOMReader& r = *reader;
    Tavo::UniString text("x");
    EXPECT_EQ(r.ReadXML("empty", text), Tavo::NoError);
    EXPECT_TRUE(text.IsEmpty());
    int number = 1;
    // A comment as first child is what is read.
    EXPECT_EQ(r.ReadXML("commented", text), Tavo::NoError);
    EXPECT_EQ(Utf8(text), "c");
    EXPECT_EQ(r.ReadXML("spaced", number), Tavo::NoError);
    EXPECT_EQ(number, 17);
    // Out of range: refused, the value kept.
    short small = 3;
    unsigned long unsignedWide = 5;
    EXPECT_EQ(r.ReadXML("short", small), Tavo::GeneralError);
    EXPECT_EQ(r.ReadXML("long", unsignedWide), Tavo::GeneralError);
    EXPECT_EQ(small, 3);
    EXPECT_EQ(unsignedWide, 5u);
    // Only the low 8 bits of a char are kept.
    unsigned char uc = 0;
    EXPECT_EQ(r.ReadXML("big", uc), Tavo::NoError);
    EXPECT_EQ(uc, 44);
    char buffer[8];
    auto read = [&](int status, std::size_t shown) {
        return (status == Tavo::NoError ? "ok " : "fail ") + std::string(buffer, shown);
    };
    std::memset(buffer, '#', sizeof buffer);
    // Longer than the size: refused, buffer untouched.
    EXPECT_EQ(read(r.ReadXML("text", buffer, 3), 1), "fail #");
    // Exactly the size: three bytes, no terminator.
    EXPECT_EQ(read(r.ReadXML("abc", buffer, 3), 4), "ok abc#");
    // Room to spare: terminated and zero-filled up to the size.
    EXPECT_EQ(read(r.ReadXML("abc", buffer, 6), 7), std::string("ok abc\0\0\0#", 10));
    // Attributes have no length check: the text is cut to the size.
    ASSERT_EQ(r.ReadStartElement("item"), Tavo::NoError);
    EXPECT_EQ(read(r.ReadXMLAttr("n", buffer, 2), 3), "ok bac");
}

TEST(DOMReaderValues, BoolLiterals) {
    auto reader =
        Open("<r><a>FALSE</a><b>0</b><c>No</c><d>tRUE</d><e>1</e><f>YeS</f><y>y</y><g> true </g></r>");
    // a-c are false, d-f true; a lone letter and a padded literal fail without a message, value kept.
    for (char const tag : std::string("abcdefyg")) {
        bool const ok = tag < 'g';
        bool const expected = tag >= 'd';
        bool value = ok ? !expected : expected;
        SCOPED_TRACE(tag);
        EXPECT_EQ(reader->ReadXML(std::string(1, tag).c_str(), value),
                  ok ? Tavo::NoError : Tavo::GeneralError);
        EXPECT_EQ(value, expected);
    }
    EXPECT_EQ(reader->GetNumberOfMessage(), 0);
}

TEST(DOMReaderValues, AttributeConversionsVersionsAndCDATA) {
    auto reader = Open(gDocument);
    TavoXML::DOMReader& r = *reader;
    Tavo::UniString text("keep");
    // The root has element and text children but no section.
    EXPECT_EQ(r.ReadXMLCDATAString(text), Tavo::GeneralError);
    ASSERT_EQ(r.ReadStartElement("item"), Tavo::NoError);
    bool flag = false;
    signed char sc = 0;
    long long big = 0;
    EXPECT_EQ(r.ReadXMLAttr("b", flag) | r.ReadXMLAttr("m", sc) | r.ReadXMLAttr("s", big), Tavo::NoError);
    EXPECT_TRUE(flag && sc == -1 && big == 12) << flag << int(sc) << big;
    unsigned int positive = 9;
    EXPECT_EQ(After(r.ReadXMLAttr("m", positive), r), "fail S:item");
    EXPECT_EQ(positive, 9u);
    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    ASSERT_EQ(r.ReadStartElement("cdata"), Tavo::NoError);
    EXPECT_EQ(After(r.ReadXMLCDATAString(text), r), "ok S:cdata");
    EXPECT_EQ(Utf8(text), "first");
    char buffer[4];
    EXPECT_EQ(r.ReadXMLCDATAString(buffer, sizeof buffer), Tavo::NoError);
    EXPECT_STREQ(buffer, "fir");
    ASSERT_EQ(r.ReadToken(), Tavo::NoError);
    ASSERT_EQ(r.ReadStartElement("half"), Tavo::NoError);
    Tavo::ClassVersion version(3, 250);
    EXPECT_EQ(r.ReadXMLVersionAttr(version), Tavo::GeneralError);
    EXPECT_EQ(version, Tavo::ClassVersion(3, 250));
    EXPECT_EQ(Messages(r).back(), (Message{"Missing Attribute: Sv", 12}));
}

TEST(RepeatedElements, PeekingLoopReadsEachOnceAndTheRingSearchWrapsAround) {
    auto reader = Open("<r><Files><File>a</File><!-- x --><File>b</File><File/></Files>"
                       "<After>1</After></r>");
    ASSERT_EQ(reader->ReadStartElement("Files"), Tavo::NoError);
    std::vector<std::string> files;
    Tavo::UniString name;
    while (reader->GetNextTokenTypeName(name) == Tavo::XMLStartToken && name == "File") {
        Tavo::UniString file;
        ASSERT_EQ(reader->ReadXML("File", file), Tavo::NoError);
        files.push_back(Utf8(file));
    }
    EXPECT_EQ(files, (std::vector<std::string>{"a", "b", ""}));
    ASSERT_EQ(reader->ReadEndElement("Files"), Tavo::NoError);
    int after = 0;
    EXPECT_EQ(reader->ReadXML("After", after), Tavo::NoError);
    EXPECT_EQ(after, 1);
    // The trap: from the end of the last File the ring search finds the first one again.
    reader = Open("<Files><File>a</File><File>b</File></Files>");
    Tavo::UniString file;
    ASSERT_EQ(reader->ReadXML("File", file), Tavo::NoError);
    ASSERT_EQ(reader->ReadXML("File", file), Tavo::NoError);
    ASSERT_EQ(reader->ReadXML("File", file), Tavo::NoError);
    EXPECT_EQ(Utf8(file), "a");
}

std::string NameOf(XMLCh const* name) {
    return std::string(Tavo::UniString(name).ToCStr(0, Tavo::UniString::kAll, TavoCharCodeDefault, 0).Get());
}

// Every value reader at a start token: those on attributes and sections must not move the cursor.
void ReadEverythingAt(TavoXML::DOMReader& reader) {
    xercesc::DOMNode* const node = reader.GetActualNode();
    Tavo::UniString text;
    reader.ReadXMLCDATAString(text);
    char bytes[8];
    reader.ReadXMLCDATAHexToBin(bytes, sizeof bytes);
    xercesc::DOMNamedNodeMap* const attributes = node->getAttributes();
    for (XMLSize_t index = 0; attributes != nullptr && index < attributes->getLength(); ++index) {
        double real = 0;
        reader.ReadXMLAttr(NameOf(attributes->item(index)->getNodeName()).c_str(), real);
    }
    EXPECT_EQ(reader.GetActualNode(), node);
}

void Walk(std::string const& bytes) {
    Tavo::XMLIChannel* channel = TavoXML::CreateXMLIChannelFromMemory(
        reinterpret_cast<unsigned char const*>(bytes.data()), static_cast<unsigned int>(bytes.size()),
        Tavo::XMLNoTopLevelTag, TavoXML::ReturnNullOnError);
    if (channel == nullptr) {
        return;
    }
    auto& reader = static_cast<TavoXML::DOMReader&>(*channel);
    do {
        std::string const before = Token(reader);
        Tavo::UniString name;
        reader.GetNextTokenTypeName(name);
        reader.HasXMLTag(NameOf(name.GetU16Str()).c_str());
        ASSERT_EQ(Token(reader), before);
        if (reader.GetTokenTypeName(name) == Tavo::XMLStartToken) {
            ReadEverythingAt(reader);
        }
    } while (reader.ReadToken() == Tavo::NoError);
    EXPECT_EQ(Token(reader), "E:#document");
    TavoXML::DisposeXMLIChannel(channel);
}

TEST(FuzzRegression, StoredInputsWalkCleanly) {
    // No stored input may reach the network: without a net accessor, URLs of external entities fail.
    delete xercesc::XMLPlatformUtils::fgNetAccessor;
    xercesc::XMLPlatformUtils::fgNetAccessor = nullptr;
    int inputs = 0;
    for (auto const& entry : std::filesystem::directory_iterator(TAVO_TEST_DATA_DIR "/reader/fuzz")) {
        SCOPED_TRACE(entry.path().filename().string());
        Walk(TavoTest::ReadFileBytes(entry.path().string()));
        ++inputs;
    }
    EXPECT_GE(inputs, 2);
}

} // namespace
