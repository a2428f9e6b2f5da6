#include "Vesk/Location.hpp"

#include "Vesk/VeskStatus.hpp"
#include "Vesk/internal/NativeText.hpp"
#include "Vesk/internal/PercentCoding.hpp"

#include <filesystem>
#include <system_error>

namespace Vesk {

namespace {

constexpr std::string_view gFileScheme = "file:";
constexpr std::string_view gFileURLPrefix = "file://";
constexpr std::string_view gLocalHost = "localhost";

char LowerASCII(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualNoCase(std::string_view left, std::string_view right) noexcept {
    if (left.size() != right.size()) {
        return false;
    }
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (LowerASCII(left[i]) != LowerASCII(right[i])) {
            return false;
        }
    }
    return true;
}

bool IsAlpha(char c) noexcept {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// True for a text that starts with a URL scheme of two or more characters and "://". Only such a text
// counts as a URL of a foreign scheme: a file name with a colon in it ("notes:1.xml") stays a path, and
// a single letter is left alone as it could be a drive.
bool HasAuthorityURLScheme(std::string_view text) noexcept {
    std::size_t length = 0;
    while (length < text.size() &&
           (IsAlpha(text[length]) ||
            (length > 0 && ((text[length] >= '0' && text[length] <= '9') || text[length] == '+' ||
                            text[length] == '-' || text[length] == '.')))) {
        ++length;
    }
    return length >= 2 && text.substr(length, 3) == "://";
}

// The decoded path of a "file:" URL; false for a URL that names a host other than this one. Query and
// fragment are not part of the path and are dropped.
bool PathOfFileURL(std::string_view url, std::string* path) {
    std::string_view rest = url.substr(gFileScheme.size());
    rest = rest.substr(0, rest.find_first_of("?#"));
    if (rest.substr(0, 2) == "//") {
        rest.remove_prefix(2);
        std::size_t const slash = rest.find('/');
        std::string_view const host = rest.substr(0, slash);
        if (!host.empty() && !EqualNoCase(host, gLocalHost)) {
            return false;
        }
        rest = slash == std::string_view::npos ? std::string_view("/") : rest.substr(slash);
    }
    *path = PercentCoding::Decode(rest);
    return true;
}

// An absolute, lexically normal path without a trailing separator. A relative path resolves against the
// working directory; should that be unknown (it was removed), the path stays relative but normal.
std::string NormalPath(std::string_view text) {
    std::filesystem::path path(text);
    if (path.is_relative()) {
        std::error_code error;
        std::filesystem::path const workingDirectory = std::filesystem::current_path(error);
        if (!error) {
            path = workingDirectory / path;
        }
    }
    std::string result = path.lexically_normal().string();
    while (result.size() > 1 && result.back() == '/') {
        result.pop_back();
    }
    return result;
}

} // namespace

Location::Location(Tavo::UniString const& pathOrURL) {
    Set(pathOrURL);
}

Location::Location(char const* path) {
    if (path != nullptr) {
        SetNative(path);
    }
}

int Location::Set(Tavo::UniString const& uri) {
    return SetNative(NativeText::FromUniString(uri));
}

int Location::SetNative(std::string_view text) {
    path.clear();
    std::string decoded;
    if (text.size() >= gFileScheme.size() && EqualNoCase(text.substr(0, gFileScheme.size()), gFileScheme)) {
        if (!PathOfFileURL(text, &decoded)) {
            return static_cast<int>(StatusBadLocation);
        }
        text = decoded;
    } else if (HasAuthorityURLScheme(text)) {
        return static_cast<int>(StatusBadLocation);
    }
    if (text.find('\0') != std::string_view::npos) {
        return static_cast<int>(StatusBadLocation);
    }
    if (!text.empty()) {
        path = NormalPath(text);
    }
    return StatusOK;
}

int Location::AppendToLocal(Name const& name) {
    if (path.empty()) {
        return static_cast<int>(StatusBadLocation);
    }
    std::string const segment = NativeText::FromUniString(name.GetText());
    if (segment.empty() || segment == "." || segment == ".." ||
        segment.find_first_of(std::string_view("/\0", 2)) != std::string::npos) {
        return static_cast<int>(StatusBadArgument);
    }
    if (path.back() != '/') {
        path += '/';
    }
    path += segment;
    return StatusOK;
}

Name Location::GetName() const {
    std::size_t const slash = path.rfind('/');
    return Name(NativeText::ToUniString(slash == std::string::npos ? path : path.substr(slash + 1)));
}

Location Location::GetParent() const {
    // The root has no parent: the empty location ends a walk upwards.
    Location parent;
    std::size_t const slash = path.rfind('/');
    if (path.size() > 1 && slash != std::string::npos) {
        parent.path = slash == 0 ? std::string("/") : path.substr(0, slash);
    }
    return parent;
}

void Location::ToPath(Tavo::UniString* text) const {
    if (text != nullptr) {
        *text = NativeText::ToUniString(path);
    }
}

void Location::ToURL(Tavo::UniString* text) const {
    if (text == nullptr) {
        return;
    }
    if (path.empty()) {
        text->Clear();
        return;
    }
    std::string url;
    if (path.front() == '/') {
        url = gFileURLPrefix; // the path's own "/" completes "file:///"
    }
    url += PercentCoding::Encode(path, PercentCoding::Keep::PathStrict);
    *text = NativeText::ToUniString(url);
}

Tavo::UniString Location::ToDisplayText() const {
    return NativeText::ToUniString(path);
}

Tavo::UniString Location::ToLogText() const {
    return NativeText::ToUniString(path);
}

} // namespace Vesk
