// A Tavo::Array that starts with room for a given number of elements, for code that knows its size in
// advance and wants one allocation. Hands itself on as a plain Tavo::Array by move.
#pragma once

#include "TavoRoot/Array.hpp"

namespace TavoXML::detail {

template <class T>
class ReservedArray : public Tavo::Array<T> {
public:
    explicit ReservedArray(unsigned int capacity) { this->Reallocate(capacity); }
};

} // namespace TavoXML::detail
