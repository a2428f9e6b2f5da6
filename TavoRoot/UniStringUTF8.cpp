// ToUTF8String: a UniString as UTF-8 bytes in a std::string.
#include "TavoRoot/UniString.hpp"

namespace Tavo {

std::string ToUTF8String(UniString const& text) {
    std::string bytes;
    bytes.reserve(text.GetLength());
    AppendUnicodeToAnsi(bytes, text.View(), TavoCharCodeUTF8, true);
    return bytes;
}

} // namespace Tavo
