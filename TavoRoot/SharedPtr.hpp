// Intrusive shared ownership: Tavo::SharedObject carries an atomic reference count (0 when new) and a
// virtual destructor; Tavo::SharedPtr<T> holds one reference and deletes the object with the last one.
#pragma once

#include "TavoRoot/TavoRootExport.hpp"

#include <atomic>
#include <utility>

namespace Tavo {

// Atomic increment and decrement of a count; both return the new value.
inline int AtomicIncrement(std::atomic<int>& count) noexcept {
    return count.fetch_add(1, std::memory_order_relaxed) + 1;
}
inline int AtomicDecrement(std::atomic<int>& count) noexcept {
    return count.fetch_sub(1, std::memory_order_acq_rel) - 1;
}

class TAVOROOT_API SharedObject {
public:
    SharedObject() noexcept = default;
    // A copy is a new object: it starts with no references.
    SharedObject(SharedObject const&) noexcept {}
    SharedObject& operator=(SharedObject const&) noexcept { return *this; }
    virtual ~SharedObject();

    void AddReference() const noexcept { AtomicIncrement(references); }
    // Drops one reference and deletes the object when it was the last.
    void RemoveReference() const noexcept {
        if (AtomicDecrement(references) == 0) {
            delete this;
        }
    }
    int GetReferenceCount() const noexcept { return references.load(std::memory_order_relaxed); }

private:
    mutable std::atomic<int> references{0};
};

template <class T>
class SharedPtr {
public:
    SharedPtr() noexcept = default;
    explicit SharedPtr(T* object) noexcept : object(object) {
        if (object) {
            object->AddReference();
        }
    }
    SharedPtr(SharedPtr const& other) noexcept : SharedPtr(other.object) {}
    SharedPtr(SharedPtr&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
    SharedPtr& operator=(SharedPtr other) noexcept {
        std::swap(object, other.object);
        return *this;
    }
    ~SharedPtr() {
        if (object) {
            object->RemoveReference();
        }
    }

    T* Get() const noexcept { return object; }
    T* operator->() const noexcept { return object; }
    T& operator*() const noexcept { return *object; }
    explicit operator bool() const noexcept { return object != nullptr; }

private:
    T* object = nullptr;
};

} // namespace Tavo
