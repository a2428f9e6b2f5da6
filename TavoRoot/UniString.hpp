// Tavo::UniString: 16-bit Unicode text whose buffer is shared between copies under an atomic reference
// count and copied before a write. Also Tavo::UniChar, the string concatenation and the printf-style
// formatter.
//
// Ranged operations take a from-index and a count; a count that runs past the end is cut at the end,
// so (0, Tavo::UniString::kAll) means the whole string. The buffer is always zero-terminated, which
// makes GetUStr() and ToUStr() of the whole string free.
#pragma once

#include "TavoRoot/CharCode.hpp"
#include "TavoRoot/TavoRootExport.hpp"

#include <cstddef>
#include <string>
#include <string_view>

namespace Tavo {

// One 16-bit character; built from 8-bit characters as their Latin-1 value.
class UniChar {
public:
    constexpr UniChar() noexcept = default;
    constexpr UniChar(char c) noexcept : value(static_cast<unsigned char>(c)) {}
    constexpr UniChar(unsigned char c) noexcept : value(c) {}
    constexpr explicit UniChar(unsigned short c) noexcept : value(c) {}
    constexpr explicit UniChar(char16_t c) noexcept : value(c) {}

    // The low 8 bits of the character.
    constexpr operator char() const noexcept { return static_cast<char>(value); }
    constexpr unsigned short GetValue() const noexcept { return value; }
    constexpr bool operator==(UniChar const& other) const noexcept = default;

private:
    unsigned short value = 0;
};

// What a conversion to 8 bits does with a character it cannot represent. Only 0 is used by the library.
using OnConversionError = int;
inline constexpr OnConversionError ConversionErrorReplace = 0; // becomes '?'

class Concatenation;

class TAVOROOT_API UniString {
public:
    static constexpr unsigned int kAll = 0xFFFFFFFFu;

    // Scoped zero-terminated 16-bit text; keeps the string's buffer (or its own copy) alive.
    class TAVOROOT_API UStrHolder {
    public:
        UStrHolder(UStrHolder&& other) noexcept;
        UStrHolder& operator=(UStrHolder&&) = delete;
        UStrHolder(UStrHolder const&) = delete;
        ~UStrHolder();
        unsigned short const* Get() const noexcept { return text; }
        operator unsigned short const*() const noexcept { return text; }

    private:
        friend class UniString;
        UStrHolder(void* buffer, unsigned short const* text) noexcept : buffer(buffer), text(text) {}
        void* buffer; // a reference held on the shared buffer, or null
        unsigned short const* text;
    };

    // Scoped zero-terminated 8-bit text.
    class TAVOROOT_API CStrHolder {
    public:
        CStrHolder(CStrHolder&& other) noexcept;
        CStrHolder& operator=(CStrHolder&&) = delete;
        CStrHolder(CStrHolder const&) = delete;
        ~CStrHolder();
        char const* Get() const noexcept { return text; }
        operator char const*() const noexcept { return text; }

    private:
        friend class UniString;
        explicit CStrHolder(char* text) noexcept : text(text) {}
        char* text;
    };

    UniString() noexcept;
    // A null text builds the empty string.
    UniString(char const* text, TavoCharCode code = TavoCharCodeDefault);
    UniString(char const* text, unsigned int length, TavoCharCode code);
    // Zero-terminated UTF-16; null builds the empty string.
    UniString(unsigned short const* text);
    UniString(unsigned short const* text, unsigned int length);
    UniString(char16_t const* text);
    UniString(char16_t const* text, unsigned int length);
    explicit UniString(std::u16string_view text);
    UniString(UniString const& other, unsigned int from, unsigned int count);
    UniString(Concatenation const& concatenation);
    UniString(Concatenation&& concatenation) noexcept;
    UniString(UniString const& other) noexcept;
    UniString(UniString&& other) noexcept;
    ~UniString();

    UniString& operator=(UniString const& other) noexcept;
    UniString& operator=(UniString&& other) noexcept;
    UniString& operator=(char const* text);
    UniString& operator=(unsigned short const* text);
    UniString& operator=(Concatenation const& concatenation);
    UniString& operator=(Concatenation&& concatenation) noexcept;

    // Read out.
    UStrHolder ToUStr(unsigned int from = 0, unsigned int count = kAll) const;
    CStrHolder ToCStr(unsigned int from = 0, unsigned int count = kAll,
                      TavoCharCode code = TavoCharCodeDefault,
                      OnConversionError onError = ConversionErrorReplace) const;
    // A zero-terminated UTF-8 copy that the caller frees with delete[].
    char* CopyUTF8(unsigned int from = 0, unsigned int count = kAll,
                   OnConversionError onError = ConversionErrorReplace) const;
    // The whole text, zero-terminated, valid until the string is next changed or destroyed.
    unsigned short const* GetUStr() const noexcept;
    char16_t const* GetU16Str() const noexcept;
    std::u16string_view View() const noexcept;

    // Inspect.
    unsigned int GetLength() const noexcept;
    bool IsEmpty() const noexcept { return GetLength() == 0; }
    bool Contains(UniChar c, unsigned int from = 0, unsigned int count = kAll) const noexcept;
    // Index of the first occurrence at or after `from`, or kAll.
    unsigned int Find(UniChar c, unsigned int from = 0) const noexcept;
    bool IsASCII() const noexcept;
    bool IsEqual(UniString const& other, CaseComparison comparison) const noexcept;
    bool operator==(UniString const& other) const noexcept;
    bool operator==(char const* text) const; // text in TavoCharCodeDefault; null equals ""
    bool operator==(unsigned short const* text) const noexcept;
    // The character at `index`, or 0 at or past the end.
    unsigned short operator[](unsigned int index) const noexcept;
    unsigned int GenerateHashValue() const noexcept;

