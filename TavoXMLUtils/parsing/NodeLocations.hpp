// NodeLocations: the table that tells for each DOM node of a parsed document the source line it came
// from, filled by ValidatingXMLParser::LineInfoParser while the tree is built. NodeLocationInfo is the
// record of one line (0 means unknown); it is also the output record of the parser front-end.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/dom/DOMNode.hpp>

#include <cstdint>
#include <mutex>
#include <unordered_map>

struct TAVOXMLUTILS_API NodeLocationInfo {
    std::uint32_t lineNumber = 0;
};

// An append-only table of (node, line) entries kept in pages of 255. Nodes are keys only: nothing is
// ever read through them, so a table may outlive its document. A node may be entered several times;
// Find gives the earliest entry.
class TAVOXMLUTILS_API NodeLocations {
public:
    static constexpr int kEntriesPerPage = 255;

    NodeLocations();
    NodeLocations(NodeLocations const&) = delete;
    NodeLocations& operator=(NodeLocations const&) = delete;
    ~NodeLocations();

    // Appends an entry; throws std::bad_alloc when no page can be had.
    void AddNew(xercesc::DOMNode const* node, unsigned int line);
    // The record of the earliest entry of `node`, or null. The pointer stays valid as long as the table.
    NodeLocationInfo* Find(xercesc::DOMNode const* node) const;

private:
    struct Page;

    Page* firstPage = nullptr;
    Page* lastPage = nullptr;
    std::int32_t usedInLastPage = kEntriesPerPage;
    // Appending stays a plain store into a page. Find keeps an index from a node to its earliest record,
    // brought up to date lazily with the entries added since the last lookup, so that a reader asking
    // for many lines does not scan the table each time; it answers what a scan in insertion order
    // would. The mutex lets several readers look up at once after the parse.
    mutable std::mutex indexMutex;
    mutable std::unordered_map<xercesc::DOMNode const*, NodeLocationInfo*> firstEntries;
    mutable Page* indexedPage = nullptr; // the page the index has reached, null before the first page
    mutable int indexedInPage = 0;       // entries of indexedPage already in the index
};
