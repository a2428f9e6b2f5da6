// ParseMemory: the memory manager of one ValidatingXMLParser and of every document it hands out.
//
// Every block is recorded in a list, tagged with the parse ("cohort") it was allocated in. Two jobs
// follow from that:
// - A failed parse leaves nothing behind. The parser's library leaks parts of what it built when some
//   malformed declarations end a parse; when the parser is gone, whatever is still allocated from a
//   parse that gave no document is garbage and is freed (Retire).
// - A parse has a memory budget: a minimum plus a multiple of the document bytes read so far. An
//   allocation beyond it fails the way an exhausted heap does (OutOfMemoryException), and
//   BudgetExceeded() tells the two apart.
// - A parse reads a bounded number of entities. The parser takes one reader object for the document,
//   for every external file and for every entity it expands, general or parameter, internal or
//   external, and it allocates each from here; so counting those allocations counts every expansion,
//   the parameter-entity expansions inside the DTD too, which the parser's own count leaves out. The
//   allocation that goes beyond the limit fails like one beyond the budget; EntitiesExceeded() tells.
//
// State: created by Create(), owned by one parser until Retire(); after that it lives on while
// blocks of adopted documents are allocated, and deletes itself with the last of them. Between
// BeginParse and EndParse a cohort is open; blocks allocated outside a parse (a loaded schema, a
// caller's later changes to a document) belong to no failed cohort and are never freed here.
// Allocation failure throws xercesc::OutOfMemoryException; nothing else throws. Thread-safe: a
// document may be released on another thread while the parser works on.
#pragma once

#include <xercesc/framework/MemoryManager.hpp>

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

namespace TavoXML::detail {

class ParseMemory final : public xercesc::MemoryManager {
public:
    static ParseMemory* Create();
    ParseMemory(ParseMemory const&) = delete;
    ParseMemory& operator=(ParseMemory const&) = delete;

    void* allocate(XMLSize_t size) override;
    void deallocate(void* block) override;
    xercesc::MemoryManager* getExceptionMemoryManager() override;

    // Opens a cohort, starts the budget from zero and allows `entityLimit` entity readers.
    void BeginParse(std::size_t entityLimit);
    // Closes the cohort; without a document it is marked for freeing at Retire. With one, the block
    // that holds the document object is remembered: once it is freed, the document is gone, and what
    // is left of its parse is garbage too (the parser's library leaks some declarations of successful
    // parses as well), freed at Retire or at once when the parser is already gone.
    void EndParse(void const* document);
    // Document bytes read in this parse; the budget grows with them.
    void AddInputBytes(std::size_t count);
    std::size_t InputBytes() const;
    // True once an allocation of the current parse was refused for the budget.
    bool BudgetExceeded() const;
    // True once an entity reader of the current parse was refused for the entity limit.
    bool EntitiesExceeded() const;
    // The entity limit of the current or last parse.
    std::size_t EntityLimit() const;

    // Frees the blocks of failed parses and gives up ownership; call only when the parser is gone.
    void Retire() noexcept;

private:
    struct Block;

    ParseMemory() = default;
    ~ParseMemory() override;
    bool OverBudget(std::size_t size) const;
    void CheckLimits(std::size_t size);
    void Unlink(Block* block) noexcept;
    void FreeCohort(std::uint32_t number) noexcept;
    void* TakeSpare(std::size_t size) noexcept;
    bool KeepSpare(Block* block) noexcept;

    mutable std::mutex mutex;
    Block* first = nullptr;
    std::size_t liveBlocks = 0;
    std::uint32_t cohort = 0;     // the open cohort; 0 when no parse runs
    std::uint32_t lastCohort = 0; // cohorts are numbered from 1
    std::vector<bool> failed;     // by cohort number: no document, or its document is gone
    std::size_t cohortBytes = 0;  // bytes live from the open cohort
    std::size_t inputBytes = 0;
    std::size_t entityReaders = 0; // entity readers allocated in the open cohort
    std::size_t entityLimit = 0;
    bool budgetExceeded = false;
    bool entitiesExceeded = false;
    bool retired = false;
    // A few large blocks kept after their release: the parser takes and frees a reader of some
    // hundred kilobytes for every entity it expands, which would otherwise go to the system each time.
    static constexpr std::size_t gSpareCount = 4;
    void* spare[gSpareCount] = {};
    std::size_t spareSize[gSpareCount] = {};
};

} // namespace TavoXML::detail
