// The next node in document order (pre-order), without recursion, so that walks over deep documents
// need no stack: a node's first child, else the next sibling of it or of its nearest ancestor that has
// one; null after the last node. Header-only, so that the fuzz targets can use it too.
#pragma once

#include <xercesc/dom/DOMNode.hpp>

namespace TavoTest {

template <class Node>
Node* NextInDocumentOrder(Node* node) {
    if (node->getFirstChild() != nullptr) {
        return node->getFirstChild();
    }
    while (node != nullptr && node->getNextSibling() == nullptr) {
        node = node->getParentNode();
    }
    return node != nullptr ? node->getNextSibling() : nullptr;
}

} // namespace TavoTest
