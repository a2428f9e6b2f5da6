// Uses the installed library through its one public header: converts a number to text and back.
#include "TavoXMLUtils/TavoXMLUtils.hpp"

#include <cstdio>

int main() {
    Tavo::UniString text = Tavo::ValueToUniString(2.5);
    double value = 0;
    if (!Tavo::UniStringToValue(text, value) || value != 2.5) {
        std::puts("round trip failed");
        return 1;
    }
    std::printf("%s\n", text.ToCStr().Get());
    return 0;
}
