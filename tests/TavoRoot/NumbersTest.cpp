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

template <class T>
void ExpectBitExactRoundTrip(T value) {
    using Bits = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
    T back = T(0);
    ASSERT_TRUE(Read(Write(value), back) && std::bit_cast<Bits>(back) == std::bit_cast<Bits>(value)) << value;
}

template <class T>
void ExpectRejected(std::u16string const& text) {
    T value = T(42);
    EXPECT_FALSE(Read(text, value) || value != T(42)) << std::string(text.begin(), text.end());
}

} // namespace

TEST(Numbers, IntegersRoundTripAtTheLimitsOfEveryType) {
    // Each type's limits and -1 are written as std::to_string writes them and read back.
    auto limits = [](auto zero) {
        using T = decltype(zero);
        for (T value : {std::numeric_limits<T>::min(), std::numeric_limits<T>::max(), zero, T(zero - 1)}) {
            std::u16string const text = Write(value);
            EXPECT_EQ(std::string(text.begin(), text.end()), std::to_string(value));
            T back = T(7);
            EXPECT_TRUE(Read(text, back) && back == value) << std::to_string(value);
        }
    };
    limits(short()), limits((unsigned short)0), limits(0), limits(0u), limits(0l), limits(0ul);
    limits(0ll), limits(0ull);
    signed char small = 0;
    EXPECT_TRUE(Read(u"-128", small) && small == -128);
}

TEST(Numbers, RealsRoundTripExactlyWithTheShortestText) {
    auto limits = [](auto zero) {
        using T = decltype(zero);
        using L = std::numeric_limits<T>;
        for (T value : {zero, -zero, T(0.1), L::max(), L::lowest(), L::min(), L::denorm_min()}) {
            ExpectBitExactRoundTrip(value);
        }
    };
    limits(0.0), limits(0.0f);
    std::mt19937_64 random(20240611);
    for (int i = 0; i < 100000; ++i) {
        std::uint64_t const bits = random();
        auto const value = std::bit_cast<double>(bits);
        auto const single = std::bit_cast<float>(static_cast<std::uint32_t>(bits >> 16));
        std::isfinite(value) ? ExpectBitExactRoundTrip(value) : void();
        std::isfinite(single) ? ExpectBitExactRoundTrip(single) : void();
    }

    EXPECT_EQ(Write(0.1), u"0.1");
    EXPECT_EQ(Write(0.1f), u"0.1");
    EXPECT_EQ(Write(1e300), u"1e+300");
    EXPECT_EQ(Write(-std::numeric_limits<float>::infinity()), u"-inf");
    EXPECT_EQ(Write(-std::numeric_limits<double>::quiet_NaN()), u"nan");
}

TEST(Numbers, BufferTooSmall) {
    unsigned short buffer[5] = {'x'};
    EXPECT_FALSE(Tavo::valuetostr(12345, buffer, 5));
    EXPECT_EQ(buffer[0], 0);
    EXPECT_TRUE(Tavo::valuetostr(-123, buffer, 5) && Tavo::UniString(buffer) == "-123");
}

TEST(Numbers, AcceptedAndRejectedForms) {
    double real = 0;
    int value = 0;
    for (auto [text, expected] : {std::pair{u" \t42\r\n", 42}, {u"+5", 5}, {u"\u00A0-7\u3000", -7}}) {
        EXPECT_TRUE(Read(text, value) && value == expected) << value;
    }
    for (auto [text, expected] : {std::pair{u" 1.5e3 ", 1500.0}, {u"-.25", -0.25}, {u"+inf", HUGE_VAL}}) {
        EXPECT_TRUE(Read(text, real) && real == expected) << real;
    }
    EXPECT_TRUE(Read(u"nan", real) && std::isnan(real));

    for (char16_t const* text : {u"", u" ", u"1x", u"--1", u"+-1", u"+", u"0x10", u"1 2", u"1.0", u"1e3",
                                 u"\uFF11", u"- 1", u"2147483648"}) {
        ExpectRejected<int>(text);
    }
    ExpectRejected<unsigned char>(u"256");
    ExpectRejected<signed char>(u"-129");
    ExpectRejected<unsigned short>(u"-1");
    ExpectRejected<long long>(u"-9223372036854775809");
    ExpectRejected<unsigned long long>(u"18446744073709551616");
    for (char16_t const* text : {u"1e400", u"0x1p3", u"1.5.2"}) {
        ExpectRejected<double>(text);
    }
    ExpectRejected<float>(u"3.5e38");
    EXPECT_FALSE(Tavo::strtovalue(nullptr, value));
}
