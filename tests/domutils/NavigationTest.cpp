// Tree navigation: the element walkers, the text-tolerant walkers and how much each skips, GetNextTag
// with its failure and line, IsNodeOk, and the document sentry.
#include "domutils/DomTestSupport.hpp"

#include "TavoXMLUtils/domutils/TreeNavigation.hpp"

#include <gtest/gtest.h>

#include <xercesc/dom/DOMCDATASection.hpp>
#include <xercesc/dom/DOMComment.hpp>
#include <xercesc/dom/DOMText.hpp>
#include <xercesc/dom/DOMUserDataHandler.hpp>

using namespace TavoXMLUtils;
using DomTest::Thrown;
using DomTest::ThrownBy;

namespace {

// An element whose children are made from `kinds`: 't' text, 'c' comment, 'e' element, 'd' CDATA.
xercesc::DOMElement* MakeChildren(xercesc::DOMDocument* document, const char* kinds) {
    xercesc::DOMElement* parent = document->createElement(u"parent");
    document->getDocumentElement()->appendChild(parent);
    for (const char* kind = kinds; *kind != '\0'; ++kind) {
        xercesc::DOMNode* child = nullptr;
        switch (*kind) {
            case 't':
                child = document->createTextNode(u"\n  ");
                break;
            case 'c':
                child = document->createComment(u"note");
                break;
            case 'e':
                child = document->createElement(u"child");
                break;
            default:
                child = document->createCDATASection(u"data");
                break;
        }
        parent->appendChild(child);
    }
    return parent;
}

xercesc::DOMNode* Child(const xercesc::DOMNode* parent, int index) {
    xercesc::DOMNode* node = parent->getFirstChild();
    while (index-- > 0) {
        node = node->getNextSibling();
    }
    return node;
}

} // namespace

TEST(TreeNavigation, ElementWalkersIgnoreEverythingElse) {
    const DomTest::Parsed parsed("<r>\n  <!--c-->\n  <a/>\n  text <b/> <![CDATA[x]]> <?pi x?><c/>\n</r>");
    xercesc::DOMElement* r = parsed.Root();
    xercesc::DOMElement* a = parsed.Element(u"a");
    xercesc::DOMElement* b = parsed.Element(u"b");
    xercesc::DOMElement* c = parsed.Element(u"c");
    EXPECT_EQ(GetFirstElementChild(r), a);
    EXPECT_EQ(GetLastElementChild(r), c);
    EXPECT_EQ(GetNextElementSibling(a), b);
    EXPECT_EQ(GetNextElementSibling(b), c);
    EXPECT_EQ(GetNextElementSibling(c), nullptr);
    EXPECT_EQ(GetPreviousElementSibling(c), b);
    EXPECT_EQ(GetPreviousElementSibling(a), nullptr);
    EXPECT_EQ(GetChildElementCount(r), 3u);
    EXPECT_EQ(GetChildElementCount(a), 0u);

    const DomTest::Parsed indentOnly("<r>\n  <!-- only a comment -->\n  <![CDATA[d]]>\n</r>");
    EXPECT_EQ(GetFirstElementChild(indentOnly.Root()), nullptr);
    EXPECT_EQ(GetLastElementChild(indentOnly.Root()), nullptr);
    EXPECT_EQ(GetChildElementCount(indentOnly.Root()), 0u);
}

TEST(TreeNavigation, TextTolerantWalkersSkipAtMostOneTextNode) {
    const DomTest::DocumentPtr document = DomTest::NewDocument();
    xercesc::DOMNode* node = nullptr;
    xercesc::DOMElement* element = nullptr;

    xercesc::DOMElement* textCommentElement = MakeChildren(document.get(), "tce");
    GetFirstChild(textCommentElement, node);
    EXPECT_EQ(node, Child(textCommentElement, 1)) << "the comment";
    element = textCommentElement;
    GetFirstChild(textCommentElement, element);
    EXPECT_EQ(element, nullptr) << "although an element follows";

    xercesc::DOMElement* textTextElement = MakeChildren(document.get(), "tte");
    GetFirstChild(textTextElement, node);
    EXPECT_EQ(node, Child(textTextElement, 1)) << "the second text node";

    xercesc::DOMElement* textElement = MakeChildren(document.get(), "te");
    GetFirstChild(textElement, element);
    EXPECT_EQ(element, Child(textElement, 1));

    // A CDATA section is no text node: it is returned, and is no element.
    xercesc::DOMElement* cdataElement = MakeChildren(document.get(), "de");
    GetFirstChild(cdataElement, node);
    EXPECT_EQ(node, Child(cdataElement, 0));
    GetFirstChild(cdataElement, element);
    EXPECT_EQ(element, nullptr);

    xercesc::DOMElement* onlyText = MakeChildren(document.get(), "t");
    node = onlyText;
    GetFirstChild(onlyText, node);
    EXPECT_EQ(node, nullptr);
    GetFirstChild(MakeChildren(document.get(), ""), node);
    EXPECT_EQ(node, nullptr);

    // The siblings of the first child of each list.
    xercesc::DOMElement* siblings = MakeChildren(document.get(), "etce");
    GetNextSibling(Child(siblings, 0), node);
    EXPECT_EQ(node, Child(siblings, 2));
    GetNextSibling(Child(siblings, 0), element);
    EXPECT_EQ(element, nullptr);
    GetNextSibling(Child(siblings, 2), element);
    EXPECT_EQ(element, Child(siblings, 3));
    GetNextSibling(Child(siblings, 3), node);
    EXPECT_EQ(node, nullptr);
    xercesc::DOMElement* trailingText = MakeChildren(document.get(), "et");
    GetNextSibling(Child(trailingText, 0), element);
    EXPECT_EQ(element, nullptr);
}

