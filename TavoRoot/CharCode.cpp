// Conversions between 16-bit text and the 8-bit character codes: Windows-1252 by a fixed table (never
// through the process locale) and UTF-8 by hand, both total: every input has a defined result.
#include "TavoRoot/CharCode.hpp"

#include "TavoRoot/UniString.hpp"

#include <climits>
#include <cstdint>
#include <cstring>

namespace Tavo {

namespace {

constexpr char16_t gReplacementChar = 0xFFFD;

// Characters of the Windows-1252 bytes 0x80-0x9F. The five bytes without a character stand for the C1
// control of the same number, so that every byte converts and comes back unchanged.
constexpr char16_t gCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

bool IsHighSurrogate(char32_t c) noexcept {
    return c >= 0xD800 && c <= 0xDBFF;
}
bool IsLowSurrogate(char32_t c) noexcept {
    return c >= 0xDC00 && c <= 0xDFFF;
}

// The Windows-1252 byte of a code point, or -1 when the code lacks it.
int ToCp1252(char32_t c) noexcept {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
        return static_cast<int>(c);
    }
    for (int i = 0; i < 32; ++i) {
        if (gCp1252High[i] == c) {
            return 0x80 + i;
        }
    }
    return -1;
}

std::size_t DecodeCp1252(char16_t* target, unsigned char const* text, std::size_t length) noexcept {
    for (std::size_t i = 0; i < length; ++i) {
        unsigned char b = text[i];
        target[i] = (b >= 0x80 && b < 0xA0) ? gCp1252High[b - 0x80] : char16_t(b);
    }
    return length;
}

// Widens the ASCII bytes at the start of `text`, sixteen at a time, and returns how many it took: most
// text is ASCII, and this loop vectorises where the general one cannot.
std::size_t WidenAsciiRun(char16_t* target, unsigned char const* text, std::size_t length) noexcept {
    constexpr std::size_t step = 16;
    constexpr std::uint64_t highBits = 0x8080808080808080u;
    std::size_t done = 0;
    for (; length - done >= step; done += step) {
        // Through a local copy, which the stores cannot alias, so that the widening needs no checks.
        unsigned char bytes[step];
        std::memcpy(bytes, text + done, step);
        std::uint64_t low = 0;
        std::uint64_t high = 0;
        std::memcpy(&low, bytes, sizeof low);
        std::memcpy(&high, bytes + sizeof low, sizeof high);
        if (((low | high) & highBits) != 0) {
            break;
        }
        for (std::size_t k = 0; k < step; ++k) {
            target[done + k] = bytes[k];
        }
    }
    return done;
}

// Strict UTF-8 (no overlong forms, no surrogates, nothing above U+10FFFF). Each maximal subpart of an
// ill-formed sequence becomes one U+FFFD, as Unicode recommends.
std::size_t DecodeUtf8(char16_t* target, unsigned char const* text, std::size_t length) noexcept {
    std::size_t out = 0;
    std::size_t i = 0;
    while (i < length) {
        unsigned char b = text[i];
        if (b < 0x80) {
            std::size_t const run = WidenAsciiRun(target + out, text + i, length - i);
            out += run;
            i += run;
            if (run == 0) {
                target[out++] = b;
                ++i;
            }
            continue;
        }
        std::size_t need;
        unsigned char low = 0x80, high = 0xBF; // range of the first continuation byte
        char32_t c;
        if (b >= 0xC2 && b <= 0xDF) {
            need = 1;
            c = b & 0x1F;
        } else if (b >= 0xE0 && b <= 0xEF) {
            need = 2;
            c = b & 0x0F;
            low = b == 0xE0 ? 0xA0 : 0x80;
            high = b == 0xED ? 0x9F : 0xBF;
        } else if (b >= 0xF0 && b <= 0xF4) {
            need = 3;
            c = b & 0x07;
            low = b == 0xF0 ? 0x90 : 0x80;
            high = b == 0xF4 ? 0x8F : 0xBF;
        } else {
            target[out++] = gReplacementChar;
            ++i;
            continue;
        }
        std::size_t k = 1;
        for (; k <= need; ++k) {
            if (i + k >= length) {
                break;
            }
            unsigned char next = text[i + k];
            if (next < low || next > high) {
                break;
            }
            c = (c << 6) | (next & 0x3F);
            low = 0x80;
            high = 0xBF;
        }
        if (k <= need) {
            target[out++] = gReplacementChar;
            i += k;
            continue;
        }
        i += k;
        if (c >= 0x10000) {
            c -= 0x10000;
            target[out++] = static_cast<char16_t>(0xD800 + (c >> 10));
            target[out++] = static_cast<char16_t>(0xDC00 + (c & 0x3FF));
        } else {
            target[out++] = static_cast<char16_t>(c);
        }
    }
    return out;
}

// Encodes until the end or, in strict mode, until the first character that the code lacks. `consumed`
// tells how far it came. Returns the byte count; writes only when `target` is not null.
std::size_t Encode(char* target, char16_t const* text, std::size_t length, TavoCharCode code, bool lossy,
                   std::size_t& consumed) noexcept {
    std::size_t out = 0;
    auto put = [&](unsigned char b) {
        if (target) {
            target[out] = static_cast<char>(b);
        }
        ++out;
    };
    bool const utf8 = code == TavoCharCodeUTF8;
    std::size_t i = 0;
    while (i < length) {
        char32_t c = text[i];
        std::size_t units = 1;
        if (IsHighSurrogate(c) && i + 1 < length && IsLowSurrogate(text[i + 1])) {
            c = 0x10000 + ((c - 0xD800) << 10) + (text[i + 1] - 0xDC00);
            units = 2;
        }
        bool const lone = c >= 0xD800 && c <= 0xDFFF;
        if (utf8 && !lone) {
            if (c < 0x80) {
                put(static_cast<unsigned char>(c));
            } else if (c < 0x800) {
                put(static_cast<unsigned char>(0xC0 | (c >> 6)));
                put(static_cast<unsigned char>(0x80 | (c & 0x3F)));
            } else if (c < 0x10000) {
                put(static_cast<unsigned char>(0xE0 | (c >> 12)));
                put(static_cast<unsigned char>(0x80 | ((c >> 6) & 0x3F)));
                put(static_cast<unsigned char>(0x80 | (c & 0x3F)));
            } else {
                put(static_cast<unsigned char>(0xF0 | (c >> 18)));
                put(static_cast<unsigned char>(0x80 | ((c >> 12) & 0x3F)));
                put(static_cast<unsigned char>(0x80 | ((c >> 6) & 0x3F)));
                put(static_cast<unsigned char>(0x80 | (c & 0x3F)));
            }
        } else {
            int const byte = utf8 ? -1 : ToCp1252(c);
            if (byte >= 0) {
                put(static_cast<unsigned char>(byte));
            } else if (lossy) {
                put('?');
            } else {
                break;
            }
        }
        i += units;
    }
    consumed = i;
    return out;
}

} // namespace

