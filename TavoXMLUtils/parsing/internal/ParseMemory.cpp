#include "TavoXMLUtils/parsing/internal/ParseMemory.hpp"

#include <xercesc/internal/XMLReader.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <cstddef>
#include <limits>
#include <new>
#include <utility>

namespace TavoXML::detail {

namespace {

// Every parse may use this much, however small its document: the parser's own tables, a DTD with its
// grammar, the buffers of the first element.
constexpr std::size_t gMinimumBudget = std::size_t{128} << 20;
// And this much for each byte of the document read. A tree of small elements takes far more than its
// text: a million nested "<a>" (7 MB) need some 600 MB in the parser's library before the first end tag.
constexpr std::size_t gBudgetPerInputByte = 256;
// Blocks from this size on are kept for reuse when they are freed.
constexpr std::size_t gSpareFrom = std::size_t{32} << 10;
// Marks the blocks of this manager, so that a foreign block is never taken for one of ours.
constexpr std::uint32_t gBlockMagic = 0x7a5e0b1c;
// Marks the block that holds the document object of a successful parse.
constexpr std::uint32_t gDocumentMagic = 0x7a5e0b1d;

// The parser allocates its reader objects with a small header in front (room for the manager's
// address, aligned); nothing else it allocates has their size.
bool IsEntityReader(std::size_t size) {
    constexpr std::size_t readerSize = sizeof(xercesc::XMLReader);
    constexpr std::size_t headerRoom = 64;
    return size >= readerSize && size <= readerSize + headerRoom;
}

} // namespace

struct alignas(alignof(std::max_align_t)) ParseMemory::Block {
    Block* previous;
    Block* next;
    std::size_t size;
    std::uint32_t cohort;
    std::uint32_t magic;
};

ParseMemory* ParseMemory::Create() {
    return new ParseMemory();
}

ParseMemory::~ParseMemory() {
    for (void* const block : spare) {
        ::operator delete(block);
    }
}

void* ParseMemory::TakeSpare(std::size_t size) noexcept {
    for (std::size_t index = 0; index < gSpareCount; ++index) {
        if (spare[index] != nullptr && spareSize[index] == size) {
            return std::exchange(spare[index], nullptr);
        }
    }
    return nullptr;
}

bool ParseMemory::KeepSpare(Block* block) noexcept {
    if (block->size < gSpareFrom || retired) {
        return false;
    }
    for (std::size_t index = 0; index < gSpareCount; ++index) {
        if (spare[index] == nullptr) {
            spare[index] = block;
            spareSize[index] = block->size;
            return true;
        }
    }
    return false;
}

xercesc::MemoryManager* ParseMemory::getExceptionMemoryManager() {
    // Exceptions may outlive this manager (a caught exception outlives a parser on the stack).
    return xercesc::XMLPlatformUtils::fgMemoryManager;
}

bool ParseMemory::OverBudget(std::size_t size) const {
    std::size_t const perInput =
        inputBytes > (std::numeric_limits<std::size_t>::max() - gMinimumBudget) / gBudgetPerInputByte
            ? std::numeric_limits<std::size_t>::max() - gMinimumBudget
            : inputBytes * gBudgetPerInputByte;
    std::size_t const budget = gMinimumBudget + perInput;
    return size > budget || cohortBytes > budget - size;
}

void ParseMemory::CheckLimits(std::size_t size) {
    if (OverBudget(size)) {
        budgetExceeded = true;
        throw xercesc::OutOfMemoryException();
    }
    if (IsEntityReader(size) && ++entityReaders > entityLimit) {
        entitiesExceeded = true;
        throw xercesc::OutOfMemoryException();
    }
}

void* ParseMemory::allocate(XMLSize_t size) {
    std::lock_guard const lock(mutex);
    if (cohort != 0) {
        CheckLimits(size);
    }
    if (size > std::numeric_limits<std::size_t>::max() - sizeof(Block)) {
        throw xercesc::OutOfMemoryException();
    }
    void* raw = size >= gSpareFrom ? TakeSpare(size) : nullptr;
    if (raw == nullptr) {
        raw = ::operator new(sizeof(Block) + size, std::nothrow);
    }
    if (raw == nullptr) {
        throw xercesc::OutOfMemoryException();
    }
    auto* const block = new (raw) Block{nullptr, first, size, cohort, gBlockMagic};
    if (first != nullptr) {
        first->previous = block;
    }
    first = block;
    ++liveBlocks;
    if (cohort != 0) {
        cohortBytes += size;
    }
    return block + 1;
}

void ParseMemory::Unlink(Block* block) noexcept {
    if (block->previous != nullptr) {
        block->previous->next = block->next;
    } else {
        first = block->next;
    }
    if (block->next != nullptr) {
        block->next->previous = block->previous;
    }
    if (cohort != 0 && block->cohort == cohort) {
        cohortBytes -= block->size;
    }
    block->magic = 0;
    --liveBlocks;
    if (!KeepSpare(block)) {
        ::operator delete(block);
    }
}

void ParseMemory::deallocate(void* pointer) {
    if (pointer == nullptr) {
        return;
    }
    Block* const block = static_cast<Block*>(pointer) - 1;
    bool lastGone = false;
    {
        std::lock_guard const lock(mutex);
        if (block->magic != gBlockMagic && block->magic != gDocumentMagic) {
            return; // not ours: never free what we can't account for
        }
        bool const documentGone = block->magic == gDocumentMagic;
        std::uint32_t const number = block->cohort;
        Unlink(block);
        if (documentGone) {
            failed[number] = true;
            if (retired) {
                FreeCohort(number);
            }
        }
        lastGone = retired && liveBlocks == 0;
    }
    if (lastGone) {
        delete this;
    }
}

void ParseMemory::BeginParse(std::size_t limit) {
    std::lock_guard const lock(mutex);
    cohort = ++lastCohort;
    failed.resize(std::size_t{lastCohort} + 1, false);
    cohortBytes = 0;
    inputBytes = 0;
    entityReaders = 0;
    entityLimit = limit;
    budgetExceeded = false;
    entitiesExceeded = false;
}

void ParseMemory::FreeCohort(std::uint32_t number) noexcept {
    for (Block* block = first; block != nullptr;) {
        Block* const next = block->next;
        if (block->cohort == number) {
            Unlink(block);
        }
        block = next;
    }
}

void ParseMemory::EndParse(void const* document) {
    std::lock_guard const lock(mutex);
    if (cohort != 0 && document == nullptr) {
        failed[cohort] = true;
    }
    auto const* const address = static_cast<char const*>(document);
    for (Block* block = first; document != nullptr && block != nullptr; block = block->next) {
        auto const* const start = reinterpret_cast<char const*>(block + 1);
        if (block->cohort == cohort && start <= address && address < start + block->size) {
            block->magic = gDocumentMagic;
            break;
        }
    }
    cohort = 0;
    cohortBytes = 0;
}

void ParseMemory::AddInputBytes(std::size_t count) {
    std::lock_guard const lock(mutex);
    inputBytes += count;
}

std::size_t ParseMemory::InputBytes() const {
    std::lock_guard const lock(mutex);
    return inputBytes;
}

bool ParseMemory::BudgetExceeded() const {
    std::lock_guard const lock(mutex);
    return budgetExceeded;
}

bool ParseMemory::EntitiesExceeded() const {
    std::lock_guard const lock(mutex);
    return entitiesExceeded;
}

std::size_t ParseMemory::EntityLimit() const {
    std::lock_guard const lock(mutex);
    return entityLimit;
}

void ParseMemory::Retire() noexcept {
    bool nothingLeft = false;
    {
        std::lock_guard const lock(mutex);
        cohort = 0;
        for (Block* block = first; block != nullptr;) {
            Block* const next = block->next;
            if (block->cohort != 0 && failed[block->cohort]) {
                Unlink(block);
            }
            block = next;
        }
        retired = true;
        // A document that outlives the parser should not hold the parser's spare blocks too.
        for (void*& block : spare) {
            ::operator delete(std::exchange(block, nullptr));
        }
        nothingLeft = liveBlocks == 0;
    }
    if (nothingLeft) {
        delete this;
    }
}

} // namespace TavoXML::detail
