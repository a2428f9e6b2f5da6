#include "MockXMLChannels.hpp"

#include "TavoRoot/Handle.hpp"
#include "TavoRoot/XMLTag.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <stdexcept>
#include <string>
#include <utility>

using namespace testing;

namespace Tavo {
namespace {

Matcher<UniString const&> Text(char const* utf8) {
    return Eq(UniString(utf8, TavoCharCodeUTF8));
}

// Each inherited writer passes the funnel's status back; distinct statuses show which call answered.
TEST(XMLOChannelTest, ElementAndAttributeWritersEndInTheStringFunnel) {
    StrictMock<MockXMLOChannel> channel;
    {
        InSequence order;
        EXPECT_CALL(channel, WriteXML(StrEq("b"), Text("true"))).WillOnce(Return(1));
        EXPECT_CALL(channel, WriteXML(StrEq("b"), Text("false"))).WillOnce(Return(2));
        // The float overload of the conversion: 0.1f is not "0.10000000149011612".
        EXPECT_CALL(channel, WriteXML(StrEq("f"), Text("0.1"))).WillOnce(Return(3));
        EXPECT_CALL(channel, WriteXML(StrEq("d"), Text("0.1"))).WillOnce(Return(4));
        EXPECT_CALL(channel, WriteXML(StrEq("s"), Text("abcdef"))).WillOnce(Return(5));
        EXPECT_CALL(channel, WriteXML(StrEq("s"), Text("ab"))).WillOnce(Return(6));
        EXPECT_CALL(channel, WriteXML(StrEq("s"), Text("€é"))).WillOnce(Return(7));
        EXPECT_CALL(channel, WriteXML(StrEq("s"), Text(""))).WillOnce(Return(8));
        EXPECT_CALL(channel, WriteXMLAttr(StrEq("b"), Text("true"))).WillOnce(Return(9));
        EXPECT_CALL(channel, WriteXMLAttr(StrEq("f"), Text("-2.5"))).WillOnce(Return(10));
        EXPECT_CALL(channel, WriteXMLAttr(StrEq("d"), Text("1048576.5"))).WillOnce(Return(11));
        EXPECT_CALL(channel, WriteXMLAttr(StrEq("s"), Text("whole value"))).WillOnce(Return(12));
        EXPECT_CALL(channel, WriteXMLAttr(StrEq("s"), Text("who"))).WillOnce(Return(13));
    }
    EXPECT_EQ(1, channel.WriteXML("b", true));
    EXPECT_EQ(2, channel.WriteXML("b", false));
    EXPECT_EQ(3, channel.WriteXML("f", 0.1f));
    EXPECT_EQ(4, channel.WriteXML("d", 0.1));
    EXPECT_EQ(5, channel.WriteXML("s", "abcdef", 0));
    EXPECT_EQ(6, channel.WriteXML("s", "abcdef", 2));
    EXPECT_EQ(7, channel.WriteXML("s", "\x80\xE9", 0)); // default character code, not UTF-8
    EXPECT_EQ(8, channel.WriteXML("s", nullptr, 0));
    EXPECT_EQ(9, channel.WriteXMLAttr("b", true));
    EXPECT_EQ(10, channel.WriteXMLAttr("f", -2.5f));
    EXPECT_EQ(11, channel.WriteXMLAttr("d", 1048576.5));
    EXPECT_EQ(12, channel.WriteXMLAttr("s", "whole value", 0));
    EXPECT_EQ(13, channel.WriteXMLAttr("s", "whole value", 3));
}

TEST(XMLOChannelTest, TextNodeWritersEndInTheStringFunnel) {
    StrictMock<MockXMLOChannel> channel;
    {
        InSequence order;
        for (char const* text :
             {"65", "-1", "-128", "255", "true", "-32768", "65535", "-2147483648", "4294967295",
              "-9223372036854775808", "18446744073709551615", "-9223372036854775808", "18446744073709551615",
              "1.5", "-2.25", "", "abc", ""}) {
            EXPECT_CALL(channel, WriteXMLTextNode(Text(text))).WillOnce(Return(NoError));
        }
    }
    // Every char type is a small number, not a character.
    auto write = [&channel](auto... values) { return (0 + ... + channel.WriteXMLTextNode(values)); };
    EXPECT_EQ(NoError, write('A', char(-1), static_cast<signed char>(-128), static_cast<unsigned char>(255),
                             true, static_cast<short>(SHRT_MIN), static_cast<unsigned short>(USHRT_MAX),
                             INT_MIN, UINT_MAX, LONG_MIN, ULONG_MAX, LLONG_MIN, ULLONG_MAX, 1.5f, -2.25));
    // The empty text with length 0 must still reach the funnel.
    EXPECT_EQ(NoError, channel.WriteXMLTextNode("", 0));
    EXPECT_EQ(NoError, channel.WriteXMLTextNode("abcdef", 3));
    EXPECT_EQ(NoError, channel.WriteXMLTextNode(nullptr, 0));
}

TEST(XMLOChannelTest, CDATAWritersEndInTheStringFunnel) {
    StrictMock<MockXMLOChannel> channel;
    char** handle = NewHandle(2);
    (*handle)[0] = '\xAB';
    (*handle)[1] = '\x01';
    {
        InSequence order;
        EXPECT_CALL(channel, WriteXMLCDATAString(Text("00FF7A"))).WillOnce(Return(1));
        EXPECT_CALL(channel, WriteXMLCDATAString(Text(""))).WillOnce(Return(2));
        EXPECT_CALL(channel, WriteXMLCDATAString(Text("AB01"))).WillOnce(Return(3));
        EXPECT_CALL(channel, WriteXMLCDATAString(Text("x]]>é"))).WillOnce(Return(4));
        EXPECT_CALL(channel, WriteXMLCDATAString(Text("x]"))).WillOnce(Return(5));
    }
    EXPECT_EQ(1, channel.WriteXMLCDATABinToHex("\x00\xFF\x7A", 3));
    EXPECT_EQ(2, channel.WriteXMLCDATABinToHex(nullptr, 0));
    EXPECT_EQ(3, channel.WriteXMLCDATABinToHex(handle));
    EXPECT_EQ(4, channel.WriteXMLCDATAString("x]]>\xE9", 0));
    EXPECT_EQ(5, channel.WriteXMLCDATAString("x]]>", 2));
    // Refused without reaching the funnel.
    EXPECT_EQ(GeneralError, channel.WriteXMLCDATABinToHex(nullptr, 4));
    EXPECT_EQ(GeneralError, channel.WriteXMLCDATABinToHex(static_cast<char**>(nullptr)));
    DisposeHandle(handle);
}

// The input double answers ReadXMLCDATAString(UniString&) with `text` and `status`.
void AnswerCDATA(MockXMLIChannel& channel, char const* text, int status = NoError) {
    EXPECT_CALL(channel, ReadXMLCDATAString(Matcher<UniString&>(_)))
        .WillOnce(DoAll(SetArgReferee<0>(UniString(text, TavoCharCodeUTF8)), Return(status)))
        .RetiresOnSaturation();
}

TEST(XMLIChannelTest, HexReadersUndoTheHexWriterAndRefuseBadText) {
    std::string bytes;
    for (int i = 0; i < 256; ++i) {
        bytes += static_cast<char>(i);
    }
    StrictMock<MockXMLOChannel> writer;
    UniString hex;
    EXPECT_CALL(writer, WriteXMLCDATAString(Matcher<UniString const&>(_)))
        .WillOnce(DoAll(SaveArg<0>(&hex), Return(NoError)));
    ASSERT_EQ(NoError, writer.WriteXMLCDATABinToHex(bytes.data(), 256));
    StrictMock<MockXMLIChannel> channel;
    std::string buffer(257, 'z');
    AnswerCDATA(channel, hex.ToCStr());
    EXPECT_EQ(NoError, channel.ReadXMLCDATAHexToBin(buffer.data(), 257));
    EXPECT_EQ(bytes + 'z', buffer);
    char** handle = NewHandle(10);
    AnswerCDATA(channel, hex.ToCStr());
    EXPECT_EQ(NoError, channel.ReadXMLCDATAHexToBin(handle));
    ASSERT_EQ(256u, GetHandleSize(handle));
    EXPECT_EQ(bytes, std::string(*handle, 256));
    AnswerCDATA(channel, "cafe"); // lower case is read too
    EXPECT_EQ(NoError, channel.ReadXMLCDATAHexToBin(handle));
    ASSERT_EQ(2u, GetHandleSize(handle));
    // Growing a handle keeps its bytes and zero-fills the rest.
    ASSERT_EQ(0, SetHandleSize(handle, 3));
    EXPECT_EQ(std::string("\xCA\xFE\0", 3), std::string(*handle, 3));
    AnswerCDATA(channel, "");
    EXPECT_EQ(NoError, channel.ReadXMLCDATAHexToBin(handle));
    EXPECT_EQ(0u, GetHandleSize(handle));
    AnswerCDATA(channel, "XY");
    EXPECT_EQ(GeneralError, channel.ReadXMLCDATAHexToBin(handle));
    EXPECT_EQ(GeneralError, channel.ReadXMLCDATAHexToBin(static_cast<char**>(nullptr)));
    DisposeHandle(handle);

    // Odd length, a bad digit, a buffer too small, or a failed read leave the buffer untouched.
    buffer = "wxyz";
    for (auto [bad, size] : {std::pair{"ABC", 4}, {"0G", 4}, {"0011", 1}}) {
        AnswerCDATA(channel, bad);
        EXPECT_EQ(GeneralError, channel.ReadXMLCDATAHexToBin(buffer.data(), size)) << bad;
    }
    AnswerCDATA(channel, "00", 77);
    EXPECT_EQ(77, channel.ReadXMLCDATAHexToBin(buffer.data(), 4));
    EXPECT_EQ("wxyz", buffer);
}

TEST(XMLIChannelTest, CDATAStringIntoABuffer) {
    StrictMock<MockXMLIChannel> channel;
    char buffer[8] = "1234567";
    AnswerCDATA(channel, "é text");
    EXPECT_EQ(NoError, channel.ReadXMLCDATAString(buffer, 4)); // cut to 3 bytes and terminated
    EXPECT_STREQ("\xE9 t", buffer);
    AnswerCDATA(channel, "");
    EXPECT_EQ(NoError, channel.ReadXMLCDATAString(buffer, 8));
    EXPECT_STREQ("", buffer);
    AnswerCDATA(channel, "never copied", 5);
    EXPECT_EQ(5, channel.ReadXMLCDATAString(buffer, 8));
    EXPECT_EQ(GeneralError, channel.ReadXMLCDATAString(buffer, 0));
}

TEST(XMLTagTest, OpensWritesAttributesAndCloses) {
    StrictMock<MockXMLOChannel> channel;
    {
        InSequence order;
        EXPECT_CALL(channel, WriteStartElement(StrEq("item"))).WillOnce(Return(NoError));
        EXPECT_CALL(channel, WriteXMLAttr(StrEq("a"), Text("1"))).WillOnce(Return(NoError));
        EXPECT_CALL(channel, WriteXMLAttr(StrEq("b"), Text("two words"))).WillOnce(Return(NoError));
        EXPECT_CALL(channel, WriteXMLTextNode(Text("inside"))).WillOnce(Return(NoError));
        EXPECT_CALL(channel, WriteEndElement()).WillOnce(Return(NoError));
        EXPECT_CALL(channel, WriteStartElement(StrEq("bare"))).WillOnce(Return(NoError));
        EXPECT_CALL(channel, WriteEndElement()).WillOnce(Throw(std::runtime_error("refused")));
    }
    {
        // Attributes built from temporaries keep their own copies.
        Array<XMLTag::XMLAttribute> attributes{{"a", std::string("1").c_str()}, {"b", "two words"}};
        XMLTag tag(channel, "item", &attributes);
        channel.WriteXMLTextNode("inside", 0);
    }
    auto closeBare = [&channel] { XMLTag tag(channel, "bare", nullptr); };
    EXPECT_NO_THROW(closeBare());
}

} // namespace
} // namespace Tavo
