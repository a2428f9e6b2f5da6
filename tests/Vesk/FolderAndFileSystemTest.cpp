#include "Vesk/FileSystem.hpp"
#include "Vesk/Folder.hpp"

#include "Vesk/VeskTestSupport.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <string>
#include <utility>

using VeskTest::Utf8;

namespace {

// Sets TMPDIR for the lifetime of the object (null unsets it), then restores it.
class TemporaryFolderVariable {
public:
    explicit TemporaryFolderVariable(char const* value) {
        if (char const* old = std::getenv("TMPDIR")) {
            saved = old;
        }
        value != nullptr ? setenv("TMPDIR", value, 1) : unsetenv("TMPDIR");
    }
    ~TemporaryFolderVariable() { saved ? setenv("TMPDIR", saved->c_str(), 1) : unsetenv("TMPDIR"); }

private:
    std::optional<std::string> saved;
};

} // namespace

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

TEST(VeskFileSystem, TemporaryFolder) {
    Vesk::Location location;
    VeskTest::ScratchFolder scratch;
    // The variable when set and not empty, /tmp otherwise.
    for (auto [variable, expected] :
         {std::pair<char const*, std::string>{scratch.Path().c_str(), scratch.Path()},
          {nullptr, "/tmp"},
          {"", "/tmp"}}) {
        TemporaryFolderVariable const set(variable);
        ASSERT_EQ(Vesk::fileSystem.GetSpecialLocation(Vesk::SpecialLocationTemporary, &location), 0u);
        EXPECT_EQ(location.GetNativePath(), expected);
    }
    EXPECT_NE(Vesk::fileSystem.GetSpecialLocation(3, &location), 0u);
    EXPECT_NE(Vesk::fileSystem.GetSpecialLocation(12, nullptr), 0u);
}
