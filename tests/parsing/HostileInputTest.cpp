#include "ParsingTestSupport.hpp"

#include <gtest/gtest.h>

#include <filesystem>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

using namespace ParsingTest;

TEST(HostileInput, EntityTricksNeitherDiscloseNorExplode) {
    std::string const corpus = std::string(TAVO_CORPUS_DIR) + "/hostile/authored/";
    if (!std::filesystem::is_directory(corpus)) {
        GTEST_SKIP() << "no corpus";
    }
    for (auto const& entry : std::filesystem::directory_iterator(corpus)) {
        std::string const name = entry.path().filename().string();
        if (entry.path().extension() != ".xml") {
            continue;
        }
        // Without validation, so that every entity is really expanded.
        Tavo::UniString message;
        Document document(ParseXMLDoc(Vesk::Location(entry.path().c_str()), Parser::Val_Never, true, nullptr,
                                      nullptr, &message));
        std::string const text = document ? Utf8(document->getDocumentElement()->getTextContent()) : "";
        EXPECT_EQ(text.find("XXE-SECRET-MARKER"), std::string::npos) << name;
        if (name.rfind("billion-laughs", 0) == 0 || name.rfind("recursive-entity", 0) == 0) {
            EXPECT_FALSE(document) << name;
            EXPECT_FALSE(message.IsEmpty()) << name;
        }
    }
}

// A fuzzer finding: an unclosed content model (which the parser's library leaks) fails with text and line.
TEST(HostileInput, FuzzerFindings) {
    std::string const data = ReadFileBytes(DataPath("fuzz/unclosed-content-model.xml"));
    ASSERT_FALSE(data.empty());
    NodeLocations table;
    NodeLocationInfo line;
    Tavo::UniString message;
#ifdef __SANITIZE_ADDRESS__
    __lsan_disable();
#endif
    Document document = ParseText(data, Parser::Val_Auto, &line, &message, &table);
#ifdef __SANITIZE_ADDRESS__
    __lsan_enable();
#endif
    EXPECT_FALSE(document);
    EXPECT_EQ(line.lineNumber, 2u);
    EXPECT_EQ(Utf8(message), "element name expected");
}
