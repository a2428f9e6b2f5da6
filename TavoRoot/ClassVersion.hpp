// Tavo::ClassVersion: main and sub version of a persisted class, two 8-bit fields in one 16-bit unit.
#pragma once

namespace Tavo {

struct ClassVersion {
    unsigned char mainVersion = 0;
    unsigned char subVersion = 0;

    constexpr ClassVersion() noexcept = default;
    constexpr ClassVersion(unsigned char mainVersion, unsigned char subVersion) noexcept
        : mainVersion(mainVersion), subVersion(subVersion) {}
    constexpr bool operator==(ClassVersion const&) const noexcept = default;
};

static_assert(sizeof(ClassVersion) == 2, "a ClassVersion is copied as one 16-bit unit");

} // namespace Tavo
