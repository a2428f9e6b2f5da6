// Tavo::HashSet<T>: a set by exact equality. Strings hash with GenerateHashValue.
#pragma once

#include "TavoRoot/UniString.hpp"

#include <cstddef>
#include <functional>
#include <unordered_set>

namespace Tavo {

template <class T>
struct Hash : std::hash<T> {};

template <>
struct Hash<UniString> {
    std::size_t operator()(UniString const& text) const noexcept { return text.GenerateHashValue(); }
};

template <class T>
class HashSet {
public:
    // True if the value was not in the set yet.
    bool Add(T const& value) { return values.insert(value).second; }
    bool Contains(T const& value) const { return values.find(value) != values.end(); }
    bool Remove(T const& value) { return values.erase(value) != 0; }
    std::size_t GetSize() const noexcept { return values.size(); }
    void Clear() noexcept { values.clear(); }

private:
    std::unordered_set<T, Hash<T>> values;
};

} // namespace Tavo
