// TavoXML::NameText: the 16-bit form of an element or attribute name given in the default character
// code. Names are short and almost always ASCII, so they are widened into a buffer on the stack; a long
// or non-ASCII name goes through the foundation's conversion. Library-internal.
#pragma once

#include "TavoRoot/CharCode.hpp"
#include "TavoRoot/UniString.hpp"

#include <cstddef>

namespace TavoXML {

class NameText {
public:
    // A null name gives the empty text.
    explicit NameText(char const* name) {
        if (name == nullptr) {
            shortText[0] = 0;
            return;
        }
        std::size_t i = 0;
        for (; i < kShortCapacity; ++i) {
            unsigned char const c = static_cast<unsigned char>(name[i]);
            if (c >= 0x80) {
                break;
            }
            shortText[i] = c;
            if (c == 0) {
                return;
            }
        }
        longText = Tavo::UniString(name, TavoCharCodeDefault);
        text = longText.GetU16Str();
    }
    NameText(NameText const&) = delete;
    NameText& operator=(NameText const&) = delete;

    char16_t const* Get() const noexcept { return text; }
    bool ContainsBlank() const noexcept {
        for (char16_t const* c = text; *c != 0; ++c) {
            if (*c == u' ') {
                return true;
            }
        }
        return false;
    }

private:
    static constexpr std::size_t kShortCapacity = 64;
    char16_t shortText[kShortCapacity];
    Tavo::UniString longText;
    char16_t const* text = shortText;
};

} // namespace TavoXML
