#include "Vesk/RelativeLocation.hpp"

#include "Vesk/internal/NativeText.hpp"
#include "Vesk/internal/PercentCoding.hpp"

#include <string>

namespace Vesk {

RelativeLocation::RelativeLocation(Name const& name) : segments{name} {}

void RelativeLocation::Append(Name const& name) {
    segments.push_back(name);
}

void RelativeLocation::Append(RelativeLocation const& other) {
    // Copy first: `other` may be this very object.
    std::vector<Name> const added = other.segments;
    segments.insert(segments.end(), added.begin(), added.end());
}

void RelativeLocation::ToURL(Tavo::UniString* text) const {
    if (text == nullptr) {
        return;
    }
    // Segments keep what a URL path segment allows as it is (":" of qualified names, for one) and
    // encode the rest, "/" and "#" included, so that each stays one readable segment.
    std::string url = "file://";
    for (std::size_t i = 0; i < segments.size(); ++i) {
        if (i > 0) {
            url += '/';
        }
        url += PercentCoding::Encode(NativeText::FromUniString(segments[i].GetText()),
                                     PercentCoding::Keep::Segment);
    }
    *text = NativeText::ToUniString(url);
}

} // namespace Vesk
