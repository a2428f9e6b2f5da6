#include "TavoXMLUtils/domutils/TypedNodeAccessors.hpp"

#include "TavoXMLUtils/domutils/LayoutText.hpp"
#include "TavoXMLUtils/domutils/TreeNavigation.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/dom/DOMText.hpp>

#include <cstdio>
#include <cstdlib>

using xercesc::DOMElement;
using xercesc::DOMNode;

namespace TavoXMLUtils {

namespace {

Tavo::UniString Wide(Tavo::String const& text) {
    return Tavo::UniString(text.ToCStr(), TavoCharCodeDefault);
}

// The text that a number reader converts: empty when the node does not match, so the number is 0.
// atoi and atol are strtol with the value cut to int; strtol itself is used so that a text beyond
// the range of int has a defined result (the cut keeps the low bits).
template <class Convert>
void ReadNumber(DOMNode const* node, Tavo::UniString const& name, Convert convert) {
    Tavo::UniString text;
    ReadTextNode(node, name, text);
    Tavo::UniString::CStrHolder const bytes = text.ToCStr(0, Tavo::UniString::kAll, TavoCharCodeDefault);
    convert(bytes.Get());
}

long SignedOf(char const* text) {
    return std::strtol(text, nullptr, 10);
}

unsigned long UnsignedOf(char const* text) {
    return std::strtoul(text, nullptr, 10);
}

template <class Value>
bool WriteFormatted(DOMElement* parent, Tavo::UniString const& name, char const* format, Value value,
                    int tabs) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return WriteTextElement(parent, name, Tavo::UniString(text, TavoCharCodeDefault), tabs);
}

} // namespace

bool ReadTextNode(DOMNode const* node, Tavo::UniString const& name, Tavo::UniString& text) {
    if (!IsNodeOk(node, name)) {
        return true;
    }
    DOMNode const* const child = node->getFirstChild();
    if (child == nullptr || child->getNodeType() != DOMNode::TEXT_NODE) {
        return true;
    }
    XMLCh const* const value = child->getNodeValue();
    text = value != nullptr ? Tavo::UniString(value) : Tavo::UniString();
    return true;
}

bool ReadTextNode(DOMNode const* node, Tavo::String const& name, Tavo::String& text) {
    Tavo::UniString wide;
    ReadTextNode(node, Wide(name), wide);
    text = wide.ToCStr(0, Tavo::UniString::kAll, TavoCharCodeDefault).Get();
    return true;
}

bool ReadShortNode(DOMNode const* node, Tavo::UniString const& name, short& value) {
    ReadNumber(node, name,
               [&](char const* text) { value = static_cast<short>(static_cast<int>(SignedOf(text))); });
    return true;
}

bool ReadUShortNode(DOMNode const* node, Tavo::UniString const& name, unsigned short& value) {
    ReadNumber(node, name, [&](char const* text) { value = static_cast<unsigned short>(UnsignedOf(text)); });
    return true;
}

bool ReadLongNode(DOMNode const* node, Tavo::UniString const& name, int& value) {
    ReadNumber(node, name, [&](char const* text) { value = static_cast<int>(SignedOf(text)); });
    return true;
}

bool ReadULongNode(DOMNode const* node, Tavo::UniString const& name, unsigned int& value) {
    ReadNumber(node, name, [&](char const* text) { value = static_cast<unsigned int>(UnsignedOf(text)); });
    return true;
}

bool ReadBooleanNode(DOMNode const* node, Tavo::UniString const& name, bool& value) {
    short number = 0;
    ReadShortNode(node, name, number);
    value = number == 1;
    return true;
}

bool ReadShortNode(DOMNode const* node, Tavo::String const& name, short& value) {
    return ReadShortNode(node, Wide(name), value);
}
bool ReadUShortNode(DOMNode const* node, Tavo::String const& name, unsigned short& value) {
    return ReadUShortNode(node, Wide(name), value);
}
bool ReadLongNode(DOMNode const* node, Tavo::String const& name, int& value) {
    return ReadLongNode(node, Wide(name), value);
}
bool ReadULongNode(DOMNode const* node, Tavo::String const& name, unsigned int& value) {
    return ReadULongNode(node, Wide(name), value);
}
bool ReadBooleanNode(DOMNode const* node, Tavo::String const& name, bool& value) {
    return ReadBooleanNode(node, Wide(name), value);
}

