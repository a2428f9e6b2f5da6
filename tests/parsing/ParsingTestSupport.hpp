// Helpers of the parsing tests: owned documents, locations of the test data and readable texts.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/dom/DOM.hpp>

#include <fstream>
#include <memory>
#include <sstream>
#include <string>

namespace ParsingTest {

using Parser = xercesc::AbstractDOMParser;

struct DocumentRelease {
    void operator()(xercesc::DOMDocument* document) const { document->release(); }
};
using Document = std::unique_ptr<xercesc::DOMDocument, DocumentRelease>;

inline std::string DataPath(std::string const& name) {
    return std::string(TAVO_TEST_DATA_DIR) + "/parsing/" + name;
}
inline Vesk::Location DataLocation(std::string const& name) {
    return Vesk::Location(DataPath(name).c_str());
}
inline std::string ReadFile(std::string const& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}
inline std::string Utf8(Tavo::UniString const& text) {
    std::unique_ptr<char[]> const bytes(text.CopyUTF8());
    return bytes.get();
}

// Parses `text` from memory under the name "memory.xml".
inline Document ParseText(std::string const& text, Parser::ValSchemes scheme,
                          NodeLocationInfo* line = nullptr, Tavo::UniString* message = nullptr,
                          NodeLocations* table = nullptr) {
    return Document(ParseXMLDoc(reinterpret_cast<unsigned char const*>(text.data()),
                                static_cast<unsigned int>(text.size()), scheme, true,
                                Tavo::UniString("memory.xml"), table, line, message));
}

} // namespace ParsingTest
