// Tavo::Owner<T>: sole ownership of one heap object, deleted with the owner.
#pragma once

#include <utility>

namespace Tavo {

template <class T>
class Owner {
public:
    Owner() noexcept = default;
    explicit Owner(T* object) noexcept : object(object) {}
    Owner(Owner&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
    Owner& operator=(Owner&& other) noexcept {
        Reset(std::exchange(other.object, nullptr));
        return *this;
    }
    Owner(Owner const&) = delete;
    Owner& operator=(Owner const&) = delete;
    ~Owner() { delete object; }

    // Deletes the present object and takes `replacement`.
    void Reset(T* replacement = nullptr) noexcept {
        T* old = std::exchange(object, replacement);
        delete old;
    }
    // Gives up ownership without deleting.
    T* Release() noexcept { return std::exchange(object, nullptr); }

    T* Get() const noexcept { return object; }
    T* operator->() const noexcept { return object; }
    T& operator*() const noexcept { return *object; }
    explicit operator bool() const noexcept { return object != nullptr; }

private:
    T* object = nullptr;
};

} // namespace Tavo
