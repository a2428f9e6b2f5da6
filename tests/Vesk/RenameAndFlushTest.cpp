// Replacing a file in one step (FileSystem::Rename) and putting written bytes on storage (File::Flush).
#include "Vesk/VeskTestSupport.hpp"

#include "common/TestData.hpp"

#include "Vesk/File.hpp"
#include "Vesk/FileSystem.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using TavoTest::ReadFileBytes;
using VeskTest::ScratchFolder;

TEST(VeskRename, ReplacesAFileInOneStepAndRefusesWhatItCannot) {
    ScratchFolder folder;
    std::ofstream(folder.Path() + "/new") << "new";
    std::ofstream(folder.Path() + "/old") << "old";
    EXPECT_EQ(Vesk::fileSystem.Rename(folder.Child("new"), folder.Child("old")), Vesk::StatusOK);
    EXPECT_EQ(ReadFileBytes(folder.Path() + "/old"), "new");
    EXPECT_FALSE(std::filesystem::exists(folder.Path() + "/new"));

    EXPECT_EQ(Vesk::fileSystem.Rename(folder.Child("missing"), folder.Child("old")), Vesk::StatusNotFound);
    EXPECT_EQ(Vesk::fileSystem.Rename(Vesk::Location(), folder.Child("old")), Vesk::StatusBadLocation);
    // A folder that holds something is not replaced by a file.
    std::filesystem::create_directory(folder.Path() + "/dir");
    std::ofstream(folder.Path() + "/dir/inside") << "x";
    EXPECT_EQ(Vesk::fileSystem.Rename(folder.Child("old"), folder.Child("dir")), Vesk::StatusBadLocation);
    EXPECT_EQ(ReadFileBytes(folder.Path() + "/old"), "new");
}

TEST(VeskFlush, PutsTheWrittenBytesInTheFileBeforeClose) {
    ScratchFolder folder;
    Vesk::File file(folder.Child("f"), Vesk::File::OnNotFoundCreate);
    EXPECT_EQ(file.Flush(), Vesk::StatusNotOpen);
    ASSERT_EQ(file.Open(Vesk::File::OpenWrite, Vesk::AccessDeniedReport), Vesk::StatusOK);
    ASSERT_EQ(file.WriteBin("abc", 3, nullptr), 0);
    EXPECT_EQ(ReadFileBytes(folder.Path() + "/f"), "") << "still in the buffer";
    EXPECT_EQ(file.Flush(), Vesk::StatusOK);
    EXPECT_EQ(ReadFileBytes(folder.Path() + "/f"), "abc");
    EXPECT_EQ(file.Close(), Vesk::StatusOK);

    Vesk::File reading(folder.Child("f"), Vesk::File::OnNotFoundIgnore);
    ASSERT_EQ(reading.Open(Vesk::File::OpenRead, Vesk::AccessDeniedReport), Vesk::StatusOK);
    EXPECT_EQ(reading.Flush(), Vesk::StatusWrongMode);
}
