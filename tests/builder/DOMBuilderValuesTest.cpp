#include "BuilderTestText.hpp"

#include "TavoRoot/Guid.hpp"

#include <gtest/gtest.h>

#include <xercesc/dom/DOM.hpp>

#include <string>
#include <vector>

using BuilderTest::Exported;
using TavoXML::DOMBuilder;

namespace {

// Sees what reaches the two funnels that write named values.
class RecordingBuilder : public DOMBuilder {
public:
    RecordingBuilder() : DOMBuilder("root", false) {}
    using DOMBuilder::WriteXML;
    using DOMBuilder::WriteXMLAttr;
    int WriteXML(char const* name, Tavo::UniString const& value) override {
        elements.push_back(std::string(name) + "=" + value.ToCStr().Get());
        return DOMBuilder::WriteXML(name, value);
    }
    int WriteXMLAttr(char const* name, Tavo::UniString const& value) override {
        attributes.push_back(std::string(name) + "=" + value.ToCStr().Get());
        return DOMBuilder::WriteXMLAttr(name, value);
    }
    std::vector<std::string> elements, attributes;
};

} // namespace

TEST(DOMBuilderValues, EveryValueEndsInTheStringFunnel) {
    RecordingBuilder channel;
    channel.WriteXML("d", 2.5);
    channel.WriteXML("c", 'A'); // a char is a small number
    channel.WriteXML("n", static_cast<char>(-1));
    channel.WriteXML("u", static_cast<unsigned char>(255));
    channel.WriteXML("l", -7L);
    channel.WriteXML("ull", 18446744073709551615ULL);
    channel.WriteXML("b", true);
    channel.WriteXML("t", "text", 0);
    EXPECT_EQ(channel.elements, (std::vector<std::string>{"d=2.5", "c=65", "n=-1", "u=255", "l=-7",
                                                          "ull=18446744073709551615", "b=true", "t=text"}));

    channel.WriteXMLAttr("c", 'A');
    channel.WriteXMLAttr("s", static_cast<signed char>(-5));
    channel.WriteXMLAttr("f", 0.25f);
    EXPECT_EQ(channel.WriteXMLVersionAttr(Tavo::ClassVersion(3, 5)), 0);
    EXPECT_EQ(channel.attributes, (std::vector<std::string>{"c=65", "s=-5", "f=0.25", "Mv=3", "Sv=5"}));
    EXPECT_EQ(Exported(channel, false),
              "<root Mv=\"3\" Sv=\"5\" c=\"65\" f=\"0.25\" s=\"-5\"><d>2.5</d><c>65</c><n>-1</n><u>255</u>"
              "<l>-7</l><ull>18446744073709551615</ull><b>true</b><t>text</t></root>");

    // A Guid takes the same way and reads back.
    Tavo::Guid const guid = Tavo::Guid::Generate();
    channel.WriteXML("g", guid);
    channel.WriteXMLAttr("id", guid);
    for (std::string const& written : {channel.elements.back(), channel.attributes.back()}) {
        Tavo::Guid back;
        EXPECT_EQ(back.ConvertFromString(Tavo::UniString(written.substr(written.find('=') + 1).c_str())), 0);
        EXPECT_EQ(back, guid) << written;
    }
}

TEST(DOMBuilderValues, LineEndsAreNormalisedOnlyInElementValues) {
    DOMBuilder channel("root", false);
    Tavo::UniString const value(u"x\r\ny\rz");
    EXPECT_TRUE(channel.GetReplaceCR());
    channel.WriteXML("on", value);
    channel.SetReplaceCR(false);
    channel.WriteXML("off", value);
    channel.SetReplaceCR(true);
    channel.WriteXMLAttr("attr", value);
    channel.WriteXMLTextNode(value);

    xercesc::DOMElement* root = channel.GetDOMDocument()->getDocumentElement();
    EXPECT_EQ(std::u16string(root->getFirstChild()->getTextContent()), u"x\ny\nz");
    EXPECT_EQ(std::u16string(root->getFirstChild()->getNextSibling()->getTextContent()), u"x\r\ny\rz");
    EXPECT_EQ(std::u16string(root->getAttribute(u"attr")), u"x\r\ny\rz");
    EXPECT_EQ(std::u16string(root->getLastChild()->getTextContent()), u"x\r\ny\rz");
    EXPECT_EQ(value, Tavo::UniString(u"x\r\ny\rz")) << "the caller's string is not touched";
}

