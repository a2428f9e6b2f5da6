// Vesk::Location: an absolute location in the file system. Built from a path (relative paths resolve
// against the working directory) or from a "file:" URL; gives its path, its file URL and texts for
// messages. The empty location has an empty path, an empty URL and an empty display text.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "Vesk/Name.hpp"
#include "Vesk/VeskExport.hpp"

#include <string>
#include <string_view>

namespace Vesk {

class VESK_API Location {
public:
    Location() = default;
    // A path, or a "file:" URL; an empty text gives the empty location.
    explicit Location(Tavo::UniString const& pathOrURL);
    explicit Location(char const* path);

    // Sets the location from a URI text ("file:" URL) or a path; returns 0, or a nonzero status for a
    // URL of another scheme or host (the location is then empty). A "file:" URL may name no host or
    // "localhost"; its escapes are decoded as UTF-8 bytes, query and fragment dropped. Only a scheme
    // followed by "://" marks another URL: a path with a colon in it stays a path.
    int Set(Tavo::UniString const& uri);
    bool IsEmpty() const noexcept { return path.empty(); }
    void Clear() noexcept { path.clear(); }

    // Appends one segment to the path. Returns 0, or a nonzero status on an empty location or on a name
    // that is no single segment (empty, ".", "..", or holding "/").
    int AppendToLocal(Name const& name);
    // The last segment of the path.
    Name GetName() const;
    // The folder holding this location; the root and the empty location have none (empty result).
    Location GetParent() const;

    // The path as text.
    void ToPath(Tavo::UniString* text) const;
    // A "file:///" URL, usable as a parser system id: every byte of the UTF-8 path other than an RFC 3986
    // unreserved character or "/" is percent-encoded.
    void ToURL(Tavo::UniString* text) const;
    Tavo::UniString ToDisplayText() const;
    Tavo::UniString ToLogText() const;
    // The path in the file system's own encoding (UTF-8).
    std::string const& GetNativePath() const noexcept { return path; }

    bool operator==(Location const& other) const noexcept { return path == other.path; }

private:
    // Set from UTF-8 text.
    int SetNative(std::string_view text);

    std::string path; // absolute, lexically normal, UTF-8; no trailing "/" except for the root
};

} // namespace Vesk
