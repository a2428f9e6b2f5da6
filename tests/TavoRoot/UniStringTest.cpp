#include "TavoRoot/UniString.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cwchar>
#include <memory>
#include <string>
#include <thread>

using Tavo::UniChar;
using Tavo::UniString;

static std::u16string U(UniString const& text) {
    return std::u16string(text.View());
}

TEST(UniStringSharing, CopiesShareUntilAnEdit) {
    UniString original("shared text");
    UniString copy = original;
    EXPECT_EQ(copy.GetUStr(), original.GetUStr());

    copy[0] = 'S';
    EXPECT_NE(copy.GetUStr(), original.GetUStr());
    EXPECT_EQ(U(original), u"shared text");

    // A holder keeps the text it was given, whatever happens to the string afterwards.
    UniString::UStrHolder holder = original.ToUStr();
    EXPECT_EQ(holder.Get(), original.GetUStr());
    original.Append(" changed");
    original.SetAt(0, 'X');
    EXPECT_EQ(std::u16string(reinterpret_cast<char16_t const*>(holder.Get())), u"shared text");

    // Edits that change nothing do not copy.
    UniString third = copy;
    third.ReplaceAll(UniChar('z'), UniChar('y'));
    third.SetToLowerCase(1);
    third.Trim();
    EXPECT_EQ(third.GetUStr(), copy.GetUStr());
}

