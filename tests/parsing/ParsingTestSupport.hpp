// Helpers of the parsing tests: Xerces start-up, locations of the test data, owned documents and
// readable texts.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/dom/DOM.hpp>

#include <fstream>
#include <memory>
#include <sstream>
#include <string>

namespace ParsingTest {

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
inline std::string Utf8(char16_t const* text) {
    return Utf8(Tavo::UniString(text));
}

} // namespace ParsingTest
