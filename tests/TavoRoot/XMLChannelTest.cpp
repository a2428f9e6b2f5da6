#include "TavoRoot/RecordingXMLChannels.hpp"

#include "TavoRoot/Handle.hpp"
#include "TavoRoot/XMLTag.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>

namespace Tavo {
namespace {

// Each operation the output channel implements itself must reach its funnel with the right text and pass
// the funnel's status back.
TEST(XMLOChannelTest, InheritedWritersEndInTheirFunnel) {
    RecordingXMLOChannel channel;
    char** handle = NewHandle(2);
    (*handle)[0] = '\xAB';
    (*handle)[1] = '\x01';
    using W = XMLOChannel&;
    std::pair<std::function<int(W)>, char const*> const cases[] = {
        {[](W o) { return o.WriteXML("b", true); }, "E b true"},
        {[](W o) { return o.WriteXML("f", 0.1f); }, "E f 0.1"}, // not "0.10000000149011612"
        {[](W o) { return o.WriteXML("s", "abcdef", 0); }, "E s abcdef"},
        {[](W o) { return o.WriteXML("s", "abcdef", 2); }, "E s ab"},
        {[](W o) { return o.WriteXML("s", "\x80\xE9", 0); }, "E s €é"}, // default character code
        {[](W o) { return o.WriteXML("s", nullptr, 0); }, "E s "},
        {[](W o) { return o.WriteXMLAttr("f", -2.5f); }, "A f -2.5"},
        {[](W o) { return o.WriteXMLAttr("d", 1048576.5); }, "A d 1048576.5"},
        {[](W o) { return o.WriteXMLAttr("s", "whole value", 3); }, "A s who"},
        // Every char type is a small number, not a character.
        {[](W o) { return o.WriteXMLTextNode('A'); }, "T 65"},
        {[](W o) { return o.WriteXMLTextNode(static_cast<signed char>(-128)); }, "T -128"},
        {[](W o) { return o.WriteXMLTextNode(static_cast<unsigned char>(255)); }, "T 255"},
        {[](W o) { return o.WriteXMLTextNode(static_cast<short>(SHRT_MIN)); }, "T -32768"},
        {[](W o) { return o.WriteXMLTextNode(static_cast<unsigned short>(USHRT_MAX)); }, "T 65535"},
        {[](W o) { return o.WriteXMLTextNode(INT_MIN); }, "T -2147483648"},
        {[](W o) { return o.WriteXMLTextNode(UINT_MAX); }, "T 4294967295"},
        {[](W o) { return o.WriteXMLTextNode(LLONG_MIN); }, "T -9223372036854775808"},
        {[](W o) { return o.WriteXMLTextNode(ULLONG_MAX); }, "T 18446744073709551615"},
        {[](W o) { return o.WriteXMLTextNode(1.5f); }, "T 1.5"},
        {[](W o) { return o.WriteXMLTextNode(-2.25); }, "T -2.25"},
        {[](W o) { return o.WriteXMLTextNode("abcdef", 3); }, "T abc"},
        {[](W o) { return o.WriteXMLTextNode(nullptr, 0); }, "T "}, // still reaches the funnel
        {[](W o) { return o.WriteXMLCDATABinToHex("\x00\xFF\x7A", 3); }, "C 00FF7A"},
        {[handle](W o) { return o.WriteXMLCDATABinToHex(handle); }, "C AB01"},
        {[](W o) { return o.WriteXMLCDATAString("x]]>\xE9", 0); }, "C x]]>é"},
        {[](W o) { return o.WriteXMLCDATAString("x]]>", 2); }, "C x]"},
        // A text literal is a text, not a bool.
        {[](W o) { return o.WriteXML("t", "Hello \x80"); }, "E t Hello €"},
        {[](W o) { return o.WriteXMLAttr("k", "v"); }, "A k v"},
        {[](W o) { return o.WriteXMLTextNode("x"); }, "T x"},
        {[](W o) { return o.WriteXML("t", static_cast<char const*>(nullptr)); }, "E t "},
    };
    for (auto const& [write, expected] : cases) {
        channel.log.clear();
        EXPECT_EQ(7, write(channel)) << expected;
        EXPECT_EQ(expected, channel.log);
    }
    // Refused without reaching the funnel.
    channel.log.clear();
    EXPECT_EQ(GeneralError, static_cast<W>(channel).WriteXMLCDATABinToHex(nullptr, 4));
    EXPECT_EQ(GeneralError, static_cast<W>(channel).WriteXMLCDATABinToHex(static_cast<char**>(nullptr)));
    EXPECT_EQ("", channel.log);
    DisposeHandle(handle);
}

// The inherited readers decode what the funnel ReadXMLCDATAString(UniString&) answers.
TEST(XMLIChannelTest, InheritedReadersDecodeTheFunnelsText) {
    ScriptedXMLIChannel channel;
    XMLIChannel& base = channel;
    std::string bytes;
    for (int i = 0; i < 256; ++i) {
        bytes += static_cast<char>(i);
        char pair[3];
        std::snprintf(pair, sizeof pair, i % 2 ? "%02X" : "%02x", i); // both cases are read
        channel.cdata += pair;
    }
    std::string buffer(257, 'z');
    EXPECT_EQ(NoError, base.ReadXMLCDATAHexToBin(buffer.data(), 257));
    EXPECT_EQ(bytes + 'z', buffer);
    char** handle = NewHandle(10);
    EXPECT_EQ(NoError, base.ReadXMLCDATAHexToBin(handle));
    ASSERT_EQ(256u, GetHandleSize(handle));
    EXPECT_EQ(bytes, std::string(*handle, 256));
    channel.cdata = "XY";
    EXPECT_EQ(GeneralError, base.ReadXMLCDATAHexToBin(handle));
    EXPECT_EQ(GeneralError, base.ReadXMLCDATAHexToBin(static_cast<char**>(nullptr)));
    DisposeHandle(handle);

    // Odd length, a bad digit, a buffer too small, or a failed read leave the buffer untouched.
    buffer = "wxyz";
    for (auto [bad, size] : {std::pair{"ABC", 4}, {"0G", 4}, {"0011", 1}}) {
        channel.cdata = bad;
        EXPECT_EQ(GeneralError, base.ReadXMLCDATAHexToBin(buffer.data(), size)) << bad;
    }
    channel.cdata = "00", channel.status = 77;
    EXPECT_EQ(77, base.ReadXMLCDATAHexToBin(buffer.data(), 4));
    EXPECT_EQ("wxyz", buffer);

    char text[8] = "1234567";
    channel.cdata = "é text", channel.status = NoError;
    EXPECT_EQ(NoError, base.ReadXMLCDATAString(text, 4)); // cut to 3 bytes and terminated
    EXPECT_STREQ("\xE9 t", text);
    EXPECT_EQ(GeneralError, base.ReadXMLCDATAString(text, 0));
}

TEST(XMLTagTest, OpensWritesAttributesAndCloses) {
    RecordingXMLOChannel channel;
    {
        // Attributes built from temporaries keep their own copies.
        Array<XMLTag::XMLAttribute> attributes{{"a", std::string("1").c_str()}};
        XMLTag tag(channel, "item", &attributes);
    }
    EXPECT_EQ("Start item; A a 1; End", channel.log);
    channel.refuseEnd = true; // a failing close is not passed on from the destructor
    auto closeBare = [&channel] { XMLTag tag(channel, "bare", nullptr); };
    EXPECT_NO_THROW(closeBare());
    EXPECT_EQ("Start item; A a 1; End; Start bare", channel.log);
}

} // namespace
} // namespace Tavo
