#include "TavoRoot/UniString.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using Tavo::UniChar;
using Tavo::UniString;

namespace {

std::u16string U(UniString const& text) {
    return std::u16string(text.View());
}

} // namespace

TEST(UniStringSharing, CopiesShareUntilAnEdit) {
    EXPECT_EQ(UniString().GetUStr()[0], 0);
    EXPECT_TRUE(UniString(static_cast<char const*>(nullptr)).IsEmpty());

    UniString original("shared text");
    UniString copy = original;
    EXPECT_EQ(copy.GetUStr(), original.GetUStr());
    UniString whole(original, 0, UniString::kAll);
    EXPECT_EQ(whole.GetUStr(), original.GetUStr());

    copy[0] = 'S';
    EXPECT_NE(copy.GetUStr(), original.GetUStr());
    EXPECT_EQ(U(original), u"shared text");
    EXPECT_EQ(U(copy), u"Shared text");

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
    third.ReplaceAll(UniString("zz"), UniString("y"));
    third.Trim();
    EXPECT_EQ(third.GetUStr(), copy.GetUStr());
}

TEST(UniStringSharing, CopiesUsedFromTwoThreads) {
    UniString const source("The quick brown fox jumps over the lazy dog");
    auto work = [&source](char mark) {
        for (int i = 0; i < 20000; ++i) {
            UniString copy = source;
            UniString again(copy);
            copy.Append(mark);
            copy.SetAt(0, mark);
            ASSERT_EQ(copy.GetLength(), source.GetLength() + 1);
            ASSERT_EQ(copy[0], static_cast<unsigned short>(mark));
            ASSERT_TRUE(again == source);
            UniString::UStrHolder holder = again.ToUStr(4, 5);
            ASSERT_EQ(std::u16string(reinterpret_cast<char16_t const*>(holder.Get())), u"quick");
        }
    };
    std::thread first(work, 'a');
    std::thread second(work, 'b');
    first.join();
    second.join();
    EXPECT_EQ(U(source), u"The quick brown fox jumps over the lazy dog");
}

TEST(UniStringRanges, CountsAreCutAndStartsPastTheEndAreEmpty) {
    UniString const text("abcdef");
    EXPECT_EQ(U(UniString(text, 2, 3)), u"cde");
    EXPECT_EQ(U(UniString(text, 4, 100)), u"ef");
    EXPECT_TRUE(UniString(text, 6, 1).IsEmpty());
    EXPECT_TRUE(UniString(text, 1000, UniString::kAll).IsEmpty());
    EXPECT_STREQ(text.ToCStr(1, 2), "bc");
    EXPECT_STREQ(text.ToCStr(9, 2), "");
    EXPECT_EQ(std::u16string(reinterpret_cast<char16_t const*>(text.ToUStr(1, 2).Get())), u"bc");
    EXPECT_EQ(text.ToUStr(7).Get()[0], 0);
    EXPECT_TRUE(text.Contains(UniChar('f')));
    EXPECT_FALSE(text.Contains(UniChar('f'), 0, 5));
    EXPECT_FALSE(text.Contains(UniChar('a'), 10));
    EXPECT_EQ(text.Find(UniChar('d'), 2), 3u);
    EXPECT_EQ(text.Find(UniChar('a'), 1), UniString::kAll);
    EXPECT_EQ(text[6], 0);

    UniString edited = text;
    edited.Delete(10, 2);
    edited.ReplaceAll(UniChar('a'), UniChar('x'), 7);
    edited.Delete(4);
    EXPECT_EQ(U(edited), u"abcd");
    edited.Delete(1, 2);
    EXPECT_EQ(U(edited), u"ad");
    edited.Insert(99, UniString("xyz"), 1, 99);
    EXPECT_EQ(U(edited), u"adyz");
    edited.Delete(0, UniString::kAll);
    EXPECT_TRUE(edited.IsEmpty());
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

    UniString grown;
    for (int i = 0; i < 1000; ++i) {
        grown.Append(UniChar(static_cast<char>('a' + i % 26)));
    }
    grown.Append("\x80 \xE2\x82\xAC", TavoCharCodeDefault);
    grown.Append("\xE2\x82\xAC", TavoCharCodeUTF8);
    grown.Append(u"\U0001F600", 2);
    EXPECT_EQ(grown.GetLength(), 1000u + 5 + 1 + 2);
    EXPECT_EQ(U(grown).substr(998), u"kl\u20AC \u00E2\u201A\u00AC\u20AC\U0001F600");

    UniString escaped("a<b & 'c'");
    escaped.ReplaceAll(UniString("&"), UniString("&amp;"));
    escaped.ReplaceAll(UniString("<"), UniString("&lt;"));
    escaped.ReplaceAll(UniChar('\''), UniChar('"'));
    EXPECT_EQ(U(escaped), u"a&lt;b &amp; \"c\"");

    UniString runs("aaaaa");
    runs.ReplaceAll(UniString("aa"), UniString("b"));
    EXPECT_EQ(U(runs), u"bba");
    UniString ranged("xaxaxa");
    ranged.ReplaceAll(UniString("xa"), UniString("[xa]"), 2, 3);
    EXPECT_EQ(U(ranged), u"xa[xa]xa");
    ranged.ReplaceAll(ranged, UniString("whole"));
    EXPECT_EQ(U(ranged), u"whole");
    ranged.ReplaceAll(UniString("o"), ranged);
    EXPECT_EQ(U(ranged), u"whwholele");
    ranged.ReplaceAll(UniString(), UniString("x"));
    EXPECT_EQ(U(ranged), u"whwholele");
}

