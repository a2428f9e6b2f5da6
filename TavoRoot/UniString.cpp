// Tavo::UniString: one heap block holds the header (reference count, length, capacity) and the
// zero-terminated characters. The empty string has no block at all; a copy takes one more reference;
// every edit first makes the block the string's own (copy on write).
#include "TavoRoot/UniString.hpp"

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>

namespace Tavo {

namespace {

constexpr char16_t gEmptyText[1] = {0};
char gEmptyCText[1] = {0}; // shared result of ToCStr for empty text; never written
// Longest string; keeps lengths clear of kAll and of the int counts of the 8-bit conversions.
constexpr std::size_t gMaxLength = 0x7FFFFFFF;

// A (from, count) range cut to a text of `length` characters; a start past the end is an empty range.
struct Range {
    unsigned int from;
    unsigned int count;
};
Range Clamp(unsigned int length, unsigned int from, unsigned int count) noexcept {
    if (from >= length) {
        return {length, 0};
    }
    return {from, std::min(count, length - from)};
}

void CopyChars(char16_t* target, char16_t const* source, std::size_t count) noexcept {
    if (count) {
        std::memcpy(target, source, count * sizeof(char16_t));
    }
}

char16_t const* AsChar16(unsigned short const* text) noexcept {
    return reinterpret_cast<char16_t const*>(text);
}

std::size_t Length16(char16_t const* text) noexcept {
    return text ? std::char_traits<char16_t>::length(text) : 0;
}

} // namespace

struct UniString::Buffer {
    std::atomic<unsigned int> refs;
    unsigned int length;
    unsigned int capacity; // characters, not counting the terminator

    char16_t* Chars() noexcept { return reinterpret_cast<char16_t*>(this + 1); }

