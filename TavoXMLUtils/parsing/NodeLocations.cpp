#include "TavoXMLUtils/parsing/NodeLocations.hpp"

#include "TavoXMLUtils/parsing/internal/NodeLocationIndex.hpp"

#include <new>
#include <utility>

namespace {

// The index is built once the scans have looked at this many times the entries of the table: a table
// asked a handful of times never pays for it, one asked often pays once, about as much as a few scans.
constexpr std::uint64_t gScansBeforeIndex = 4;

} // namespace

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
        ++pageCount;
    }
    lastPage->nodes[usedInLastPage] = node;
    lastPage->infos[usedInLastPage].lineNumber = line;
    ++usedInLastPage;
}

NodeLocationInfo* NodeLocations::Find(xercesc::DOMNode const* node) const {
    std::lock_guard<std::mutex> const lock(lookupMutex);
    if (!UseIndex()) {
        return Scan(node);
    }
    if (NodeLocationInfo* const found = index->Find(node)) {
        return found;
    }
    // Only a table beyond the index's entry numbers has entries that it did not take in.
    return index->IndexedEntries() < EntryCount() ? Scan(node) : nullptr;
}

std::uint64_t NodeLocations::EntryCount() const noexcept {
    return pageCount == 0 ? 0 : (pageCount - 1) * std::uint64_t(kEntriesPerPage) + usedInLastPage;
}

// In insertion order, so that the earliest entry of a node wins.
NodeLocationInfo* NodeLocations::Scan(xercesc::DOMNode const* node) const noexcept {
    for (Page* page = firstPage; page != nullptr; page = page->next) {
        int const used = page == lastPage ? usedInLastPage : kEntriesPerPage;
        for (int i = 0; i < used; ++i) {
            if (page->nodes[i] == node) {
                scannedEntries += std::uint64_t(i) + 1;
                return &page->infos[i];
            }
        }
        scannedEntries += std::uint64_t(used);
    }
    return nullptr;
}

bool NodeLocations::UseIndex() const noexcept {
    try {
        if (index == nullptr && scannedEntries >= gScansBeforeIndex * EntryCount() && EntryCount() > 0) {
            index = std::make_unique<Index>();
        }
        if (index != nullptr) {
            index->CatchUp(*this);
        }
    } catch (std::bad_alloc const&) {
        // An index that could not grow still answers for what it took in; a missing one means scans.
    }
    return index != nullptr;
}
