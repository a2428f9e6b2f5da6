#include "TavoXMLUtils/domutils/TagWriters.hpp"

#include "TavoRoot/CharCode.hpp"
#include "TavoXMLUtils/domutils/internal/DoubleText.hpp"
#include "TavoXMLUtils/domutils/internal/MemoryError.hpp"
#include "TavoXMLUtils/support/internal/NameText.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"

#include <xercesc/dom/DOMCDATASection.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/dom/DOMProcessingInstruction.hpp>
#include <xercesc/dom/DOMText.hpp>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <memory>
#include <new>
#include <string>

using TavoXML::NameText;
using TavoXML::detail::ThrowMemoryError;
using xercesc::DOMDocument;
using xercesc::DOMElement;
using xercesc::DOMNode;

namespace TavoXMLUtils {

namespace {

DOMDocument* OwnerDocument(DOMElement* parent) {
    if (parent == nullptr) {
        ThrowMemoryError();
    }
    return parent->getOwnerDocument();
}

// An element that is not appended yet. If a writer fails before appending it, the element goes back
// to its document at once instead of waiting for the document's end.
class OrphanElement {
public:
    OrphanElement(DOMDocument* document, XMLCh const* name) : element(document->createElement(name)) {
        if (element == nullptr) {
            ThrowMemoryError();
        }
    }
    OrphanElement(OrphanElement const&) = delete;
    OrphanElement& operator=(OrphanElement const&) = delete;
    ~OrphanElement() {
        if (element == nullptr) {
            return;
        }
        try {
            element->release();
        } catch (...) { // nothing may leave a destructor; the document frees it at its end anyway
        }
    }

    DOMElement* Get() const noexcept { return element; }

