// Helpers of the DOM utility tests: a document parsed from literal text with its node locations stored
// under "NodeLocations", building blocks for hand-made trees, and the message of a ConvException.
#pragma once

#include "common/ParsedDocument.hpp"
#include "common/TestText.hpp"

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/domutils/ConvException.hpp"
#include "TavoXMLUtils/parsing/NodeLocations.hpp"

#include <gtest/gtest.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMImplementation.hpp>
#include <xercesc/dom/DOMImplementationRegistry.hpp>
#include <xercesc/dom/DOMNodeList.hpp>

#include <memory>
#include <string>

namespace DomTest {

using TavoTest::Utf8;

struct DocumentRelease {
    void operator()(xercesc::DOMDocument* document) const noexcept { document->release(); }
};
using DocumentPtr = std::unique_ptr<xercesc::DOMDocument, DocumentRelease>;

// A document parsed from UTF-8 text; with `storeLocations` its line table stands on it as user data
// under "NodeLocations", as the readers look for it.
class Parsed {
public:
    explicit Parsed(const std::string& xml, bool storeLocations = true)
        : parsed(TavoTest::ParsedDocument::FromText(xml)) {
        EXPECT_NE(parsed.Get(), nullptr) << xml << ": " << parsed.ErrorText();
        if (storeLocations) {
            parsed.StoreLocations();
        }
    }

    xercesc::DOMDocument* Document() const { return parsed.Get(); }
    xercesc::DOMElement* Root() const { return parsed.Root(); }
    // The parser records no line for CDATA sections and processing instructions; tests that need one
    // enter it here, unless the parse gave one already.
    void EnsureLine(const xercesc::DOMNode* node, unsigned int line) {
        if (parsed.Locations().Find(node) == nullptr) {
            parsed.Locations().AddNew(node, line);
        }
    }
    // The first element named `name` in document order.
    xercesc::DOMElement* Element(const char16_t* name) const {
        auto* element = static_cast<xercesc::DOMElement*>(parsed.Get()->getElementsByTagName(name)->item(0));
        EXPECT_NE(element, nullptr);
        return element;
    }

private:
    TavoTest::ParsedDocument parsed;
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
