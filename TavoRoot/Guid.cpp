#include "TavoRoot/Guid.hpp"

#include "TavoRoot/XMLTypes.hpp"
#include "TavoRoot/internal/HexDigits.hpp"

#include <algorithm>
#include <random>
#include <string_view>

namespace Tavo {

namespace {

// Length of the text without braces, and the positions of its hyphens.
constexpr std::size_t gTextLength = 36;
constexpr std::size_t gHyphens[] = {8, 13, 18, 23};

bool IsHyphenPosition(std::size_t index) {
    return std::find(std::begin(gHyphens), std::end(gHyphens), index) != std::end(gHyphens);
}

} // namespace

Guid Guid::Generate() {
    // One generator per thread, seeded once from the system's entropy source.
    thread_local std::mt19937_64 generator = [] {
        std::random_device device;
        std::seed_seq seed{device(), device(), device(), device(), device(), device(), device(), device()};
        return std::mt19937_64(seed);
    }();
    std::array<std::uint8_t, 16> bytes{};
    for (std::size_t i = 0; i < bytes.size(); i += 8) {
        std::uint64_t random = generator();
        for (std::size_t j = 0; j < 8; ++j, random >>= 8) {
            bytes[i + j] = static_cast<std::uint8_t>(random);
        }
    }
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40); // version 4
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80); // RFC 4122 variant
    return Guid(bytes);
}

UniString Guid::ToUniString() const {
    std::u16string text;
    text.reserve(gTextLength);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (IsHyphenPosition(text.size())) {
            text += u'-';
        }
        HexDigits::AppendByte(text, bytes[i]);
    }
    return UniString(std::u16string_view(text));
}

int Guid::ConvertFromString(UniString const& text) {
    std::u16string_view digits = text.View();
    if (digits.size() == gTextLength + 2 && digits.front() == u'{' && digits.back() == u'}') {
        digits = digits.substr(1, gTextLength);
    }
    if (digits.size() != gTextLength) {
        return GeneralError;
    }
    std::array<std::uint8_t, 16> parsed{};
    std::size_t byte = 0;
    for (std::size_t i = 0; i < gTextLength;) {
        if (IsHyphenPosition(i)) {
            if (digits[i] != u'-') {
                return GeneralError;
            }
            ++i;
            continue;
        }
        int const value = HexDigits::PairValue(digits.data() + i);
        if (value < 0) {
            return GeneralError;
        }
        parsed[byte++] = static_cast<std::uint8_t>(value);
        i += 2;
    }
    bytes = parsed;
    return NoError;
}

bool Guid::IsNull() const noexcept {
    return std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t b) { return b == 0; });
}

} // namespace Tavo
