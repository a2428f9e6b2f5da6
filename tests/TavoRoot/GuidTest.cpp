#include "TavoRoot/Guid.hpp"

#include <gtest/gtest.h>

namespace Tavo {
namespace {

TEST(GuidTest, TextRoundTripAndBadText) {
    Guid const fixed(
        {0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF});
    EXPECT_TRUE(fixed.ToUniString() == "00112233-4455-6677-8899-AABBCCDDEEFF");
    Guid parsed;
    EXPECT_EQ(0, parsed.ConvertFromString(UniString("{00112233-4455-6677-8899-aabbccddeeff}")));
    EXPECT_EQ(fixed, parsed);

    Guid const generated = Guid::Generate();
    EXPECT_FALSE(generated.IsNull());
    EXPECT_EQ(0x40, generated.GetBytes()[6] & 0xF0); // version 4
    EXPECT_EQ(0x80, generated.GetBytes()[8] & 0xC0); // RFC 4122 variant
    EXPECT_EQ(0, parsed.ConvertFromString(generated.ToUniString()));
    EXPECT_EQ(generated, parsed);

    // Bad text leaves the value unchanged.
    for (char const* bad :
         {"", "00112233-4455-6677-8899-AABBCCDDEEF", "00112233-4455-6677-8899-AABBCCDDEEFF0",
          "001122334-455-6677-8899-AABBCCDDEEFF", "00112233-4455-6677-8899-AABBCCDDEEFG",
          "{00112233-4455-6677-8899-AABBCCDDEEFF", "(00112233-4455-6677-8899-AABBCCDDEEFF)"}) {
        EXPECT_NE(0, parsed.ConvertFromString(UniString(bad))) << bad;
        EXPECT_EQ(generated, parsed) << bad;
    }
}

} // namespace
} // namespace Tavo
