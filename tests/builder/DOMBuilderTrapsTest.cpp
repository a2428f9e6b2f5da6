// Calls that used to do something else than they say: a text literal as a value, U+0000 inside a value,
// and a document too large for the 32-bit length of the export sinks.
#include "builder/BuilderTestText.hpp"

#include "TavoRoot/XMLOChannel.hpp"
#include "TavoXMLUtils/builder/internal/ExportLength.hpp"
#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

using BuilderTest::Exported;
using TavoXML::DOMBuilder;

namespace {

// The message texts of the channel, one per line.
std::string MessagesOf(DOMBuilder& channel) {
    std::string all;
    for (int i = 0; i < channel.GetNumberOfMessage(); ++i) {
        Tavo::UniString text;
        int line = 0;
        channel.GetMessage(i, text, line);
        all += Tavo::ToUTF8String(text) + "\n";
    }
    return all;
}

} // namespace

TEST(DOMBuilderTraps, TextLiteralsAreWrittenAsTextNotAsBool) {
    DOMBuilder channel("root", false);
    Tavo::XMLOChannel& base = channel;
    EXPECT_EQ(base.WriteXML("Title", "Hello \x80"), Tavo::NoError);
    EXPECT_EQ(channel.WriteXML("Empty", static_cast<char const*>(nullptr)), Tavo::NoError);
    EXPECT_EQ(base.WriteStartElement("e"), Tavo::NoError);
    EXPECT_EQ(base.WriteXMLAttr("k", "v&"), Tavo::NoError);
    EXPECT_EQ(base.WriteXMLTextNode("x"), Tavo::NoError);
    EXPECT_EQ(channel.WriteXMLTextNode("y"), Tavo::NoError);
    base.WriteEndElement();
    // bool still means bool.
    EXPECT_EQ(base.WriteXML("Flag", true), Tavo::NoError);
    EXPECT_EQ(
        Exported(channel, false),
        "<root><Title>Hello \xE2\x82\xAC</Title><Empty/><e k=\"v&amp;\">xy</e><Flag>true</Flag></root>");
}

TEST(DOMBuilderTraps, NulInsideAValueIsRefusedNotCut) {
    DOMBuilder channel("root", false);
    Tavo::UniString const withNul(u"a\0b", 3);
    EXPECT_EQ(channel.WriteXML("v", withNul), Tavo::GeneralError);
    EXPECT_EQ(MessagesOf(channel), "Content of v contains invalid characters\n");
    // As for any refused character, the element stays, empty.
    EXPECT_EQ(Exported(channel, false), "<root><v/></root>");
    // The writers without a value check refuse it without touching the document.
    channel.WriteStartElement("e");
    std::string const before = Exported(channel, false);
    EXPECT_EQ(channel.WriteXMLAttr("k", withNul), Tavo::GeneralError);
    EXPECT_EQ(channel.WriteXMLTextNode(withNul), Tavo::GeneralError);
    EXPECT_EQ(channel.WriteXMLCDATAString(withNul), Tavo::GeneralError);
    EXPECT_EQ(Exported(channel, false), before);
    EXPECT_EQ(channel.GetNumberOfMessage(), 1);
    // What stands before the refused one is still written whole.
    EXPECT_EQ(channel.WriteXML("w", Tavo::UniString(u"ab")), Tavo::NoError);
}

TEST(DOMBuilderTraps, ExportOfFourGiBOrMoreIsRefused) {
    EXPECT_EQ(TavoXML::detail::ExportLength(0), 0u);
    EXPECT_EQ(TavoXML::detail::ExportLength(0xFFFFFFFFull), 0xFFFFFFFFu);
    try {
        TavoXML::detail::ExportLength(0x100000000ull);
        FAIL() << "no exception";
    } catch (TavoXML::DOMBuilderException const& refused) {
        EXPECT_EQ(Tavo::ToUTF8String(refused.GetMessage()),
                  "Document too large to export: 4294967296 bytes, the limit is 4294967295");
        EXPECT_EQ(refused.GetErrorCode(), Tavo::GeneralError);
    }
}
