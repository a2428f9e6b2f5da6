#include "TavoRoot/CharCode.hpp"
#include "TavoRoot/UniString.hpp"

#include <gtest/gtest.h>

#include <string>

using Tavo::UniString;

namespace {

std::u16string Decode(std::string const& bytes, TavoCharCode code) {
    std::u16string out;
    Tavo::AppendAnsiToUnicode(out, bytes, code);
    return out;
}

unsigned short const* US(char16_t const* text) {
    return reinterpret_cast<unsigned short const*>(text);
}

} // namespace

TEST(CharCodeUTF8, KnownSequencesAndRoundTripOfEveryCodePoint) {
    EXPECT_EQ(Decode("A\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xE2\x82\xAC\xEF\xBF\xBF", TavoCharCodeUTF8),
              u"A\u007F\u0080\u07FF\u0800\u20AC\uFFFF");
    EXPECT_EQ(Decode("\xF0\x90\x80\x80\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF", TavoCharCodeUTF8),
              u"\U00010000\U0001F600\U0010FFFF");

    // Every scalar value survives UTF-16 -> UTF-8 -> UTF-16, with the byte count of its range.
    for (char32_t c = 1; c <= 0x10FFFF; ++c) {
        if (c >= 0xD800 && c <= 0xDFFF) {
            continue;
        }
        std::u16string const text = c < 0x10000 ? std::u16string(1, static_cast<char16_t>(c))
                                                : std::u16string{static_cast<char16_t>(0xD7C0 + (c >> 10)),
                                                                 static_cast<char16_t>(0xDC00 + (c & 0x3FF))};
        std::string bytes;
        ASSERT_TRUE(Tavo::AppendUnicodeToAnsi(bytes, text, TavoCharCodeUTF8, false));
        ASSERT_EQ(bytes.size(), c < 0x80 ? 1u : c < 0x800 ? 2u : c < 0x10000 ? 3u : 4u);
        ASSERT_EQ(Decode(bytes, TavoCharCodeUTF8), text) << std::hex << static_cast<unsigned long>(c);
    }
}

// ASCII runs go sixteen bytes at a time: a run of any length followed by a multi-byte or an ill-formed
// sequence, at every offset around the block edge, decodes as byte by byte.
TEST(CharCodeUTF8, AsciiRunsOfEveryLengthBeforeOtherBytes) {
    for (std::size_t run = 0; run <= 40; ++run) {
        std::string const ascii(run, 'a');
        std::u16string const wide(run, u'a');
        EXPECT_EQ(Decode(ascii, TavoCharCodeUTF8), wide) << run;
        EXPECT_EQ(Decode(ascii + "\xE2\x82\xAC" + ascii, TavoCharCodeUTF8), wide + u"\u20AC" + wide) << run;
        EXPECT_EQ(Decode(ascii + "\x80" + ascii + "\xC3", TavoCharCodeUTF8),
                  wide + u"\uFFFD" + wide + u"\uFFFD")
            << run;
    }
}

TEST(CharCodeUTF8, InvalidInputBecomesReplacementCharacters) {
    // One U+FFFD per maximal ill-formed subpart (the example of the Unicode standard, table 3-8).
    EXPECT_EQ(Decode("\x61\xF1\x80\x80\xE1\x80\xC2\x62\x80\x63\x80\xBF\x64", TavoCharCodeUTF8),
              u"a\uFFFD\uFFFD\uFFFDb\uFFFDc\uFFFD\uFFFDd");
    EXPECT_EQ(Decode("\xC0\xAF|\xED\xA0\x80|\xF5\x80|\xF4\x90\x80\x80", TavoCharCodeUTF8),
              u"\uFFFD\uFFFD|\uFFFD\uFFFD\uFFFD|\uFFFD\uFFFD|\uFFFD\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Decode("x\xF0\x9F\x98", TavoCharCodeUTF8), u"x\uFFFD");

    // Lone surrogates have no UTF-8 form: strict fails, lossy writes '?'.
    std::string out;
    EXPECT_FALSE(Tavo::AppendUnicodeToAnsi(out, u"ok\xD800x", TavoCharCodeUTF8, false));
    EXPECT_EQ(out, "ok");
    out.clear();
    EXPECT_TRUE(Tavo::AppendUnicodeToAnsi(out, u"\xDC00\xD83D", TavoCharCodeUTF8, true));
    EXPECT_EQ(out, "??");
    EXPECT_STREQ(UniString(u"a\xD800").ToCStr(0, UniString::kAll, TavoCharCodeUTF8), "a?");
}

TEST(CharCodeWindows1252, EveryByteAndTheRange0x80To0x9F) {
    std::string all;
    for (int b = 0; b < 256; ++b) {
        all += static_cast<char>(b);
    }
    std::u16string const text = Decode(all, TavoCharCodeDefault);
    ASSERT_EQ(text.size(), 256u); // the byte round trip below checks the rest of the mapping
    EXPECT_EQ(text.substr(0x7F, 4), u"\u007F\u20AC\u0081\u201A");
    EXPECT_EQ(text.substr(0x9F, 2) + text[0xFF], u"\u0178\u00A0\u00FF");
    std::string back;
    EXPECT_TRUE(Tavo::AppendUnicodeToAnsi(back, text, TavoCharCodeDefault, false));
    EXPECT_EQ(back, all);

    // Not in the code: U+0080 (the byte 0x80 is the euro sign), U+0100, a character above the BMP.
    back.clear();
    EXPECT_FALSE(Tavo::AppendUnicodeToAnsi(back, u"a\u0080", TavoCharCodeDefault, false));
    EXPECT_EQ(back, "a");
    back.clear();
    EXPECT_TRUE(Tavo::AppendUnicodeToAnsi(back, u"\u0080\u0100\U0001F600\u2026", TavoCharCodeDefault, true));
    EXPECT_EQ(back, "???\x85");
}

TEST(CharCodeCFunctions, ConvertAndCompare) {
    unsigned short const* euro = US(u"\u20AC!");
    EXPECT_EQ(CHUnicode2ANSI(euro, -1, nullptr, 0, TavoCharCodeUTF8, false, nullptr), 4);
    char target[8] = "xxxxxxx";
    EXPECT_EQ(CHUnicode2ANSI(euro, -1, target, sizeof target, TavoCharCodeUTF8, false, nullptr), 4);
    EXPECT_STREQ(target, "\xE2\x82\xAC!");
    EXPECT_LT(CHUnicode2ANSI(euro, -1, target, 3, TavoCharCodeUTF8, false, nullptr), 0);

    unsigned short const* greek = US(u"\u03A9x");
    EXPECT_EQ(CHUnicode2ANSI(greek, -1, target, sizeof target, TavoCharCodeDefault, true, nullptr), 2);
    EXPECT_STREQ(target, "?x");

    EXPECT_EQ(CHUnicode2ANSI(nullptr, -1, target, 1, TavoCharCodeDefault, false, nullptr), 0);
    EXPECT_FALSE(CHEqualCStrings("Name", "name", Tavo::CaseSensitive, TavoCharCodeDefault));
    EXPECT_TRUE(CHEqualCStrings("N\xC4ME\x8A", "n\xE4me\x9A", Tavo::CaseInsensitive, TavoCharCodeDefault));
    EXPECT_TRUE(
        CHEqualCStrings("\xC3\x84\xCE\xA9", "\xC3\xA4\xCF\x89", Tavo::CaseInsensitive, TavoCharCodeUTF8));
}
