// Tavo::UniString::PrintfFwd: printf-style formatting into 16-bit text. A format is read as literal runs
// and directives; each directive is parsed once into a Directive and handed to the appender of its
// conversion family. Numbers go through snprintf with the directive rebuilt for it, texts are converted
// and padded here.
#include "TavoRoot/UniString.hpp"

#include "TavoRoot/internal/UniStringBuffer.hpp"

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string>
#include <string_view>

namespace Tavo {

namespace {

using detail::AsChar16;
using detail::Length16;

// Width and precision are capped so that a wild value cannot exhaust memory.
constexpr int gMaxPad = 1 << 24;

// One directive: %[flags][width][.precision][length]conversion. '*' values are already taken from the
// arguments; a negative '*' width has become the '-' flag.
struct Directive {
    char const* begin = nullptr; // the '%'
    char const* end = nullptr;   // behind the conversion character
    std::string flags;
    int width = -1;
    int precision = -1;
    std::string length;
    char conversion = 0;

    bool LeftAligned() const { return flags.find('-') != std::string::npos; }
    // How many characters a text conversion takes: the precision, or all.
    std::size_t Limit() const { return precision >= 0 ? std::size_t(precision) : std::size_t(-1); }
    // The directive for snprintf, with numbers for '*' and the given length and conversion.
    std::string ForPrintf(std::string_view lengthAndConversion) const {
        std::string text(1, '%'); // not "%" + flags, which GCC 12 at -O3 warns of wrongly (-Wrestrict)
        text += flags;
        if (width >= 0) {
            text += std::to_string(width);
        }
        if (precision >= 0) {
            text += '.';
            text += std::to_string(precision);
        }
        return text.append(lengthAndConversion);
    }
    std::string ForPrintf() const { return ForPrintf(length + conversion); }
};

using Arguments = std::va_list*;

// ---- directive parsing

int ReadNumber(char const*& p) {
    int value = 0;
    for (; *p >= '0' && *p <= '9'; ++p) {
        value = std::min(value * 10 + (*p - '0'), gMaxPad);
    }
    return value;
}

void ReadWidth(char const*& p, Directive& directive, Arguments args) {
    if (*p != '*') {
        directive.width = *p >= '0' && *p <= '9' ? ReadNumber(p) : -1;
        return;
    }
    ++p;
    int width = va_arg(*args, int);
    if (width < 0) {
        directive.flags += '-';
        width = width == INT_MIN ? gMaxPad : -width;
    }
    directive.width = std::min(width, gMaxPad);
}

void ReadPrecision(char const*& p, Directive& directive, Arguments args) {
    if (*p != '.') {
        return;
    }
    ++p;
    if (*p != '*') {
        directive.precision = ReadNumber(p);
        return;
    }
    ++p;
    directive.precision = std::min(std::max(va_arg(*args, int), -1), gMaxPad);
}

// Parses the directive that starts at `percent`. False when the format ends inside it; `end` then
// stands on the terminator.
bool ParseDirective(char const* percent, Directive& directive, Arguments args) {
    char const* p = percent + 1;
    directive.begin = percent;
    while (*p && std::strchr("-+ #0", *p)) {
        directive.flags += *p++;
    }
    ReadWidth(p, directive, args);
    ReadPrecision(p, directive, args);
    char const* const lengthStart = p;
    while (*p && std::strchr("hlzjtL", *p)) {
        ++p;
    }
    directive.length.assign(lengthStart, p);
    directive.conversion = *p;
    directive.end = *p ? p + 1 : p;
    return *p != '\0';
}

// ---- appenders, one per conversion family

void AppendAnsi(std::u16string& out, std::string_view text) {
    AppendAnsiToUnicode(out, text, TavoCharCodeDefault);
}

void AppendPadded(std::u16string& out, std::u16string_view text, Directive const& directive) {
    int const width = directive.width;
    std::size_t const pad = width > 0 && std::size_t(width) > text.size() ? width - text.size() : 0;
    if (!directive.LeftAligned()) {
        out.append(pad, u' ');
    }
    out.append(text);
    if (directive.LeftAligned()) {
        out.append(pad, u' ');
    }
}

// A number through snprintf with the rebuilt directive.
template <class T>
void AppendNumber(std::u16string& out, std::string const& format, T value) {
    char local[64];
    int const n = std::snprintf(local, sizeof local, format.c_str(), value);
    if (n < 0) {
        return;
    }
    if (std::size_t(n) < sizeof local) {
        AppendAnsi(out, std::string_view(local, std::size_t(n)));
        return;
    }
    std::string big(std::size_t(n) + 1, '\0');
    std::snprintf(big.data(), big.size(), format.c_str(), value);
    AppendAnsi(out, std::string_view(big.data(), std::size_t(n)));
}

// The argument type of an integer follows the length modifier; hh and h arrive as int.
template <class Int, class Long, class LongLong, class Size>
void AppendInteger(std::u16string& out, Directive const& directive, Arguments args) {
    std::string const format = directive.ForPrintf();
    std::string const& length = directive.length;
    if (length == "l") {
        AppendNumber(out, format, va_arg(*args, Long));
    } else if (length == "ll" || length == "j") {
        AppendNumber(out, format, va_arg(*args, LongLong));
    } else if (length == "z" || length == "t") {
        AppendNumber(out, format, va_arg(*args, Size));
    } else {
        AppendNumber(out, format, va_arg(*args, Int));
    }
}

void AppendSigned(std::u16string& out, Directive const& directive, Arguments args) {
    AppendInteger<int, long, long long, std::ptrdiff_t>(out, directive, args);
}

void AppendUnsigned(std::u16string& out, Directive const& directive, Arguments args) {
    AppendInteger<unsigned int, unsigned long, unsigned long long, std::size_t>(out, directive, args);
}

void AppendFloating(std::u16string& out, Directive const& directive, Arguments args) {
    if (directive.length == "L") {
        AppendNumber(out, directive.ForPrintf(), va_arg(*args, long double));
    } else {
        AppendNumber(out, directive.ForPrintf(), va_arg(*args, double));
    }
}

// The pointer's hexadecimal digits alone, in lower case: formats write their own "0x" where they want
// one. Flags and width apply as to %x.
void AppendPointer(std::u16string& out, Directive const& directive, Arguments args) {
    auto const value = static_cast<std::uintmax_t>(reinterpret_cast<std::uintptr_t>(va_arg(*args, void*)));
    AppendNumber(out, directive.ForPrintf("jx"), value);
}

// A code point of a wchar_t text: surrogate pairs above the BMP, U+FFFD for what is no character.
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

void AppendCharacter(std::u16string& out, Directive const& directive, Arguments args) {
    std::u16string one;
    if (directive.length == "l") {
        AppendCodePoint(one, static_cast<char32_t>(va_arg(*args, std::wint_t)));
    } else {
        char const c = static_cast<char>(va_arg(*args, int));
        AppendAnsi(one, std::string_view(&c, 1));
    }
    AppendPadded(out, one, directive);
}

// %s an 8-bit text in the default code, %ls a zero-terminated 16-bit text.
void AppendText(std::u16string& out, Directive const& directive, Arguments args) {
    std::size_t const limit = directive.Limit();
    if (directive.length == "l") {
        char16_t const* s = AsChar16(va_arg(*args, unsigned short const*));
        AppendPadded(out, s ? std::u16string_view(s, std::min(Length16(s), limit)) : u"(null)", directive);
        return;
    }
    char const* s = va_arg(*args, char const*);
    std::u16string text;
    AppendAnsi(text, s ? std::string_view(s, strnlen(s, limit)) : "(null)");
    AppendPadded(out, text, directive);
}

// %S a wchar_t text (UTF-32 here).
void AppendWideText(std::u16string& out, Directive const& directive, Arguments args) {
    wchar_t const* s = va_arg(*args, wchar_t const*);
    std::u16string text(s ? u"" : u"(null)");
    for (std::size_t i = 0; s && i < directive.Limit() && s[i]; ++i) {
        AppendCodePoint(text, static_cast<char32_t>(s[i]));
    }
    AppendPadded(out, text, directive);
}

// %T a Tavo::UniString passed through ToPrintf().
void AppendUniString(std::u16string& out, Directive const& directive, Arguments args) {
    UniString const* s = va_arg(*args, UniString const*);
    AppendPadded(out, s ? s->View().substr(0, directive.Limit()) : u"(null)", directive);
}

// Writing through a caller's pointer is not supported; the argument is skipped.
void SkipCount(std::u16string&, Directive const&, Arguments args) {
    static_cast<void>(va_arg(*args, void*));
}

// An unknown conversion is written as it stands.
void AppendUnknown(std::u16string& out, Directive const& directive, Arguments) {
    AppendAnsi(out, std::string_view(directive.begin, std::size_t(directive.end - directive.begin)));
}

using Appender = void (*)(std::u16string&, Directive const&, Arguments);

Appender AppenderFor(char conversion) {
    switch (conversion) {
        case 'd':
        case 'i':
            return AppendSigned;
        case 'u':
        case 'x':
        case 'X':
        case 'o':
            return AppendUnsigned;
        case 'p':
            return AppendPointer;
        case 'c':
            return AppendCharacter;
        case 's':
            return AppendText;
        case 'S':
            return AppendWideText;
        case 'T':
            return AppendUniString;
        case 'n':
            return SkipCount;
        default:
            return std::strchr("fFeEgGaA", conversion) ? AppendFloating : AppendUnknown;
    }
}

// Appends the literal run at `p` and the directive behind it; returns where the format goes on, or
// null at its end.
char const* FormatStep(std::u16string& out, char const* p, Arguments args) {
    char const* const percent = std::strchr(p, '%');
    AppendAnsi(out, percent ? std::string_view(p, std::size_t(percent - p)) : std::string_view(p));
    if (!percent) {
        return nullptr;
    }
    if (percent[1] == '%') {
        out.push_back(u'%');
        return percent + 2;
    }
    Directive directive;
    if (!ParseDirective(percent, directive, args)) {
        AppendUnknown(out, directive, args); // a directive cut off by the end of the format
        return nullptr;
    }
    AppenderFor(directive.conversion)(out, directive, args);
    return directive.end;
}

} // namespace

UniString UniString::PrintfFwd(char const* format, ...) {
    if (!format) {
        return UniString();
    }
    std::u16string text;
    text.reserve(std::strlen(format) + 32);
    std::va_list args;
    va_start(args, format);
    try {
        for (char const* p = format; p && *p;) {
            p = FormatStep(text, p, &args);
        }
    } catch (...) {
        va_end(args);
        throw;
    }
    va_end(args);
    return UniString(std::u16string_view(text));
}

} // namespace Tavo
