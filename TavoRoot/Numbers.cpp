// Decimal text of numbers through std::to_chars and std::from_chars: independent of the locale, exact
// for integers, and shortest round-trip text for reals.
#include "TavoRoot/Numbers.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>
#include <new>
#include <type_traits>

namespace Tavo {

namespace {

template <class T>
bool WriteValue(T value, unsigned short* buffer, unsigned long size) noexcept {
    if (!buffer || size == 0) {
        return false;
    }
    char text[64];
    char* end;
    if constexpr (std::is_floating_point_v<T>) {
        if (std::isnan(value)) {
            end = text + 3;
            std::copy_n("nan", 3, text); // also for a NaN with the sign bit, which to_chars writes "-nan"
        } else {
            end = std::to_chars(text, text + sizeof text, value).ptr;
        }
    } else {
        end = std::to_chars(text, text + sizeof text, value).ptr;
    }
    std::size_t const length = std::size_t(end - text);
    if (length >= size) {
        buffer[0] = 0;
        return false;
    }
    std::copy(text, end, buffer);
    buffer[length] = 0;
    return true;
}

template <class T>
bool ReadValue(unsigned short const* text, T& value) noexcept {
    if (!text) {
        return false;
    }
    std::size_t from = 0;
    std::size_t to = ucslen(text);
    while (from < to && IsWhiteSpace(text[from])) {
        ++from;
    }
    while (to > from && IsWhiteSpace(text[to - 1])) {
        --to;
    }
    // from_chars takes no '+'; one is accepted in front of a digit, a point or a name of a real.
    if (from < to && text[from] == '+') {
        ++from;
        if (from < to && (text[from] == '+' || text[from] == '-')) {
            return false;
        }
    }
    if (from == to) {
        return false;
    }
    // An ASCII copy: a number has only ASCII characters, so any other character rejects the text.
    char local[128];
    std::unique_ptr<char[]> heap;
    char* ascii = local;
    std::size_t const length = to - from;
    if (length > sizeof local) {
        heap.reset(new (std::nothrow) char[length]);
        if (!heap) {
            return false;
        }
        ascii = heap.get();
    }
    for (std::size_t i = 0; i < length; ++i) {
        unsigned short const c = text[from + i];
        if (c >= 0x80) {
            return false;
        }
        ascii[i] = static_cast<char>(c);
    }
    T parsed{};
    auto const [end, error] = std::from_chars(ascii, ascii + length, parsed);
    if (error != std::errc() || end != ascii + length) {
        return false;
    }
    value = parsed;
    return true;
}

} // namespace

bool valuetostr(short value, unsigned short* buffer, unsigned long size) noexcept {
    return WriteValue(value, buffer, size);
}
bool valuetostr(unsigned short value, unsigned short* buffer, unsigned long size) noexcept {
    return WriteValue(value, buffer, size);
}
bool valuetostr(int value, unsigned short* buffer, unsigned long size) noexcept {
    return WriteValue(value, buffer, size);
}
bool valuetostr(unsigned int value, unsigned short* buffer, unsigned long size) noexcept {
    return WriteValue(value, buffer, size);
}
bool valuetostr(long value, unsigned short* buffer, unsigned long size) noexcept {
    return WriteValue(value, buffer, size);
}
bool valuetostr(unsigned long value, unsigned short* buffer, unsigned long size) noexcept {
    return WriteValue(value, buffer, size);
}
bool valuetostr(long long value, unsigned short* buffer, unsigned long size) noexcept {
    return WriteValue(value, buffer, size);
}
bool valuetostr(unsigned long long value, unsigned short* buffer, unsigned long size) noexcept {
    return WriteValue(value, buffer, size);
}
bool valuetostr(float value, unsigned short* buffer, unsigned long size) noexcept {
    return WriteValue(value, buffer, size);
}
bool valuetostr(double value, unsigned short* buffer, unsigned long size) noexcept {
    return WriteValue(value, buffer, size);
}

// Only mode 0 exists for either argument; other values read as mode 0.
bool strtovalue(unsigned short const* text, signed char& value, ToValueMode, TrimWSMode) noexcept {
    return ReadValue(text, value);
}
bool strtovalue(unsigned short const* text, unsigned char& value, ToValueMode, TrimWSMode) noexcept {
    return ReadValue(text, value);
}
bool strtovalue(unsigned short const* text, char& value, ToValueMode, TrimWSMode) noexcept {
    return ReadValue(text, value);
}
bool strtovalue(unsigned short const* text, short& value, ToValueMode, TrimWSMode) noexcept {
    return ReadValue(text, value);
}
bool strtovalue(unsigned short const* text, unsigned short& value, ToValueMode, TrimWSMode) noexcept {
    return ReadValue(text, value);
}
bool strtovalue(unsigned short const* text, int& value, ToValueMode, TrimWSMode) noexcept {
    return ReadValue(text, value);
}
bool strtovalue(unsigned short const* text, unsigned int& value, ToValueMode, TrimWSMode) noexcept {
    return ReadValue(text, value);
}
bool strtovalue(unsigned short const* text, long& value, ToValueMode, TrimWSMode) noexcept {
    return ReadValue(text, value);
}
bool strtovalue(unsigned short const* text, unsigned long& value, ToValueMode, TrimWSMode) noexcept {
    return ReadValue(text, value);
}
bool strtovalue(unsigned short const* text, long long& value, ToValueMode, TrimWSMode) noexcept {
    return ReadValue(text, value);
}
bool strtovalue(unsigned short const* text, unsigned long long& value, ToValueMode, TrimWSMode) noexcept {
    return ReadValue(text, value);
}
bool strtovalue(unsigned short const* text, float& value, ToValueMode, TrimWSMode) noexcept {
    return ReadValue(text, value);
}
bool strtovalue(unsigned short const* text, double& value, ToValueMode, TrimWSMode) noexcept {
    return ReadValue(text, value);
}

} // namespace Tavo
