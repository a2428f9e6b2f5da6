// Vesk::Name: the name of one file or folder (a single path segment).
#pragma once

#include "TavoRoot/UniString.hpp"
#include "Vesk/VeskExport.hpp"

namespace Vesk {

class VESK_API Name {
public:
    Name() = default;
    explicit Name(Tavo::UniString text) noexcept : text(std::move(text)) {}
    explicit Name(char const* text) : text(text, TavoCharCodeUTF8) {}

    // Appends "." and the extension ("xml" gives "name.xml").
    void AppendExtension(char const* extension);
    Tavo::UniString const& GetText() const noexcept { return text; }
    void SetText(Tavo::UniString value) noexcept { text = std::move(value); }
    bool IsEmpty() const noexcept { return text.IsEmpty(); }
    bool operator==(Name const& other) const noexcept { return text == other.text; }

private:
    Tavo::UniString text;
};

} // namespace Vesk
