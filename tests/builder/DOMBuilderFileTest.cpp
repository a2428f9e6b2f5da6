#include "builder/BuilderTestText.hpp"

#include "Vesk/Location.hpp"

#include <gtest/gtest.h>

#include <xercesc/dom/DOM.hpp>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

using BuilderTest::Exported;
using BuilderTest::kDeclaration;
using TavoXML::DOMBuilder;

namespace {

// A private folder, which is also the temporary folder (TMPDIR) while a test runs.
class FileTest : public ::testing::Test {
protected:
    void SetUp() override {
        char pattern[] = "/tmp/domBuilderTest.XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        folder = pattern;
        oldTmpDir = std::getenv("TMPDIR") != nullptr ? std::getenv("TMPDIR") : "/tmp";
        setenv("TMPDIR", folder.c_str(), 1);
    }
    void TearDown() override {
        setenv("TMPDIR", oldTmpDir.c_str(), 1);
        std::filesystem::remove_all(folder);
    }
    Vesk::Location LocationOf(char const* name) const { return Vesk::Location((folder / name).c_str()); }
    static std::string Read(std::filesystem::path const& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    std::filesystem::path folder;
    std::string oldTmpDir;
};

} // namespace

TEST_F(FileTest, DestructionReplacesTheFileWithTheDocumentAsItStands) {
    std::ofstream(folder / "out.xml") << "an old and much longer content that must disappear entirely";
    {
        DOMBuilder channel(LocationOf("out.xml"), "root", true);
        channel.WriteStartElement("open"); // never closed, no WriteEndDocument
        channel.WriteXML("v", Tavo::UniString("\xC3\xA4", TavoCharCodeUTF8));
        EXPECT_EQ(Read(folder / "out.xml").substr(0, 6), "an old") << "nothing is written before destruction";
    }
    EXPECT_EQ(Read(folder / "out.xml"),
              kDeclaration + std::string("\n<root>\n\t<open>\n\t\t<v>\xC3\xA4</v></open></root>"));
}

TEST_F(FileTest, EmptyLocationWritesAScratchFileAndMemoryChannelsNothing) {
    { DOMBuilder memoryOnly("root", true); }
    EXPECT_TRUE(std::filesystem::is_empty(folder));
    {
        DOMBuilder channel(Vesk::Location(), Tavo::XMLNoTopLevelTag, true);
        channel.WriteStartElement("scratch");
        channel.WriteEndElement();
    }
    int files = 0;
    for (auto const& entry : std::filesystem::directory_iterator(folder)) {
        EXPECT_EQ(entry.path().filename().string().rfind("Scratch_", 0), 0u) << entry.path();
        EXPECT_EQ(entry.path().extension(), ".xml");
        EXPECT_EQ(Read(entry.path()), kDeclaration + std::string("\n<scratch/>"));
        ++files;
    }
    EXPECT_EQ(files, 1);
}

TEST_F(FileTest, AttachedDocumentIsWrittenOnlyWhenOwned) {
    using namespace xercesc;
    Tavo::UniString url;
    LocationOf("attached.xml").ToURL(&url);
    DOMImplementation* const implementation = DOMImplementation::getImplementation();
    DOMDocument* foreign = implementation->createDocument();
    foreign->setDocumentURI(url.GetU16Str());
    {
        // A null element on a document without root: the first element becomes the root.
        DOMBuilder channel(foreign, nullptr, DOMBuilder::DoNotOwnDocument, 0);
        channel.WriteStartElement("top");
        channel.WriteStartElement("inner");
        channel.WriteXML("v", 2);
        channel.WriteEndElement();
        EXPECT_EQ(Exported(channel, false), "\n<top>\n\t<inner>\n\t\t<v>2</v>\n\t</inner></top>");
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << "a foreign document is neither written nor released";
    foreign->release();

    DOMDocument* owned = implementation->createDocument(nullptr, u"doc", nullptr); // released by the channel
    owned->setDocumentURI(url.GetU16Str());
    {
        DOMBuilder(owned, owned->getDocumentElement(), static_cast<DOMBuilder::OwnershipType>(1), 1)
            .WriteXML("v", 2);
    }
    EXPECT_EQ(Read(folder / "attached.xml"), kDeclaration + std::string("<doc>\n\t<v>2</v></doc>"));
}
