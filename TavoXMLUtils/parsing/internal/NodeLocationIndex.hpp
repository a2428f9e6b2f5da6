// The inside of NodeLocations: its page of entries, and the index that answers Find without a scan once
// lookups have become frequent.
//
// The index is a flat open-addressing table (linear probing, at most half full) of entry numbers: 4 bytes
// per slot, the node itself is read from the page, so the index costs about 8 bytes per distinct node.
// It is brought up to date at each lookup with the entries added since the last one, and it keeps the
// earliest entry of a node, so it answers exactly what a scan in insertion order would. Entry numbers
// are 32 bits: of a larger table only the first 2^32 - 2 entries are taken in, and a node not found among
// them is looked for by a scan.
// Growing throws std::bad_alloc; the index is then left as it was.
#pragma once

#include "TavoXMLUtils/parsing/NodeLocations.hpp"

#include <cstdint>
#include <vector>

struct NodeLocations::Page {
    NodeLocationInfo infos[kEntriesPerPage] = {};
    xercesc::DOMNode const* nodes[kEntriesPerPage];
    Page* next = nullptr;
};

class NodeLocations::Index {
public:
    // Takes in the entries of `table` added since the last call.
    void CatchUp(NodeLocations const& table);
    // The record of the earliest entry of `node` among those taken in, or null.
    NodeLocationInfo* Find(xercesc::DOMNode const* node) const;
    // How many entries have been taken in; less than the table holds only beyond 2^32 - 2 entries.
    std::uint64_t IndexedEntries() const noexcept { return indexedEntries; }

private:
    static constexpr std::uint32_t kEmpty = 0;
    static constexpr std::uint64_t kMaxEntries = 0xFFFFFFFEu;

    xercesc::DOMNode const* KeyOf(std::uint32_t entry) const noexcept;
    NodeLocationInfo* InfoOf(std::uint32_t entry) const noexcept;
    std::size_t SlotOf(xercesc::DOMNode const* node) const noexcept;
    void Insert(std::uint32_t entry);
    void Reserve(std::size_t wanted);

    std::vector<Page*> pages;         // page k holds the entries 255k to 255k + 254
    std::vector<std::uint32_t> slots; // entry number + 1, or kEmpty; a power of two in size
    std::uint64_t indexedEntries = 0; // entries taken in so far
    std::size_t keys = 0;             // occupied slots
    int shift = 64;                   // 64 - log2(slots.size()), for the multiplicative hash
};
