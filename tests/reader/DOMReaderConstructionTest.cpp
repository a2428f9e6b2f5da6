// Construction of the reader, the composed parse reports, locations, lines and the message list.
#include "reader/ReaderTestSupport.hpp"

#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"
#include "Vesk/Location.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>

using ReaderTest::Message;
using ReaderTest::Messages;
using ReaderTest::Open;
using ReaderTest::Utf8;

namespace {

Vesk::Location DataFile(char const* name) {
    return Vesk::Location((std::string(TAVO_TEST_DATA_DIR) + "/reader/" + name).c_str());
}

std::vector<std::string> Lines(std::string const& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

// The report of the exception that the construction throws.
template <class Construct>
std::string ReportOf(Construct const& construct) {
    try {
        construct();
    } catch (TavoXML::DOMReaderException const& exception) {
        EXPECT_STREQ(exception.GetName(), "DOMReaderException");
        EXPECT_EQ(exception.GetErrorCode(), -36);
        EXPECT_STREQ(exception.GetFile(), "TavoXMLDOMReader");
        return Utf8(exception.GetMessage());
    }
    ADD_FAILURE() << "no DOMReaderException";
    return {};
}

} // namespace

TEST(DOMReaderConstruction, BrokenFileGivesTheFileReport) {
    Vesk::Location const location = DataFile("broken-line5.xml");
    std::string const report = ReportOf([&] { TavoXML::DOMReader reader(location, "root"); });
    std::vector<std::string> const lines = Lines(report);
    ASSERT_EQ(lines.size(), 4u) << report;
    EXPECT_EQ(lines[0], "ParseXMLDoc () failed.");
    EXPECT_EQ(lines[1], "  - XML file path: " + Utf8(location.ToDisplayText()));
    EXPECT_EQ(lines[2], "  - Line number:   5");
    std::string const errorPrefix = "  - Xerces error:  ";
    ASSERT_GT(lines[3].size(), errorPrefix.size());
    EXPECT_EQ(lines[3].substr(0, errorPrefix.size()), errorPrefix);
    EXPECT_NE(lines[3][errorPrefix.size()], ' ');
    EXPECT_NE(report.back(), '\n');

    // A missing file fails the same way, without a tag too.
    std::string const missing =
        ReportOf([] { TavoXML::DOMReader reader(DataFile("no-such-file.xml"), Tavo::XMLNoTopLevelTag); });
    EXPECT_EQ(missing.rfind("ParseXMLDoc () failed.\n  - XML file path: ", 0), 0u) << missing;
}

TEST(DOMReaderConstruction, BrokenMemoryGivesTheMemoryReport) {
    std::string const xml = "<r>\n<a>\n</r>";
    auto const* data = reinterpret_cast<unsigned char const*>(xml.data());
    std::string const report = ReportOf([&] { TavoXML::DOMReader reader(data, xml.size(), "r"); });
    std::vector<std::string> const lines = Lines(report);
    ASSERT_EQ(lines.size(), 4u) << report;
    EXPECT_EQ(lines[0], "ParseXMLDoc () failed.");
    std::string const addressPrefix = "  - XML file is in the memory. Start address: 0x";
    EXPECT_EQ(lines[1].substr(0, addressPrefix.size()), addressPrefix);
    char address[32];
    std::snprintf(address, sizeof address, "%llx",
                  static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(data)));
    EXPECT_NE(lines[1].find(address), std::string::npos) << lines[1];
    EXPECT_EQ(lines[2], "  - Line number:  3");
    std::string const errorPrefix = "  - Xerces error: ";
    ASSERT_GT(lines[3].size(), errorPrefix.size());
    EXPECT_EQ(lines[3].substr(0, errorPrefix.size()), errorPrefix);
    EXPECT_NE(lines[3][errorPrefix.size()], ' ');
    EXPECT_NE(report.back(), '\n');

    std::string const empty = ReportOf([] { TavoXML::DOMReader reader(nullptr, 0, Tavo::XMLNoTopLevelTag); });
    EXPECT_EQ(empty.rfind("ParseXMLDoc () failed.\n  - XML file is in the memory.", 0), 0u) << empty;
}

TEST(DOMReaderConstruction, LocationAndLinesOfAFile) {
    Vesk::Location const location = DataFile("lines.xml");
    TavoXML::DOMReader reader(location, "root");
    Vesk::Location found;
    ASSERT_TRUE(reader.GetLocation(found));
    EXPECT_EQ(found.GetNativePath(), location.GetNativePath());

    EXPECT_EQ(reader.GetActLineNumber(), 3u);
    ASSERT_EQ(reader.ReadStartElement("second"), Tavo::NoError);
    // A start tag spread over lines counts where it ends.
    EXPECT_EQ(reader.GetActLineNumber(), 6u);
    ASSERT_EQ(reader.ReadEndElement("root"), Tavo::NoError);
    ASSERT_EQ(reader.ReadToken(), Tavo::NoError);
    // The document node has no line.
    EXPECT_EQ(reader.GetActLineNumber(), 0u);
    EXPECT_TRUE(reader.GetLocation(found));
}

