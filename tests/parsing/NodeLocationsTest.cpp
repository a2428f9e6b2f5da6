#include "parsing/ParsingTestSupport.hpp"

#include <gtest/gtest.h>

#include <vector>

using namespace ParsingTest;

namespace {

// The line recorded for `node`, or 0 when there is none.
unsigned int LineOf(NodeLocations const& table, xercesc::DOMNode const* node) {
    NodeLocationInfo const* const info = table.Find(node);
    return info == nullptr ? 0 : info->lineNumber;
}

xercesc::DOMNode* Child(xercesc::DOMNode const* parent, short type, int skip = 0) {
    for (xercesc::DOMNode* child = parent->getFirstChild(); child != nullptr;
         child = child->getNextSibling()) {
        if (child->getNodeType() == type && skip-- == 0) {
            return child;
        }
    }
    return nullptr;
}

} // namespace

TEST(NodeLocations, PagesOf255KeepEveryEntryAndTheEarliestWins) {
    Document document(xercesc::DOMImplementation::getImplementation()->createDocument());
    std::vector<xercesc::DOMNode*> nodes;
    for (int i = 0; i < 600; ++i) {
        nodes.push_back(document->createTextNode(u"x"));
    }
    NodeLocations table;
    for (unsigned int i = 0; i < 255; ++i) {
        table.AddNew(nodes[i], i + 1);
    }
    EXPECT_EQ(LineOf(table, nodes[255]), 0u);
    // The first entry of a new page; lookups made before the page existed don't hide it.
    table.AddNew(nodes[255], 256);
    EXPECT_EQ(LineOf(table, nodes[255]), 256u);
    for (unsigned int i = 256; i < 600; ++i) {
        table.AddNew(nodes[i], i + 1);
    }
    table.AddNew(nodes[10], 9999);
    table.AddNew(nodes[599], 9999);
    for (unsigned int i = 0; i < 600; ++i) {
        ASSERT_EQ(LineOf(table, nodes[i]), i + 1) << i;
    }
    EXPECT_EQ(LineOf(table, document.get()), 0u);
}

// Frequent lookups switch to an index; it must answer what a scan would, also for entries added after
// it was built, and keep answering the earliest entry.
TEST(NodeLocations, LookupsStayExactWhenEntriesFollowFrequentLookups) {
    Document document(xercesc::DOMImplementation::getImplementation()->createDocument());
    std::vector<xercesc::DOMNode*> nodes;
    for (int i = 0; i < 3000; ++i) {
        nodes.push_back(document->createTextNode(u"x"));
    }
    NodeLocations table;
    EXPECT_EQ(table.Find(nodes[0]), nullptr);
    for (unsigned int i = 0; i < 1000; ++i) {
        table.AddNew(nodes[i], i + 1);
    }
    for (int round = 0; round < 3; ++round) {
        for (unsigned int i = 0; i < 1000; i += 7) {
            ASSERT_EQ(LineOf(table, nodes[i]), i + 1) << i;
        }
    }
    EXPECT_EQ(LineOf(table, nodes[1500]), 0u);
    // Later entries: new nodes over several pages, repeats of old and of new nodes.
    for (unsigned int i = 1000; i < 3000; ++i) {
        table.AddNew(nodes[i], i + 1);
        table.AddNew(nodes[i - 1000], 77777);
    }
    table.AddNew(nodes[2999], 88888);
    for (unsigned int i = 0; i < 3000; ++i) {
        ASSERT_EQ(LineOf(table, nodes[i]), i + 1) << i;
    }
    // Lookups interleaved with appends.
    xercesc::DOMNode* const late = document->createComment(u"late");
    EXPECT_EQ(LineOf(table, late), 0u);
    table.AddNew(late, 5);
    EXPECT_EQ(LineOf(table, late), 5u);
    table.AddNew(late, 6);
    EXPECT_EQ(LineOf(table, late), 5u);
    EXPECT_EQ(LineOf(table, document.get()), 0u);
}

TEST(NodeLocations, ParserRecordsElementsTextCommentsAndEntityReferences) {
    NodeLocations table;
    Document document(ParseXMLDoc(DataLocation("lines.xml"), Parser::Val_Never, true, &table));
    ASSERT_TRUE(document);
    xercesc::DOMElement const* const root = document->getDocumentElement();
    EXPECT_EQ(LineOf(table, Child(document.get(), xercesc::DOMNode::COMMENT_NODE)), 5u);
    EXPECT_EQ(LineOf(table, root), 6u);
    xercesc::DOMNode const* const spread = Child(root, xercesc::DOMNode::ELEMENT_NODE);
    // The start tag runs over lines 7 to 9: the line where it ends counts.
    EXPECT_EQ(LineOf(table, spread), 9u);
    // The text comes in three pieces (around "&amp;") that end on lines 10, 10 and 11; the first counts.
    xercesc::DOMNode const* const text = spread->getFirstChild();
    ASSERT_EQ(text, spread->getLastChild());
    EXPECT_EQ(Utf8(text->getNodeValue()), "first\nsecond & third\nfourth");
    EXPECT_EQ(LineOf(table, text), 10u);
    EXPECT_EQ(LineOf(table, Child(root, xercesc::DOMNode::COMMENT_NODE)), 12u);
    xercesc::DOMNode const* const ref = Child(root, xercesc::DOMNode::ELEMENT_NODE, 1);
    xercesc::DOMNode const* const entity = ref->getFirstChild();
    ASSERT_EQ(entity->getNodeType(), xercesc::DOMNode::ENTITY_REFERENCE_NODE);
    EXPECT_EQ(LineOf(table, entity), 13u);
    EXPECT_EQ(LineOf(table, entity->getFirstChild()), 13u);
    EXPECT_EQ(LineOf(table, Child(root, xercesc::DOMNode::ELEMENT_NODE, 2)), 16u);
    // CDATA sections, processing instructions, attributes and the document get no line.
    EXPECT_EQ(LineOf(table, Child(root, xercesc::DOMNode::CDATA_SECTION_NODE)), 0u);
    EXPECT_EQ(LineOf(table, spread->getAttributes()->item(0)), 0u);
}
