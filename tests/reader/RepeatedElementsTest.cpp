// The loop the guide shows for a run of same-named elements: it reads each once and stops at the end
// of the run, where a plain while (ReadXML(...) == NoError) would wrap around to the first for ever.
#include "reader/ReaderTestSupport.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

TEST(RepeatedElements, PeekingLoopReadsEachOnceAndTheRingSearchWrapsAround) {
    auto reader = ReaderTest::Open("<r><Files><File>a</File><!-- x --><File>b</File><File/></Files>"
                                   "<After>1</After></r>");
    ASSERT_EQ(reader->ReadStartElement("Files"), Tavo::NoError);
    std::vector<std::string> files;
    Tavo::UniString name;
    while (reader->GetNextTokenTypeName(name) == Tavo::XMLStartToken && name == "File") {
        Tavo::UniString file;
        ASSERT_EQ(reader->ReadXML("File", file), Tavo::NoError);
        files.push_back(ReaderTest::Utf8(file));
    }
    EXPECT_EQ(files, (std::vector<std::string>{"a", "b", ""}));
    ASSERT_EQ(reader->ReadEndElement("Files"), Tavo::NoError);
    int after = 0;
    EXPECT_EQ(reader->ReadXML("After", after), Tavo::NoError);
    EXPECT_EQ(after, 1);

    // The trap: from the end of the last File the ring search finds the first one again.
    reader = ReaderTest::Open("<Files><File>a</File><File>b</File></Files>");
    Tavo::UniString file;
    ASSERT_EQ(reader->ReadXML("File", file), Tavo::NoError);
    ASSERT_EQ(reader->ReadXML("File", file), Tavo::NoError);
    ASSERT_EQ(reader->ReadXML("File", file), Tavo::NoError);
    EXPECT_EQ(ReaderTest::Utf8(file), "a");
}
