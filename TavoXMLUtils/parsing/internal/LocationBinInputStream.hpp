// LocationBinInputStream: the parser's byte stream over a file at a Vesk::Location, read through
// Vesk::File so that local documents never pass through the parser's own file layer. Only a regular
// file opens; a FIFO, a device, a socket or a folder leaves the stream unopened.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "Vesk/File.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/util/BinInputStream.hpp>

#include <cstdint>

class TAVOXMLUTILS_API LocationBinInputStream : public xercesc::BinInputStream {
public:
    // Opens the file for reading; a file that can't be opened leaves the stream unopened, no throw.
    explicit LocationBinInputStream(Vesk::Location const* location);
    LocationBinInputStream(LocationBinInputStream const&) = delete;
    LocationBinInputStream& operator=(LocationBinInputStream const&) = delete;
    ~LocationBinInputStream() override;

    bool IsOpened() const noexcept { return opened; }

    // Bytes delivered so far.
    XMLFilePos curPos() const override;
    // Reads up to the low 32 bits of `maxToRead` bytes; 0 means end of input. Throws
    // XMLPlatformUtilsException on an unopened stream or a read error.
    XMLSize_t readBytes(XMLByte* const toFill, const XMLSize_t maxToRead) override;
    // No content type is known for a file: always null.
    const XMLCh* getContentType() const override;

private:
    Vesk::File file;
    bool opened;
    bool atEnd = false; // the parser asks again after the end; the file isn't asked again
    std::uint32_t position;
};
