// libFuzzer target: arbitrary bytes through the memory form of ParseXMLDoc, with line tracking, the
// way the library's own readers parse. Every input must end in a document or a message, never in a
// crash, a hang or a leak.
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// Xerces-C++ 3.2 itself leaks the half-built content model of a malformed element declaration such as
// "<!ELEMENT a ( (#PCDATA)>", whatever the error handler does. That leak alone is let pass; whole
// stacks are recorded at each allocation (the parser's library has no frame pointers) so that the
// suppression can see where a leaked block came from (eight frames reach it, and cost less).
extern "C" char const* __lsan_default_suppressions() {
    return "leak:xercesc_3_2::DTDScanner::scanChildren\n";
}
extern "C" char const* __asan_default_options() {
    return "fast_unwind_on_malloc=0:malloc_context_size=8";
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    xercesc::XMLPlatformUtils::Initialize();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    NodeLocations table;
    NodeLocationInfo line;
    Tavo::UniString message;
    xercesc::DOMDocument* const document =
        ParseXMLDoc(data, static_cast<unsigned int>(size), xercesc::AbstractDOMParser::Val_Auto, true,
                    Tavo::UniString("fuzz.xml"), &table, &line, &message);
    if (document != nullptr) {
        // The table must answer for the root without touching freed memory later on.
        table.Find(document->getDocumentElement());
        document->release();
    } else if (message.IsEmpty()) {
        std::abort(); // a failure must always come with a text
    }
    return 0;
}
