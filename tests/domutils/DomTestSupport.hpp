// Helpers of the DOM utility tests: documents parsed from literal text with their node locations under
// "NodeLocations", scratch documents for the writers, the serialised text of a subtree, an element the
// DOM refuses to change, and what a call threw.
#pragma once

#include "common/ParsedDocument.hpp"
#include "common/TestText.hpp"

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/domutils/ConvException.hpp"
#include "TavoXMLUtils/parsing/NodeLocations.hpp"

#include <gtest/gtest.h>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <initializer_list>
#include <sstream>
#include <string>

namespace DomTest {

using TavoTest::Utf8;

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

// A document whose root element is `Root`, released at the end of the scope.
class ScratchDocument {
public:
    ScratchDocument()
        : document(
              xercesc::DOMImplementation::getImplementation()->createDocument(nullptr, u"Root", nullptr)) {}
    ScratchDocument(const ScratchDocument&) = delete;
    ScratchDocument& operator=(const ScratchDocument&) = delete;
    ~ScratchDocument() { document->release(); }
    xercesc::DOMDocument* Document() const { return document; }
    xercesc::DOMElement* Root() const { return document->getDocumentElement(); }

private:
    xercesc::DOMDocument* document;
};

// The UTF-8 text of `node` and everything below it, without declaration and without pretty-printing.
inline std::string Serialise(const xercesc::DOMNode* node) {
    xercesc::DOMLSSerializer* serializer =
        xercesc::DOMImplementation::getImplementation()->createLSSerializer();
    XMLCh* text = serializer->writeToString(node);
    std::string result = Utf8(Tavo::UniString(text));
    xercesc::XMLString::release(&text);
    serializer->release();
    return result;
}

inline std::string Text(const xercesc::DOMNode* node) {
    return Utf8(Tavo::UniString(node->getTextContent()));
}

// The element <Inner/> of an entity's replacement text: the DOM keeps it read-only, so every change
// of its children throws NO_MODIFICATION_ALLOWED_ERR.
class ReadOnlyElement {
public:
    ReadOnlyElement() {
        static const char text[] = "<!DOCTYPE Root [<!ENTITY e '<Inner/>'>]><Root>&e;</Root>";
        xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text), sizeof text - 1,
                                          "readonly");
        parser.setCreateEntityReferenceNodes(true);
        parser.parse(source);
        inner = static_cast<xercesc::DOMElement*>(
            parser.getDocument()->getDocumentElement()->getFirstChild()->getFirstChild());
    }
    xercesc::DOMElement* Get() const { return inner; }
    xercesc::DOMDocument* Document() const { return parser.getDocument(); }

private:
    mutable xercesc::XercesDOMParser parser;
    xercesc::DOMElement* inner = nullptr;
};

// What a call threw: a ConvException's message as UTF-8 and its line, as "message@line".
template <class Call>
std::string ThrownBy(Call call) {
    try {
        call();
    } catch (const TavoXMLUtils::ConvException& e) {
        return Utf8(e.message) + '@' + std::to_string(e.line);
    }
    return "<nothing thrown>";
}

// Each item's outcome as text, joined by " | ": what `call` returns, or "!message@line" when it throws a
// ConvException. One comparison checks a whole table of small cases, failures included.
template <class Item, class Call>
std::string Outcomes(std::initializer_list<Item> items, Call call) {
    std::ostringstream out;
    for (const Item& item : items) {
        out << (&item == items.begin() ? "" : " | ");
        try {
            out << call(item);
        } catch (const TavoXMLUtils::ConvException& e) {
            out << '!' << Utf8(e.message) << '@' << e.line;
        }
    }
    return out.str();
}

// The code of the DOMException a call threw, or -1.
template <class Call>
short DOMCodeOf(Call call) {
    try {
        call();
    } catch (const xercesc::DOMException& error) {
        return error.code;
    }
    return -1;
}

} // namespace DomTest
