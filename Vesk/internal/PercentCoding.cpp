#include "Vesk/internal/PercentCoding.hpp"

namespace Vesk::PercentCoding {

namespace {

constexpr char gHexDigits[] = "0123456789ABCDEF";

bool IsUnreserved(unsigned char c) noexcept {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == '_' || c == '~';
}

bool IsKept(unsigned char c, Keep keep) noexcept {
    if (IsUnreserved(c)) {
        return true;
    }
    if (keep == Keep::PathStrict) {
        return c == '/';
    }
    return std::string_view("!$&'()*+,;=:@").find(static_cast<char>(c)) != std::string_view::npos;
}

int HexValue(char c) noexcept {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return -1;
}

} // namespace

std::string Encode(std::string_view bytes, Keep keep) {
    std::string result;
    result.reserve(bytes.size());
    for (char c : bytes) {
        auto const byte = static_cast<unsigned char>(c);
        if (IsKept(byte, keep)) {
            result += c;
        } else {
            result += '%';
            result += gHexDigits[byte >> 4];
            result += gHexDigits[byte & 0x0F];
        }
    }
    return result;
}

std::string Decode(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size() && HexValue(text[i + 1]) >= 0 &&
            HexValue(text[i + 2]) >= 0) {
            result += static_cast<char>(HexValue(text[i + 1]) * 16 + HexValue(text[i + 2]));
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

} // namespace Vesk::PercentCoding
