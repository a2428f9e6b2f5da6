#include "Vesk/FileSystem.hpp"
#include "Vesk/Folder.hpp"

#include "Vesk/VeskTestSupport.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

using VeskTest::Utf8;

TEST(VeskFolder, GeneratedNamesAreFreeAndDistinct) {
    VeskTest::ScratchFolder scratch;
    Vesk::Folder const folder(Vesk::Location(scratch.Path().c_str()), 0);
    EXPECT_TRUE(folder.Exists());
    std::set<std::string> seen;
    for (int i = 0; i < 200; ++i) {
        Vesk::Name name;
        ASSERT_EQ(folder.GenerateUnusedName(&name, "Scratch_", ".tmp"), 0u);
        std::string const text = Utf8(name.GetText());
        EXPECT_THAT(text, testing::MatchesRegex("Scratch_.+\\.tmp"));
        EXPECT_FALSE(std::filesystem::exists(scratch.Path() + "/" + text)) << text;
        EXPECT_TRUE(seen.insert(text).second) << text;
        std::ofstream(scratch.Path() + "/" + text) << "taken";
    }
    Vesk::Name name;
    EXPECT_NE(Vesk::Folder(Vesk::Location(), 0).GenerateUnusedName(&name, "x", ""), 0u);
    EXPECT_NE(folder.GenerateUnusedName(nullptr, "x", ""), 0u);
}

TEST(VeskFileSystem, DeleteFilesAndFolders) {
    VeskTest::ScratchFolder scratch;
    std::filesystem::create_directories(scratch.Path() + "/tree/inner");
    std::ofstream(scratch.Path() + "/tree/inner/leaf.txt") << "leaf";
    Vesk::Location const tree = scratch.Child("tree");
    EXPECT_NE(Vesk::fileSystem.Delete(tree, Vesk::DeleteFileOrEmptyFolder, 2), 0u);
    EXPECT_TRUE(Vesk::fileSystem.Exists(tree));
    EXPECT_EQ(Vesk::fileSystem.Delete(tree, Vesk::DeleteRecursively, 2), 0u);
    EXPECT_FALSE(Vesk::fileSystem.Exists(tree));

    // A read-only file goes only when forced.
    Vesk::Location const readOnly = scratch.Child("ro.txt");
    std::ofstream(readOnly.GetNativePath()) << "ro";
    std::filesystem::permissions(readOnly.GetNativePath(), std::filesystem::perms::owner_read);
    EXPECT_EQ(Vesk::fileSystem.Delete(readOnly, 0, Vesk::DeleteKeepReadOnly), Vesk::StatusAccessDenied);
    EXPECT_EQ(Vesk::fileSystem.Delete(readOnly, 0, Vesk::DeleteForce), 0u);
    EXPECT_FALSE(Vesk::fileSystem.Exists(readOnly));

    EXPECT_NE(Vesk::fileSystem.Delete(Vesk::Location(), 0, 2), 0u);
}

TEST(VeskFileSystem, TemporaryFolderFollowsTMPDIR) {
    char const* const saved = std::getenv("TMPDIR");
    std::string const before = saved ? saved : "";
    Vesk::Location temporary;
    setenv("TMPDIR", "/var/tmp", 1);
    EXPECT_EQ(Vesk::fileSystem.GetSpecialLocation(Vesk::SpecialLocationTemporary, &temporary), 0u);
    EXPECT_EQ(temporary.GetNativePath(), "/var/tmp");
    unsetenv("TMPDIR");
    EXPECT_EQ(Vesk::fileSystem.GetSpecialLocation(Vesk::SpecialLocationTemporary, &temporary), 0u);
    EXPECT_EQ(temporary.GetNativePath(), "/tmp");
    EXPECT_NE(Vesk::fileSystem.GetSpecialLocation(99, &temporary), 0u);
    if (saved) {
        setenv("TMPDIR", before.c_str(), 1);
    }
}
