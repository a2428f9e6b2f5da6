// Tavo::UniString: the edits and the concatenation. Every edit first makes the block the string's own
// (MakeUnique or Splice, in UniString.cpp) and leaves it zero-terminated.
#include "TavoRoot/UniString.hpp"

#include "TavoRoot/internal/UniStringBuffer.hpp"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace Tavo {

using detail::AsChar16;
using detail::Clamp;
using detail::CopyChars;
using detail::Length16;
using detail::Range;

namespace {

std::size_t CountHits(std::u16string_view range, std::u16string_view pattern) noexcept {
    std::size_t hits = 0;
    for (std::size_t at = range.find(pattern); at != range.npos;
         at = range.find(pattern, at + pattern.size())) {
        ++hits;
    }
    return hits;
}

// Copies `range` to `out` with every `pattern` replaced; returns the end of what was written.
char16_t* CopyReplacing(char16_t* out, std::u16string_view range, std::u16string_view pattern,
                        std::u16string_view replacement) noexcept {
    std::size_t done = 0;
    for (std::size_t at = range.find(pattern); at != range.npos; at = range.find(pattern, done)) {
        CopyChars(out, range.data() + done, at - done);
        out += at - done;
        CopyChars(out, replacement.data(), replacement.size());
        out += replacement.size();
        done = at + pattern.size();
    }
    CopyChars(out, range.data() + done, range.size() - done);
    return out + (range.size() - done);
}

} // namespace

void UniString::ReplaceAll(UniChar oldChar, UniChar newChar, unsigned int from, unsigned int count) {
    Range const r = Clamp(GetLength(), from, count);
    auto const oldC = static_cast<char16_t>(oldChar.GetValue());
    auto const newC = static_cast<char16_t>(newChar.GetValue());
    std::size_t const first = View().substr(0, r.from + r.count).find(oldC, r.from);
    if (oldC == newC || first == std::u16string_view::npos) {
        return;
    }
    char16_t* chars = MakeUnique(GetLength());
    std::replace(chars + first, chars + r.from + r.count, oldC, newC);
}

// All views stay valid until the old block is released at the end.
void UniString::ReplaceAll(UniString const& oldText, UniString const& newText, unsigned int from,
                           unsigned int count) {
    Range const r = Clamp(GetLength(), from, count);
    std::u16string_view const whole = View();
    std::u16string_view const pattern = oldText.View();
    std::size_t const hits = pattern.empty() ? 0 : CountHits(whole.substr(r.from, r.count), pattern);
    if (hits == 0) {
        return;
    }
    std::size_t const newLength = whole.size() + hits * newText.GetLength() - hits * pattern.size();
    Buffer* fresh = Buffer::Allocate(newLength);
    CopyChars(fresh->Chars(), whole.data(), r.from);
    char16_t* const end =
        CopyReplacing(fresh->Chars() + r.from, whole.substr(r.from, r.count), pattern, newText.View());
    CopyChars(end, whole.data() + r.from + r.count, whole.size() - r.from - r.count);
    fresh->SetLength(static_cast<unsigned int>(newLength));
    Buffer* old = buffer;
    buffer = fresh;
    Buffer::Release(old);
}

void UniString::SetLength(unsigned int length, UniChar pad) {
    unsigned int const old = GetLength();
    if (length == old) {
        return;
    }
    if (length == 0) {
        Clear();
        return;
    }
    if (length < old) {
        MakeUnique(length);
    } else {
        char16_t* chars = MakeUnique(length);
        std::fill(chars + old, chars + length, static_cast<char16_t>(pad.GetValue()));
    }
    buffer->SetLength(length);
}

void UniString::SetAt(unsigned int index, UniChar c) {
    if (index < GetLength() && Data()[index] != c.GetValue()) {
        MakeUnique(GetLength())[index] = static_cast<char16_t>(c.GetValue());
    }
}

void UniString::Trim() {
    std::u16string_view const text = View();
    std::size_t from = 0;
    std::size_t to = text.size();
    while (from < to && IsWhiteSpace(text[from])) {
        ++from;
    }
    while (to > from && IsWhiteSpace(text[to - 1])) {
        --to;
    }
    if (from == 0 && to == text.size()) {
        return;
    }
    if (buffer->IsShared()) {
        *this = UniString(text.substr(from, to - from));
        return;
    }
    std::memmove(buffer->Chars(), text.data() + from, (to - from) * sizeof(char16_t));
    buffer->SetLength(static_cast<unsigned int>(to - from));
}

