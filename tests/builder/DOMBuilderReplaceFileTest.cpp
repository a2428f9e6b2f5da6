// A file-bound channel replaces its file at destruction without losing it: on every failure the old
// file stays as it was and no temporary file is left beside it.
#include "common/TempFolder.hpp"
#include "common/TestData.hpp"

#include "TavoXMLUtils/builder/TavoXMLDOMBuilder.hpp"
#include "Vesk/Location.hpp"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <string>

namespace fs = std::filesystem;
using TavoTest::ReadFileBytes;

namespace {

constexpr char gOldContent[] = "<?xml version=\"1.0\"?><old>kept</old>";

// A fresh folder below the test process's temporary folder holding "doc.xml" with the old content.
fs::path FolderWithOldFile(std::string const& name) {
    fs::path const folder = TavoTest::TestTempFolder() / name;
    fs::create_directories(folder);
    std::ofstream(folder / "doc.xml", std::ios::binary) << gOldContent;
    return folder;
}

std::set<std::string> Entries(fs::path const& folder) {
    std::set<std::string> names;
    for (auto const& entry : fs::directory_iterator(folder)) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

// Writes a small document to `target` through a channel that is destroyed at the end.
void WriteDocument(fs::path const& target, bool serialisable) {
    TavoXML::DOMBuilder channel(Vesk::Location(target.c_str()), "root", true);
    channel.WriteXML("value", Tavo::UniString(std::string(2000, 'x').c_str()));
    if (!serialisable) {
        // The text-node writer checks nothing; the serialiser refuses the control character.
        channel.WriteXMLTextNode(Tavo::UniString(u"a\u0001b"));
    }
}

// The result of a check in a child process: empty when it passed, "SKIP: ..." when it could not be
// made, otherwise what went wrong.
using Verdict = std::string;

Verdict CheckOldFileKept(fs::path const& folder, std::set<std::string> const& expected) {
    if (ReadFileBytes((folder / "doc.xml").string()) != gOldContent) {
        return "the old file changed";
    }
    return Entries(folder) == expected ? "" : "a temporary file was left behind";
}

// Gives the process a mount namespace of its own: directly as root, otherwise inside a new user
// namespace in which it is root. False when the system allows neither.
bool EnterOwnMountNamespace() {
    if (unshare(CLONE_NEWNS) != 0) {
        uid_t const uid = getuid();
        gid_t const gid = getgid();
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
            return false;
        }
        std::ofstream("/proc/self/setgroups") << "deny";
        std::ofstream("/proc/self/uid_map") << "0 " << uid << " 1";
        std::ofstream("/proc/self/gid_map") << "0 " << gid << " 1";
    }
    // Nothing mounted from here on reaches the rest of the system.
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

// Runs `scenario` in a child process with a mount namespace of its own and a tmpfs of `size` over `folder`
// holding the old file, so that mounts need no clean-up and cannot leak; the child's verdict comes back
// through a pipe. Skips the test when the system does not allow it.
void ExpectPassedInOwnTmpfs(fs::path const& folder, char const* size,
                            std::function<Verdict()> const& scenario) {
    int channel[2];
    ASSERT_EQ(pipe(channel), 0);
    pid_t const child = fork();
    if (child == 0) {
        close(channel[0]);
        Verdict verdict = "SKIP: no mount namespace";
        if (EnterOwnMountNamespace()) {
            verdict = "SKIP: cannot mount a tmpfs";
            if (mount("tmpfs", folder.c_str(), "tmpfs", 0, size) == 0) {
                std::ofstream(folder / "doc.xml", std::ios::binary) << gOldContent;
                verdict = scenario();
            }
        }
        ssize_t const ignored = write(channel[1], verdict.data(), verdict.size());
        static_cast<void>(ignored);
        _exit(0);
    }
    close(channel[1]);
    Verdict verdict;
    char buffer[256];
    for (ssize_t got; (got = read(channel[0], buffer, sizeof buffer)) > 0;) {
        verdict.append(buffer, std::size_t(got));
    }
    close(channel[0]);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "the child process failed";
    if (verdict.rfind("SKIP", 0) == 0) {
        GTEST_SKIP() << verdict;
    }
    EXPECT_EQ(verdict, "");
}

} // namespace

TEST(DOMBuilderReplaceFile, SuccessReplacesTheFileAndLeavesNothingBeside) {
    fs::path const folder = FolderWithOldFile("success");
    WriteDocument(folder / "doc.xml", true);
    std::string const written = ReadFileBytes((folder / "doc.xml").string());
    EXPECT_EQ(written.rfind("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>\n<root>", 0), 0u);
    EXPECT_NE(written.find(std::string(2000, 'x')), std::string::npos);
    EXPECT_EQ(Entries(folder), std::set<std::string>{"doc.xml"});
}

TEST(DOMBuilderReplaceFile, DocumentThatCannotBeSerialisedKeepsTheOldFile) {
    fs::path const folder = FolderWithOldFile("unserialisable");
    WriteDocument(folder / "doc.xml", false);
    EXPECT_EQ(CheckOldFileKept(folder, {"doc.xml"}), "");
    {
        TavoXML::DOMBuilder channel(Vesk::Location((folder / "doc.xml").c_str()), "root", true);
        channel.WriteXMLAttr("k", Tavo::UniString(u"\u0002"));
    }
    EXPECT_EQ(CheckOldFileKept(folder, {"doc.xml"}), "");
}

TEST(DOMBuilderReplaceFile, TargetThatCannotBeReplacedStaysAndNoTemporaryRemains) {
    fs::path const folder = TavoTest::TestTempFolder() / "occupied";
    fs::create_directories(folder / "doc.xml");
    std::ofstream(folder / "doc.xml" / "inside") << "x";
    WriteDocument(folder / "doc.xml", true);
    EXPECT_TRUE(fs::is_directory(folder / "doc.xml"));
    EXPECT_EQ(Entries(folder / "doc.xml"), std::set<std::string>{"inside"});
    EXPECT_EQ(Entries(folder), std::set<std::string>{"doc.xml"});
    // A folder that does not exist gets no file and makes none.
    WriteDocument(folder / "missing" / "doc.xml", true);
    EXPECT_EQ(Entries(folder), std::set<std::string>{"doc.xml"});
}

// Permission bits do not stop root, so root gets a read-only mount instead.
TEST(DOMBuilderReplaceFile, FolderThatCannotBeWrittenKeepsTheOldFile) {
    fs::path const folder = FolderWithOldFile("readonly");
    if (geteuid() != 0) {
        fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec);
        WriteDocument(folder / "doc.xml", true);
        fs::permissions(folder, fs::perms::owner_all);
        EXPECT_EQ(CheckOldFileKept(folder, {"doc.xml"}), "");
        return;
    }
    ExpectPassedInOwnTmpfs(folder, "size=256k", [&folder]() -> Verdict {
        if (mount(nullptr, folder.c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) != 0) {
            return "SKIP: cannot make the mount read-only";
        }
        WriteDocument(folder / "doc.xml", true);
        return CheckOldFileKept(folder, {"doc.xml"});
    });
}

TEST(DOMBuilderReplaceFile, FullFileSystemKeepsTheOldFile) {
    fs::path const folder = FolderWithOldFile("full");
    ExpectPassedInOwnTmpfs(folder, "size=64k", [&folder]() -> Verdict {
        // Fill what is left, block by block, until the file system refuses.
        int const filler = open((folder / "filler").c_str(), O_WRONLY | O_CREAT, 0600);
        char const block[1024] = {};
        while (write(filler, block, sizeof block) > 0) {
        }
        bool const full = errno == ENOSPC;
        close(filler);
        if (!full) {
            return "SKIP: the file system did not fill up";
        }
        WriteDocument(folder / "doc.xml", true);
        return CheckOldFileKept(folder, {"doc.xml", "filler"});
    });
}
