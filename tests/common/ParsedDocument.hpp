// ParsedDocument: a document parsed by the library's front-end with line tracking, owning the DOM and
// its NodeLocations table. Parsing failures leave Get() null and give the parser's line and text.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/parsing/NodeLocations.hpp"

#include <xercesc/dom/DOMDocument.hpp>

#include <memory>
#include <string>

namespace TavoTest {

class ParsedDocument {
public:
    // Parses UTF-8 (or self-describing) bytes from memory; entity references are expanded.
    static ParsedDocument FromText(std::string const& bytes);
    static ParsedDocument FromFile(std::string const& path);

    xercesc::DOMDocument* Get() const noexcept { return document.get(); }
    xercesc::DOMElement* Root() const noexcept;
    NodeLocations& Locations() noexcept { return *locations; }
    // Puts the table on the document as user data under "NodeLocations", where the DOM utilities look.
    void StoreLocations();
    unsigned int ErrorLine() const noexcept { return errorLine; }
    std::string ErrorText() const;

private:
    struct Release {
        void operator()(xercesc::DOMDocument* d) const { d->release(); }
    };
    std::unique_ptr<NodeLocations> locations = std::make_unique<NodeLocations>();
    std::unique_ptr<xercesc::DOMDocument, Release> document;
    unsigned int errorLine = 0;
    Tavo::UniString errorText;
};

} // namespace TavoTest
