// libFuzzer target for Base64Converter: any bytes must come back whole from Decode(Encode(x)), and
// Decode of any text, read from the same bytes as 16-bit units, must end in bytes or an empty array,
// never in a crash or a leak.
#include "TavoXMLUtils/support/Base64Converter.hpp"

#include <xercesc/util/PlatformUtils.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    xercesc::XMLPlatformUtils::Initialize();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size > std::numeric_limits<unsigned int>::max() / 2) {
        return 0;
    }
    char const* const bytes = reinterpret_cast<char const*>(data);
    Tavo::UniString const text = Base64Converter::Encode(bytes, static_cast<unsigned int>(size));
    if ((size == 0) != text.IsEmpty()) {
        std::abort();
    }
    Tavo::Array<char> const back = Base64Converter::Decode(text);
    if (back.GetSize() != size || (size != 0 && std::memcmp(back.begin(), bytes, size) != 0)) {
        std::abort();
    }

    // The same bytes as text: once unit by byte (mostly Base64 letters in the seeds), once as UTF-16.
    Tavo::UniString const asLatin(bytes, static_cast<unsigned int>(size), TavoCharCodeDefault);
    Tavo::Array<char> const fromLatin = Base64Converter::Decode(asLatin);
    std::u16string units(size / 2, u'\0'); // copied: the input need not be aligned for 16-bit reads
    std::memcpy(units.data(), data, units.size() * sizeof(char16_t));
    Tavo::UniString const asUnits(units.data(), static_cast<unsigned int>(units.size()));
    Tavo::Array<char> const fromUnits = Base64Converter::Decode(asUnits);
    // Three bytes at most for every four letters of the text.
    if (fromLatin.GetSize() > size || fromUnits.GetSize() > size / 2) {
        std::abort();
    }
    return 0;
}
