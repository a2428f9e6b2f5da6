#include "TavoXMLUtils/domutils/internal/DoubleText.hpp"

#include "TavoRoot/CharCode.hpp"

#include <cstdio>
#include <cstring>

namespace TavoXML::detail {

DoubleText::DoubleText(double value) noexcept {
    std::snprintf(text, sizeof text, "%.12g", value);
    if (char* const exponent = std::strchr(text, 'e')) {
        char* digits = exponent + 1;
        if (*digits == '+' || *digits == '-') {
            ++digits;
        }
        std::size_t const count = std::strlen(digits);
        if (count < 3) {
            std::memmove(digits + 1, digits, count + 1); // the terminator moves along
            *digits = '0';
        }
    }
    if (CHEqualCStrings(text, "-0", Tavo::CaseSensitive, TavoCharCodeDefault)) {
        std::strcpy(text, "0");
    }
}

} // namespace TavoXML::detail
