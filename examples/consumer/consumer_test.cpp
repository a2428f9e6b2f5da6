// A client's test of what its writer produces, with the XML assertion of TavoXMLUtils::Testing.
#include "TavoXMLUtils/TavoXMLUtils.hpp"
#include "TavoXMLUtils/testing/XMLAssertions.hpp"

#include <gtest/gtest.h>

namespace {

Tavo::UniString WriteSettings(double scale) {
    Tavo::XMLOChannel* channel = TavoXML::CreateXMLOChannel("Settings", TavoXML::ThrowOnError);
    channel->WriteStartDocument();
    channel->WriteXML("Width", 640);
    channel->WriteXML("Scale", scale);
    channel->WriteEndDocument();
    Tavo::UniString text = TavoXML::ExportOChannelToUniString(channel);
    TavoXML::DisposeXMLOChannel(channel);
    return text;
}

} // namespace

TEST(Consumer, WriterOutputEqualsTheExpectedDocument) {
    Tavo::UniString const expected("<settings><width>640</width><scale>2.5000001</scale></settings>");
    EXPECT_TRUE(TavoXML::testing::XMLEqual(expected, WriteSettings(2.5), {.skipWhitespace = true}));
    EXPECT_FALSE(TavoXML::testing::XMLEqual(expected, WriteSettings(3.5), {.skipWhitespace = true}));
}