bool WriteTextElement(DOMElement* parent, Tavo::UniString const& name, Tavo::UniString const& value,
                      int tabs) {
    if (parent == nullptr) {
        return false;
    }
    try {
        xercesc::DOMDocument* const document = parent->getOwnerDocument();
        DOMElement* const element = document->createElement(TavoXML::AsXMLCh(name));
        if (element == nullptr) {
            return false;
        }
        xercesc::DOMText* const text = document->createTextNode(TavoXML::AsXMLCh(value));
        if (text == nullptr) {
            return false; // the element stays unattached
        }
        element->appendChild(text);
        WriteTabs(parent, tabs);
        parent->appendChild(element);
        WriteNewLine(parent);
        return true;
    } catch (xercesc::DOMException const&) {
        return false;
    }
}

bool WriteShortElement(DOMElement* parent, Tavo::UniString const& name, short const& value, int tabs) {
    return WriteFormatted(parent, name, "%d", static_cast<int>(value), tabs);
}
bool WriteUShortElement(DOMElement* parent, Tavo::UniString const& name, unsigned short const& value,
                        int tabs) {
    return WriteFormatted(parent, name, "%u", static_cast<unsigned int>(value), tabs);
}
bool WriteLongElement(DOMElement* parent, Tavo::UniString const& name, int const& value, int tabs) {
    return WriteFormatted(parent, name, "%ld", static_cast<long>(value), tabs);
}
bool WriteULongElement(DOMElement* parent, Tavo::UniString const& name, unsigned int const& value, int tabs) {
    return WriteFormatted(parent, name, "%lu", static_cast<unsigned long>(value), tabs);
}
bool WriteBooleanElement(DOMElement* parent, Tavo::UniString const& name, bool const& value, int tabs) {
    return WriteFormatted(parent, name, "%d", static_cast<int>(value), tabs);
}

bool WriteTextElement(DOMElement* parent, Tavo::String const& name, Tavo::String const& value, int tabs) {
    return WriteTextElement(parent, Wide(name), Wide(value), tabs);
}
bool WriteShortElement(DOMElement* parent, Tavo::String const& name, short const& value, int tabs) {
    return WriteShortElement(parent, Wide(name), value, tabs);
}
bool WriteUShortElement(DOMElement* parent, Tavo::String const& name, unsigned short const& value, int tabs) {
    return WriteUShortElement(parent, Wide(name), value, tabs);
}
bool WriteLongElement(DOMElement* parent, Tavo::String const& name, int const& value, int tabs) {
    return WriteLongElement(parent, Wide(name), value, tabs);
}
bool WriteULongElement(DOMElement* parent, Tavo::String const& name, unsigned int const& value, int tabs) {
    return WriteULongElement(parent, Wide(name), value, tabs);
}
bool WriteBooleanElement(DOMElement* parent, Tavo::String const& name, bool const& value, int tabs) {
    return WriteBooleanElement(parent, Wide(name), value, tabs);
}

bool BeginWriteElement(DOMElement* parent, DOMElement*& element, Tavo::UniString const& name) {
    element = nullptr;
    if (parent == nullptr) {
        return false;
    }
    element = parent->getOwnerDocument()->createElement(TavoXML::AsXMLCh(name));
    if (element == nullptr) {
        return false;
    }
    return WriteNewLine(element);
}

bool BeginWriteElement(DOMElement* parent, DOMElement*& element, Tavo::String const& name) {
    return BeginWriteElement(parent, element, Wide(name));
}

bool EndWriteElement(DOMElement* parent, DOMElement* element, int tabs) {
    if (parent == nullptr || element == nullptr) {
        return false;
    }
    WriteTabs(element, tabs); // before the closing tag
    WriteTabs(parent, tabs);  // before the opening tag
    parent->appendChild(element);
    return WriteNewLine(parent);
}

} // namespace TavoXMLUtils
