// Tavo::Guid: a 128-bit identifier. Its text is 8-4-4-4-12 upper-case hex digits; ConvertFromString
// accepts any case, with or without braces.
#pragma once

#include "TavoRoot/TavoRootExport.hpp"
#include "TavoRoot/UniString.hpp"

#include <array>
#include <cstdint>

namespace Tavo {

class TAVOROOT_API Guid {
public:
    constexpr Guid() noexcept = default;
    explicit constexpr Guid(std::array<std::uint8_t, 16> const& bytes) noexcept : bytes(bytes) {}

    // A new random (version 4) Guid.
    static Guid Generate();

    UniString ToUniString() const;
    // 0 on success; a nonzero status for bad text, which leaves the value unchanged.
    int ConvertFromString(UniString const& text);

    bool IsNull() const noexcept;
    std::array<std::uint8_t, 16> const& GetBytes() const noexcept { return bytes; }
    constexpr bool operator==(Guid const&) const noexcept = default;

private:
    std::array<std::uint8_t, 16> bytes{};
};

} // namespace Tavo
