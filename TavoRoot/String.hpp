// Tavo::String: an 8-bit string in the default character code, used for field names.
#pragma once

#include "TavoRoot/TavoRootExport.hpp"

#include <string>
#include <string_view>

namespace Tavo {

class TAVOROOT_API String {
public:
    String() = default;
    // A null text builds the empty string.
    String(char const* text) : text(text ? text : "") {}
    explicit String(std::string value) noexcept : text(std::move(value)) {}
    String& operator=(char const* value) {
        text = value ? value : "";
        return *this;
    }
    char const* ToCStr() const noexcept { return text.c_str(); }
    std::string const& Str() const noexcept { return text; }
    std::size_t GetLength() const noexcept { return text.size(); }
    bool IsEmpty() const noexcept { return text.empty(); }
    bool operator==(String const& other) const noexcept = default;
    bool operator==(char const* other) const noexcept { return other ? text == other : text.empty(); }

private:
    std::string text;
};

} // namespace Tavo
