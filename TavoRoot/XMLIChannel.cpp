#include "TavoRoot/XMLIChannel.hpp"

#include "TavoRoot/Handle.hpp"
#include "TavoRoot/internal/HexDigits.hpp"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <vector>

namespace Tavo {

namespace {

// Decodes hex digit pairs (either case); false for an odd count or a character that is no hex digit.
bool DecodeHex(std::u16string_view text, std::vector<char>& bytes) {
    if (text.size() % 2 != 0) {
        return false;
    }
    bytes.clear();
    bytes.reserve(text.size() / 2);
    for (std::size_t i = 0; i < text.size(); i += 2) {
        int const value = HexDigits::PairValue(text.data() + i);
        if (value < 0) {
            return false;
        }
        bytes.push_back(static_cast<char>(value));
    }
    return true;
}

// Reads the CDATA text of the channel and decodes it.
int ReadHexBytes(XMLIChannel& channel, std::vector<char>& bytes) {
    UniString text;
    int const status = channel.ReadXMLCDATAString(text);
    if (status != NoError) {
        return status;
    }
    return DecodeHex(text.View(), bytes) ? NoError : GeneralError;
}

} // namespace

XMLIChannel::~XMLIChannel() = default;

int XMLIChannel::ReadXMLCDATAHexToBin(char* buffer, unsigned int size) {
    std::vector<char> bytes;
    int const status = ReadHexBytes(*this, bytes);
    if (status != NoError) {
        return status;
    }
    if (bytes.size() > size || (!buffer && !bytes.empty())) {
        return GeneralError;
    }
    std::copy(bytes.begin(), bytes.end(), buffer);
    return NoError;
}

int XMLIChannel::ReadXMLCDATAHexToBin(char** handle) {
    if (!handle) {
        return GeneralError;
    }
    std::vector<char> bytes;
    int const status = ReadHexBytes(*this, bytes);
    if (status != NoError) {
        return status;
    }
    if (SetHandleSize(handle, static_cast<unsigned int>(bytes.size())) != 0) {
        return GeneralError;
    }
    std::copy(bytes.begin(), bytes.end(), *handle);
    return NoError;
}

int XMLIChannel::ReadXMLCDATAString(char* buffer, unsigned int size) {
    // Room for the terminating zero at least.
    if (!buffer || size == 0) {
        return GeneralError;
    }
    UniString text;
    int const status = ReadXMLCDATAString(text);
    if (status != NoError) {
        return status;
    }
    UniString::CStrHolder const converted = text.ToCStr(0, UniString::kAll, TavoCharCodeDefault);
    std::size_t const length = std::min<std::size_t>(std::strlen(converted.Get()), size - 1);
    std::memcpy(buffer, converted.Get(), length);
    buffer[length] = '\0';
    return NoError;
}

} // namespace Tavo