TEST(DOMReaderConstruction, MessagesKeepTheirLines) {
    auto reader = Open("<r>\n<a/>\n\n<b/>\n</r>");
    reader->AddMessage(Tavo::UniString("at the root"));
    ASSERT_EQ(reader->ReadStartElement("b"), Tavo::NoError);
    reader->AddMessage(Tavo::UniString("at b"));
    EXPECT_EQ(Messages(*reader), (std::vector<Message>{{"at the root", 1}, {"at b", 4}}));

    // Indexes out of range leave the outputs as they were.
    Tavo::UniString text("unchanged");
    int line = 77;
    reader->GetMessage(-1, text, line);
    reader->GetMessage(2, text, line);
    EXPECT_EQ(Utf8(text), "unchanged");
    EXPECT_EQ(line, 77);
}

TEST(DOMReaderConstruction, WrongTopLevelTagStillReads) {
    auto reader = Open("<data><n>5</n></data>", "other");
    Vesk::Location found;
    ASSERT_TRUE(reader->GetLocation(found));
    EXPECT_EQ(found, Vesk::Location(Tavo::UniString("DOMReaderCreationFromMemory")));
    EXPECT_FALSE(reader->CheckTopLevelTag("other"));
    EXPECT_TRUE(reader->CheckTopLevelTag("data"));
    EXPECT_TRUE(reader->CheckTopLevelTag(nullptr));
    int value = 0;
    EXPECT_EQ(reader->ReadXML("n", value), Tavo::NoError);
    EXPECT_EQ(value, 5);
    EXPECT_EQ(reader->GetErrorStatus(), 0);
}

TEST(DOMReaderConstruction, ReaderOnAForeignElement) {
    std::string const xml = "<r>\n<a>\n<x>1</x>\n</a>\n<b/>\n</r>";
    xercesc::DOMDocument* document =
        ParseXMLDoc(reinterpret_cast<unsigned char const*>(xml.data()), static_cast<unsigned int>(xml.size()),
                    xercesc::AbstractDOMParser::Val_Auto, true, Tavo::UniString("foreign"));
    ASSERT_NE(document, nullptr);
    {
        auto* a = static_cast<xercesc::DOMElement*>(
            document->getDocumentElement()->getFirstChild()->getNextSibling());
        TavoXML::DOMReader reader(a, "a");
        EXPECT_TRUE(reader.CheckTopLevelTag("a"));
        EXPECT_FALSE(reader.CheckTopLevelTag("r"));
        Vesk::Location found;
        ASSERT_TRUE(reader.GetLocation(found));
        EXPECT_EQ(found, Vesk::Location(Tavo::UniString("foreign")));

        int value = 0;
        EXPECT_EQ(reader.ReadXML("x", value), Tavo::NoError);
        EXPECT_EQ(value, 1);
        EXPECT_EQ(reader.GetActLineNumber(), 0u);
        // Not confined to the element: behind its end token the walk goes on to its sibling and up.
        EXPECT_EQ(reader.ReadToken(), Tavo::NoError);
        EXPECT_EQ(ReaderTest::Token(reader), "E:a");
        EXPECT_EQ(reader.ReadToken(), Tavo::NoError);
        EXPECT_EQ(ReaderTest::Token(reader), "S:b");
        EXPECT_EQ(reader.GetActLineNumber(), 0u);
        EXPECT_EQ(reader.ReadToken(Tavo::XMLEndToken), Tavo::NoError);
        EXPECT_EQ(reader.ReadToken(), Tavo::NoError);
        EXPECT_EQ(ReaderTest::Token(reader), "E:r");
    }
    // The reader released nothing: the document is still whole.
    EXPECT_NE(document->getDocumentElement(), nullptr);
    document->release();
}

TEST(DOMReaderConstruction, ReaderOnNullElementFailsAtFirstUse) {
    TavoXML::DOMReader reader(nullptr, "a");
    EXPECT_FALSE(reader.CheckTopLevelTag("a"));
    EXPECT_EQ(reader.GetErrorStatus(), 0);
    EXPECT_EQ(reader.GetActLineNumber(), 0u);
    EXPECT_EQ(reader.GetTokenType(), Tavo::XMLNoToken);
    EXPECT_EQ(reader.GetErrorStatus(), 3);
    Vesk::Location found;
    EXPECT_FALSE(reader.GetLocation(found));
    EXPECT_TRUE(found.IsEmpty());
    EXPECT_EQ(reader.GetNumberOfMessage(), 0);
}
