// Helpers of the parsing tests: owned documents, locations of the test data and readable texts.
#pragma once

#include "common/TestData.hpp"
#include "common/TestText.hpp"

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
    return TavoTest::DataPath("parsing/" + name);
}
inline Vesk::Location DataLocation(std::string const& name) {
    return Vesk::Location(DataPath(name).c_str());
}
using TavoTest::ReadFileBytes;
using TavoTest::Utf8;

// Parses `text` from memory under the name "memory.xml".
inline Document ParseText(std::string const& text, Parser::ValSchemes scheme,
                          NodeLocationInfo* line = nullptr, Tavo::UniString* message = nullptr,
                          NodeLocations* table = nullptr) {
    return Document(ParseXMLDoc(reinterpret_cast<unsigned char const*>(text.data()),
                                static_cast<unsigned int>(text.size()), scheme, true,
                                Tavo::UniString("memory.xml"), table, line, message));
}

} // namespace ParsingTest
