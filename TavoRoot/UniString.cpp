// Tavo::UniString: storage. One heap block holds the header (reference count, length, capacity) and the
// zero-terminated characters (TavoRoot/internal/UniStringBuffer.hpp). This file builds, reads out and
// inspects strings, and holds the two primitives that every edit goes through: MakeUnique (copy on
// write) and Splice (the one edit that changes the length). The edits themselves are in
// UniStringEdit.cpp, the formatter in UniStringFormat.cpp, the character tables in UniStringChars.cpp.
#include "TavoRoot/UniString.hpp"

#include "TavoRoot/internal/UniStringBuffer.hpp"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>

namespace Tavo {

using detail::AsChar16;
using detail::Clamp;
using detail::CopyChars;
using detail::kEmptyText;
using detail::kMaxLength;
using detail::Length16;
using detail::Range;

namespace {

char gEmptyCText[1] = {0}; // shared result of ToCStr for empty text; never written

// The size of a new block for `needed` characters replacing one of `oldCapacity`: a block that must grow
// at least doubles, so that appending one by one stays linear.
std::size_t GrownSize(std::size_t needed, std::size_t oldCapacity) noexcept {
    return needed > oldCapacity ? std::max(needed, std::min(2 * oldCapacity, kMaxLength)) : needed;
}

} // namespace

// ---- holders

UniString::UStrHolder::UStrHolder(UStrHolder&& other) noexcept : buffer(other.buffer), text(other.text) {
    other.buffer = nullptr;
}
UniString::UStrHolder::~UStrHolder() {
    Buffer::Release(static_cast<Buffer*>(buffer));
}

UniString::CStrHolder::CStrHolder(CStrHolder&& other) noexcept : text(other.text) {
    other.text = gEmptyCText;
}
UniString::CStrHolder::~CStrHolder() {
    if (text != gEmptyCText) {
        delete[] text;
    }
}

// ---- build and assign

UniString::UniString() noexcept : buffer(nullptr) {}

UniString::UniString(char const* text, TavoCharCode code) : buffer(nullptr) {
    if (text) {
        AppendAnsi(text, std::strlen(text), code);
    }
}
UniString::UniString(char const* text, unsigned int length, TavoCharCode code) : buffer(nullptr) {
    if (text) {
        AppendAnsi(text, length, code);
    }
}
UniString::UniString(unsigned short const* text) : UniString(AsChar16(text)) {}
UniString::UniString(unsigned short const* text, unsigned int length) : UniString(AsChar16(text), length) {}
UniString::UniString(char16_t const* text) : UniString(std::u16string_view(text ? text : kEmptyText)) {}
UniString::UniString(char16_t const* text, unsigned int length)
    : UniString(text ? std::u16string_view(text, length) : std::u16string_view()) {}
UniString::UniString(std::u16string_view text)
    : buffer(text.empty() ? nullptr : Buffer::Make(text.data(), text.size())) {}

UniString::UniString(UniString const& other, unsigned int from, unsigned int count) : buffer(nullptr) {
    Range const r = Clamp(other.GetLength(), from, count);
    if (r.count == other.GetLength()) {
        buffer = other.buffer;
        Buffer::AddRef(buffer);
    } else if (r.count) {
        buffer = Buffer::Make(other.Data() + r.from, r.count);
    }
}

UniString::UniString(Concatenation const& concatenation) : UniString(concatenation.Get()) {}
UniString::UniString(Concatenation&& concatenation) noexcept
    : UniString(static_cast<Concatenation&&>(concatenation).Take()) {}

UniString::UniString(UniString const& other) noexcept : buffer(other.buffer) {
    Buffer::AddRef(buffer);
}
UniString::UniString(UniString&& other) noexcept : buffer(other.buffer) {
    other.buffer = nullptr;
}
UniString::~UniString() {
    Buffer::Release(buffer);
}

UniString& UniString::operator=(UniString const& other) noexcept {
    Buffer::AddRef(other.buffer);
    Buffer::Release(buffer);
    buffer = other.buffer;
    return *this;
}
UniString& UniString::operator=(UniString&& other) noexcept {
    if (this != &other) {
        Buffer::Release(buffer);
        buffer = other.buffer;
        other.buffer = nullptr;
    }
    return *this;
}
UniString& UniString::operator=(char const* text) {
    return *this = UniString(text);
}
UniString& UniString::operator=(unsigned short const* text) {
    return *this = UniString(text);
}
UniString& UniString::operator=(Concatenation const& concatenation) {
    return *this = concatenation.Get();
}
UniString& UniString::operator=(Concatenation&& concatenation) noexcept {
    return *this = static_cast<Concatenation&&>(concatenation).Take();
}

// ---- read out

char16_t const* UniString::Data() const noexcept {
    return buffer ? buffer->Chars() : kEmptyText;
}
unsigned short const* UniString::GetUStr() const noexcept {
    return reinterpret_cast<unsigned short const*>(Data());
}
char16_t const* UniString::GetU16Str() const noexcept {
    return Data();
}
std::u16string_view UniString::View() const noexcept {
    return {Data(), GetLength()};
}

UniString::UStrHolder UniString::ToUStr(unsigned int from, unsigned int count) const {
    Range const r = Clamp(GetLength(), from, count);
    if (r.count == 0) {
        return UStrHolder(nullptr, reinterpret_cast<unsigned short const*>(kEmptyText));
    }
    // A tail of the text is already zero-terminated: hold the shared buffer instead of copying.
    Buffer* held = buffer;
    if (r.from + r.count == GetLength()) {
        Buffer::AddRef(held);
    } else {
        held = Buffer::Make(Data() + r.from, r.count);
    }
    auto const* text = reinterpret_cast<unsigned short const*>(held->Chars() + (held == buffer ? r.from : 0));
    return UStrHolder(held, text);
}

UniString::CStrHolder UniString::ToCStr(unsigned int from, unsigned int count, TavoCharCode code,
                                        OnConversionError /*onError*/) const {
    Range const r = Clamp(GetLength(), from, count);
    if (r.count == 0) {
        return CStrHolder(gEmptyCText);
    }
    return CStrHolder(CopyAnsi(r.from, r.count, code));
}

// Every OnConversionError value replaces what the code lacks by '?': the conversion never fails.
char* UniString::CopyUTF8(unsigned int from, unsigned int count, OnConversionError /*onError*/) const {
    Range const r = Clamp(GetLength(), from, count);
    return CopyAnsi(r.from, r.count, TavoCharCodeUTF8);
}

char* UniString::CopyAnsi(unsigned int from, unsigned int count, TavoCharCode code) const {
    char16_t const* text = Data() + from;
    std::size_t const bytes = UnicodeToAnsi(nullptr, text, count, code, true);
    char* copy = new char[bytes + 1];
    UnicodeToAnsi(copy, text, count, code, true);
    copy[bytes] = '\0';
    return copy;
}

// ---- inspect

unsigned int UniString::GetLength() const noexcept {
    return buffer ? buffer->length : 0;
}

bool UniString::Contains(UniChar c, unsigned int from, unsigned int count) const noexcept {
    Range const r = Clamp(GetLength(), from, count);
    return View().substr(r.from, r.count).find(static_cast<char16_t>(c.GetValue())) !=
           std::u16string_view::npos;
}

unsigned int UniString::Find(UniChar c, unsigned int from) const noexcept {
    if (from >= GetLength()) {
        return kAll;
    }
    std::size_t const at = View().find(static_cast<char16_t>(c.GetValue()), from);
    return at == std::u16string_view::npos ? kAll : static_cast<unsigned int>(at);
}

bool UniString::IsASCII() const noexcept {
    return std::all_of(Data(), Data() + GetLength(), [](char16_t c) { return c < 0x80; });
}

bool UniString::IsEqual(UniString const& other, CaseComparison comparison) const noexcept {
    if (comparison != CaseInsensitive) {
        return *this == other;
    }
    return buffer == other.buffer || std::ranges::equal(View(), other.View(), {}, ToLowerCase, ToLowerCase);
}

bool UniString::operator==(UniString const& other) const noexcept {
    return buffer == other.buffer || View() == other.View();
}

bool UniString::operator==(char const* text) const {
    // Windows-1252 maps byte to character one to one, so the text can be compared without a copy.
    std::size_t const length = text ? std::strlen(text) : 0;
    if (length != GetLength()) {
        return false;
    }
    char16_t const* chars = Data();
    for (std::size_t i = 0; i < length; ++i) {
        char16_t c = static_cast<unsigned char>(text[i]);
        if (c >= 0x80 && c < 0xA0) {
            AnsiToUnicode(&c, text + i, 1, TavoCharCodeDefault);
        }
        if (c != chars[i]) {
            return false;
        }
    }
    return true;
}

bool UniString::operator==(unsigned short const* text) const noexcept {
    return View() == std::u16string_view(text ? AsChar16(text) : kEmptyText);
}

unsigned short UniString::operator[](unsigned int index) const noexcept {
    return index < GetLength() ? Data()[index] : 0;
}

// 32-bit FNV-1a over the characters.
unsigned int UniString::GenerateHashValue() const noexcept {
    std::uint32_t hash = 2166136261u;
    for (char16_t c : View()) {
        hash = (hash ^ c) * 16777619u;
    }
    return hash;
}

// ---- edit

char16_t* UniString::MakeUnique(std::size_t capacity) {
    Buffer* old = buffer;
    unsigned int const length = GetLength();
    if (old && !old->IsShared() && old->capacity >= capacity) {
        return old->Chars();
    }
    std::size_t const needed = std::max<std::size_t>(capacity, length);
    Buffer* fresh = Buffer::Allocate(old ? GrownSize(needed, old->capacity) : needed);
    CopyChars(fresh->Chars(), Data(), length);
    fresh->SetLength(length);
    buffer = fresh;
    Buffer::Release(old);
    return fresh->Chars();
}

void UniString::Splice(unsigned int at, unsigned int removed, char16_t const* text, std::size_t count) {
    unsigned int const length = GetLength();
    std::size_t const newLength = std::size_t(length) - removed + count;
    if (newLength > kMaxLength) {
        detail::ThrowTooLong();
    }
    unsigned int const tail = length - at - removed;
    Buffer* old = buffer;
    std::less_equal<char16_t const*> const le;
    bool const inside = old && count && le(old->Chars(), text) && le(text, old->Chars() + length);
    if (old && !inside && !old->IsShared() && old->capacity >= newLength) {
        char16_t* chars = old->Chars();
        std::memmove(chars + at + count, chars + at + removed, tail * sizeof(char16_t));
        CopyChars(chars + at, text, count);
        old->SetLength(static_cast<unsigned int>(newLength));
        return;
    }
    // A new block; the old one still holds `text` if it came from there, so it is released last.
    Buffer* fresh = Buffer::Allocate(old ? GrownSize(newLength, old->capacity) : newLength);
    CopyChars(fresh->Chars(), Data(), at);
    CopyChars(fresh->Chars() + at, text, count);
    CopyChars(fresh->Chars() + at + count, Data() + at + removed, tail);
    fresh->SetLength(static_cast<unsigned int>(newLength));
    buffer = fresh;
    Buffer::Release(old);
}

void UniString::AppendAnsi(char const* text, std::size_t length, TavoCharCode code) {
    if (length == 0) {
        return;
    }
    unsigned int const old = GetLength();
    if (old + length > kMaxLength) {
        detail::ThrowTooLong();
    }
    char16_t* chars = MakeUnique(old + length);
    std::size_t const added = AnsiToUnicode(chars + old, text, length, code);
    buffer->SetLength(static_cast<unsigned int>(old + added));
}

} // namespace Tavo
