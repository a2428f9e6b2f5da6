#include "TavoXMLUtils/parsing/internal/CountingInputSource.hpp"

#include "TavoXMLUtils/parsing/internal/ParseMemory.hpp"

#include <xercesc/util/PlatformUtils.hpp>

#include <memory>

namespace TavoXML::detail {

namespace {

class CountingStream final : public xercesc::BinInputStream {
public:
    CountingStream(xercesc::BinInputStream* stream, ParseMemory& memory) : stream(stream), memory(memory) {}

    XMLFilePos curPos() const override { return stream->curPos(); }
    XMLSize_t readBytes(XMLByte* const toFill, const XMLSize_t maxToRead) override {
        XMLSize_t const count = stream->readBytes(toFill, maxToRead);
        memory.AddInputBytes(count);
        return count;
    }
    const XMLCh* getContentType() const override { return stream->getContentType(); }
    const XMLCh* getEncoding() const override { return stream->getEncoding(); }

private:
    std::unique_ptr<xercesc::BinInputStream> stream;
    ParseMemory& memory;
};

} // namespace

CountingInputSource::CountingInputSource(xercesc::InputSource const& source, ParseMemory& memory)
    : xercesc::InputSource(xercesc::XMLPlatformUtils::fgMemoryManager), source(source), memory(memory) {
    setSystemId(source.getSystemId());
    setPublicId(source.getPublicId());
    if (source.getEncoding() != nullptr) {
        setEncoding(source.getEncoding());
    }
    setIssueFatalErrorIfNotFound(source.getIssueFatalErrorIfNotFound());
}

CountingInputSource::~CountingInputSource() = default;

xercesc::BinInputStream* CountingInputSource::makeStream() const {
    std::unique_ptr<xercesc::BinInputStream> stream(source.makeStream());
    if (!stream) {
        return nullptr;
    }
    auto* const counting = new CountingStream(stream.get(), memory);
    stream.release();
    return counting;
}

} // namespace TavoXML::detail
