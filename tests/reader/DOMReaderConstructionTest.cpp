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
    ASSERT_GT(line.size(), prefix.size());
    EXPECT_EQ(line.substr(0, prefix.size()), prefix);
    EXPECT_NE(line[prefix.size()], ' ');
}

} // namespace

TEST(DOMReaderConstruction, ComposedReports) {
    Vesk::Location const location = DataFile("broken-line5.xml");
    std::vector<std::string> lines = ReportOf([&] { TavoXML::DOMReader reader(location, "root"); });
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[1], "  - XML file path: " + Utf8(location.ToDisplayText()));
    EXPECT_EQ(lines[2], "  - Line number:   5");
    ExpectXercesError(lines[3], "  - Xerces error:  ");
    // A missing file fails the same way, without a tag too.
    lines = ReportOf([] { TavoXML::DOMReader reader(DataFile("no-such-file.xml"), Tavo::XMLNoTopLevelTag); });
    EXPECT_EQ(lines.at(1).rfind("  - XML file path: ", 0), 0u);

    std::string const xml = "<r>\n<a>\n</r>";
    auto const* data = reinterpret_cast<unsigned char const*>(xml.data());
    lines = ReportOf([&] { TavoXML::DOMReader reader(data, xml.size(), "r"); });
    ASSERT_EQ(lines.size(), 4u);
    std::string const addressPrefix = "  - XML file is in the memory. Start address: 0x";
    EXPECT_EQ(lines[1].substr(0, addressPrefix.size()), addressPrefix);
    char address[32];
    std::snprintf(address, sizeof address, "%llx",
                  static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(data)));
    EXPECT_NE(lines[1].find(address), std::string::npos) << lines[1];
    EXPECT_EQ(lines[2], "  - Line number:  3");
    ExpectXercesError(lines[3], "  - Xerces error: ");
    lines = ReportOf([] { TavoXML::DOMReader reader(nullptr, 0, Tavo::XMLNoTopLevelTag); });
    EXPECT_EQ(lines.at(1).rfind("  - XML file is in the memory.", 0), 0u);
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

TEST(DOMReaderConstruction, TopLevelTagAndForeignElements) {
    // Another root than the tag given: the check tells, the reading works.
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

    // A reader on an element of a document it does not own.
    std::string const xml = "<r>\n<a>\n<x>1</x>\n</a>\n<b/>\n</r>";
    xercesc::DOMDocument* document =
        ParseXMLDoc(reinterpret_cast<unsigned char const*>(xml.data()), static_cast<unsigned int>(xml.size()),
                    xercesc::AbstractDOMParser::Val_Auto, true, Tavo::UniString("foreign"));
    ASSERT_NE(document, nullptr);
    {
        auto* a = static_cast<xercesc::DOMElement*>(
            document->getDocumentElement()->getFirstChild()->getNextSibling());
        TavoXML::DOMReader r(a, "a");
        EXPECT_TRUE(r.CheckTopLevelTag("a"));
        EXPECT_FALSE(r.CheckTopLevelTag("r"));
        ASSERT_TRUE(r.GetLocation(found));
        EXPECT_EQ(found, Vesk::Location(Tavo::UniString("foreign")));
        EXPECT_EQ(r.ReadXML("x", value), Tavo::NoError);
        EXPECT_EQ(value, 1);
        EXPECT_EQ(r.GetActLineNumber(), 0u);
        // Not confined to the element: behind its end token the walk goes on to its sibling and up.
        EXPECT_EQ(ReaderTest::After(r.ReadToken(), r), "ok E:a");
        EXPECT_EQ(ReaderTest::After(r.ReadToken(), r), "ok S:b");
        EXPECT_EQ(r.GetActLineNumber(), 0u);
        EXPECT_EQ(ReaderTest::After(r.ReadToken(Tavo::XMLEndToken), r), "ok E:b");
        EXPECT_EQ(ReaderTest::After(r.ReadToken(), r), "ok E:r");
    }
    // The reader released nothing: the document is still whole.
    EXPECT_NE(document->getDocumentElement(), nullptr);
    document->release();
}
