// Tree navigation: the element walkers, the text-tolerant walkers and how much each skips, GetNextTag
// with its failure and line, IsNodeOk, and the document sentry.
#include "domutils/DomTestSupport.hpp"

#include "TavoXMLUtils/domutils/TreeNavigation.hpp"

#include <gtest/gtest.h>

using namespace TavoXMLUtils;
using DomTest::ThrownBy;
using xercesc::DOMElement;
using xercesc::DOMNode;

namespace {

// An element whose children are made from `kinds`: 't' text, 'c' comment, 'e' element, 'd' CDATA.
DOMElement* MakeChildren(const DomTest::ScratchDocument& doc, const char* kinds) {
    xercesc::DOMDocument* document = doc.Document();
    DOMElement* parent = document->createElement(u"parent");
    document->getDocumentElement()->appendChild(parent);
    for (const char* kind = kinds; *kind != '\0'; ++kind) {
        parent->appendChild(*kind == 't'   ? static_cast<DOMNode*>(document->createTextNode(u"\n  "))
                            : *kind == 'c' ? static_cast<DOMNode*>(document->createComment(u"note"))
                            : *kind == 'e' ? static_cast<DOMNode*>(document->createElement(u"child"))
                                           : static_cast<DOMNode*>(document->createCDATASection(u"data")));
    }
    return parent;
}

DOMNode* Child(const DOMNode* parent, int index) {
    return parent->getChildNodes()->item(static_cast<XMLSize_t>(index));
}

} // namespace

TEST(TreeNavigation, ElementWalkersIgnoreEverythingElse) {
    const DomTest::Parsed parsed("<r>\n  <!--c-->\n  <a/>\n  text <b/> <![CDATA[x]]> <?pi x?><c/>\n</r>");
    DOMElement* r = parsed.Root();
    DOMElement* a = parsed.Element(u"a");
    DOMElement* b = parsed.Element(u"b");
    DOMElement* c = parsed.Element(u"c");
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
    const DomTest::ScratchDocument doc;
    // For each list: which child GetFirstChild finds as a node and as an element (-1: none); a CDATA
    // section is no text node: it is returned, and is no element.
    const struct {
        const char* kinds;
        int node, element;
    } firsts[] = {{"tce", 1, -1}, {"tte", 1, -1}, {"te", 1, 1}, {"de", 0, -1}, {"t", -1, -1}, {"", -1, -1}};
    for (const auto& first : firsts) {
        DOMElement* list = MakeChildren(doc, first.kinds);
        DOMNode* node = list;
        DOMElement* element = list;
        GetFirstChild(list, node);
        GetFirstChild(list, element);
        EXPECT_EQ(node, first.node < 0 ? nullptr : Child(list, first.node)) << first.kinds;
        EXPECT_EQ(element, first.element < 0 ? nullptr : Child(list, first.element)) << first.kinds;
    }

    // The next sibling of a child of "etce" and "et", as a node and as an element.
    DOMElement* siblings = MakeChildren(doc, "etce");
    DOMElement* trailingText = MakeChildren(doc, "et");
    const struct {
        DOMNode* from;
        DOMNode *node, *element;
    } nexts[] = {{Child(siblings, 0), Child(siblings, 2), nullptr},
                 {Child(siblings, 2), Child(siblings, 3), Child(siblings, 3)},
                 {Child(siblings, 3), nullptr, nullptr},
                 {Child(trailingText, 0), nullptr, nullptr}};
    for (const auto& next : nexts) {
        DOMNode* node = siblings;
        DOMElement* element = siblings;
        GetNextSibling(next.from, node);
        GetNextSibling(next.from, element);
        EXPECT_EQ(node, next.node);
        EXPECT_EQ(element, next.element);
    }
}

TEST(TreeNavigation, SkipTextNodesOverloadsDiffer) {
    const DomTest::ScratchDocument doc;
    DOMElement* list = MakeChildren(doc, "ttcte");
    // Any number of text nodes up to the comment; a comment is no text; null stays null.
    for (const auto& [start, end] : {std::pair{Child(list, 0), Child(list, 2)},
                                     {Child(list, 2), Child(list, 2)},
                                     {Child(MakeChildren(doc, "tt"), 0), nullptr},
                                     {nullptr, nullptr}}) {
        DOMNode* node = start;
        SkipTextNodes(node);
        EXPECT_EQ(node, end);
    }
    auto* element = static_cast<DOMElement*>(Child(list, 4));
    SkipTextNodes(element);
    EXPECT_EQ(element, Child(list, 4)) << "an element stays where it is";
    element = nullptr;
    SkipTextNodes(element);
    EXPECT_EQ(element, nullptr);
}

TEST(TreeNavigation, GetNextTagWalksAndRefusesOtherNodes) {
    const DomTest::ScratchDocument doc;
    DOMElement* list = MakeChildren(doc, "tctet");
    DOMNode* cursor = list->getFirstChild();
    EXPECT_EQ(GetNextTag(cursor), Child(list, 3));
    EXPECT_EQ(cursor, Child(list, 4)) << "on the last text node";
    EXPECT_EQ(GetNextTag(cursor), nullptr);
    EXPECT_EQ(cursor, nullptr);
    EXPECT_EQ(GetNextTag(cursor), nullptr);

    DOMElement* two = MakeChildren(doc, "ee");
    cursor = two->getFirstChild();
    EXPECT_EQ(GetNextTag(cursor), Child(two, 0));
    EXPECT_EQ(GetNextTag(cursor), Child(two, 1));
    EXPECT_EQ(cursor, nullptr);

    // A CDATA section and a processing instruction are refused, with the line the table gives.
    const char* xml = "<r>\n <a/>\n <![CDATA[\nx]]>\n <?pi data?>\n</r>";
    DomTest::Parsed parsed(xml);
    cursor = parsed.Root()->getFirstChild();
    EXPECT_EQ(GetNextTag(cursor), parsed.Element(u"a"));
    DOMNode* const section = cursor->getNextSibling();
    parsed.EnsureLine(section, 4);
    EXPECT_EQ(ThrownBy([&] { GetNextTag(cursor); }), "Unexpected XML node@4");
    EXPECT_EQ(cursor, section) << "the cursor stays on the offending node";
    cursor = section->getNextSibling();
    EXPECT_EQ(ThrownBy([&] { GetNextTag(cursor); }), "Unexpected XML node@0");

    const DomTest::Parsed withoutLines(xml, false);
    cursor = Child(withoutLines.Root(), 2);
    EXPECT_EQ(ThrownBy([&] { GetNextTag(cursor); }), "Unexpected XML node@0");
}

TEST(TreeNavigation, IsNodeOkMatchesElementNamesExactly) {
    const DomTest::Parsed parsed("<r><Item>text</Item><caf\xC3\xA9/></r>");
    DOMElement* item = parsed.Element(u"Item");
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
    void handle(DOMOperationType operation, const XMLCh*, void*, const DOMNode*, DOMNode*) override {
        deleted += operation == NODE_DELETED ? 1 : 0;
    }
    int deleted = 0;
};

} // namespace

TEST(TreeNavigation, DocumentSentryReleasesItsDocument) {
    { const DOMDocumentSentry nothing(nullptr); }
    DeletionProbe probe;
    {
        xercesc::DOMDocument* document =
            xercesc::DOMImplementation::getImplementation()->createDocument(nullptr, u"r", nullptr);
        document->setUserData(u"probe", &probe, &probe);
        const DOMDocumentSentry sentry(document);
        EXPECT_EQ(probe.deleted, 0);
    }
    EXPECT_EQ(probe.deleted, 1);
}
