#include "builder/BuilderTestText.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <xercesc/dom/DOM.hpp>

using BuilderTest::Exported;
using TavoXML::DOMBuilder;

TEST(DOMBuilderValues, EveryValueTypeIsWrittenAsText) {
    DOMBuilder channel("root", false);
    channel.WriteXML("d", 2.5);
    channel.WriteXML("c", 'A'); // a char is a small number
    channel.WriteXML("n", static_cast<char>(-1));
    channel.WriteXML("u", static_cast<unsigned char>(255));
    channel.WriteXML("ull", 18446744073709551615ULL);
    channel.WriteXML("b", true);
    channel.WriteXML("t", "text", 0);
    channel.WriteXMLAttr("s", static_cast<signed char>(-5));
    channel.WriteXMLAttr("f", 0.25f);
    EXPECT_EQ(channel.WriteXMLVersionAttr(Tavo::ClassVersion(3, 5)), 0);
    EXPECT_EQ(Exported(channel, false),
              "<root Mv=\"3\" Sv=\"5\" f=\"0.25\" s=\"-5\"><d>2.5</d><c>65</c><n>-1</n><u>255</u>"
              "<ull>18446744073709551615</ull><b>true</b><t>text</t></root>");

    Tavo::Guid const guid = Tavo::Guid::Generate();
    Tavo::Guid back;
    channel.WriteXML("g", guid);
    xercesc::DOMElement const* root = channel.GetDOMDocument()->getDocumentElement();
    EXPECT_EQ(back.ConvertFromString(Tavo::UniString(root->getLastChild()->getTextContent())), 0);
    EXPECT_EQ(back, guid);
}

TEST(DOMBuilderValues, LineEndsAreNormalisedOnlyInElementValues) {
    DOMBuilder channel("root", false);
    Tavo::UniString const value(u"x\r\ny\rz");
    channel.WriteXML("on", value);
    channel.SetReplaceCR(false);
    channel.WriteXML("off", value);
    channel.SetReplaceCR(true);
    channel.WriteXMLAttr("attr", value);
    xercesc::DOMElement* root = channel.GetDOMDocument()->getDocumentElement();
    EXPECT_EQ(std::u16string(root->getFirstChild()->getTextContent()), u"x\ny\nz");
    EXPECT_EQ(std::u16string(root->getLastChild()->getTextContent()), u"x\r\ny\rz");
    EXPECT_EQ(std::u16string(root->getAttribute(u"attr")), u"x\r\ny\rz");
}

TEST(DOMBuilderValues, RefusedNamesAndValues) {
    DOMBuilder channel("root", false);
    std::string const before = Exported(channel);
    EXPECT_EQ(channel.WriteXML("a b", 1), 2);
    EXPECT_EQ(Exported(channel), before) << "a refused name leaves no trace";
    EXPECT_EQ(channel.GetNumberOfMessage(), 0);
    EXPECT_THROW(channel.WriteXML("1bad", 1), xercesc::DOMException);
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
    channel.GetMessage(-1, text, line); // out of range as unsigned: out-arguments untouched
    channel.GetMessage(1, text, line);
    EXPECT_EQ(text, Tavo::UniString("Content of bad contains invalid characters"));
    xercesc::DOMNode* bad = channel.GetDOMDocument()->getDocumentElement()->getFirstChild();
    EXPECT_EQ(std::u16string(bad->getNodeName()), u"bad");
    EXPECT_FALSE(bad->hasChildNodes());
    EXPECT_EQ(channel.WriteXML("ctrl", Tavo::UniString(u"a\u0001b")), Tavo::GeneralError)
        << "restricted in XML 1.1";
    EXPECT_EQ(channel.GetNumberOfMessage(), 2);

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

    // One CDATA node holding the text unchanged; how "]]>" is split in the text is the serialiser's affair.
    xercesc::DOMNode* cdata = channel.GetDOMDocument()->getDocumentElement()->getLastChild();
    EXPECT_EQ(cdata->getNodeType(), xercesc::DOMNode::CDATA_SECTION_NODE);
    EXPECT_EQ(std::u16string(cdata->getNodeValue()), u"raw ]]> text");
}

// Every numeric and inherited write ends in one virtual call of the string overload of its family, so
// a subclass that overrides the funnel sees each value.
TEST(DOMBuilderValues, NumericWritesReachTheOverriddenFunnel) {
    struct Recording : DOMBuilder {
        Recording() : DOMBuilder("root", false) {}
        std::vector<std::string> seen;
        int WriteXML(char const* name, Tavo::UniString const& value) override {
            seen.push_back(std::string(name) + "=" + value.ToCStr().Get());
            return 9;
        }
        int WriteXMLAttr(char const* name, Tavo::UniString const& value) override {
            seen.push_back(std::string("@") + name + "=" + value.ToCStr().Get());
            return 8;
        }
        using DOMBuilder::WriteXML;
        using DOMBuilder::WriteXMLAttr;
    } channel;
    EXPECT_EQ(channel.WriteXML("d", 0.1), 9);
    EXPECT_EQ(channel.WriteXML("l", -7L), 9);
    EXPECT_EQ(channel.WriteXML("c", 'A'), 9);
    EXPECT_EQ(channel.WriteXMLAttr("u", 65535u), 8);
    EXPECT_EQ(channel.WriteXMLVersionAttr(Tavo::ClassVersion(3, 5)), 8);
    EXPECT_EQ(channel.seen, (std::vector<std::string>{"d=0.1", "l=-7", "c=65", "@u=65535", "@Mv=3"}))
        << "a failed Mv stops before Sv";
}