TEST(UniStringEdit, LengthTrimClearAndLowerCase) {
    UniString text("abc");
    text.SetLength(6, UniChar('.'));
    EXPECT_EQ(U(text), u"abc...");
    text.SetLength(2);
    EXPECT_EQ(U(text), u"ab");
    text[1] = 'z';
    text[9] = 'q'; // past the end: nothing happens
    EXPECT_EQ(U(text), u"az");
    text.SetLength(0);
    EXPECT_TRUE(text.IsEmpty());

    UniString spaced(u"\t\n \u00A0\u3000 in  side \r\u2029");
    UniString shared = spaced;
    spaced.Trim();
    EXPECT_EQ(U(spaced), u"in  side");
    EXPECT_EQ(shared.GetLength(), 17u);
    shared.Trim();
    EXPECT_EQ(U(shared), u"in  side");
    UniString blank(" \t ");
    blank.Trim();
    EXPECT_TRUE(blank.IsEmpty());

    UniString reused("some text");
    reused.Clear();
    reused.Append("new");
    EXPECT_EQ(U(reused), u"new");

    UniString mixed(u"ABC \u00C4\u00D7\u00DE \u0178\u0130\u0139\u0100 \u0391\u03A9\u0386 \u0401\u0416 XYZ");
    mixed.SetToLowerCase(0, 19);
    EXPECT_EQ(U(mixed), u"abc \u00E4\u00D7\u00FE \u00FFi\u013A\u0101 \u03B1\u03C9\u03AC \u0451\u0436 XYZ");
    EXPECT_TRUE(UniString("Hello World").IsEqual(UniString("hELLO wORLD"), Tavo::CaseInsensitive));
    EXPECT_FALSE(UniString("Hello World").IsEqual(UniString("hELLO wORLD"), Tavo::CaseSensitive));
    EXPECT_FALSE(UniString("Hello").IsEqual(UniString("Hello!"), Tavo::CaseInsensitive));
}

TEST(UniStringCompare, EqualityWithAllKindsOfTextAndHash) {
    UniString const euro(u"\u20AC\u00E9");
    EXPECT_TRUE(euro == "\x80\xE9");
    EXPECT_FALSE(euro == "\x80");
    EXPECT_FALSE(euro == "\x80\xE9x");
    EXPECT_TRUE(euro == reinterpret_cast<unsigned short const*>(u"\u20AC\u00E9"));
    EXPECT_TRUE(UniString() == static_cast<char const*>(nullptr));
    EXPECT_TRUE(UniString() == static_cast<unsigned short const*>(nullptr));
    EXPECT_TRUE(UniString("x").IsASCII());
    EXPECT_FALSE(euro.IsASCII());

    UniString built("hash me");
    UniString other("hash ");
    other.Append("me");
    EXPECT_EQ(built.GenerateHashValue(), other.GenerateHashValue());
    EXPECT_NE(built.GenerateHashValue(), UniString("hash mf").GenerateHashValue());
}

TEST(UniStringConcatenation, PiecesOfEveryKind) {
    UniString const name("name");
    UniString const joined = name + ": " + reinterpret_cast<unsigned short const*>(u"\u00FCber") + name;
    EXPECT_EQ(U(joined), u"name: \u00FCbername");
    EXPECT_EQ(U("<" + name + ">"), u"<name>");
    UniString const shared = UniString() + name;
    EXPECT_EQ(shared.GetUStr(), name.GetUStr());
    EXPECT_EQ(U(name + static_cast<char const*>(nullptr)), u"name");

    unsigned short copy[8];
    EXPECT_EQ(Tavo::ucscpy(copy, name.GetUStr()), copy);
    EXPECT_EQ(Tavo::ucslen(copy), 4u);
}

TEST(UniStringConversion, ReadOutAs8BitText) {
    UniString const text(u"a\u20AC\u0100\U0001F600");
    EXPECT_STREQ(text.ToCStr(), "a\x80??");
    EXPECT_STREQ(text.ToCStr(0, UniString::kAll, TavoCharCodeUTF8), "a\xE2\x82\xAC\xC4\x80\xF0\x9F\x98\x80");
    std::unique_ptr<char[]> utf8(text.CopyUTF8(1, 1));
    EXPECT_STREQ(utf8.get(), "\xE2\x82\xAC");
    std::unique_ptr<char[]> empty(text.CopyUTF8(50));
    EXPECT_STREQ(empty.get(), "");
    EXPECT_EQ(U(UniString("a\0b", 3, TavoCharCodeDefault)), std::u16string(u"a\0b", 3));
}

TEST(UniStringPrintf, ConversionsFlagsAndWidths) {
    UniString const tail(u"t\u00E9xt");
    int const n = 42;
    char pointer[32];
    std::snprintf(pointer, sizeof pointer, "%p", static_cast<void const*>(&n));
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
    EXPECT_EQ(U(UniString::PrintfFwd("%ls (%d):  ", Tavo::UniString("log").ToUStr().Get(), 3)),
              u"log (3):  ");
    EXPECT_EQ(U(UniString::PrintfFwd("100%")), u"100%");
}
