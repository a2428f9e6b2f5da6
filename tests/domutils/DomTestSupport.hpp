// Helpers of the DOM utility tests: a document parsed from literal text with its node locations stored
// under "NodeLocations", building blocks for hand-made trees, and the message of a ConvException.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/domutils/ConvException.hpp"
#include "TavoXMLUtils/parsing/NodeLocations.hpp"
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"

#include <gtest/gtest.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMImplementation.hpp>
#include <xercesc/dom/DOMImplementationRegistry.hpp>
#include <xercesc/dom/DOMNodeList.hpp>

#include <memory>
#include <string>
#include <string_view>

namespace DomTest {

inline std::string Utf8(const Tavo::UniString& text) {
    const std::unique_ptr<char[]> bytes(text.CopyUTF8(0, Tavo::UniString::kAll, 0));
    return std::string(bytes.get());
}

struct DocumentRelease {
    void operator()(xercesc::DOMDocument* document) const noexcept { document->release(); }
};
using DocumentPtr = std::unique_ptr<xercesc::DOMDocument, DocumentRelease>;

// A document parsed from UTF-8 text; with `storeLocations` its line table stands on it as user data
// under "NodeLocations", as the readers look for it.
class Parsed {
public:
    explicit Parsed(std::string_view xml, bool storeLocations = true)
        : document(ParseXMLDoc(reinterpret_cast<const unsigned char*>(xml.data()),
                               static_cast<unsigned int>(xml.size()), xercesc::AbstractDOMParser::Val_Never,
                               false, Tavo::UniString("test.xml"), &locations)) {
        EXPECT_NE(document, nullptr) << xml;
        if (document && storeLocations) {
            document->setUserData(u"NodeLocations", &locations, nullptr);
        }
    }
    Parsed(const Parsed&) = delete;
    Parsed& operator=(const Parsed&) = delete;
    ~Parsed() {
        if (document) {
            document->setUserData(u"NodeLocations", nullptr, nullptr);
        }
    }

    xercesc::DOMDocument* Document() const { return document.get(); }
    // The parser records no line for CDATA sections and processing instructions; tests that need one
    // enter it here, unless the parse gave one already.
    void EnsureLine(const xercesc::DOMNode* node, unsigned int line) {
        if (locations.Find(node) == nullptr) {
            locations.AddNew(node, line);
        }
    }
    xercesc::DOMElement* Root() const { return document->getDocumentElement(); }
    // The first element named `name` in document order.
    xercesc::DOMElement* Element(const char16_t* name) const {
        auto* element = static_cast<xercesc::DOMElement*>(document->getElementsByTagName(name)->item(0));
        EXPECT_NE(element, nullptr);
        return element;
    }

private:
    NodeLocations locations;
    DocumentPtr document;
};

// An empty document with the root element `root`, for trees built by hand.
inline DocumentPtr NewDocument(const char16_t* root = u"root") {
    xercesc::DOMImplementation* implementation =
        xercesc::DOMImplementationRegistry::getDOMImplementation(u"");
    return DocumentPtr(implementation->createDocument(nullptr, root, nullptr));
}

// What a call threw: its message as UTF-8 and its line, or "<nothing thrown>".
struct Thrown {
    std::string message;
    std::uint32_t line = 0;
    bool operator==(const Thrown&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Thrown& thrown) {
    return out << '"' << thrown.message << "\" line " << thrown.line;
}

template <class Call>
Thrown ThrownBy(Call call) {
    try {
        call();
    } catch (const TavoXMLUtils::ConvException& e) {
        return Thrown{Utf8(e.message), e.line};
    }
    return Thrown{"<nothing thrown>", 0};
}

} // namespace DomTest