    // The element and a line feed behind it; from here on the element belongs to `parent`.
    DOMElement* AppendTo(DOMElement* parent) {
        parent->appendChild(element);
        DOMElement* const appended = element;
        element = nullptr;
        NewLine(parent);
        return appended;
    }

private:
    DOMElement* element;
};

template <class Node>
Node* Checked(Node* node) {
    if (node == nullptr) {
        ThrowMemoryError();
    }
    return node;
}

// The value node of NewTag. Strings for a CDATA section are quoted first and then protected.
DOMNode* ValueNode(DOMDocument* document, char const* text, bool cdata, unsigned short const* utext) {
    if (!cdata) {
        if (text != nullptr) {
            return Checked(document->createTextNode(NameText(text).Get()));
        }
        return Checked(document->createTextNode(TavoXML::AsXMLCh(utext)));
    }
    Tavo::UniString value =
        text != nullptr ? Tavo::UniString(text, TavoCharCodeDefault) : Tavo::UniString(utext);
    MakeItKetraString(value);
    CorrectCDATA(value);
    return Checked(document->createCDATASection(TavoXML::AsXMLCh(value)));
}

// The level of a child, without overflow for a level that no document has.
int ChildLevel(int tabs) {
    return tabs < INT_MAX ? tabs + 1 : tabs;
}

template <class Value>
void SetFormattedAttr(DOMElement* tag, char const* name, char const* format, Value value) {
    if (tag == nullptr) {
        ThrowMemoryError();
    }
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    tag->setAttribute(NameText(name).Get(), NameText(text).Get());
}

void SetWordAttr(DOMElement* tag, char const* name, char16_t const* word) {
    if (tag == nullptr) {
        ThrowMemoryError();
    }
    tag->setAttribute(NameText(name).Get(), word);
}

} // namespace

DOMElement* NewTag(DOMElement* parent, char const* name, char const* text, int tabs, bool cdata,
                   unsigned short const* utext) {
    DOMDocument* const document = OwnerDocument(parent);
    OrphanElement element(document, NameText(name).Get());
    if (text != nullptr || cdata || utext != nullptr) {
        element.Get()->appendChild(ValueNode(document, text, cdata, utext));
    }
    Tabs(parent, tabs);
    return element.AppendTo(parent);
}

DOMElement* NewULongTag(DOMElement* parent, char const* name, unsigned int value, int tabs) {
    char text[24];
    std::snprintf(text, sizeof text, "%lu", static_cast<unsigned long>(value));
    return NewTag(parent, name, text, tabs, false, nullptr);
}

DOMElement* NewSLongTag(DOMElement* parent, char const* name, int value, int tabs) {
    char text[24];
    std::snprintf(text, sizeof text, "%ld", static_cast<long>(value));
    return NewTag(parent, name, text, tabs, false, nullptr);
}

DOMElement* NewDoubleTag(DOMElement* parent, char const* name, double value, int tabs) {
    TavoXML::detail::DoubleText const text(value);
    return NewTag(parent, name, text.Get(), tabs, false, nullptr);
}

DOMElement* NewTextTag(DOMElement* parent, char const* name, char const* text, int tabs) {
    return NewTag(parent, name, text, tabs, false, nullptr);
}

DOMElement* NewTextTag(DOMElement* parent, Tavo::UniString const& name, Tavo::UniString const& text,
                       int tabs) {
    DOMDocument* const document = OwnerDocument(parent);
    OrphanElement element(document, TavoXML::AsXMLCh(name));
    element.Get()->appendChild(Checked(document->createTextNode(TavoXML::AsXMLCh(text))));
    Tabs(parent, tabs);
    return element.AppendTo(parent);
}

DOMElement* NewBoolTag(DOMElement* parent, char const* name, bool value, int tabs) {
    return NewTag(parent, name, value ? "true" : "false", tabs, false, nullptr);
}

DOMElement* NewLegacyBoolTag(DOMElement* parent, char const* name, bool value, int tabs) {
    return NewTag(parent, name, value ? "yes" : "no", tabs, false, nullptr);
}

DOMElement* NewStringTag(DOMElement* parent, char const* name, char const* text, int tabs) {
    return NewTag(parent, name, text, tabs, true, nullptr);
}

DOMElement* NewStringTag(DOMElement* parent, char const* name, unsigned short const* text, int tabs) {
    return NewTag(parent, name, nullptr, tabs, true, text);
}

DOMElement* NewStringWLenTag(DOMElement* parent, char const* name, unsigned short const* text, int length,
                             int tabs) {
    static constexpr int kLocalCapacity = 256;
    std::size_t const count = text != nullptr && length > 0 ? static_cast<std::size_t>(length) : 0;
    unsigned short local[kLocalCapacity];
    std::unique_ptr<unsigned short[]> allocated;
    unsigned short* copy = local;
    if (count >= kLocalCapacity) {
        allocated.reset(new (std::nothrow) unsigned short[count + 1]);
        if (allocated == nullptr) {
            ThrowMemoryError();
        }
        copy = allocated.get();
    }
    std::copy_n(text, count, copy);
    copy[count] = 0;
    return NewTag(parent, name, nullptr, tabs, true, copy);
}

void SetSLongAttr(DOMElement* tag, char const* name, int value) {
    SetFormattedAttr(tag, name, "%ld", static_cast<long>(value));
}

void SetULongAttr(DOMElement* tag, char const* name, unsigned int value) {
    SetFormattedAttr(tag, name, "%lu", static_cast<unsigned long>(value));
}

void SetBooleanAttr(DOMElement* tag, char const* name, bool value) {
    SetWordAttr(tag, name, value ? u"true" : u"false");
}

void SetLegacyBooleanAttr(DOMElement* tag, char const* name, bool value) {
    SetWordAttr(tag, name, value ? u"yes" : u"no");
}

void WriteBits(DOMElement* parent, char const* name, unsigned int value, BitNames const* table, int tabs) {
    if (value == 0) {
        return;
    }
    OrphanElement element(OwnerDocument(parent), NameText(name).Get());
    NewLine(element.Get());
    for (BitNames const* row = table; row != nullptr && row->bit != 0; ++row) {
        if ((row->bit & value) != 0) {
            NewTag(element.Get(), row->name, nullptr, ChildLevel(tabs), false, nullptr);
        }
    }
    Tabs(parent, tabs);
    Tabs(element.Get(), tabs); // before the closing tag
    element.AppendTo(parent);
}

bool WriteStyleSheet(DOMDocument* document, char const* href) {
    if (document == nullptr) {
        return false;
    }
    try {
        DOMElement* const root = document->getDocumentElement();
        // Formatted into a growing string, so that an href of any length is written whole.
        std::string data = "type=\"text/xsl\" href=\"";
        data += href != nullptr ? href : "";
        data += "\" ";
        Tavo::UniString const text(data.c_str(), TavoCharCodeDefault);
        xercesc::DOMProcessingInstruction* const instruction =
            document->createProcessingInstruction(u"xml-stylesheet", TavoXML::AsXMLCh(text));
        if (instruction == nullptr) {
            return false;
        }
        document->insertBefore(instruction, root);
        return true;
    } catch (xercesc::DOMException const&) {
        return false;
    }
}

} // namespace TavoXMLUtils
