// Helpers of the Vesk tests: UTF-8 text of a string, and a fresh folder that is removed afterwards.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "Vesk/Location.hpp"

#include <cstdlib>
#include <filesystem>
#include <string>

namespace VeskTest {

inline std::string Utf8(Tavo::UniString const& text) {
    auto const converted = text.ToCStr(0, Tavo::UniString::kAll, TavoCharCodeUTF8);
    return converted.Get() != nullptr ? std::string(converted.Get()) : std::string();
}

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
