#include "Vesk/Name.hpp"

namespace Vesk {

void Name::AppendExtension(char const* extension) {
    // No extension adds nothing, not even the dot; a leading dot of the extension is not doubled.
    if (extension == nullptr || *extension == '\0') {
        return;
    }
    if (*extension != '.') {
        text.Append(Tavo::UniChar('.'));
    }
    text.Append(extension, TavoCharCodeUTF8);
}

} // namespace Vesk
