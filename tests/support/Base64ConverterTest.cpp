// Base64Converter: the text is Base64::encode's own, random blocks with every byte value come back
// whole, and text that the RFC 2045 rules refuse gives an empty array.
#include "TavoXMLUtils/support/Base64Converter.hpp"

#include <xercesc/util/Base64.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <random>
#include <string>

namespace {

std::string Bytes(Tavo::Array<char> const& array) {
    return std::string(array.begin(), array.end());
}

Tavo::UniString Encode(std::string const& bytes) {
    return Base64Converter::Encode(bytes.data(), static_cast<unsigned int>(bytes.size()));
}

// What Base64::encode itself makes of the bytes, as text.
std::u16string XercesEncode(std::string const& bytes) {
    XMLSize_t length = 0;
    XMLByte* const encoded = xercesc::Base64::encode(reinterpret_cast<XMLByte const*>(bytes.data()),
                                                     bytes.size(), &length, nullptr);
    std::u16string const text =
        encoded == nullptr ? std::u16string() : std::u16string(encoded, encoded + length);
    ::operator delete(encoded); // the coder allocates with plain operator new
    return text;
}

} // namespace

TEST(Base64Converter, EncodesAsTheXercesCoderDoes) {
    EXPECT_TRUE(Base64Converter::Encode("", 0).IsEmpty());
    EXPECT_TRUE(Base64Converter::Encode("abc", 0).IsEmpty());
    EXPECT_EQ(std::u16string(Encode("f").View()), XercesEncode("f"));
    EXPECT_EQ(std::u16string(Encode("foobar").View()).substr(0, 8), u"Zm9vYmFy");
    EXPECT_EQ(std::u16string(Encode("fo").View()).substr(0, 4), u"Zm8=");
    // Long text keeps the coder's line breaks, exactly where it puts them.
    std::string const long_(300, 'x');
    std::u16string const text(Encode(long_).View());
    EXPECT_EQ(text, XercesEncode(long_));
    EXPECT_NE(text.find(u'\n'), std::u16string::npos);
}

TEST(Base64Converter, RandomBlocksWithEveryByteValueRoundTrip) {
    std::mt19937 random(20261123u);
    std::string all(256, '\0');
    std::iota(all.begin(), all.end(), '\0');
    std::shuffle(all.begin(), all.end(), random);
    std::vector<std::string> blocks{all, all + all, std::string(1, '\xFF'), std::string(1, '\0')};
    // Sizes around whole lines and around the converter's blocks of 128 lines (5760 bytes).
    for (std::size_t size : {1u, 2u, 3u, 4u, 44u, 45u, 46u, 56u, 57u, 58u, 76u, 1000u, 5759u, 5760u, 5761u,
                             11520u, 11521u, 65537u}) {
        std::uniform_int_distribution<int> byte(0, 255);
        std::string block(size, '\0');
        std::generate(block.begin(), block.end(), [&] { return static_cast<char>(byte(random)); });
        blocks.push_back(block);
    }
    for (std::string const& block : blocks) {
        Tavo::UniString const text = Encode(block);
        EXPECT_EQ(std::u16string(text.View()), XercesEncode(block));
        EXPECT_EQ(Bytes(Base64Converter::Decode(text)), block) << "block of " << block.size() << " bytes";
    }
}

TEST(Base64Converter, RefusedTextGivesAnEmptyArray) {
    char16_t const* const refused[] = {u"", u"Zm9v$", u"Zm9", u"Z===", u"====", u"Zg=a", u"Zm9v\u00FF"};
    for (std::size_t i = 0; i < std::size(refused); ++i) {
        EXPECT_TRUE(Base64Converter::Decode(Tavo::UniString(refused[i])).IsEmpty()) << "case " << i;
    }
}

TEST(Base64Converter, DecodeSkipsWhiteSpaceAndNarrowsWideUnits) {
    EXPECT_EQ(Bytes(Base64Converter::Decode(Tavo::UniString(u"Zm9v\nYmFy\n"))), "foobar");
    EXPECT_EQ(Bytes(Base64Converter::Decode(Tavo::UniString(u" Zm 9v\r\n"))), "foo");
    // U+015A narrows to 0x5A, "Z": a wide unit is not refused as such.
    EXPECT_EQ(Bytes(Base64Converter::Decode(Tavo::UniString(u"\u015Am9v"))), "foo");
}
