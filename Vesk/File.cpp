#include "Vesk/File.hpp"

#include "Vesk/internal/SystemStatus.hpp"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

namespace Vesk {

namespace {

// Size of the stdio buffer: large enough that a document goes out in a few system calls.
constexpr std::size_t gBufferSize = 64 * 1024;

// The status of a failed system call; a failure always gives a nonzero status, even should the
// system have left errno at 0.
unsigned int FailureStatus(int error) noexcept {
    Status const status = StatusFromErrno(error);
    return status == StatusOK ? StatusIOError : status;
}

char const* FopenMode(File::OpenMode mode) noexcept {
    // "e": the descriptor is closed on exec, so child processes don't inherit open files.
    switch (mode) {
        case File::OpenRead:
            return "rbe";
        case File::OpenWrite:
            return "wbe";
        case File::OpenAppend:
            return "abe";
    }
    return nullptr;
}

} // namespace

File::File(Location const& location, OnNotFound onNotFound)
    : location(location), status(location.IsEmpty() ? StatusBadLocation : StatusOK) {
    // Both ways of treating a missing file let the object stand; whether the file is there shows at
    // Open, which creates it when writing.
    static_cast<void>(onNotFound);
}

File::~File() {
    Close();
}

bool File::Exists() const {
    if (location.IsEmpty()) {
        return false;
    }
    std::error_code error;
    auto const fileStatus = std::filesystem::status(location.GetNativePath(), error);
    return std::filesystem::exists(fileStatus) && !std::filesystem::is_directory(fileStatus);
}

unsigned int File::Open(OpenMode openMode, AccessDeniedTreatment treatment) {
    if (status != StatusOK) {
        return status;
    }
    if (stream != nullptr) {
        return StatusAlreadyOpen;
    }
    char const* const fopenMode = FopenMode(openMode);
    if (fopenMode == nullptr) {
        return StatusBadArgument;
    }
    int const attempts = treatment == AccessDeniedRetryOnce ? 2 : 1;
    std::FILE* opened = nullptr;
    int error = 0;
    for (int attempt = 0; attempt < attempts && opened == nullptr; ++attempt) {
        opened = std::fopen(location.GetNativePath().c_str(), fopenMode);
        error = opened == nullptr ? errno : 0;
        if (opened == nullptr && StatusFromErrno(error) != StatusAccessDenied) {
            break;
        }
    }
    if (opened == nullptr) {
        return FailureStatus(error);
    }
    // A folder opens for reading but reads as nothing: refuse it here rather than at the first read.
    struct stat info {};
    if (fstat(fileno(opened), &info) == 0 && S_ISDIR(info.st_mode)) {
        std::fclose(opened);
        return StatusBadLocation;
    }
    std::setvbuf(opened, nullptr, _IOFBF, gBufferSize);
    stream = opened;
    mode = openMode;
    writeStatus = StatusOK;
    return StatusOK;
}

unsigned int File::ReadBin(char* data, unsigned int count, unsigned int* read) {
    if (read != nullptr) {
        *read = 0;
    }
    if (stream == nullptr) {
        return StatusNotOpen;
    }
    if (mode != OpenRead) {
        return StatusWrongMode;
    }
    if (count == 0) {
        return StatusOK;
    }
    if (data == nullptr) {
        return StatusBadArgument;
    }
    std::size_t const got = std::fread(data, 1, count, stream);
    if (read != nullptr) {
        *read = static_cast<unsigned int>(got);
    }
    if (got == count) {
        return StatusOK;
    }
    if (std::ferror(stream) != 0) {
        std::clearerr(stream);
        return StatusIOError;
    }
    return StatusEndOfFile;
}

int File::WriteBin(char const* data, unsigned int count, unsigned int* written) {
    if (written != nullptr) {
        *written = 0;
    }
    if (stream == nullptr) {
        return static_cast<int>(StatusNotOpen);
    }
    if (mode == OpenRead) {
        return static_cast<int>(StatusWrongMode);
    }
    // After a failure the file has a gap; later bytes would only hide that.
    if (writeStatus != StatusOK) {
        return static_cast<int>(writeStatus);
    }
    if (count == 0) {
        return StatusOK;
    }
    if (data == nullptr) {
        return static_cast<int>(StatusBadArgument);
    }
    std::size_t const put = std::fwrite(data, 1, count, stream);
    if (written != nullptr) {
        *written = static_cast<unsigned int>(put);
    }
    if (put != count) {
        writeStatus = FailureStatus(errno);
        return static_cast<int>(writeStatus);
    }
    return StatusOK;
}

unsigned int File::Flush() {
    if (stream == nullptr) {
        return StatusNotOpen;
    }
    if (mode == OpenRead) {
        return StatusWrongMode;
    }
    if (writeStatus == StatusOK && (std::fflush(stream) != 0 || fsync(fileno(stream)) != 0)) {
        writeStatus = FailureStatus(errno);
    }
    return writeStatus;
}

unsigned int File::Close() {
    if (stream == nullptr) {
        return StatusOK;
    }
    // Buffered bytes reach the system only now, so a full disk may show here first.
    unsigned int result = writeStatus;
    if (mode != OpenRead && std::fflush(stream) != 0 && result == StatusOK) {
        result = FailureStatus(errno);
    }
    if (std::fclose(stream) != 0 && result == StatusOK) {
        result = FailureStatus(errno);
    }
    stream = nullptr;
    writeStatus = StatusOK;
    return result;
}

} // namespace Vesk
