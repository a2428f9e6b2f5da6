#include "Vesk/internal/NativeText.hpp"

namespace Vesk::NativeText {

std::string FromUniString(Tavo::UniString const& text) {
    if (text.IsEmpty()) {
        return {};
    }
    auto const converted = text.ToCStr(0, Tavo::UniString::kAll, TavoCharCodeUTF8);
    return converted.Get() != nullptr ? std::string(converted.Get()) : std::string();
}

Tavo::UniString ToUniString(std::string_view utf8) {
    return Tavo::UniString(utf8.data(), static_cast<unsigned int>(utf8.size()), TavoCharCodeUTF8);
}

} // namespace Vesk::NativeText
