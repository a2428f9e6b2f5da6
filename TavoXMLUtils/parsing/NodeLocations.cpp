#include "TavoXMLUtils/parsing/NodeLocations.hpp"

#include <utility>

struct NodeLocations::Page {
    NodeLocationInfo infos[kEntriesPerPage] = {};
    xercesc::DOMNode const* nodes[kEntriesPerPage];
    Page* next = nullptr;
};

NodeLocations::NodeLocations() = default;

NodeLocations::~NodeLocations() {
    while (firstPage != nullptr) {
        delete std::exchange(firstPage, firstPage->next);
    }
}

void NodeLocations::AddNew(xercesc::DOMNode const* node, unsigned int line) {
    if (usedInLastPage == kEntriesPerPage) {
        Page* const page = new Page;
        if (firstPage == nullptr) {
            firstPage = page;
        } else {
            lastPage->next = page;
        }
        lastPage = page;
        usedInLastPage = 0;
    }
    lastPage->nodes[usedInLastPage] = node;
    lastPage->infos[usedInLastPage].lineNumber = line;
    ++usedInLastPage;
}

NodeLocationInfo* NodeLocations::Find(xercesc::DOMNode const* node) const {
    std::lock_guard<std::mutex> const lock(indexMutex);
    // Bring the index up to date with the entries added since the last lookup. Entries are taken in
    // insertion order and an existing key is never replaced, so the index answers exactly what a scan
    // from the first page would: the earliest entry of the node.
    for (;;) {
        if (indexedPage == nullptr) {
            if (firstPage == nullptr) {
                return nullptr;
            }
            indexedPage = firstPage;
            indexedInPage = 0;
        }
        int const used = indexedPage == lastPage ? usedInLastPage : kEntriesPerPage;
        for (; indexedInPage < used; ++indexedInPage) {
            firstEntries.try_emplace(indexedPage->nodes[indexedInPage], &indexedPage->infos[indexedInPage]);
        }
        if (indexedPage->next == nullptr) {
            break;
        }
        indexedPage = indexedPage->next;
        indexedInPage = 0;
    }
    auto const found = firstEntries.find(node);
    return found == firstEntries.end() ? nullptr : found->second;
}
