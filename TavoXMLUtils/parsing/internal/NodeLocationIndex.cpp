#include "TavoXMLUtils/parsing/internal/NodeLocationIndex.hpp"

#include <algorithm>
#include <bit>

namespace {

constexpr std::size_t gInitialSlots = 1024;

} // namespace

void NodeLocations::Index::CatchUp(NodeLocations const& table) {
    if (pages.empty()) {
        if (table.firstPage == nullptr) {
            return;
        }
        pages.push_back(table.firstPage);
    }
    while (pages.back()->next != nullptr) {
        pages.push_back(pages.back()->next);
    }
    std::uint64_t const total = (pages.size() - 1) * std::uint64_t(kEntriesPerPage) + table.usedInLastPage;
    std::uint64_t const end = std::min(total, kMaxEntries);
    // Room for all new entries at once, as if every one were a new node: one allocation instead of a
    // rehash at every doubling.
    Reserve(keys + static_cast<std::size_t>(end - std::min(end, indexedEntries)));
    for (; indexedEntries < end; ++indexedEntries) {
        Insert(static_cast<std::uint32_t>(indexedEntries));
    }
}

NodeLocationInfo* NodeLocations::Index::Find(xercesc::DOMNode const* node) const {
    if (slots.empty()) {
        return nullptr;
    }
    std::size_t const mask = slots.size() - 1;
    for (std::size_t slot = SlotOf(node);; slot = (slot + 1) & mask) {
        std::uint32_t const stored = slots[slot];
        if (stored == kEmpty) {
            return nullptr;
        }
        if (KeyOf(stored - 1) == node) {
            return InfoOf(stored - 1);
        }
    }
}

xercesc::DOMNode const* NodeLocations::Index::KeyOf(std::uint32_t entry) const noexcept {
    return pages[entry / kEntriesPerPage]->nodes[entry % kEntriesPerPage];
}

NodeLocationInfo* NodeLocations::Index::InfoOf(std::uint32_t entry) const noexcept {
    return &pages[entry / kEntriesPerPage]->infos[entry % kEntriesPerPage];
}

// Fibonacci hashing of the address: the multiplication spreads the aligned low bits over the top ones.
std::size_t NodeLocations::Index::SlotOf(xercesc::DOMNode const* node) const noexcept {
    auto const bits = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(node));
    return static_cast<std::size_t>((bits * 0x9E3779B97F4A7C15ull) >> shift);
}

// A node already in the index keeps its earlier entry.
void NodeLocations::Index::Insert(std::uint32_t entry) {
    Reserve(keys + 1);
    xercesc::DOMNode const* const node = KeyOf(entry);
    std::size_t const mask = slots.size() - 1;
    for (std::size_t slot = SlotOf(node);; slot = (slot + 1) & mask) {
        if (slots[slot] == kEmpty) {
            slots[slot] = entry + 1;
            ++keys;
            return;
        }
        if (KeyOf(slots[slot] - 1) == node) {
            return;
        }
    }
}

// Keeps the table at most half full for `wanted` keys. Every key is put back into the larger table; the
// old slots stay until the new ones are complete.
void NodeLocations::Index::Reserve(std::size_t wanted) {
    if (wanted * 2 <= slots.size()) {
        return;
    }
    std::vector<std::uint32_t> old(std::max(gInitialSlots, std::bit_ceil(wanted * 2)), kEmpty);
    old.swap(slots);
    shift = 64 - std::countr_zero(slots.size());
    keys = 0;
    for (std::uint32_t const stored : old) {
        if (stored != kEmpty) {
            Insert(stored - 1);
        }
    }
}
