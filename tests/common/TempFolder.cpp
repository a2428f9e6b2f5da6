#include "common/TempFolder.hpp"

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <system_error>

namespace TavoTest {

namespace {

class ProcessFolder {
public:
    ProcessFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "tavo-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("cannot create a temporary folder for the tests");
        }
        path = pattern;
        setenv("TMPDIR", path.c_str(), 1);
    }
    ProcessFolder(ProcessFolder const&) = delete;
    ProcessFolder& operator=(ProcessFolder const&) = delete;
    ~ProcessFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    std::filesystem::path path;
};

// Made before main runs, so that TMPDIR is in place before any test asks for the temporary folder.
ProcessFolder const& Folder() {
    static ProcessFolder const folder;
    return folder;
}
[[maybe_unused]] auto const& gEarly = Folder();

} // namespace

std::filesystem::path const& TestTempFolder() {
    return Folder().path;
}

} // namespace TavoTest
