#include "TavoRoot/Numbers.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

namespace {

template <class T>
std::u16string Write(T value) {
    unsigned short buffer[64];
    EXPECT_TRUE(Tavo::valuetostr(value, buffer, 64));
    return std::u16string(reinterpret_cast<char16_t const*>(buffer));
}

template <class T>
bool Read(std::u16string const& text, T& value) {
    return Tavo::strtovalue(reinterpret_cast<unsigned short const*>(text.c_str()), value);
}

// Writes each type's limits and -1, compares with std::to_string and reads them back.
template <class... Ts>
void RoundTripIntegerLimits() {
    (
        [] {
            for (Ts value : {std::numeric_limits<Ts>::min(), std::numeric_limits<Ts>::max(), Ts(0), Ts(1),
                             Ts(Ts(0) - 1)}) {
                std::u16string const text = Write(value);
                EXPECT_EQ(std::string(text.begin(), text.end()), std::to_string(value));
                Ts back = Ts(7);
                EXPECT_TRUE(Read(text, back)) << std::to_string(value);
                EXPECT_EQ(back, value);
            }
        }(),
        ...);
}

template <class T>
void ExpectRead(std::u16string const& text, T expected) {
    T value = T(0);
    EXPECT_TRUE(Read(text, value)) << std::string(text.begin(), text.end());
    EXPECT_EQ(value, expected);
}

template <class T>
void ExpectBitExactRoundTrip(T value) {
    using Bits = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
    T back = T(0);
    ASSERT_TRUE(Read(Write(value), back));
    ASSERT_EQ(std::bit_cast<Bits>(back), std::bit_cast<Bits>(value)) << value;
}

template <class T>
void ExpectRejected(std::u16string const& text) {
    T value = T(42);
    EXPECT_FALSE(Read(text, value)) << std::string(text.begin(), text.end());
    EXPECT_EQ(value, T(42));
}

} // namespace

TEST(Numbers, IntegersRoundTripAtTheLimitsOfEveryType) {
    RoundTripIntegerLimits<short, unsigned short, int, unsigned int, long, unsigned long, long long,
                           unsigned long long>();
    ExpectRead<signed char>(u"-128", -128);
    ExpectRead<unsigned char>(u"255", 255);
    ExpectRead<char>(u"127", 127);
}

TEST(Numbers, RealsRoundTripExactlyWithTheShortestText) {
    for (double value : {0.0, -0.0, 0.1, -2.5, 1e300, std::numeric_limits<double>::max(),
                         std::numeric_limits<double>::lowest(), std::numeric_limits<double>::min(),
                         std::numeric_limits<double>::denorm_min()}) {
        ExpectBitExactRoundTrip(value);
    }
    for (float value :
         {0.0f, -0.0f, 0.1f, std::numeric_limits<float>::max(), std::numeric_limits<float>::lowest(),
          std::numeric_limits<float>::min(), std::numeric_limits<float>::denorm_min()}) {
        ExpectBitExactRoundTrip(value);
    }
    std::mt19937_64 random(20240611);
    for (int i = 0; i < 100000; ++i) {
        auto const value = std::bit_cast<double>(random());
        if (std::isfinite(value)) {
            ExpectBitExactRoundTrip(value);
        }
        auto const single = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (std::isfinite(single)) {
            ExpectBitExactRoundTrip(single);
        }
    }

    EXPECT_EQ(Write(0.1), u"0.1");
    EXPECT_EQ(Write(0.1f), u"0.1");
    EXPECT_EQ(Write(1e300), u"1e+300");
    EXPECT_EQ(Write(std::numeric_limits<double>::infinity()), u"inf");
    EXPECT_EQ(Write(-std::numeric_limits<float>::infinity()), u"-inf");
    EXPECT_EQ(Write(-std::numeric_limits<double>::quiet_NaN()), u"nan");
    double special = 0;
    EXPECT_TRUE(Read(u"nan", special));
    EXPECT_TRUE(std::isnan(special));
}

TEST(Numbers, BufferTooSmall) {
    unsigned short buffer[5] = {'x', 'x', 'x', 'x', 'x'};
    EXPECT_FALSE(Tavo::valuetostr(12345, buffer, 5));
    EXPECT_EQ(buffer[0], 0);
    EXPECT_TRUE(Tavo::valuetostr(-123, buffer, 5));
    EXPECT_EQ(Tavo::UniString(buffer), "-123");
    EXPECT_FALSE(Tavo::valuetostr(1.5, nullptr, 10));
    EXPECT_EQ(Tavo::ValueToUniString(123456789012345678LL), "123456789012345678");
}

TEST(Numbers, AcceptedForms) {
    ExpectRead(u" \t42\r\n", 42);
    ExpectRead(u"+5", 5);
    ExpectRead(u"\u00A0-7\u3000", -7);
    ExpectRead(u" 1.5e3 ", 1500.0);
    ExpectRead(u"-.25", -0.25);
    ExpectRead(u"+inf", std::numeric_limits<double>::infinity());
    ExpectRead(u"-inf", -std::numeric_limits<double>::infinity());
    float f = 0;
    EXPECT_TRUE(Tavo::UniStringToValue(Tavo::UniString("  3.25E-2"), f));
    EXPECT_EQ(f, 0.0325f);
}

TEST(Numbers, RejectsAndLeavesTheValueUnchanged) {
    for (char16_t const* text : {u"", u" ", u"1x", u"--1", u"+-1", u"++1", u"+", u"0x10", u"1 2", u"1.0",
                                 u"1e3", u"\uFF11", u"- 1"}) {
        ExpectRejected<int>(text);
    }
    ExpectRejected<unsigned char>(u"256");
    ExpectRejected<signed char>(u"-129");
    ExpectRejected<char>(u"128");
    ExpectRejected<short>(u"32768");
    ExpectRejected<unsigned short>(u"-1");
    ExpectRejected<int>(u"2147483648");
    ExpectRejected<unsigned int>(u"4294967296");
    ExpectRejected<long long>(u"-9223372036854775809");
    ExpectRejected<unsigned long long>(u"18446744073709551616");
    ExpectRejected<double>(u"1e400");
    ExpectRejected<double>(u"0x1p3");
    ExpectRejected<double>(u"1.5.2");
    ExpectRejected<float>(u"3.5e38");
    int value = 3;
    EXPECT_FALSE(Tavo::strtovalue(nullptr, value));
    EXPECT_EQ(value, 3);
}
