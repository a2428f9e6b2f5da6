#include "TavoRoot/Handle.hpp"

#include <algorithm>
#include <cstring>
#include <new>

namespace Tavo {

namespace {

// The record behind a handle: the handle is the address of `block`, the record's first member, so a
// handle converts back to its record. The block always has at least one byte, so *handle is never null.
struct HandleRecord {
    char* block;
    unsigned int size;
};

constexpr int gNullHandle = 1;
constexpr int gMemoryFull = -108;

HandleRecord* RecordOf(char** handle) noexcept {
    return reinterpret_cast<HandleRecord*>(handle);
}

char* NewBlock(unsigned int size) noexcept {
    char* block = new (std::nothrow) char[std::max(size, 1u)];
    if (block) {
        std::memset(block, 0, std::max(size, 1u));
    }
    return block;
}

} // namespace

char** NewHandle(unsigned int size) {
    char* block = NewBlock(size);
    if (!block) {
        return nullptr;
    }
    HandleRecord* record = new (std::nothrow) HandleRecord{block, size};
    if (!record) {
        delete[] block;
        return nullptr;
    }
    return &record->block;
}

void DisposeHandle(char** handle) noexcept {
    if (handle) {
        HandleRecord* record = RecordOf(handle);
        delete[] record->block;
        delete record;
    }
}

unsigned int GetHandleSize(char** handle) noexcept {
    return handle ? RecordOf(handle)->size : 0;
}

int SetHandleSize(char** handle, unsigned int size) noexcept {
    if (!handle) {
        return gNullHandle;
    }
    HandleRecord* record = RecordOf(handle);
    char* block = NewBlock(size);
    if (!block) {
        return gMemoryFull;
    }
    std::memcpy(block, record->block, std::min(size, record->size));
    delete[] record->block;
    record->block = block;
    record->size = size;
    return 0;
}

} // namespace Tavo