TEST(DOMBuilderValues, RefusedNamesAndValues) {
    DOMBuilder channel("root", false);
    std::string const before = Exported(channel);
    EXPECT_EQ(channel.WriteXML("a b", 1), 2);
    EXPECT_EQ(Exported(channel), before) << "a refused name leaves no trace";
    EXPECT_EQ(channel.GetNumberOfMessage(), 0);
    EXPECT_THROW(channel.WriteXML("1bad", 1), xercesc::DOMException);
    EXPECT_THROW(channel.WriteXMLAttr("<", 1), xercesc::DOMException);
    EXPECT_THROW(channel.WriteStartElement(""), xercesc::DOMException);

    // Invalid characters leave an empty element and a message.
    EXPECT_EQ(channel.WriteXML("bad", Tavo::UniString(u"a\uFFFFb")), Tavo::GeneralError);
    EXPECT_EQ(channel.WriteXML("good", Tavo::UniString(u"\u00E4\t\n\u0085")), 0);
    EXPECT_EQ(channel.GetErrorStatus(), 0);
    ASSERT_EQ(channel.GetNumberOfMessage(), 1);
    Tavo::UniString text;
    int line = 0;
    channel.GetMessage(0, text, line);
    EXPECT_EQ(text, Tavo::UniString("Content of bad contains invalid characters"));
    EXPECT_EQ(line, 1);
    xercesc::DOMNode* bad = channel.GetDOMDocument()->getDocumentElement()->getFirstChild();
    EXPECT_EQ(std::u16string(bad->getNodeName()), u"bad");
    EXPECT_FALSE(bad->hasChildNodes());
    EXPECT_EQ(channel.WriteXML("ctrl", Tavo::UniString(u"a\u0001b")), Tavo::GeneralError)
        << "restricted in XML 1.1";
    EXPECT_EQ(channel.GetNumberOfMessage(), 2);

    channel.AddMessage(Tavo::UniString("second"));
    for (int index : {-1, 3}) { // out of range, also as unsigned
        text = "untouched";
        line = -99;
        channel.GetMessage(index, text, line);
        EXPECT_EQ(text, Tavo::UniString("untouched")) << index;
        EXPECT_EQ(line, -99) << index;
    }
    channel.GetMessage(2, text, line);
    EXPECT_EQ(text, Tavo::UniString("second"));
    EXPECT_EQ(line, 1);

    EXPECT_EQ(channel.WriteXML("empty", Tavo::UniString("")), 0);
    EXPECT_NE(Exported(channel, false).find("<empty/></root>"), std::string::npos);
}

TEST(DOMBuilderValues, SerialiserEscapesAndWritesUtf8) {
    DOMBuilder channel("root", false);
    Tavo::UniString const nonAscii("Zürich – Ærø €", TavoCharCodeUTF8);
    channel.WriteXMLAttr("q", Tavo::UniString("say \"hi\" & <go>"));
    channel.WriteXML("v", Tavo::UniString("a<b & c>d"));
    channel.WriteXML("u", nonAscii);
    channel.WriteXMLCDATAString(Tavo::UniString("raw ]]> text"));

    std::string const text = Exported(channel, false);
    EXPECT_NE(text.find("q=\"say &quot;hi&quot; &amp; &lt;go>\""), std::string::npos) << text;
    EXPECT_NE(text.find("<v>a&lt;b &amp; c&gt;d</v>"), std::string::npos) << text;
    EXPECT_NE(text.find("<u>Z\xC3\xBCrich \xE2\x80\x93 \xC3\x86r\xC3\xB8 \xE2\x82\xAC</u>"),
              std::string::npos)
        << text;
    Tavo::UniString const asString = channel.Export(false);
    EXPECT_NE(asString.View().find(nonAscii.View()), std::u16string_view::npos);

    // One CDATA node holding the text unchanged; how "]]>" is split in the text is the serialiser's affair.
    xercesc::DOMNode* cdata = channel.GetDOMDocument()->getDocumentElement()->getLastChild();
    EXPECT_EQ(cdata->getNodeType(), xercesc::DOMNode::CDATA_SECTION_NODE);
    EXPECT_EQ(std::u16string(cdata->getNodeValue()), u"raw ]]> text");
}
