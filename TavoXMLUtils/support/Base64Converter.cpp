#include "TavoXMLUtils/support/Base64Converter.hpp"

#include "TavoRoot/CharCode.hpp"

#include <xercesc/util/Base64.hpp>

#include <algorithm>
#include <memory>
#include <string_view>

XERCES_CPP_NAMESPACE_USE

namespace {

// Without a memory manager, the coder of Xerces-C++ 3.2 gives its blocks from plain operator new (not
// new[]), so that is how they go back; array delete would not match the allocation.
struct XercesBlockDelete {
    void operator()(XMLByte* block) const noexcept { ::operator delete(block); }
};
using XercesBytes = std::unique_ptr<XMLByte, XercesBlockDelete>;

// The characters of each line of the coder's text (60 in Xerces-C++ 3.2), found once from the coder
// itself; 0 when a sample shows no line break that whole groups of four characters fill.
unsigned int CoderLineChars() {
    static unsigned int const characters = [] {
        constexpr unsigned int sampleBytes = 3 * 1024;
        XMLByte const sample[sampleBytes] = {};
        XMLSize_t outputLength = 0;
        XercesBytes const encoded(Base64::encode(sample, sampleBytes, &outputLength, nullptr));
        std::string_view const text(reinterpret_cast<char const*>(encoded.get()), encoded ? outputLength : 0);
        std::size_t const lineChars = text.find('\n');
        bool const usable = lineChars != std::string_view::npos && lineChars > 0 && lineChars % 4 == 0;
        return usable ? static_cast<unsigned int>(lineChars) : 0u;
    }();
    return characters;
}

// Input bytes coded per call: a block of whole lines small enough that its text, narrow and widened,
// stays in the first-level cache (some 8 KB of text); everything at once when the line length is unknown.
unsigned int EncodeBlockBytes() {
    constexpr unsigned int linesPerBlock = 128;
    unsigned int const lineChars = CoderLineChars();
    return lineChars == 0 ? ~0u : lineChars / 4 * 3 * linesPerBlock;
}

// Room for the text of `length` bytes: four characters for every three bytes, a line end for every
// line and one at the end.
unsigned int EncodedLength(unsigned int length) {
    std::size_t const characters = (std::size_t{length} + 2) / 3 * 4;
    std::size_t const lineChars = CoderLineChars() == 0 ? 4 : CoderLineChars();
    return static_cast<unsigned int>(std::min<std::size_t>(characters + characters / lineChars + 1, ~0u));
}

} // namespace

Tavo::UniString Base64Converter::Encode(char const* data, unsigned int length) {
    // Whole lines of input are coded a block at a time: the coder's text of consecutive whole-line
    // blocks, joined, is its text of the whole input, while each block's text stays in the cache on its
    // way into the string instead of passing through memory twice.
    if (length == 0) {
        return {};
    }
    unsigned int const block = EncodeBlockBytes();
    Tavo::UniString text;
    text.Reserve(EncodedLength(length));
    for (unsigned int done = 0; done < length;) {
        unsigned int const piece = std::min(length - done, block);
        XMLSize_t outputLength = 0;
        XercesBytes const encoded(
            Base64::encode(reinterpret_cast<XMLByte const*>(data) + done, piece, &outputLength, nullptr));
        if (encoded == nullptr || outputLength == 0) {
            return {};
        }
        // ASCII, which as UTF-8 is its own characters.
        text.Append(reinterpret_cast<char const*>(encoded.get()), static_cast<unsigned int>(outputLength),
                    TavoCharCodeUTF8);
        done += piece;
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
    Tavo::Array<char> result;
    result.Append(reinterpret_cast<char const*>(decoded.get()), static_cast<unsigned int>(decodedLength));
    return result;
}
