// Conversions between Tavo::UniString and the file system's native text, UTF-8. Internal to Vesk.
#pragma once

#include "TavoRoot/UniString.hpp"

#include <string>
#include <string_view>

namespace Vesk::NativeText {

// The UTF-8 form of the text; a character that UTF-8 cannot carry (a lone surrogate) becomes '?'.
std::string FromUniString(Tavo::UniString const& text);
Tavo::UniString ToUniString(std::string_view utf8);

} // namespace Vesk::NativeText
