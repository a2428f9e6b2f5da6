#include "Vesk/Folder.hpp"

#include "Vesk/VeskStatus.hpp"
#include "Vesk/internal/NativeText.hpp"

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace Vesk {

namespace {

// Lower-case letters and digits only, so that names also differ on file systems that ignore case.
constexpr char gNameAlphabet[] = "abcdefghijklmnopqrstuvwxyz0123456789";
// 12 characters of 36 kinds: about 62 bits, so a generated name is practically never taken twice.
constexpr int gGeneratedLength = 12;
constexpr int gAttempts = 100;

std::string GeneratedPart() {
    // One generator per thread, seeded by the system's entropy source: no lock, and no two processes
    // start from the same sequence.
    thread_local std::mt19937_64 generator{std::random_device{}()};
    std::uniform_int_distribution<std::size_t> pick(0, sizeof(gNameAlphabet) - 2);
    std::string part(gGeneratedLength, ' ');
    for (char& c : part) {
        c = gNameAlphabet[pick(generator)];
    }
    return part;
}

} // namespace

Folder::Folder(Location const& location, int flags) : location(location) {
    static_cast<void>(flags);
}

bool Folder::Exists() const {
    std::error_code error;
    return !location.IsEmpty() && std::filesystem::is_directory(location.GetNativePath(), error);
}

unsigned int Folder::GenerateUnusedName(Name* name, char const* prefix, char const* suffix) const {
    if (name == nullptr) {
        return StatusBadArgument;
    }
    if (location.IsEmpty()) {
        return StatusBadLocation;
    }
    std::string const head = prefix != nullptr ? prefix : "";
    std::string const tail = suffix != nullptr ? suffix : "";
    std::filesystem::path const folder(location.GetNativePath());
    for (int attempt = 0; attempt < gAttempts; ++attempt) {
        std::string candidate = head + GeneratedPart() + tail;
        // symlink_status: a dangling link takes its name too. A folder that is not there holds no
        // name, so every name is free in it.
        std::error_code error;
        auto const entry = std::filesystem::symlink_status(folder / candidate, error);
        if (entry.type() == std::filesystem::file_type::not_found) {
            name->SetText(NativeText::ToUniString(candidate));
            return StatusOK;
        }
    }
    return StatusExists;
}

} // namespace Vesk
