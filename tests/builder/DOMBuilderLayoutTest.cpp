#include "builder/BuilderTestText.hpp"

#include <gtest/gtest.h>

#include <xercesc/dom/DOM.hpp>

#include <utility>

using BuilderTest::Exported;
using BuilderTest::kDeclaration;
using TavoXML::DOMBuilder;

TEST(DOMBuilderLayout, NestedDocumentIsLaidOutWithLineFeedsAndTabs) {
    DOMBuilder channel("root", true);
    EXPECT_EQ(channel.WriteStartDocument(), 0);
    channel.WriteStartElement("a");
    channel.WriteXMLAttr("k", 1);
    channel.WriteXML("b", 5);
    channel.WriteStartElement("empty"); // nothing inside: one line, no whitespace
    channel.WriteEndElement();
    channel.WriteStartElement("attrOnly"); // attributes do not count as content
    channel.WriteXMLAttr("x", Tavo::UniString("y"));
    channel.WriteEndElement();
    channel.WriteStartElement("c");
    channel.WriteComment(Tavo::UniString("only a comment")); // keeps the end tag on the comment's line
    channel.WriteEndElement();
    channel.WriteStartElement("d");
    channel.WriteXMLTextNode(Tavo::UniString("t"));
    channel.WriteEndElement();
    channel.WriteEndElement();
    EXPECT_EQ(channel.WriteEndDocument(), 0);

    std::string const body = "\n<root>\n"
                             "\t<a k=\"1\">\n"
                             "\t\t<b>5</b>\n"
                             "\t\t<empty/>\n"
                             "\t\t<attrOnly x=\"y\"/>\n"
                             "\t\t<c>\n\t\t\t<!--only a comment--></c>\n"
                             "\t\t<d>\n\t\t\tt\n\t\t</d>\n"
                             "\t</a>\n"
                             "</root>\n";
    EXPECT_EQ(Exported(channel), kDeclaration + body);
    EXPECT_EQ(Exported(channel), kDeclaration + body) << "export changes nothing";
    EXPECT_EQ(channel.Export(true), Tavo::UniString((kDeclaration + body).c_str(), TavoCharCodeUTF8));
}

TEST(DOMBuilderLayout, EmptyRootAndAutomaticTabsOff) {
    DOMBuilder empty("root", true);
    empty.WriteEndDocument();
    EXPECT_EQ(Exported(empty), std::string(kDeclaration) + "\n<root/>\n");

    DOMBuilder plain("root", false);
    plain.WriteStartElement("a");
    plain.WriteXML("b", 5);
    plain.WriteXMLTextNode(Tavo::UniString("t"));
    plain.WriteEndElement();
    plain.WriteEndDocument(); // adds only whitespace, so nothing here
    EXPECT_EQ(Exported(plain, false), "<root><a><b>5</b>t</a></root>");

    // Switched on midway, from the next write on.
    plain.SetAutoTabsHint(true);
    plain.WriteXML("n", 1);
    EXPECT_EQ(Exported(plain, false), "<root><a><b>5</b>t</a>\n\t<n>1</n></root>");

    // Line feed and tabs for any depth; "no depth" gives none.
    DOMBuilder tabs("root", true);
    xercesc::DOMElement const* root = tabs.GetDOMDocument()->getDocumentElement();
    for (auto [depth, count] : {std::pair{0xFFFFFFFFu, 0u}, {2u, 2u}, {300u, 300u}}) {
        tabs.WriteNewLineAndTabs(depth);
        EXPECT_EQ(std::u16string(root->getLastChild()->getNodeValue()), u"\n" + std::u16string(count, u'\t'));
    }
}

TEST(DOMBuilderLayout, DocumentWithoutTopLevelTagAndTheClosedRoot) {
    DOMBuilder channel(Tavo::XMLNoTopLevelTag, true);
    EXPECT_EQ(channel.WriteStartElement("top"), 0);
    channel.WriteXML("v", 1);
    EXPECT_EQ(channel.WriteEndElement(), 0);
    EXPECT_EQ(channel.GetActualNode(), channel.GetDOMDocument());

    EXPECT_EQ(channel.WriteStartElement("second"), Tavo::GeneralError);
    EXPECT_EQ(channel.WriteEndElement(), Tavo::GeneralError);
    EXPECT_EQ(channel.GetErrorStatus(), 0);
    channel.WriteEndDocument();
    EXPECT_EQ(Exported(channel), std::string(kDeclaration) + "\n<top>\n\t<v>1</v>\n</top>\n");
}