    // Edit. Every edit first makes the buffer this string's own.
    void ReplaceAll(UniChar oldChar, UniChar newChar, unsigned int from = 0, unsigned int count = kAll);
    void ReplaceAll(UniString const& oldText, UniString const& newText, unsigned int from = 0,
                    unsigned int count = kAll);
    // Cuts the string or pads it with `pad` to `length` characters.
    void SetLength(unsigned int length, UniChar pad = UniChar(' '));
    // An index at or past the end changes nothing.
    void SetAt(unsigned int index, UniChar c);
    // Removes white space (Unicode White_Space characters) from both ends.
    void Trim();
    // Empties the string; a buffer that no other string shares is kept for reuse.
    void Clear() noexcept;
    // Lower-cases ASCII letters and Latin-1, Greek, Cyrillic and Latin Extended-A capitals.
    void SetToLowerCase(unsigned int from = 0, unsigned int count = kAll);
    void Append(UniChar c);
    void Append(char const* text, TavoCharCode code = TavoCharCodeDefault);
    // `length` bytes of `text`, terminated or not.
    void Append(char const* text, unsigned int length, TavoCharCode code);
    void Append(unsigned short const* text);
    void Append(char16_t const* text, unsigned int length);
    void Append(UniString const& other, unsigned int from = 0, unsigned int count = kAll);
    void Delete(unsigned int from, unsigned int count = kAll);
    void Insert(unsigned int at, UniString const& other, unsigned int from = 0, unsigned int count = kAll);
    // Room for at least `capacity` characters without a reallocation.
    void Reserve(unsigned int capacity);

    // Indexed assignment: s[i] = 'x'.
    class CharRef {
    public:
        CharRef& operator=(UniChar c) {
            owner.SetAt(index, c);
            return *this;
        }
        operator unsigned short() const noexcept { return static_cast<UniString const&>(owner)[index]; }

    private:
        friend class UniString;
        CharRef(UniString& owner, unsigned int index) noexcept : owner(owner), index(index) {}
        UniString& owner;
        unsigned int index;
    };
    CharRef operator[](unsigned int index) noexcept { return CharRef(*this, index); }

    // printf-style formatting: %s 8-bit text (default code), %ls zero-terminated 16-bit text (as given
    // by ToUStr() or GetUStr()), %S wchar_t text (UTF-32 here; non-BMP characters become surrogate
    // pairs), %c a char, %lc a wchar_t, %d/%i int, %u/%x/%X/%o unsigned int, %f/%e/%g/%a double, %p a
    // pointer as its hexadecimal digits alone (lower case, no "0x": a format writes its own), %T a string
    // passed through ToPrintf(), %% a percent sign. Flags, width, precision ('*' included) and the length
    // modifiers hh, h, l, ll, z, j, t, L work as in printf; for the text conversions the precision limits
    // the characters read and the width pads with blanks. A null text is written as "(null)".
    static UniString PrintfFwd(char const* format, ...);
    UniString const* ToPrintf() const noexcept { return this; }

private:
    struct Buffer;
    // Makes the buffer this string's own with room for `capacity` characters (at least the current
    // length) and returns its characters; grows geometrically when the room is exceeded.
    char16_t* MakeUnique(std::size_t capacity);
    // Replaces `removed` characters at `at` by `count` characters of `text` (which may lie in this
    // string's own buffer). The one edit that changes the length.
    void Splice(unsigned int at, unsigned int removed, char16_t const* text, std::size_t count);
    void AppendAnsi(char const* text, std::size_t length, TavoCharCode code);
    // A new[] array with the 8-bit text of a clamped range, zero-terminated.
    char* CopyAnsi(unsigned int from, unsigned int count, TavoCharCode code) const;
    char16_t const* Data() const noexcept;
    Buffer* buffer;
};

// The result of operator+ on strings: collects the pieces, converts to UniString without a copy.
class TAVOROOT_API Concatenation {
public:
    explicit Concatenation(UniString first) noexcept : text(static_cast<UniString&&>(first)) {}
    Concatenation&& operator+(UniString const& next) &&;
    Concatenation&& operator+(char const* next) &&;
    Concatenation&& operator+(unsigned short const* next) &&;
    UniString const& Get() const& noexcept { return text; }
    UniString&& Take() && noexcept { return static_cast<UniString&&>(text); }

private:
    UniString text;
};

TAVOROOT_API Concatenation operator+(UniString const& left, UniString const& right);
TAVOROOT_API Concatenation operator+(UniString const& left, char const* right);
TAVOROOT_API Concatenation operator+(UniString const& left, unsigned short const* right);
TAVOROOT_API Concatenation operator+(char const* left, UniString const& right);

// Unicode White_Space: the characters that Trim() and the number readers skip.
TAVOROOT_API bool IsWhiteSpace(char16_t c) noexcept;
// Simple lower case of ASCII letters and of the Latin-1, Latin Extended-A, Greek and Cyrillic
// capitals; every other character is returned as it is. SetToLowerCase and CaseInsensitive use it.
TAVOROOT_API char16_t ToLowerCase(char16_t c) noexcept;

// Length of a zero-terminated 16-bit string, and a copy of one including its terminator.
TAVOROOT_API unsigned int ucslen(unsigned short const* text) noexcept;
TAVOROOT_API unsigned short* ucscpy(unsigned short* target, unsigned short const* source) noexcept;

// The text as UTF-8 bytes (a lone surrogate becomes '?'), for printing and for the standard library.
TAVOROOT_API std::string ToUTF8String(UniString const& text);

} // namespace Tavo