// Copies of one shared buffer taken, edited and dropped on two threads at once: the count must stay
// exact (a lost update frees the buffer early or leaks it, which the sanitizer build reports).
TEST(UniStringSharing, CopiesUsedFromTwoThreads) {
    UniString const shared("shared between threads");
    auto work = [&shared] {
        for (int i = 0; i < 20000; ++i) {
            UniString copy = shared;
            if (i % 7 == 0) {
                copy.Append(UniChar('!'));
            }
            EXPECT_TRUE(copy.View().starts_with(u"shared between threads"));
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(U(shared), u"shared between threads");
}

TEST(UniStringRanges, CountsAreCutAndStartsPastTheEndAreEmpty) {
    UniString const text("abcdef");
    EXPECT_EQ(U(UniString(text, 2, 3)), u"cde");
    EXPECT_EQ(U(UniString(text, 4, 100)), u"ef");
    EXPECT_STREQ(text.ToCStr(9, 2), "");
    EXPECT_EQ(text.Find(UniChar('a'), 1), UniString::kAll);

    UniString edited = text;
    edited.Delete(10, 2);
    edited.ReplaceAll(UniChar('a'), UniChar('x'), 7);
    edited.Delete(4);
    edited.Delete(1, 2);
    edited.Insert(99, UniString("xyz"), 1, 99);
    EXPECT_EQ(U(edited), u"adyz");
}

TEST(UniStringEdit, AppendInsertReplaceIncludingTheStringItself) {
    UniString text("ab");
    text.Append(text);
    text.Append(text, 1, 2);
    EXPECT_EQ(U(text), u"ababba");
    text.Insert(1, text, 0, 3);
    EXPECT_EQ(U(text), u"aabababba");
    text.Append(text.GetUStr() + 6);
    EXPECT_EQ(U(text), u"aabababbabba");

    UniString grown(std::string(1000, 'a').c_str());
    grown.Append("\x80 \xE2\x82\xAC", TavoCharCodeDefault);
    grown.Append("\xE2\x82\xAC", TavoCharCodeUTF8);
    grown.Append(u"\U0001F600", 2);
    grown.Append("\xE2\x82\xAC\0z", 4, TavoCharCodeUTF8);
    EXPECT_EQ(U(grown).substr(998),
              std::u16string(u"aa\u20AC \u00E2\u201A\u00AC\u20AC\U0001F600\u20AC\0", 12));

    UniString ranged("xaxaxa");
    ranged.ReplaceAll(UniString("xa"), UniString("[xa]"), 2, 3);
    EXPECT_EQ(U(ranged), u"xa[xa]xa");
    ranged.ReplaceAll(ranged, UniString("whole"));
    EXPECT_EQ(U(ranged), u"whole");
    ranged.ReplaceAll(UniString("o"), ranged);
    EXPECT_EQ(U(ranged), u"whwholele");
}

TEST(UniStringEdit, TrimAndLowerCase) {
    UniString spaced(u"\t\n \u00A0\u3000 in  side \r\u2029");
    spaced.Trim();
    EXPECT_EQ(U(spaced), u"in  side");
    UniString mixed(u"ABC \u00C4\u00D7\u00DE \u0178\u0130\u0139\u0100 \u0391\u03A9\u0386 \u0401\u0416 XYZ");
    mixed.SetToLowerCase(0, 19);
    EXPECT_EQ(U(mixed), u"abc \u00E4\u00D7\u00FE \u00FFi\u013A\u0101 \u03B1\u03C9\u03AC \u0451\u0436 XYZ");
    EXPECT_TRUE(UniString("Hello World").IsEqual(UniString("hELLO wORLD"), Tavo::CaseInsensitive));
}

TEST(UniStringConversion, ComparedConcatenatedAndReadOutAs8BitText) {
    UniString const text(u"a\u20AC\u0100\U0001F600");
    EXPECT_TRUE(UniString(u"\u20AC\u00E9") == "\x80\xE9");
    EXPECT_FALSE(UniString(u"\u20AC\u00E9") == "\x80");
    EXPECT_EQ(U("<" + text + reinterpret_cast<unsigned short const*>(u"\u00FC") + ">"),
              u"<" + U(text) + u"\u00FC>");
    EXPECT_STREQ(text.ToCStr(), "a\x80??");
    EXPECT_STREQ(text.ToCStr(0, UniString::kAll, TavoCharCodeUTF8), "a\xE2\x82\xAC\xC4\x80\xF0\x9F\x98\x80");
    std::unique_ptr<char[]> utf8(text.CopyUTF8(1, 1));
    EXPECT_STREQ(utf8.get(), "\xE2\x82\xAC");
    EXPECT_EQ(U(UniString("a\0b", 3, TavoCharCodeDefault)), std::u16string(u"a\0b", 3));
}

TEST(UniStringPrintf, ConversionsFlagsAndWidths) {
    UniString const tail(u"t\u00E9xt");
    int const n = 42;
    char pointer[32];
    std::snprintf(pointer, sizeof pointer, "%jx",
                  static_cast<std::uintmax_t>(reinterpret_cast<std::uintptr_t>(&n)));
    UniString const formatted =
        UniString::PrintfFwd("%s|%ls|%T|%d|%u|%p|%%", "\x80x", u"\U0001F600", tail.ToPrintf(), -7,
                             4000000000u, static_cast<void const*>(&n));
    EXPECT_EQ(U(formatted), u"\u20ACx|\U0001F600|t\u00E9xt|-7|4000000000|" + U(UniString(pointer)) + u"|%");

    EXPECT_EQ(U(UniString::PrintfFwd("[%5d][%-5d][%05d][%+d][%*d][%.3d]", 12, 12, 12, 12, 4, 7, 5)),
              u"[   12][12   ][00012][+12][   7][005]");
    EXPECT_EQ(U(UniString::PrintfFwd("[%x][%#X][%lld][%zu][%.2f][%c][%lc]", 255u, 255u, -1LL, std::size_t(9),
                                     2.3456, 'A', static_cast<wint_t>(0x1F600))),
              u"[ff][0XFF][-1][9][2.35][A][\U0001F600]");
    EXPECT_EQ(U(UniString::PrintfFwd("[%6s][%-4s][%.2s][%.2ls][%3T]", "ab", "ab", "abcdef", u"xyz",
                                     tail.ToPrintf())),
              u"[    ab][ab  ][ab][xy][t\u00E9xt]");
    EXPECT_EQ(U(UniString::PrintfFwd("%S and %s", L"w\U0001F600", static_cast<char const*>(nullptr))),
              u"w\U0001F600 and (null)");
    EXPECT_EQ(U(UniString::PrintfFwd("100%")), u"100%");
    // '*' values come from the arguments (a negative width aligns left); an unknown conversion, %n and a
    // directive cut off by the end of the format take no text of their own.
    int count = 0;
    EXPECT_EQ(U(UniString::PrintfFwd("[%*d][%.*s][%q][%n]%lu%-5", -4, 7, 2, "abc", &count, 8ul)),
              u"[7   ][ab][%q][]8%-5");
    EXPECT_EQ(count, 0);
    // %p gives the digits alone, so that a format's own "0x" is not doubled.
    EXPECT_EQ(U(UniString::PrintfFwd("0x%p|%p|%-3p|", static_cast<void const*>(&n), nullptr, nullptr)),
              u"0x" + U(UniString(pointer)) + u"|0|0  |");
}
