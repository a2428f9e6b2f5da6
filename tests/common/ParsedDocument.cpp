#include "common/ParsedDocument.hpp"

#include "common/TestText.hpp"

#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/dom/DOMElement.hpp>

namespace TavoTest {

ParsedDocument ParsedDocument::FromText(std::string const& bytes) {
    ParsedDocument parsed;
    NodeLocationInfo line;
    parsed.document.reset(
        ParseXMLDoc(reinterpret_cast<unsigned char const*>(bytes.data()),
                    static_cast<unsigned int>(bytes.size()), xercesc::AbstractDOMParser::Val_Auto, false,
                    Tavo::UniString("memory.xml"), parsed.locations.get(), &line, &parsed.errorText));
    parsed.errorLine = line.lineNumber;
    return parsed;
}

ParsedDocument ParsedDocument::FromFile(std::string const& path) {
    ParsedDocument parsed;
    NodeLocationInfo line;
    parsed.document.reset(ParseXMLDoc(Vesk::Location(path.c_str()), xercesc::AbstractDOMParser::Val_Auto,
                                      false, parsed.locations.get(), &line, &parsed.errorText));
    parsed.errorLine = line.lineNumber;
    return parsed;
}

xercesc::DOMElement* ParsedDocument::Root() const noexcept {
    return document ? document->getDocumentElement() : nullptr;
}

void ParsedDocument::StoreLocations() {
    if (document) {
        document->setUserData(u"NodeLocations", locations.get(), nullptr);
    }
}

std::string ParsedDocument::ErrorText() const {
    return Utf8(errorText);
}

} // namespace TavoTest
