#include "Vesk/FileSystem.hpp"

#include "Vesk/internal/SystemStatus.hpp"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace Vesk {

namespace {

constexpr char gDefaultTemporaryFolder[] = "/tmp";

} // namespace

FileSystem const fileSystem{};

unsigned int FileSystem::GetSpecialLocation(int identifier, Location* location) const {
    if (location == nullptr || identifier != SpecialLocationTemporary) {
        return StatusBadArgument;
    }
    // TMPDIR as the system's convention has it; an empty value counts as unset.
    char const* const fromEnvironment = std::getenv("TMPDIR");
    *location = Location(fromEnvironment != nullptr && *fromEnvironment != '\0' ? fromEnvironment
                                                                                : gDefaultTemporaryFolder);
    return location->IsEmpty() ? StatusBadLocation : StatusOK;
}

unsigned int FileSystem::Delete(Location const& location, int mode, int access) const {
    namespace fs = std::filesystem;
    if (location.IsEmpty()) {
        return StatusBadLocation;
    }
    if (mode != DeleteFileOrEmptyFolder && mode != DeleteRecursively) {
        return StatusBadArgument;
    }
    if (access != DeleteKeepReadOnly && access != DeleteAskForReadOnly && access != DeleteForce) {
        return StatusBadArgument;
    }
    fs::path const path(location.GetNativePath());
    std::error_code error;
    fs::file_status const target = fs::symlink_status(path, error);
    if (target.type() == fs::file_type::not_found) {
        return StatusNotFound;
    }
    if (error) {
        return StatusFromError(error);
    }
    // A file without any write permission is read-only; only DeleteForce removes it. There is nobody
    // to ask, so DeleteAskForReadOnly keeps it as well.
    bool const readOnly = target.type() == fs::file_type::regular &&
                          (target.permissions() & (fs::perms::owner_write | fs::perms::group_write |
                                                   fs::perms::others_write)) == fs::perms::none;
    if (readOnly && access != DeleteForce) {
        return StatusAccessDenied;
    }
    bool const removed = target.type() == fs::file_type::directory && mode == DeleteRecursively
                             ? fs::remove_all(path, error) > 0
                             : fs::remove(path, error);
    if (error == std::errc::directory_not_empty) {
        return StatusExists;
    }
    if (error) {
        return StatusFromError(error);
    }
    // Somebody else removed it between the look and the removal.
    return removed ? StatusOK : StatusNotFound;
}

bool FileSystem::Exists(Location const& location) const {
    std::error_code error;
    return !location.IsEmpty() && std::filesystem::exists(location.GetNativePath(), error);
}

unsigned int FileSystem::Rename(Location const& from, Location const& to) const {
    if (from.IsEmpty() || to.IsEmpty()) {
        return StatusBadLocation;
    }
    if (std::rename(from.GetNativePath().c_str(), to.GetNativePath().c_str()) == 0) {
        return StatusOK;
    }
    Status const status = StatusFromErrno(errno);
    return status == StatusOK ? StatusIOError : status;
}

} // namespace Vesk
