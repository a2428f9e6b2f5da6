// Documents for the writer tests: a fresh document with an empty root, the text of a subtree as the
// serialiser writes it (layout comes only from the tree), and an element that the DOM refuses to
// change, to drive the writers' DOMException paths.
#pragma once

#include "common/TestText.hpp"

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <memory>
#include <string>

namespace TavoTest {

// A document whose root element is `Root`, released at the end of the scope.
class ScratchDocument {
public:
    ScratchDocument()
        : document(xercesc::DOMImplementation::getImplementation()->createDocument(
              nullptr, u"Root", nullptr, xercesc::XMLPlatformUtils::fgMemoryManager)) {}
    ScratchDocument(ScratchDocument const&) = delete;
    ScratchDocument& operator=(ScratchDocument const&) = delete;
    ~ScratchDocument() { document->release(); }

    xercesc::DOMDocument* Document() const { return document; }
    xercesc::DOMElement* Root() const { return document->getDocumentElement(); }

private:
    xercesc::DOMDocument* document;
};

// The UTF-8 text of `node` and everything below it, without declaration and without pretty-printing.
inline std::string Serialise(xercesc::DOMNode const* node) {
    xercesc::DOMLSSerializer* serializer =
        xercesc::DOMImplementation::getImplementation()->createLSSerializer();
    XMLCh* text = serializer->writeToString(node);
    std::string result = Utf8(Tavo::UniString(text));
    xercesc::XMLString::release(&text);
    serializer->release();
    return result;
}

// The element <Inner/> of an entity's replacement text: the DOM keeps it read-only, so every change
// of its children throws NO_MODIFICATION_ALLOWED_ERR.
class ReadOnlyElement {
public:
    ReadOnlyElement() {
        static char const text[] = "<!DOCTYPE Root [<!ENTITY e '<Inner/>'>]><Root>&e;</Root>";
        xercesc::MemBufInputSource source(reinterpret_cast<XMLByte const*>(text), sizeof text - 1,
                                          "readonly");
        parser.setCreateEntityReferenceNodes(true);
        parser.parse(source);
        xercesc::DOMNode* reference = parser.getDocument()->getDocumentElement()->getFirstChild();
        inner = static_cast<xercesc::DOMElement*>(reference->getFirstChild());
    }
    xercesc::DOMElement* Get() const { return inner; }
    xercesc::DOMDocument* Document() const { return parser.getDocument(); }

private:
    mutable xercesc::XercesDOMParser parser;
    xercesc::DOMElement* inner = nullptr;
};

} // namespace TavoTest
