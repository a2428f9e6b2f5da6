#include "Vesk/File.hpp"
#include "Vesk/FileSystem.hpp"

#include "Vesk/VeskTestSupport.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

unsigned int WriteFile(Vesk::Location const& location, std::string const& content) {
    Vesk::File file(location, Vesk::File::OnNotFoundCreate);
    unsigned int status = file.Open(Vesk::File::OpenWrite, Vesk::AccessDeniedReport);
    if (status == 0) {
        status = static_cast<unsigned int>(
            file.WriteBin(content.data(), static_cast<unsigned int>(content.size()), nullptr));
    }
    unsigned int const closed = file.Close();
    return status != 0 ? status : closed;
}

} // namespace

TEST(VeskFile, WriteReadBackAndDelete) {
    VeskTest::ScratchFolder folder;
    // A name that needs escaping in URL form, opened again through that URL.
    Vesk::Location const location = folder.Child("d\xC3\xA9j\xC3\xA0 vu #1.bin");
    std::string content(200000, '\0');
    for (std::size_t i = 0; i < content.size(); ++i) {
        content[i] = static_cast<char>(i * 7);
    }
    ASSERT_EQ(WriteFile(location, content), 0u);

    Tavo::UniString url;
    location.ToURL(&url);
    Vesk::File file(Vesk::Location(url), Vesk::File::OnNotFoundIgnore);
    ASSERT_EQ(file.GetStatus(), 0u);
    EXPECT_TRUE(file.Exists());
    ASSERT_EQ(file.Open(Vesk::File::OpenRead, Vesk::AccessDeniedReport), 0u);
    EXPECT_EQ(file.Open(Vesk::File::OpenRead, Vesk::AccessDeniedReport), Vesk::StatusAlreadyOpen);
    EXPECT_NE(file.WriteBin("x", 1, nullptr), 0);
    std::string readBack;
    std::vector<char> chunk(65536);
    unsigned int got = 0;
    unsigned int status = 0;
    while ((status = file.ReadBin(chunk.data(), static_cast<unsigned int>(chunk.size()), &got)) == 0) {
        readBack.append(chunk.data(), got);
    }
    EXPECT_EQ(status, Vesk::StatusEndOfFile);
    readBack.append(chunk.data(), got);
    EXPECT_EQ(readBack, content);
    // Reads past the end keep failing and deliver nothing.
    EXPECT_EQ(file.ReadBin(chunk.data(), 4, &got), Vesk::StatusEndOfFile);
    EXPECT_EQ(got, 0u);
    EXPECT_EQ(file.Close(), 0u);
    EXPECT_EQ(file.Close(), 0u);

    EXPECT_EQ(Vesk::fileSystem.Delete(location, 0, 2), 0u);
    EXPECT_FALSE(std::filesystem::exists(location.GetNativePath()));
    EXPECT_EQ(Vesk::fileSystem.Delete(location, 0, 2), 0x81010303u);
}

TEST(VeskFile, MissingOrUnusableTargets) {
    VeskTest::ScratchFolder folder;
    Vesk::File missing(folder.Child("absent.xml"), Vesk::File::OnNotFoundIgnore);
    EXPECT_FALSE(missing.Exists());
    EXPECT_EQ(missing.Open(Vesk::File::OpenRead, Vesk::AccessDeniedReport), Vesk::StatusNotFound);
    EXPECT_FALSE(missing.IsOpen());
    unsigned int got = 7;
    char byte = 0;
    EXPECT_EQ(missing.ReadBin(&byte, 1, &got), Vesk::StatusNotOpen);
    EXPECT_EQ(got, 0u);

    EXPECT_NE(WriteFile(folder.Child("no/such.xml"), "x"), 0u);
    Vesk::File nowhere(Vesk::Location(), Vesk::File::OnNotFoundIgnore);
    EXPECT_NE(nowhere.Open(Vesk::File::OpenRead, Vesk::AccessDeniedReport), 0u);

    if (geteuid() != 0) { // the super-user reads everything
        Vesk::Location const locked = folder.Child("locked.xml");
        ASSERT_EQ(WriteFile(locked, "x"), 0u);
        std::filesystem::permissions(locked.GetNativePath(), std::filesystem::perms::none);
        Vesk::File file(locked, Vesk::File::OnNotFoundIgnore);
        EXPECT_EQ(file.Open(Vesk::File::OpenRead, Vesk::AccessDeniedReport), Vesk::StatusAccessDenied);
    }
}

TEST(VeskFile, WriteFailuresAreReported) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "no /dev/full";
    }
    // A small write stays in the buffer: the failure shows at Close.
    EXPECT_NE(WriteFile(Vesk::Location("/dev/full"), "small"), 0u);

    // A write larger than the buffer reaches the device at once, and the file stays failed.
    Vesk::File file(Vesk::Location("/dev/full"), Vesk::File::OnNotFoundCreate);
    ASSERT_EQ(file.Open(Vesk::File::OpenWrite, Vesk::AccessDeniedReport), 0u);
    std::string const big(1 << 20, 'x');
    unsigned int written = 0;
    EXPECT_NE(file.WriteBin(big.data(), static_cast<unsigned int>(big.size()), &written), 0);
    EXPECT_LT(written, big.size());
    EXPECT_NE(file.WriteBin("y", 1, nullptr), 0);
    EXPECT_NE(file.Close(), 0u);
}
