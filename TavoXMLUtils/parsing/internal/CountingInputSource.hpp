// CountingInputSource: an input source that reads through another one and adds every byte it delivers
// to a ParseMemory, whose budget and whose expansion limit grow with the size of the document.
//
// State: borrows the source and the memory; both must outlive it and every stream it made. The ids,
// the encoding and the not-found setting are copied from the source at construction. makeStream
// gives null when the source does; reads fail as the source's stream fails.
#pragma once

#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

namespace TavoXML::detail {

class ParseMemory;

class CountingInputSource final : public xercesc::InputSource {
public:
    CountingInputSource(xercesc::InputSource const& source, ParseMemory& memory);
    CountingInputSource(CountingInputSource const&) = delete;
    CountingInputSource& operator=(CountingInputSource const&) = delete;
    ~CountingInputSource() override;

    xercesc::BinInputStream* makeStream() const override;

private:
    xercesc::InputSource const& source;
    ParseMemory& memory;
};

} // namespace TavoXML::detail
