// libFuzzer target: arbitrary bytes through the memory form of ParseXMLDoc, with line tracking, the
// way the library's own readers parse. Every input must end in a document or a message, never in a
// crash, a hang or a leak; nothing is suppressed, the parser library's own leaks on failed parses
// included, which the front-end frees.
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

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