void UniString::Clear() noexcept {
    if (buffer && !buffer->IsShared()) {
        buffer->SetLength(0);
        return;
    }
    Buffer::Release(buffer);
    buffer = nullptr;
}

void UniString::SetToLowerCase(unsigned int from, unsigned int count) {
    Range const r = Clamp(GetLength(), from, count);
    char16_t const* text = Data();
    unsigned int const end = r.from + r.count;
    unsigned int first = r.from;
    while (first < end && ToLowerCase(text[first]) == text[first]) {
        ++first;
    }
    if (first == end) {
        return;
    }
    char16_t* chars = MakeUnique(GetLength());
    std::transform(chars + first, chars + end, chars + first, ToLowerCase);
}

void UniString::Append(UniChar c) {
    unsigned int const length = GetLength();
    if (buffer && length < buffer->capacity && !buffer->IsShared()) {
        buffer->Chars()[length] = static_cast<char16_t>(c.GetValue());
        buffer->SetLength(length + 1);
        return;
    }
    char16_t const one = static_cast<char16_t>(c.GetValue());
    Splice(length, 0, &one, 1);
}

void UniString::Append(char const* text, TavoCharCode code) {
    if (text) {
        AppendAnsi(text, std::strlen(text), code);
    }
}

void UniString::Append(char const* text, unsigned int length, TavoCharCode code) {
    if (text) {
        AppendAnsi(text, length, code);
    }
}

void UniString::Append(unsigned short const* text) {
    Splice(GetLength(), 0, AsChar16(text), Length16(AsChar16(text)));
}

void UniString::Append(char16_t const* text, unsigned int length) {
    Splice(GetLength(), 0, text, text ? length : 0);
}

void UniString::Append(UniString const& other, unsigned int from, unsigned int count) {
    if (!buffer && from == 0 && count >= other.GetLength()) {
        *this = other; // appending to nothing shares instead of copying
        return;
    }
    Range const r = Clamp(other.GetLength(), from, count);
    Splice(GetLength(), 0, other.Data() + r.from, r.count);
}

void UniString::Delete(unsigned int from, unsigned int count) {
    Range const r = Clamp(GetLength(), from, count);
    if (r.count == GetLength()) {
        Clear();
    } else if (r.count) {
        Splice(r.from, r.count, nullptr, 0);
    }
}

void UniString::Insert(unsigned int at, UniString const& other, unsigned int from, unsigned int count) {
    Range const r = Clamp(other.GetLength(), from, count);
    Splice(std::min(at, GetLength()), 0, other.Data() + r.from, r.count);
}

void UniString::Reserve(unsigned int capacity) {
    if (capacity > GetLength() && (!buffer || buffer->IsShared() || buffer->capacity < capacity)) {
        MakeUnique(capacity);
    }
}

// ---- concatenation

Concatenation&& Concatenation::operator+(UniString const& next) && {
    text.Append(next);
    return static_cast<Concatenation&&>(*this);
}
Concatenation&& Concatenation::operator+(char const* next) && {
    text.Append(next);
    return static_cast<Concatenation&&>(*this);
}
Concatenation&& Concatenation::operator+(unsigned short const* next) && {
    text.Append(next);
    return static_cast<Concatenation&&>(*this);
}

namespace {
// `left` + `right` in one block of the exact size.
template <class Left, class Right>
Concatenation Concatenate(Left const& left, std::size_t leftLength, Right const& right,
                          std::size_t rightLength) {
    UniString text;
    text.Reserve(static_cast<unsigned int>(std::min(leftLength + rightLength, detail::kMaxLength)));
    text.Append(left);
    text.Append(right);
    return Concatenation(static_cast<UniString&&>(text));
}
} // namespace

// An empty side adds nothing: the result then shares the other side's buffer.
Concatenation operator+(UniString const& left, UniString const& right) {
    if (left.IsEmpty() || right.IsEmpty()) {
        return Concatenation(left.IsEmpty() ? right : left);
    }
    return Concatenate(left, left.GetLength(), right, right.GetLength());
}
Concatenation operator+(UniString const& left, char const* right) {
    std::size_t const length = right ? std::strlen(right) : 0;
    return length ? Concatenate(left, left.GetLength(), right, length) : Concatenation(left);
}
Concatenation operator+(UniString const& left, unsigned short const* right) {
    std::size_t const length = Length16(AsChar16(right));
    return length ? Concatenate(left, left.GetLength(), right, length) : Concatenation(left);
}
Concatenation operator+(char const* left, UniString const& right) {
    std::size_t const length = left ? std::strlen(left) : 0;
    return length ? Concatenate(left, length, right, right.GetLength()) : Concatenation(right);
}

} // namespace Tavo
