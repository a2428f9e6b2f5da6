// Helpers of the Vesk tests: UTF-8 text of a string, and a fresh folder that is removed afterwards.
#pragma once

#include "common/TestText.hpp"

#include "TavoRoot/UniString.hpp"
#include "Vesk/Location.hpp"

#include <cstdlib>
#include <filesystem>
#include <string>

namespace VeskTest {

using TavoTest::Utf8;

// A new empty folder below the system's temporary folder, removed with all it holds at the end.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "vesk-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) != nullptr) {
            path = std::filesystem::path(pattern).lexically_normal().string();
        }
    }
    ScratchFolder(ScratchFolder const&) = delete;
    ScratchFolder& operator=(ScratchFolder const&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    std::string const& Path() const noexcept { return path; }
    Vesk::Location Child(std::string const& name) const {
        return Vesk::Location((path + "/" + name).c_str());
    }

private:
    std::string path;
};

} // namespace VeskTest
