// Construction of the reader, the composed parse reports, locations, lines and the message list.
#include "reader/ReaderTestSupport.hpp"

#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"
#include "Vesk/Location.hpp"

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>

#include <cstdint>
#include <sstream>

using namespace ReaderTest;

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
    EXPECT_EQ(line.rfind(prefix, 0), 0u) << line;
    EXPECT_NE(line.at(prefix.size()), ' ');
}

} // namespace

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
        EXPECT_EQ(After(r.ReadEndElement("a"), r), "ok E:a");
        EXPECT_EQ(After(r.ReadToken(), r), "ok S:b");
    }
    // The reader released nothing: the document is still whole.
    EXPECT_NE(document->getDocumentElement(), nullptr);
    document->release();
}
