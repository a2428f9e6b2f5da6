// Vesk::RelativeLocation: a path relative to no particular folder, as a list of name segments. Its URL
// form is "file://" followed by the segments, each percent-encoded, joined by "/".
#pragma once

#include "TavoRoot/UniString.hpp"
#include "Vesk/Name.hpp"
#include "Vesk/VeskExport.hpp"

#include <vector>

namespace Vesk {

class VESK_API RelativeLocation {
public:
    RelativeLocation() = default;
    explicit RelativeLocation(Name const& name);

    void Append(Name const& name);
    void Append(RelativeLocation const& other);
    std::vector<Name> const& GetSegments() const noexcept { return segments; }
    // Writes "file://" and the segments joined by "/".
    void ToURL(Tavo::UniString* text) const;

private:
    std::vector<Name> segments;
};

} // namespace Vesk
