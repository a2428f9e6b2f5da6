// NodeLocations: the table that tells for each DOM node of a parsed document the source line it came
// from, filled by ValidatingXMLParser::LineInfoParser while the tree is built. NodeLocationInfo is the
// record of one line (0 means unknown); it is also the output record of the parser front-end.
//
// Appending is a plain store into a page of 255 entries. Lookups scan the pages in insertion order
// until they have cost, together, a few scans of the whole table; from then on an index answers them
// (about 8 bytes per distinct node, built once and brought up to date with later entries). Either way
// Find gives the earliest entry of a node. AddNew throws std::bad_alloc when no page can be had; Find
// never fails (without memory for the index it goes on scanning). Lookups may run on several threads
// at once once the table is filled; appending while others look up is not allowed.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/util/XercesDefs.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
XERCES_CPP_NAMESPACE_END

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
    class Index;

    std::uint64_t EntryCount() const noexcept;
    NodeLocationInfo* Scan(xercesc::DOMNode const* node) const noexcept;
    // Builds the index once the scans have cost enough; false when there is none to use.
    bool UseIndex() const noexcept;

    Page* firstPage = nullptr;
    Page* lastPage = nullptr;
    std::int32_t usedInLastPage = kEntriesPerPage;
    std::size_t pageCount = 0;

    mutable std::mutex lookupMutex;
    mutable std::uint64_t scannedEntries = 0; // entries looked at by scans so far
    mutable std::unique_ptr<Index> index;
};
