// DOMBuilder value writers. Every family funnels into its Tavo::UniString overload, called virtually,
// and only those four touch the document. They differ on purpose:
//
//   funnel               blank test  CR/LF → LF      validation  whitespace before  clears elementJustOpened
//   WriteXML             yes         if replaceCR    yes         yes                yes
//   WriteXMLTextNode     (no name)   no              no          yes                yes
//   WriteXMLCDATAString  (no name)   no              no          yes                yes
//   WriteXMLAttr         no          no              no          no                 no
//
// A U+0000 is refused by all four (GeneralError; WriteXML adds its message and keeps the empty element),
// since the zero-terminated hand-over to the DOM would cut the value there; the other three change
// nothing then.
//
// The value path copies no text: the funnels hand the string's own 16-bit buffer to the DOM, names are
// widened on the stack, and a copy is made only to normalise line ends that are really there.
#include "TavoXMLUtils/builder/TavoXMLDOMBuilder.hpp"
#include "TavoXMLUtils/support/internal/Failures.hpp"

#include "TavoRoot/Numbers.hpp"
#include "TavoXMLUtils/support/internal/NameText.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"

#include <xercesc/dom/DOMCDATASection.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMText.hpp>
#include <xercesc/framework/psvi/XSValue.hpp>

namespace TavoXML {

namespace {

// The DOM takes zero-terminated text, so a U+0000 would silently cut the value there: it is refused like
// every character that XML cannot hold.
bool HoldsNul(Tavo::UniString const& value) noexcept {
    return value.Contains(Tavo::UniChar('\0'));
}

// The characters are checked by the rules of XML 1.1.
bool IsValidText(Tavo::UniString const& value) {
    xercesc::XSValue::Status status = xercesc::XSValue::st_Init;
    return xercesc::XSValue::validate(AsXMLCh(value), xercesc::XSValue::dt_string, status,
                                      xercesc::XSValue::ver_11, nullptr);
}

} // namespace

// A char is a small number, not a character: 'A' is written as 65.
int DOMBuilder::WriteXML(char const* name, char value) {
    return WriteXML(name, Tavo::ValueToUniString<int>(value));
}
int DOMBuilder::WriteXML(char const* name, signed char value) {
    return WriteXML(name, Tavo::ValueToUniString<int>(value));
}
int DOMBuilder::WriteXML(char const* name, unsigned char value) {
    return WriteXML(name, Tavo::ValueToUniString<unsigned int>(value));
}
int DOMBuilder::WriteXML(char const* name, short value) {
    return WriteXML(name, Tavo::ValueToUniString<short>(value));
}
int DOMBuilder::WriteXML(char const* name, unsigned short value) {
    return WriteXML(name, Tavo::ValueToUniString<unsigned short>(value));
}
int DOMBuilder::WriteXML(char const* name, int value) {
    return WriteXML(name, Tavo::ValueToUniString<int>(value));
}
int DOMBuilder::WriteXML(char const* name, unsigned int value) {
    return WriteXML(name, Tavo::ValueToUniString<unsigned int>(value));
}
int DOMBuilder::WriteXML(char const* name, long value) {
    return WriteXML(name, Tavo::ValueToUniString<long>(value));
}
int DOMBuilder::WriteXML(char const* name, unsigned long value) {
    return WriteXML(name, Tavo::ValueToUniString<unsigned long>(value));
}
int DOMBuilder::WriteXML(char const* name, long long value) {
    return WriteXML(name, Tavo::ValueToUniString<long long>(value));
}
int DOMBuilder::WriteXML(char const* name, unsigned long long value) {
    return WriteXML(name, Tavo::ValueToUniString<unsigned long long>(value));
}
int DOMBuilder::WriteXML(char const* name, Tavo::Guid const& value) {
    return WriteXML(name, value.ToUniString());
}

// The careful funnel: a child element `name` of the current node with the value as its text. The element
// is made before the value is checked, so an invalid value leaves it behind, empty.
int DOMBuilder::WriteXML(char const* name, Tavo::UniString const& value) {
    NameText const tag(name);
    if (tag.ContainsBlank()) {
        return detail::PlainFailureStatus;
    }
    if (actualNode == nullptr) {
        return Tavo::GeneralError; // no element to write into yet
    }
    elementJustOpened = false;
    WriteNewLineAndTabs(static_cast<unsigned int>(tabDepth));

    // CR LF first, then the lone CRs, so that a pair becomes one line feed.
    Tavo::UniString const* text = &value;
    Tavo::UniString normalised;
    if (replaceCR && value.Contains(Tavo::UniChar('\r'))) {
        normalised = value;
        normalised.ReplaceAll(Tavo::UniString(u"\r\n"), Tavo::UniString(u"\n"));
        normalised.ReplaceAll(Tavo::UniChar('\r'), Tavo::UniChar('\n'));
        text = &normalised;
    }

    xercesc::DOMElement* const element = document->createElement(tag.Get());
    actualNode->appendChild(element);
    if (text->IsEmpty()) {
        return Tavo::NoError;
    }
    if (HoldsNul(*text) || !IsValidText(*text)) {
        AddMessage(Tavo::UniString("Content of ") + name + " contains invalid characters");
        return Tavo::GeneralError;
    }
    AppendText(element, AsXMLCh(*text));
    return Tavo::NoError;
}

int DOMBuilder::WriteXMLTextNode(Tavo::UniString const& text) {
    if (actualNode == nullptr || HoldsNul(text)) {
        return Tavo::GeneralError;
    }
    elementJustOpened = false;
    WriteNewLineAndTabs(static_cast<unsigned int>(tabDepth));
    AppendText(actualNode, AsXMLCh(text));
    return Tavo::NoError;
}

// "]]>" in the text is not treated here.
int DOMBuilder::WriteXMLCDATAString(Tavo::UniString const& text) {
    if (actualNode == nullptr || HoldsNul(text)) {
        return Tavo::GeneralError;
    }
    elementJustOpened = false;
    WriteNewLineAndTabs(static_cast<unsigned int>(tabDepth));
    actualNode->appendChild(document->createCDATASection(AsXMLCh(text)));
    return Tavo::NoError;
}

// "Mv" first; "Sv" only if that succeeded.
int DOMBuilder::WriteXMLVersionAttr(Tavo::ClassVersion const& version) {
    int const status = WriteXMLAttr("Mv", version.mainVersion);
    if (status != Tavo::NoError) {
        return status;
    }
    return WriteXMLAttr("Sv", version.subVersion);
}

int DOMBuilder::WriteXMLAttr(char const* name, char value) {
    return WriteXMLAttr(name, Tavo::ValueToUniString<int>(value));
}
int DOMBuilder::WriteXMLAttr(char const* name, signed char value) {
    return WriteXMLAttr(name, Tavo::ValueToUniString<int>(value));
}
int DOMBuilder::WriteXMLAttr(char const* name, unsigned char value) {
    return WriteXMLAttr(name, Tavo::ValueToUniString<unsigned int>(value));
}
int DOMBuilder::WriteXMLAttr(char const* name, short value) {
    return WriteXMLAttr(name, Tavo::ValueToUniString<short>(value));
}
int DOMBuilder::WriteXMLAttr(char const* name, unsigned short value) {
    return WriteXMLAttr(name, Tavo::ValueToUniString<unsigned short>(value));
}
int DOMBuilder::WriteXMLAttr(char const* name, int value) {
    return WriteXMLAttr(name, Tavo::ValueToUniString<int>(value));
}
int DOMBuilder::WriteXMLAttr(char const* name, unsigned int value) {
    return WriteXMLAttr(name, Tavo::ValueToUniString<unsigned int>(value));
}
int DOMBuilder::WriteXMLAttr(char const* name, long long value) {
    return WriteXMLAttr(name, Tavo::ValueToUniString<long long>(value));
}
int DOMBuilder::WriteXMLAttr(char const* name, unsigned long long value) {
    return WriteXMLAttr(name, Tavo::ValueToUniString<unsigned long long>(value));
}
int DOMBuilder::WriteXMLAttr(char const* name, Tavo::Guid const& value) {
    return WriteXMLAttr(name, value.ToUniString());
}

// An attribute on the current element, as it stands: a second write of the same name overwrites the
// first, and the layout is not touched.
int DOMBuilder::WriteXMLAttr(char const* name, Tavo::UniString const& value) {
    if (actualNode == nullptr || actualNode->getNodeType() != xercesc::DOMNode::ELEMENT_NODE ||
        HoldsNul(value)) {
        return Tavo::GeneralError; // no element is open
    }
    static_cast<xercesc::DOMElement*>(actualNode)->setAttribute(NameText(name).Get(), AsXMLCh(value));
    return Tavo::NoError;
}

} // namespace TavoXML
