// Tavo::Array<T>: a growable array. The capacity grows to the larger of twice the size and size plus
// one when a push exceeds it; pushing an element of the array itself is safe, because the new element
// is built before the old buffer is released.
#pragma once

#include "TavoRoot/TavoException.hpp"

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <new>
#include <utility>

namespace Tavo {

template <class T>
class Array {
public:
    Array() noexcept = default;
    Array(std::initializer_list<T> values) {
        Reallocate(static_cast<unsigned int>(values.size()));
        for (T const& value : values) {
            Push(value);
        }
    }
    Array(Array const& other) {
        Reallocate(other.size);
        for (unsigned int i = 0; i < other.size; ++i) {
            Push(other[i]);
        }
    }
    Array(Array&& other) noexcept { Move(other); }
    Array& operator=(Array const& other) {
        if (this != &other) {
            Array copy(other);
            Move(copy);
        }
        return *this;
    }
    Array& operator=(Array&& other) noexcept {
        if (this != &other) {
            Move(other);
        }
        return *this;
    }
    virtual ~Array() { Clear(true); }

    unsigned int GetSize() const noexcept { return size; }
    unsigned int GetCapacity() const noexcept { return capacity; }
    bool IsEmpty() const noexcept { return size == 0; }
    T& operator[](unsigned int index) noexcept { return data[index]; }
    T const& operator[](unsigned int index) const noexcept { return data[index]; }
    T* begin() noexcept { return data; }
    T* end() noexcept { return data + size; }
    T const* begin() const noexcept { return data; }
    T const* end() const noexcept { return data + size; }

    // Appends a copy (or the moved value); returns the new element's index.
    unsigned int Push(T const& value) { return Emplace(value); }
    unsigned int Push(T&& value) { return Emplace(std::move(value)); }
    // Appends copies of `count` elements, which must not lie in this array, with one growth at most.
    void Append(T const* values, unsigned int count) {
        if (count > capacity - size) {
            if (count > ~0u - size) {
                throw OutOfMemoryException("Array: cannot allocate the needed memory!", "Array", __LINE__,
                                           -108);
            }
            unsigned int const doubled = size > ~0u / 2 ? ~0u : size * 2;
            Reallocate(doubled > size + count ? doubled : size + count);
        }
        std::uninitialized_copy(values, values + count, data + size);
        size += count;
    }

    void Pop() noexcept {
        if (size > 0) {
            data[--size].~T();
        }
    }

    // Destroys the elements; with `freeMemory` also releases the buffer.
    void Clear(bool freeMemory = false) noexcept {
        for (unsigned int i = 0; i < size; ++i) {
            data[i].~T();
        }
        size = 0;
        if (freeMemory) {
            ::operator delete(data, std::align_val_t(alignof(T)));
            data = nullptr;
            capacity = 0;
        }
    }

    // Takes over the content of `other`, which is left empty; the old content is destroyed.
    void Move(Array& other) noexcept {
        if (&other == this) {
            return;
        }
        Clear(true);
        data = std::exchange(other.data, nullptr);
        size = std::exchange(other.size, 0);
        capacity = std::exchange(other.capacity, 0);
    }

protected:
    // Makes room for `newCapacity` elements. An allocation failure is swallowed when the present
    // capacity already covers the request, and passes as Tavo::OutOfMemoryException otherwise.
    virtual void Reallocate(unsigned int newCapacity) {
        if (newCapacity <= capacity) {
            return;
        }
        T* fresh = nullptr;
        try {
            fresh = static_cast<T*>(
                ::operator new(sizeof(T) * std::size_t(newCapacity), std::align_val_t(alignof(T))));
        } catch (std::bad_alloc const&) {
            throw OutOfMemoryException("Array: cannot allocate the needed memory!", "Array", __LINE__, -108);
        }
        try {
            std::uninitialized_move(data, data + size, fresh);
        } catch (...) {
            // uninitialized_move has destroyed what it built; the old buffer stays in use.
            ::operator delete(fresh, std::align_val_t(alignof(T)));
            throw;
        }
        std::destroy(data, data + size);
        ::operator delete(data, std::align_val_t(alignof(T)));
        data = fresh;
        capacity = newCapacity;
    }

private:
    template <class U>
    unsigned int Emplace(U&& value) {
        if (size < capacity) {
            ::new (data + size) T(std::forward<U>(value));
            return size++;
        }
        // Build the new element first: `value` may live in the buffer that is about to move.
        T element(std::forward<U>(value));
        unsigned int const wanted = size * 2 > size + 1 ? size * 2 : size + 1;
        Reallocate(wanted);
        ::new (data + size) T(std::move(element));
        return size++;
    }

    T* data = nullptr;
    unsigned int size = 0;
    unsigned int capacity = 0;
};

} // namespace Tavo
