// Tavo::VAArray<T>: a growable array of values. Push appends a copy and returns its index; when the
// array cannot get the memory for it, Push throws Tavo::BMOutOfMemoryException and the array stays as
// it was.
#pragma once

#include "TavoRoot/TavoException.hpp"

#include <new>
#include <vector>

namespace Tavo {

template <class T>
class VAArray {
public:
    VAArray() = default;

    // Appends a copy of `value` (which may be an element of this array); returns its index.
    unsigned int Push(T const& value) {
        try {
            elements.push_back(value);
        } catch (std::bad_alloc const&) {
            // Covers both the growth of the buffer and the copy of the element.
            throw BMOutOfMemoryException("VA::Push: cannot allocate the needed memory!", "VAArray", __LINE__,
                                         kMemoryFull);
        }
        return static_cast<unsigned int>(elements.size() - 1);
    }

    T& operator[](unsigned int index) noexcept { return elements[index]; }
    T const& operator[](unsigned int index) const noexcept { return elements[index]; }
    // Both give the number of elements.
    unsigned int GetSize() const noexcept { return static_cast<unsigned int>(elements.size()); }
    unsigned int GetCount() const noexcept { return GetSize(); }
    bool IsEmpty() const noexcept { return elements.empty(); }
    void Clear() noexcept { elements.clear(); }

    auto begin() noexcept { return elements.begin(); }
    auto end() noexcept { return elements.end(); }
    auto begin() const noexcept { return elements.begin(); }
    auto end() const noexcept { return elements.end(); }

private:
    static constexpr int kMemoryFull = -108;
    std::vector<T> elements;
};

} // namespace Tavo