TEST(TreeNavigation, SkipTextNodesOverloadsDiffer) {
    const DomTest::DocumentPtr document = DomTest::NewDocument();
    xercesc::DOMElement* list = MakeChildren(document.get(), "ttcte");
    xercesc::DOMNode* node = Child(list, 0);
    SkipTextNodes(node);
    EXPECT_EQ(node, Child(list, 2)) << "any number of text nodes, up to the comment";
    node = Child(list, 2);
    SkipTextNodes(node);
    EXPECT_EQ(node, Child(list, 2)) << "a comment is no text";
    node = Child(MakeChildren(document.get(), "tt"), 0);
    SkipTextNodes(node);
    EXPECT_EQ(node, nullptr);
    node = nullptr;
    SkipTextNodes(node);
    EXPECT_EQ(node, nullptr);

    auto* element = static_cast<xercesc::DOMElement*>(Child(list, 4));
    SkipTextNodes(element);
    EXPECT_EQ(element, Child(list, 4)) << "an element stays where it is";
    element = nullptr;
    SkipTextNodes(element);
    EXPECT_EQ(element, nullptr);
}

TEST(TreeNavigation, GetNextTagWalksAndRefusesOtherNodes) {
    const DomTest::DocumentPtr document = DomTest::NewDocument();
    xercesc::DOMElement* list = MakeChildren(document.get(), "tctet");
    xercesc::DOMNode* cursor = list->getFirstChild();
    EXPECT_EQ(GetNextTag(cursor), Child(list, 3));
    EXPECT_EQ(cursor, Child(list, 4)) << "on the last text node";
    EXPECT_EQ(GetNextTag(cursor), nullptr);
    EXPECT_EQ(cursor, nullptr);
    EXPECT_EQ(GetNextTag(cursor), nullptr);

    xercesc::DOMElement* two = MakeChildren(document.get(), "ee");
    cursor = two->getFirstChild();
    EXPECT_EQ(GetNextTag(cursor), Child(two, 0));
    EXPECT_EQ(GetNextTag(cursor), Child(two, 1));
    EXPECT_EQ(cursor, nullptr);

    // A CDATA section and a processing instruction are refused, with the line the table gives.
    const char* xml = "<r>\n <a/>\n <![CDATA[\nx]]>\n <?pi data?>\n</r>";
    DomTest::Parsed parsed(xml);
    cursor = parsed.Root()->getFirstChild();
    EXPECT_EQ(GetNextTag(cursor), parsed.Element(u"a"));
    xercesc::DOMNode* const section = cursor->getNextSibling();
    parsed.EnsureLine(section, 4);
    EXPECT_EQ(ThrownBy([&] { GetNextTag(cursor); }), (Thrown{"Unexpected XML node", 4}));
    EXPECT_EQ(cursor, section) << "the cursor stays on the offending node";
    cursor = section->getNextSibling();
    EXPECT_EQ(ThrownBy([&] { GetNextTag(cursor); }), (Thrown{"Unexpected XML node", 0}));

    const DomTest::Parsed withoutLines(xml, false);
    cursor = withoutLines.Root()->getFirstChild()->getNextSibling()->getNextSibling();
    EXPECT_EQ(ThrownBy([&] { GetNextTag(cursor); }), (Thrown{"Unexpected XML node", 0}));
}

TEST(TreeNavigation, IsNodeOkMatchesElementNamesExactly) {
    const DomTest::Parsed parsed("<r><Item>text</Item><caf\xC3\xA9/></r>");
    xercesc::DOMElement* item = parsed.Element(u"Item");
    EXPECT_TRUE(IsNodeOk(item, Tavo::UniString("Item")));
    EXPECT_TRUE(IsNodeOk(item, Tavo::String("Item")));
    EXPECT_FALSE(IsNodeOk(item, Tavo::UniString("item")));
    EXPECT_FALSE(IsNodeOk(item, Tavo::String("Ite")));
    EXPECT_FALSE(IsNodeOk(item->getFirstChild(), Tavo::UniString("#text")));
    EXPECT_FALSE(IsNodeOk(nullptr, Tavo::UniString("")));
    EXPECT_FALSE(IsNodeOk(nullptr, Tavo::String("Item")));
    // The 8-bit name is in the default code, Windows-1252.
    EXPECT_TRUE(IsNodeOk(parsed.Element(u"caf\u00E9"), Tavo::String("caf\xE9")));
}

namespace {

class DeletionProbe : public xercesc::DOMUserDataHandler {
public:
    void handle(DOMOperationType operation, const XMLCh*, void*, const xercesc::DOMNode*,
                xercesc::DOMNode*) override {
        if (operation == NODE_DELETED) {
            ++deleted;
        }
    }
    int deleted = 0;
};

} // namespace

TEST(TreeNavigation, DocumentSentryReleasesItsDocument) {
    { const DOMDocumentSentry nothing(nullptr); }

    DeletionProbe probe;
    {
        xercesc::DOMDocument* document = DomTest::NewDocument().release();
        document->setUserData(u"probe", &probe, &probe);
        const DOMDocumentSentry sentry(document);
        EXPECT_EQ(probe.deleted, 0);
    }
    EXPECT_EQ(probe.deleted, 1);
}
