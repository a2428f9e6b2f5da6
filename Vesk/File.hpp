// Vesk::File: a file at a location, read and written in binary through a 64 KiB buffer. Constructing one
// never throws, even for a missing file; every operation reports by status (Vesk/VeskStatus.hpp). A File
// is a byte sink (Tavo::OChannel) while it is open for writing. No write failure is dropped: a failed
// write makes every later WriteBin and the Close fail with the same status.
#pragma once

#include "TavoRoot/OChannel.hpp"
#include "Vesk/Location.hpp"
#include "Vesk/VeskExport.hpp"
#include "Vesk/VeskStatus.hpp"

#include <cstdio>

namespace Vesk {

class VESK_API File : public Tavo::OChannel {
public:
    enum OnNotFound : int {
        OnNotFoundIgnore = 0, // the file need not exist
        OnNotFoundCreate = 1, // the file need not exist; Open for writing creates it
    };
    enum OpenMode : int {
        OpenRead = 0,
        OpenWrite = 1, // creates the file, or truncates an existing one
        OpenAppend = 2,
    };

    File(Location const& location, OnNotFound onNotFound);
    File(File const&) = delete;
    File& operator=(File const&) = delete;
    // Closes the file; a failure of that last write is lost, so call Close to learn of it.
    ~File() override;

    // 0 when the object is usable (its location is not empty).
    unsigned int GetStatus() const noexcept { return status; }
    Location const& GetLocation() const noexcept { return location; }
    bool Exists() const;

    // Returns 0, StatusNotFound for a missing file (or folder on the way), StatusAccessDenied when the
    // system refuses (AccessDeniedRetryOnce tries once more first), StatusBadLocation for a folder,
    // StatusAlreadyOpen, or the constructor's status.
    unsigned int Open(OpenMode mode, AccessDeniedTreatment treatment);
    bool IsOpen() const noexcept { return stream != nullptr; }
    // Reads up to `count` bytes; `read` receives the count really read. Returns 0, StatusEndOfFile when
    // the end was reached before `count` bytes, or another status on a read error.
    unsigned int ReadBin(char* data, unsigned int count, unsigned int* read);
    int WriteBin(char const* data, unsigned int count, unsigned int* written) override;
    // Hands the buffered bytes to the system and waits until it has put them on the storage device
    // (fsync). Returns 0, the status of an earlier write failure, StatusNotOpen or StatusWrongMode, or the
    // status of the failed flush; the file stays open either way.
    unsigned int Flush();
    // Flushes and closes; returns the status of the last writes. A closed file may be closed again.
    unsigned int Close();

private:
    Location location;
    unsigned int status;
    std::FILE* stream = nullptr;
    OpenMode mode = OpenRead;
    unsigned int writeStatus = StatusOK; // the first write failure since Open; Close reports it
};

} // namespace Vesk
