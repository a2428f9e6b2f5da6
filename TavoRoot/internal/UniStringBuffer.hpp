// The storage of Tavo::UniString, shared by its source files (storage, editing, formatting): the heap
// block that holds the reference count, the length, the capacity and the zero-terminated characters,
// and the small range and copy helpers of the string's operations.
//
// State model: the empty string has no block; a copy takes one more reference; an edit first makes the
// block its string's own (copy on write). A block longer than kMaxLength is refused with
// std::length_error; the allocation itself may throw std::bad_alloc.
#pragma once

#include "TavoRoot/UniString.hpp"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>

namespace Tavo::detail {

inline constexpr char16_t kEmptyText[1] = {0};
// Longest string; keeps lengths clear of kAll and of the int counts of the 8-bit conversions.
inline constexpr std::size_t kMaxLength = 0x7FFFFFFF;

[[noreturn]] inline void ThrowTooLong() {
    throw std::length_error("Tavo::UniString: text too long");
}

// A (from, count) range cut to a text of `length` characters; a start past the end is an empty range.
struct Range {
    unsigned int from;
    unsigned int count;
};
inline Range Clamp(unsigned int length, unsigned int from, unsigned int count) noexcept {
    if (from >= length) {
        return {length, 0};
    }
    return {from, std::min(count, length - from)};
}

inline void CopyChars(char16_t* target, char16_t const* source, std::size_t count) noexcept {
    if (count) {
        std::memcpy(target, source, count * sizeof(char16_t));
    }
}

inline char16_t const* AsChar16(unsigned short const* text) noexcept {
    return reinterpret_cast<char16_t const*>(text);
}

inline std::size_t Length16(char16_t const* text) noexcept {
    return text ? std::char_traits<char16_t>::length(text) : 0;
}

} // namespace Tavo::detail

struct Tavo::UniString::Buffer {
    std::atomic<unsigned int> refs;
    unsigned int length;
    unsigned int capacity; // characters, not counting the terminator

    char16_t* Chars() noexcept { return reinterpret_cast<char16_t*>(this + 1); }

    static Buffer* Allocate(std::size_t capacity) {
        if (capacity > detail::kMaxLength) {
            detail::ThrowTooLong();
        }
        void* memory = ::operator new(sizeof(Buffer) + (capacity + 1) * sizeof(char16_t));
        return ::new (memory) Buffer{{1u}, 0u, static_cast<unsigned int>(capacity)};
    }
    static Buffer* Make(char16_t const* text, std::size_t count) {
        Buffer* buffer = Allocate(count);
        detail::CopyChars(buffer->Chars(), text, count);
        buffer->SetLength(static_cast<unsigned int>(count));
        return buffer;
    }
    void SetLength(unsigned int count) noexcept {
        length = count;
        Chars()[count] = 0;
    }
    // Only the owner of the last reference can see 1, and no one else can take a new one from it.
    bool IsShared() const noexcept { return refs.load(std::memory_order_acquire) != 1; }
    static void AddRef(Buffer* buffer) noexcept {
        if (buffer) {
            buffer->refs.fetch_add(1, std::memory_order_relaxed);
        }
    }
    static void Release(Buffer* buffer) noexcept {
        if (buffer && (!buffer->IsShared() || buffer->refs.fetch_sub(1, std::memory_order_acq_rel) == 1)) {
            buffer->~Buffer();
            ::operator delete(buffer);
        }
    }
};