    static Buffer* Allocate(std::size_t capacity) {
        if (capacity > gMaxLength) {
            throw std::length_error("Tavo::UniString: text too long");
        }
        void* memory = ::operator new(sizeof(Buffer) + (capacity + 1) * sizeof(char16_t));
        return ::new (memory) Buffer{{1u}, 0u, static_cast<unsigned int>(capacity)};
    }
    static Buffer* Make(char16_t const* text, std::size_t count) {
        Buffer* buffer = Allocate(count);
        CopyChars(buffer->Chars(), text, count);
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
UniString::UniString(char16_t const* text) : UniString(std::u16string_view(text ? text : gEmptyText)) {}
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
    return buffer ? buffer->Chars() : gEmptyText;
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
        return UStrHolder(nullptr, reinterpret_cast<unsigned short const*>(gEmptyText));
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
    return View() == std::u16string_view(text ? AsChar16(text) : gEmptyText);
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
    std::size_t size = std::max<std::size_t>(capacity, length);
    if (old && size > old->capacity) {
        size = std::max(size, std::min<std::size_t>(2 * std::size_t(old->capacity), gMaxLength));
    }
    Buffer* fresh = Buffer::Allocate(size);
    CopyChars(fresh->Chars(), Data(), length);
    fresh->SetLength(length);
    buffer = fresh;
    Buffer::Release(old);
    return fresh->Chars();
}

void UniString::Splice(unsigned int at, unsigned int removed, char16_t const* text, std::size_t count) {
    unsigned int const length = GetLength();
    std::size_t const newLength = std::size_t(length) - removed + count;
    if (newLength > gMaxLength) {
        throw std::length_error("Tavo::UniString: text too long");
    }
    unsigned int const tail = length - at - removed;
    Buffer* old = buffer;
    std::less_equal<char16_t const*> const le;
    bool const inside = old && count && le(old->Chars(), text) && le(text, old->Chars() + length);
    if (old && !inside && !old->IsShared() && old->capacity >= newLength) {
        char16_t* chars = old->Chars();
        if (count != removed && tail) {
            std::memmove(chars + at + count, chars + at + removed, tail * sizeof(char16_t));
        }
        CopyChars(chars + at, text, count);
        old->SetLength(static_cast<unsigned int>(newLength));
        return;
    }
    // A new block; the old one still holds `text` if it came from there, so it is released last.
    std::size_t size = newLength;
    if (old && newLength > old->capacity) {
        size = std::max(size, std::min<std::size_t>(2 * std::size_t(old->capacity), gMaxLength));
    }
    Buffer* fresh = Buffer::Allocate(size);
    char16_t const* source = Data();
    CopyChars(fresh->Chars(), source, at);
    CopyChars(fresh->Chars() + at, text, count);
    CopyChars(fresh->Chars() + at + count, source + at + removed, tail);
    fresh->SetLength(static_cast<unsigned int>(newLength));
    buffer = fresh;
    Buffer::Release(old);
}

void UniString::AppendAnsi(char const* text, std::size_t length, TavoCharCode code) {
    if (length == 0) {
        return;
    }
    unsigned int const old = GetLength();
    if (old + length > gMaxLength) {
        throw std::length_error("Tavo::UniString: text too long");
    }
    char16_t* chars = MakeUnique(old + length);
    std::size_t const added = AnsiToUnicode(chars + old, text, length, code);
    buffer->SetLength(static_cast<unsigned int>(old + added));
}

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

void UniString::ReplaceAll(UniString const& oldText, UniString const& newText, unsigned int from,
                           unsigned int count) {
    Range const r = Clamp(GetLength(), from, count);
    std::u16string_view const whole = View();
    std::u16string_view const range = whole.substr(r.from, r.count);
    std::u16string_view const pattern = oldText.View();
    std::u16string_view const replacement = newText.View();
    if (pattern.empty()) {
        return;
    }
    std::size_t hits = 0;
    for (std::size_t at = range.find(pattern); at != range.npos;
         at = range.find(pattern, at + pattern.size())) {
        ++hits;
    }
    if (hits == 0) {
        return;
    }
    // All views stay valid until the old block is released at the end.
    std::size_t const newLength = whole.size() + hits * replacement.size() - hits * pattern.size();
    Buffer* fresh = Buffer::Allocate(newLength);
    char16_t* out = fresh->Chars();
    CopyChars(out, whole.data(), r.from);
    out += r.from;
    std::size_t done = 0;
    for (std::size_t at = range.find(pattern); at != range.npos; at = range.find(pattern, done)) {
        CopyChars(out, range.data() + done, at - done);
        out += at - done;
        CopyChars(out, replacement.data(), replacement.size());
        out += replacement.size();
        done = at + pattern.size();
    }
    std::size_t const rest = whole.size() - r.from - done;
    CopyChars(out, range.data() + done, rest);
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

// ---- format

namespace {

constexpr int gMaxPad = 1 << 24;

void AppendPadded(UniString& out, std::u16string_view text, int width, bool left) {
    std::size_t const pad = width > 0 && std::size_t(width) > text.size() ? width - text.size() : 0;
    if (!left) {
        out.SetLength(out.GetLength() + static_cast<unsigned int>(pad), UniChar(' '));
    }
    out.Append(text.data(), static_cast<unsigned int>(text.size()));
    if (left) {
        out.SetLength(out.GetLength() + static_cast<unsigned int>(pad), UniChar(' '));
    }
}

// Appends a code point of a wchar_t text: surrogate pairs above the BMP, U+FFFD for what is no
// character.
void AppendCodePoint(std::u16string& out, char32_t c) {
    if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
        out.push_back(0xFFFD);
    } else if (c >= 0x10000) {
        out.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
        out.push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
    } else {
        out.push_back(static_cast<char16_t>(c));
    }
}

// A numeric conversion through snprintf with the rebuilt directive.
template <class T>
void AppendNumber(UniString& out, std::string const& directive, T value) {
    char local[64];
    int const n = std::snprintf(local, sizeof local, directive.c_str(), value);
    if (n < 0) {
        return;
    }
    if (std::size_t(n) < sizeof local) {
        out.Append(local, TavoCharCodeDefault);
        return;
    }
    std::string big(std::size_t(n) + 1, '\0');
    std::snprintf(big.data(), big.size(), directive.c_str(), value);
    out.Append(big.c_str(), TavoCharCodeDefault);
}

// An integer conversion: the argument type follows the length modifier (hh and h arrive as int).
template <class Int, class Long, class LongLong, class Size>
void AppendInteger(UniString& out, std::string const& directive, std::string const& length,
                   std::va_list* args) {
    if (length == "l") {
        AppendNumber(out, directive, va_arg(*args, Long));
    } else if (length == "ll" || length == "j") {
        AppendNumber(out, directive, va_arg(*args, LongLong));
    } else if (length == "z" || length == "t") {
        AppendNumber(out, directive, va_arg(*args, Size));
    } else {
        AppendNumber(out, directive, va_arg(*args, Int));
    }
}

} // namespace

UniString UniString::PrintfFwd(char const* format, ...) {
    UniString out;
    if (!format) {
        return out;
    }
    out.Reserve(static_cast<unsigned int>(std::min<std::size_t>(std::strlen(format) + 32, gMaxLength)));
    std::va_list args;
    va_start(args, format);
    try {
        char const* p = format;
        while (*p) {
            char const* literal = p;
            while (*p && *p != '%') {
                ++p;
            }
            out.AppendAnsi(literal, std::size_t(p - literal), TavoCharCodeDefault);
            if (!*p) {
                break;
            }
            char const* const directive = p++;
            if (*p == '%') {
                out.Append(UniChar('%'));
                ++p;
                continue;
            }
            std::string flags;
            while (*p && std::strchr("-+ #0", *p)) {
                flags += *p++;
            }
            // Width and precision are capped so that a wild value cannot exhaust memory.
            auto readNumber = [&p]() {
                int value = 0;
                for (; *p >= '0' && *p <= '9'; ++p) {
                    value = std::min(value * 10 + (*p - '0'), gMaxPad);
                }
                return value;
            };
            int width = -1;
            if (*p == '*') {
                ++p;
                width = va_arg(args, int);
                if (width < 0) {
                    flags += '-';
                    width = width == INT_MIN ? gMaxPad : -width;
                }
                width = std::min(width, gMaxPad);
            } else if (*p >= '0' && *p <= '9') {
                width = readNumber();
            }
            int precision = -1;
            if (*p == '.') {
                ++p;
                if (*p == '*') {
                    ++p;
                    precision = std::min(std::max(va_arg(args, int), -1), gMaxPad);
                } else {
                    precision = readNumber();
                }
            }
            char const* const lengthStart = p;
            while (*p && std::strchr("hlzjtL", *p)) {
                ++p;
            }
            std::string const length(lengthStart, p);
            char const conversion = *p;
            if (!conversion) {
                out.AppendAnsi(directive, std::size_t(p - directive), TavoCharCodeDefault);
                break;
            }
            ++p;
            bool const left = flags.find('-') != std::string::npos;
            std::string numeric(1, '%');
            numeric += flags;
            if (width >= 0) {
                numeric += std::to_string(width);
            }
            if (precision >= 0) {
                numeric += '.';
                numeric += std::to_string(precision);
            }
            numeric += length;
            numeric += conversion;
            std::size_t const limit = precision >= 0 ? std::size_t(precision) : std::size_t(-1);
            switch (conversion) {
                case 'd':
                case 'i':
                    AppendInteger<int, long, long long, std::ptrdiff_t>(out, numeric, length, &args);
                    break;
                case 'u':
                case 'x':
                case 'X':
                case 'o':
                    AppendInteger<unsigned int, unsigned long, unsigned long long, std::size_t>(
                        out, numeric, length, &args);
                    break;
                case 'f':
                case 'F':
                case 'e':
                case 'E':
                case 'g':
                case 'G':
                case 'a':
                case 'A':
                    if (length == "L") {
                        AppendNumber(out, numeric, va_arg(args, long double));
                    } else {
                        AppendNumber(out, numeric, va_arg(args, double));
                    }
                    break;
                case 'p':
                    AppendNumber(out, "%" + flags + (width >= 0 ? std::to_string(width) : "") + "p",
                                 va_arg(args, void*));
                    break;
                case 'c': {
                    std::u16string one;
                    if (length == "l") {
                        AppendCodePoint(one, static_cast<char32_t>(va_arg(args, std::wint_t)));
                    } else {
                        char const c = static_cast<char>(va_arg(args, int));
                        AppendAnsiToUnicode(one, std::string_view(&c, 1), TavoCharCodeDefault);
                    }
                    AppendPadded(out, one, width, left);
                    break;
                }
                case 's': {
                    std::u16string text;
                    if (length == "l") {
                        char16_t const* s = AsChar16(va_arg(args, unsigned short const*));
                        std::u16string_view const view =
                            s ? std::u16string_view(s, std::min(Length16(s), limit))
                              : std::u16string_view(u"(null)");
                        AppendPadded(out, view, width, left);
                        break;
                    }
                    char const* s = va_arg(args, char const*);
                    AppendAnsiToUnicode(text, s ? std::string_view(s, strnlen(s, limit)) : "(null)",
                                        TavoCharCodeDefault);
                    AppendPadded(out, text, width, left);
                    break;
                }
                case 'S': {
                    wchar_t const* s = va_arg(args, wchar_t const*);
                    std::u16string text;
                    if (!s) {
                        text = u"(null)";
                    }
                    for (std::size_t i = 0; s && i < limit && s[i]; ++i) {
                        AppendCodePoint(text, static_cast<char32_t>(s[i]));
                    }
                    AppendPadded(out, text, width, left);
                    break;
                }
                case 'T': {
                    UniString const* s = va_arg(args, UniString const*);
                    std::u16string_view const view =
                        s ? s->View().substr(0, limit) : std::u16string_view(u"(null)");
                    AppendPadded(out, view, width, left);
                    break;
                }
                case 'n':
                    // Writing through a caller's pointer is not supported; the argument is skipped.
                    static_cast<void>(va_arg(args, void*));
                    break;
                default:
                    // Unknown conversion: written as it stands.
                    out.AppendAnsi(directive, std::size_t(p - directive), TavoCharCodeDefault);
                    break;
            }
        }
    } catch (...) {
        va_end(args);
        throw;
    }
    va_end(args);
    return out;
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
    text.Reserve(static_cast<unsigned int>(std::min(leftLength + rightLength, gMaxLength)));
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

// ---- characters

bool IsWhiteSpace(char16_t c) noexcept {
    return (c >= 0x09 && c <= 0x0D) || c == 0x20 || c == 0x85 || c == 0xA0 || c == 0x1680 ||
           (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F ||
           c == 0x3000;
}

char16_t ToLowerCase(char16_t c) noexcept {
    if (c < 0x80) {
        return c >= 'A' && c <= 'Z' ? char16_t(c + 32) : c;
    }
    if ((c >= 0xC0 && c <= 0xDE && c != 0xD7) || (c >= 0x391 && c <= 0x3AB && c != 0x3A2) ||
        (c >= 0x410 && c <= 0x42F)) {
        return char16_t(c + 32);
    }
    if (c >= 0x400 && c <= 0x40F) {
        return char16_t(c + 0x50);
    }
    // Latin Extended-A: capitals and small letters alternate, with a shift at U+0139 and U+0179.
    if ((c >= 0x100 && c <= 0x137 && c != 0x130) || (c >= 0x14A && c <= 0x177)) {
        return char16_t(c | 1);
    }
    if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) {
        return (c & 1) ? char16_t(c + 1) : c;
    }
    switch (c) {
        case 0x130:
            return u'i';
        case 0x178:
            return 0xFF;
        case 0x386:
            return 0x3AC;
        case 0x388:
        case 0x389:
        case 0x38A:
            return char16_t(c + 37);
        case 0x38C:
            return 0x3CC;
        case 0x38E:
        case 0x38F:
            return char16_t(c + 63);
        default:
            return c;
    }
}

unsigned int ucslen(unsigned short const* text) noexcept {
    return static_cast<unsigned int>(Length16(AsChar16(text)));
}

unsigned short* ucscpy(unsigned short* target, unsigned short const* source) noexcept {
    std::memcpy(target, source, (std::size_t(ucslen(source)) + 1) * sizeof(unsigned short));
    return target;
}

} // namespace Tavo
