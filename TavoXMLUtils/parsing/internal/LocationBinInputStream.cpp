#include "TavoXMLUtils/parsing/internal/LocationBinInputStream.hpp"

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLExceptMsgs.hpp>

#include <sys/stat.h>

namespace {

// Read failures are reported under the name of the chief source of the input layer, whatever file the
// stream's code lives in, so that the parser's messages name one place for every input failure.
constexpr char const* gSourceFile = "LocationInputSource";

// A failed read, code 34 of the parser's exception codes; no memory manager of its own.
[[noreturn]] void ThrowReadFailure(unsigned int line) {
    throw xercesc::XMLPlatformUtilsException(gSourceFile, line,
                                             xercesc::XMLExcepts::File_CouldNotReadFromFile,
                                             static_cast<xercesc::MemoryManager*>(nullptr));
}

// Only a regular file is a document: a FIFO or a character device would make the open or the reads
// wait for ever or never end, and a folder reads as nothing. Asked before the open, because opening a
// FIFO for reading already waits for a writer.
bool IsRegularFile(Vesk::Location const& location) {
    struct stat info {};
    return stat(location.GetNativePath().c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

} // namespace

LocationBinInputStream::LocationBinInputStream(Vesk::Location const* location)
    : file(*location, Vesk::File::OnNotFoundIgnore), opened(false), position(0) {
    if (file.GetStatus() == Vesk::StatusOK && IsRegularFile(*location) &&
        file.Open(Vesk::File::OpenRead, Vesk::AccessDeniedReport) == Vesk::StatusOK) {
        opened = true;
    }
}

LocationBinInputStream::~LocationBinInputStream() {
    if (opened) {
        file.Close();
    }
}

XMLFilePos LocationBinInputStream::curPos() const {
    return position;
}

XMLSize_t LocationBinInputStream::readBytes(XMLByte* const toFill, const XMLSize_t maxToRead) {
    if (!opened) {
        ThrowReadFailure(__LINE__);
    }
    if (atEnd) {
        return 0;
    }
    // Only the low 32 bits of the count are used: the file layer reads at most 4 GiB - 1 at a time.
    unsigned int count = 0;
    unsigned int const status =
        file.ReadBin(reinterpret_cast<char*>(toFill), static_cast<unsigned int>(maxToRead), &count);
    // Counted before the status is looked at, so a failed read still moves the position.
    position += count;
    if (status == Vesk::StatusOK || status == Vesk::StatusEndOfFile) {
        atEnd = status == Vesk::StatusEndOfFile;
        return count;
    }
    ThrowReadFailure(__LINE__);
}

const XMLCh* LocationBinInputStream::getContentType() const {
    return nullptr;
}
