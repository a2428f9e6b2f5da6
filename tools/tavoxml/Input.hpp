// Documents as the tool reads them: a file name, or "-" for standard input, parsed by the library's
// front-end with a line table. Exit codes shared by the subcommands.
#pragma once

#include "TavoXMLUtils/TavoXMLUtils.hpp"

#include <xercesc/dom/DOMDocument.hpp>

#include <memory>
#include <string>

namespace Tool {

// What `diff` and `xmllint` users expect.
inline constexpr int ExitGood = 0;
inline constexpr int ExitBad = 1;     // invalid or different
inline constexpr int ExitTrouble = 2; // missing file, bad option

struct ReleaseDocument {
    void operator()(xercesc::DOMDocument* document) const { document->release(); }
};

// One parsed input. `document` is null when the parse failed (`line` and `message` say why) or when the
// input could not be read at all (`readable` false, `message` says why).
struct ParsedInput {
    std::unique_ptr<xercesc::DOMDocument, ReleaseDocument> document;
    std::unique_ptr<NodeLocations> lines = std::make_unique<NodeLocations>();
    bool readable = true;
    unsigned int line = 0;
    std::string message;

    // The source line of a node of this document, 0 when unknown.
    unsigned int LineOf(xercesc::DOMNode const* node) const;
};

struct ParseSettings {
    bool validate = true;                  // as the document's DTD or the schema asks
    ValidatingXMLParser* parser = nullptr; // with a loaded schema, or null for a plain parse
};

ParsedInput Parse(std::string const& name, ParseSettings const& settings);

// Bytes to standard output, or to `path` through a temporary file beside it that replaces it only once
// complete. Returns false and says why on standard error.
bool WriteOutput(std::string const& bytes, std::string const& path);

} // namespace Tool