std::size_t AnsiToUnicode(char16_t* target, char const* text, std::size_t length,
                          TavoCharCode code) noexcept {
    auto const* bytes = reinterpret_cast<unsigned char const*>(text);
    return code == TavoCharCodeUTF8 ? DecodeUtf8(target, bytes, length) : DecodeCp1252(target, bytes, length);
}

std::size_t UnicodeToAnsi(char* target, char16_t const* text, std::size_t length, TavoCharCode code,
                          bool lossy) noexcept {
    std::size_t consumed = 0;
    std::size_t const bytes = Encode(target, text, length, code, lossy, consumed);
    return consumed == length ? bytes : kNotConvertible;
}

void AppendAnsiToUnicode(std::u16string& out, std::string_view text, TavoCharCode code) {
    std::size_t const old = out.size();
    out.resize(old + text.size());
    out.resize(old + AnsiToUnicode(out.data() + old, text.data(), text.size(), code));
}

bool AppendUnicodeToAnsi(std::string& out, std::u16string_view text, TavoCharCode code, bool lossy) {
    std::size_t consumed = 0;
    std::size_t const bytes = Encode(nullptr, text.data(), text.size(), code, lossy, consumed);
    std::size_t const old = out.size();
    out.resize(old + bytes);
    Encode(out.data() + old, text.data(), consumed, code, lossy, consumed);
    return consumed == text.size();
}

} // namespace Tavo

int CHUnicode2ANSI(const unsigned short* source, int sourceLength, char* target, int targetSize,
                   TavoCharCode code, bool lossy, const Tavo::CHUnicode2ANSICache** /*cache*/) {
    std::size_t const length = !source            ? 0
                               : sourceLength < 0 ? Tavo::ucslen(source)
                                                  : std::size_t(sourceLength);
    auto const* text = reinterpret_cast<char16_t const*>(source);
    std::size_t const needed = Tavo::UnicodeToAnsi(nullptr, text, length, code, lossy);
    if (needed == Tavo::kNotConvertible || needed > std::size_t(INT_MAX)) {
        return -1;
    }
    if (!target) {
        return targetSize == 0 ? static_cast<int>(needed) : -2;
    }
    if (targetSize < 0 || needed > std::size_t(targetSize)) {
        return -2;
    }
    Tavo::UnicodeToAnsi(target, text, length, code, lossy);
    if (needed < std::size_t(targetSize)) {
        target[needed] = '\0';
    }
    return static_cast<int>(needed);
}

bool CHEqualCStrings(const char* left, const char* right, Tavo::CaseComparison comparison,
                     TavoCharCode code) {
    if (!left || !right) {
        return left == right;
    }
    if (comparison == Tavo::CaseSensitive) {
        return std::strcmp(left, right) == 0;
    }
    return Tavo::UniString(left, code).IsEqual(Tavo::UniString(right, code), Tavo::CaseInsensitive);
}
