// Tavo::PlatformSign: which platform wrote a persisted stream. The library stores it, never reads it.
#pragma once

namespace Tavo {

enum PlatformSign : int {
    PlatformUnknown = 0,
    PlatformLinux = 1,
    PlatformWindows = 2,
    PlatformMac = 3,
};

} // namespace Tavo
