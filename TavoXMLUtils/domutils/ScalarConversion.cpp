#include "TavoXMLUtils/domutils/ScalarConversion.hpp"

#include "TavoRoot/CharCode.hpp"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

namespace TavoXMLUtils {

namespace {

constexpr char gTooManyData[] = "Too many data";
constexpr char gIntegerOverflow[] = "Integer Overflow";
constexpr char gIntegerUnderflow[] = "Integer Underflow";
constexpr char gFloatError[] = "Floating point number error";
constexpr char gStringValueError[] = "String value error";
constexpr char gTranscodeFailed[] = "Failed to transcode string.";
constexpr char gMemoryError[] = "Memory error";

constexpr std::uint64_t gUInt32Max = 4294967295u;
// From this value on, one more digit overflows whatever it is.
constexpr std::uint64_t gOverflowBeforeDigit = 429496730u;
constexpr std::uint64_t gSignedMagnitudeLimit = 2147483648u;

[[noreturn]] void Fail(const char* message) {
    throw ConvException(message, static_cast<const NodeLocationInfo*>(nullptr));
}

bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

bool IsQuote(unsigned int c) noexcept {
    return c == '"' || c == '\'' || c == '`';
}

template <class Char>
bool IsTabSpace(Char c) noexcept {
    return c == 9 || c == 32;
}

template <class Char>
bool IsWhiteSpace(Char c) noexcept {
    return c == 9 || c == 10 || c == 13 || c == 32;
}

template <class Char, class Predicate>
void Trim(Char*& text, Predicate inSet) noexcept {
    if (text == nullptr) {
        return;
    }
    while (*text != 0 && inSet(*text)) {
        ++text;
    }
    Char* end = text;
    while (*end != 0) {
        ++end;
    }
    while (end != text && inSet(end[-1])) {
        --end;
    }
    *end = 0;
}

template <class Char>
Char* Unquote(Char* text, std::size_t length) {
    if (length < 2 || !IsQuote(static_cast<unsigned int>(text[0])) || text[length - 1] != text[0]) {
        Fail(gStringValueError);
    }
    text[length - 1] = 0;
    return text + 1;
}

} // namespace

char* UnicodeToString(Tavo::UniString text, bool lossy) {
    // CHUnicode2ANSI counts in int; a longer text cannot be converted through it.
    if (text.GetLength() > static_cast<unsigned int>(INT_MAX)) {
        Fail(gTranscodeFailed);
    }
    const auto* const source = text.GetUStr();
    const int sourceLength = static_cast<int>(text.GetLength());
    const int size = CHUnicode2ANSI(source, sourceLength, nullptr, 0, TavoCharCodeDefault, lossy, nullptr);
    if (size < 0) {
        Fail(gTranscodeFailed);
    }
    std::unique_ptr<char[]> result(new (std::nothrow) char[static_cast<std::size_t>(size) + 1]);
    if (!result) {
        Fail(gMemoryError);
    }
    // The empty text needs no second conversion (which reports 0 bytes): it is the empty string.
    if (size > 0 && CHUnicode2ANSI(source, sourceLength, result.get(), size + 1, TavoCharCodeDefault, lossy,
                                   nullptr) <= 0) {
        Fail(gTranscodeFailed);
    }
    result[static_cast<std::size_t>(size)] = '\0';
    return result.release();
}

void CutTabSpace(char*& text) {
    Trim(text, IsTabSpace<char>);
}

void CutWhSpace(char*& text) {
    Trim(text, IsWhiteSpace<char>);
}

void CutWhSpaceU(unsigned short*& text) {
    Trim(text, IsWhiteSpace<unsigned short>);
}

std::uint32_t GetIntNum(const char* text) {
    // A null text is outside the contract; it is treated as the empty one.
    if (text == nullptr || *text == '\0') {
        throw ConvException();
    }
    if (!IsDigit(*text)) {
        Fail(gTooManyData);
    }
    std::uint64_t value = 0;
    for (; IsDigit(*text); ++text) {
        const auto digit = static_cast<std::uint64_t>(*text - '0');
        if (value >= gOverflowBeforeDigit || value * 10 + digit > gUInt32Max) {
            Fail(gIntegerOverflow);
        }
        value = value * 10 + digit;
    }
    if (*text != '\0') {
        Fail(gTooManyData);
    }
    return static_cast<std::uint32_t>(value);
}

std::int32_t GetSignedLong(const char* text) {
    const bool negative = text != nullptr && *text == '-';
    const bool sign = negative || (text != nullptr && *text == '+');
    const std::uint64_t magnitude = GetIntNum(sign ? text + 1 : text);
    if (negative) {
        if (magnitude > gSignedMagnitudeLimit) {
            Fail(gIntegerUnderflow);
        }
        return static_cast<std::int32_t>(-static_cast<std::int64_t>(magnitude));
    }
    if (magnitude >= gSignedMagnitudeLimit) {
        Fail(gIntegerOverflow);
    }
    return static_cast<std::int32_t>(magnitude);
}

std::uint32_t GetULong(const char* text) {
    if (text != nullptr && *text == '+') {
        ++text;
    }
    return GetIntNum(text);
}

double GetDouble(const char* text) {
    if (text == nullptr) {
        Fail(gFloatError);
    }
    char* end = nullptr;
    errno = 0;
    const double value = std::strtod(text, &end);
    const int error = errno;
    if (end == text) {
        Fail(gFloatError);
    }
    // Exactly zero is never a range error: an underflow rounded to zero is taken as 0. NaN is not zero.
    if (!(value == 0.0) && error == ERANGE) {
        Fail(gFloatError);
    }
    if (*end != '\0') {
        Fail(gTooManyData);
    }
    return value;
}

char* GetStringValue(char* text) {
    if (text == nullptr) {
        Fail(gStringValueError);
    }
    return Unquote(text, std::strlen(text));
}

unsigned short* GetStringValueU(unsigned short* text) {
    if (text == nullptr) {
        Fail(gStringValueError);
    }
    return Unquote(text, Tavo::ucslen(text));
}

} // namespace TavoXMLUtils
