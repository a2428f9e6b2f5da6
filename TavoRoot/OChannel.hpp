// Byte sinks: Tavo::OChannel takes bytes, Tavo::OBinaryChannel is the binary-stream flavour of it, and
// Tavo::MemoryOChannel collects what it is given in memory.
#pragma once

#include "TavoRoot/TavoRootExport.hpp"

#include <string>

namespace Tavo {

class TAVOROOT_API OChannel {
public:
    virtual ~OChannel();
    // Writes `count` bytes; `written`, if not null, receives the number of bytes taken. Returns 0 on
    // success, a nonzero status otherwise.
    virtual int WriteBin(char const* data, unsigned int count, unsigned int* written) = 0;
};

// A byte sink for binary streams (files of record, network-like streams); writes the same way.
class TAVOROOT_API OBinaryChannel : public OChannel {
public:
    ~OBinaryChannel() override;
};

// Collects every byte written to it.
class TAVOROOT_API MemoryOChannel final : public OBinaryChannel {
public:
    ~MemoryOChannel() override;
    int WriteBin(char const* data, unsigned int count, unsigned int* written) override;
    std::string const& GetData() const noexcept { return data; }
    void Clear() noexcept { data.clear(); }

private:
    std::string data;
};

} // namespace Tavo
