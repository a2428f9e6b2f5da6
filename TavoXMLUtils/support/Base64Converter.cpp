#include "TavoXMLUtils/support/Base64Converter.hpp"

#include "TavoXMLUtils/support/internal/ReservedArray.hpp"

#include <xercesc/util/Base64.hpp>

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

XERCES_CPP_NAMESPACE_USE

namespace {

// Bytes are widened through a block of this many units, so that the string grows in few appends.
constexpr unsigned int gWidenBlock = 4096;

// Without a memory manager, the coder of Xerces-C++ 3.2 gives its blocks from plain operator new (not
// new[]), so that is how they go back; array delete would not match the allocation.
struct XercesBlockDelete {
    void operator()(XMLByte* block) const noexcept { ::operator delete(block); }
};
using XercesBytes = std::unique_ptr<XMLByte, XercesBlockDelete>;

} // namespace

Tavo::UniString Base64Converter::Encode(char const* data, unsigned int length) {
    Tavo::UniString text;
    XMLSize_t outputLength = 0;
    XercesBytes const encoded(
        Base64::encode(reinterpret_cast<XMLByte const*>(data), length, &outputLength, nullptr));
    if (encoded == nullptr || outputLength == 0) {
        return text;
    }
    // The coded text is far shorter than the 32-bit limit of the string for any 32-bit input length.
    text.Reserve(static_cast<unsigned int>(outputLength));
    char16_t block[gWidenBlock];
    for (XMLSize_t done = 0; done < outputLength;) {
        auto const count = static_cast<unsigned int>(std::min<XMLSize_t>(gWidenBlock, outputLength - done));
        // Each unit is built from the unsigned byte.
        std::transform(encoded.get() + done, encoded.get() + done + count, block,
                       [](XMLByte byte) { return static_cast<char16_t>(byte); });
        text.Append(block, count);
        done += count;
    }
    return text;
}

Tavo::Array<char> Base64Converter::Decode(Tavo::UniString const& text) {
    // Base64::decode reads terminated bytes: each unit is narrowed to its low byte, without a test, in
    // one pass into a block that is not cleared first.
    std::u16string_view const units = text.View();
    std::unique_ptr<char[]> const bytes = std::make_unique_for_overwrite<char[]>(units.size() + 1);
    std::transform(units.begin(), units.end(), bytes.get(),
                   [](char16_t unit) { return static_cast<char>(Tavo::UniChar(unit)); });
    bytes[units.size()] = '\0';

    XMLSize_t decodedLength = 0;
    XercesBytes const decoded(Base64::decode(reinterpret_cast<XMLByte const*>(bytes.get()), &decodedLength,
                                             nullptr, Base64::Conf_RFC2045));
    if (decoded == nullptr) {
        return {};
    }
    TavoXML::detail::ReservedArray<char> result(static_cast<unsigned int>(decodedLength));
    for (XMLSize_t i = 0; i < decodedLength; ++i) {
        result.Push(static_cast<char>(decoded.get()[i]));
    }
    return std::move(static_cast<Tavo::Array<char>&>(result));
}
