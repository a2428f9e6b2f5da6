// Helpers of the hostile-input tests: a child process under an address-space limit and a timer, a
// scoped working directory, generated documents, and every text of a tree collected without recursion.
#pragma once

#include "parsing/ParsingTestSupport.hpp"

#include <xercesc/dom/DOM.hpp>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>

namespace ParsingTest {

// AddressSanitizer reserves terabytes of address space and cannot run under RLIMIT_AS.
#if defined(__SANITIZE_ADDRESS__)
#define TAVO_TEST_UNDER_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TAVO_TEST_UNDER_ASAN 1
#endif
#endif
#ifdef TAVO_TEST_UNDER_ASAN
constexpr bool gUnderAddressSanitizer = true;
#else
constexpr bool gUnderAddressSanitizer = false;
#endif

// What a child process told: the text that its body returned, or how it ended when it didn't return.
struct ChildOutcome {
    std::string text;
    bool returned = false;
};

// Runs `body` in a child process whose address space may grow by `extraBytes` beyond the parent's
// present size (0: no limit) and that is killed after `seconds`. The body's text comes back.
ChildOutcome RunInChild(std::function<std::string()> const& body, std::size_t extraBytes, unsigned seconds);

// Makes a folder the working directory until the end of the scope.
class WorkingDirectory {
public:
    explicit WorkingDirectory(std::filesystem::path const& folder);
    WorkingDirectory(WorkingDirectory const&) = delete;
    WorkingDirectory& operator=(WorkingDirectory const&) = delete;
    ~WorkingDirectory();

private:
    std::filesystem::path previous;
};

// Every text, CDATA, comment and attribute value of the document, joined; iterative, so that any depth
// is fine.
std::string AllText(xercesc::DOMDocument const* document);

// `<!DOCTYPE r [<!ENTITY e "xxx...">]>` with `references` uses of &e; in the content of <r>, or in one
// attribute value of it.
std::string RepeatedEntityDocument(std::size_t entityLength, std::size_t references, bool inAttribute);
// A plain document of about `bytes` bytes: many small elements with text.
std::string PlainDocument(std::size_t bytes);

// Parses bytes with ParseXMLDoc, by default as the channels do (Val_Auto, entity reference nodes).
Document ParseBytes(std::string const& bytes, NodeLocationInfo* line, Tavo::UniString* message,
                    bool createEntityRefs = true, Parser::ValSchemes scheme = Parser::Val_Auto);

} // namespace ParsingTest
