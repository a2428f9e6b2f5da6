// TavoXML::DOMReader: the typed value readers. Every element read funnels into
// ReadXML(name, Tavo::UniString&) and every attribute read into ReadXMLAttr(name, Tavo::UniString&),
// both called virtually; the other overloads only convert the text.
#include "TavoXMLUtils/reader/TavoXMLDOMReader.hpp"

#include "TavoRoot/Numbers.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <cstring>

using namespace xercesc;

namespace TavoXML {

namespace {

constexpr char gNotANumber[] = "Value should be number, but is not. In tag: ";
constexpr char gAttrNotANumber[] = "Attribute should be number, but is not. AttributeName: ";
constexpr char gContentFailed[] = "Reading tag content failed. Tag name: ";
constexpr char gMissingAttribute[] = "Missing Attribute: ";
constexpr char gInvalidNodeType[] = "Invalid Node Type: ";
constexpr char gVersionMainAttr[] = "Mv";
constexpr char gVersionSubAttr[] = "Sv";

// "false", "0", "no" and "true", "1", "yes", in any case; false for every other text.
bool ParseBoolLiteral(Tavo::UniString text, bool& value) {
    text.SetToLowerCase();
    if (text == "false" || text == "0" || text == "no") {
        value = false;
        return true;
    }
    if (text == "true" || text == "1" || text == "yes") {
        value = true;
        return true;
    }
    return false;
}

// Copies exactly `size` bytes of the text as a zero-terminated string in the default character code.
// Bytes behind the terminator are zero, so nothing is read outside the converted text.
void CopyExactly(Tavo::UniString const& text, char* buffer, unsigned int size) {
    if (buffer == nullptr || size == 0) {
        return;
    }
    Tavo::UniString::CStrHolder const converted =
        text.ToCStr(0, Tavo::UniString::kAll, TavoCharCodeDefault, 0);
    std::size_t const available = std::strlen(converted.Get()) + 1;
    std::size_t const copied = std::min<std::size_t>(available, size);
    std::memcpy(buffer, converted.Get(), copied);
    std::memset(buffer + copied, 0, size - copied);
}

// An attribute name through the parser's local-code transcoder, released at the end of the scope.
class TranscodedName {
public:
    explicit TranscodedName(char const* name)
        : text(name != nullptr ? XMLString::transcode(name, XMLPlatformUtils::fgMemoryManager) : nullptr) {}
    TranscodedName(TranscodedName const&) = delete;
    TranscodedName& operator=(TranscodedName const&) = delete;
    ~TranscodedName() { XMLString::release(&text, XMLPlatformUtils::fgMemoryManager); }
    XMLCh const* Get() const noexcept { return text; }

private:
    XMLCh* text;
};

// The attribute `name` of `node`, or null when the node is no element or has no such attribute.
DOMAttr* FindAttribute(DOMNode* node, XMLCh const* name) {
    if (name == nullptr || node->getNodeType() != DOMNode::ELEMENT_NODE) {
        return nullptr;
    }
    return static_cast<DOMElement*>(node)->getAttributeNode(name);
}

} // namespace

void DOMReader::AddNamedMessage(char const* text, char const* name) {
    AddMessage(text + Tavo::UniString(name));
}

void DOMReader::AddNamedMessage8Bit(char const* text, char const* name) {
    // These messages pass through 8 bits: characters that the default code lacks become '?'.
    Tavo::UniString const message = text + Tavo::UniString(name);
    AddMessage(Tavo::UniString(message.ToCStr(0, Tavo::UniString::kAll, TavoCharCodeDefault, 0).Get()));
}

// ---------------------------------------------------------------------------------------------------
// Element texts

int DOMReader::ReadXML(char const* name, Tavo::UniString& value) {
    if (FallsIntoErrorState()) {
        return Tavo::GeneralError;
    }
    Cursor const start = SaveCursor();
    int status = ReadStartElement(name);
    if (status != Tavo::NoError) {
        RestoreCursor(start);
        AddMessage("Start element for " + Tavo::UniString(name) + " tag not found");
        return status;
    }
    try {
        // Only the first child counts, whatever it is and whatever follows it.
        if (DOMNode* first = actNode->getFirstChild()) {
            if (XMLCh const* text = first->getNodeValue()) {
                value = Tavo::UniString(AsUShort(text));
            } else {
                // An element as first child: the read goes on to the end tag and is no failure.
                AddNamedMessage(gContentFailed, name);
            }
        } else {
            value.Clear();
        }
    } catch (DOMException const&) {
        RestoreCursor(start);
        return Tavo::GeneralError;
    }
    status = ReadEndElement(name);
    if (status != Tavo::NoError) {
        RestoreCursor(start);
    }
    return status;
}

template <class T>
int DOMReader::ReadXMLNumberTemplate(char const* name, T& value) {
    Tavo::UniString text;
    int const status = ReadXML(name, text);
    if (status != Tavo::NoError) {
        return status;
    }
    if (!Tavo::UniStringToValue<T>(text, value, Tavo::ToValueMode(0), Tavo::TrimWSMode(0))) {
        // The cursor stays on the end token of the tag that held the bad text.
        AddNamedMessage(gNotANumber, name);
        return Tavo::GeneralError;
    }
    return Tavo::NoError;
}

int DOMReader::ReadXML(char const* name, char& value) {
    return ReadXMLLowByte(name, value, false);
}

int DOMReader::ReadXML(char const* name, signed char& value) {
    return ReadXMLLowByte(name, value, false);
}

int DOMReader::ReadXML(char const* name, unsigned char& value) {
    return ReadXMLLowByte(name, value, false);
}

int DOMReader::ReadXML(char const* name, bool& value) {
    Tavo::UniString text;
    int const status = ReadXML(name, text);
    if (status != Tavo::NoError) {
        return status;
    }
    return ParseBoolLiteral(text, value) ? Tavo::NoError : Tavo::GeneralError;
}

int DOMReader::ReadXML(char const* name, short& value) {
    return ReadXMLNumberTemplate(name, value);
}

int DOMReader::ReadXML(char const* name, unsigned short& value) {
    return ReadXMLNumberTemplate(name, value);
}

int DOMReader::ReadXML(char const* name, int& value) {
    return ReadXMLNumberTemplate(name, value);
}

int DOMReader::ReadXML(char const* name, unsigned int& value) {
    return ReadXMLNumberTemplate(name, value);
}

int DOMReader::ReadXML(char const* name, long& value) {
    return ReadXMLNumberTemplate(name, value);
}

int DOMReader::ReadXML(char const* name, unsigned long& value) {
    return ReadXMLNumberTemplate(name, value);
}

int DOMReader::ReadXML(char const* name, long long& value) {
    return ReadXMLNumberTemplate(name, value);
}

int DOMReader::ReadXML(char const* name, unsigned long long& value) {
    return ReadXMLNumberTemplate(name, value);
}

int DOMReader::ReadXML(char const* name, float& value) {
    return ReadXMLNumberTemplate(name, value);
}

int DOMReader::ReadXML(char const* name, double& value) {
    return ReadXMLNumberTemplate(name, value);
}

int DOMReader::ReadXML(char const* name, char* buffer, unsigned int size) {
    Tavo::UniString text;
    int const status = ReadXML(name, text);
    if (status != Tavo::NoError) {
        return status;
    }
    if (text.GetLength() > size) {
        return Tavo::GeneralError;
    }
    if (text.IsEmpty()) {
        if (buffer != nullptr) {
            buffer[0] = '\0';
        }
        return Tavo::NoError;
    }
    CopyExactly(text, buffer, size);
    return Tavo::NoError;
}

int DOMReader::ReadXML(char const* name, Tavo::Guid& value) {
    Tavo::UniString text;
    int const status = ReadXML(name, text);
    if (status != Tavo::NoError) {
        return status;
    }
    return value.ConvertFromString(text);
}

int DOMReader::ReadXMLCDATAString(Tavo::UniString& text) {
    if (IsUnusable()) {
        return Tavo::GeneralError;
    }
    DOMNode* node = actNode->getFirstChild();
    while (node != nullptr && node->getNodeType() != DOMNode::CDATA_SECTION_NODE) {
        node = node->getNextSibling();
    }
    if (node == nullptr) {
        return Tavo::GeneralError;
    }
    try {
        text = Tavo::UniString(AsUShort(node->getNodeValue()));
    } catch (DOMException const&) {
        return Tavo::GeneralError;
    }
    return Tavo::NoError;
}

// ---------------------------------------------------------------------------------------------------
// Attributes

bool DOMReader::HasXMLAttr(char const* name) {
    if (FallsIntoErrorState()) {
        return false;
    }
    TranscodedName const attributeName(name);
    if (actNode->getNodeType() != DOMNode::ELEMENT_NODE) {
        AddNamedMessage8Bit(gInvalidNodeType, name);
        return false;
    }
    return FindAttribute(actNode, attributeName.Get()) != nullptr;
}

int DOMReader::ReadXMLAttr(char const* name, Tavo::UniString& value) {
    if (FallsIntoErrorState()) {
        return Tavo::GeneralError;
    }
    TranscodedName const attributeName(name);
    if (DOMAttr const* attribute = FindAttribute(actNode, attributeName.Get())) {
        value = Tavo::UniString(AsUShort(attribute->getValue()));
        return Tavo::NoError;
    }
    AddNamedMessage8Bit(gMissingAttribute, name);
    return Tavo::GeneralError;
}

template <class T>
int DOMReader::ReadXMLAttrNumberTemplate(char const* name, T& value) {
    Tavo::UniString text;
    int const status = ReadXMLAttr(name, text);
    if (status != Tavo::NoError) {
        return status;
    }
    if (!Tavo::UniStringToValue<T>(text, value, Tavo::ToValueMode(0), Tavo::TrimWSMode(0))) {
        AddNamedMessage(gAttrNotANumber, name);
        return Tavo::GeneralError;
    }
    return Tavo::NoError;
}

template <class Byte>
int DOMReader::ReadXMLLowByte(char const* name, Byte& value, bool fromAttribute) {
    int number = 0;
    int const status = fromAttribute ? ReadXMLAttrNumberTemplate<int>(name, number)
                                     : ReadXMLNumberTemplate<int>(name, number);
    if (status == Tavo::NoError) {
        value = static_cast<Byte>(static_cast<unsigned char>(number));
    }
    return status;
}

int DOMReader::ReadXMLVersionAttr(Tavo::ClassVersion& readVersion) {
    if (IsUnusable()) {
        return Tavo::GeneralError;
    }
    // Main and sub version are read into one local value whose bytes start as blanks.
    unsigned char bytes[2] = {' ', ' '};
    int status = ReadXMLAttr(gVersionMainAttr, bytes[0]);
    if (status != Tavo::NoError) {
        return status;
    }
    status = ReadXMLAttr(gVersionSubAttr, bytes[1]);
    if (status != Tavo::NoError) {
        return status;
    }
    static_assert(sizeof(Tavo::ClassVersion) == sizeof(bytes));
    std::memcpy(&readVersion, bytes, sizeof(bytes));
    return Tavo::NoError;
}

int DOMReader::ReadXMLAttr(char const* name, char& value) {
    return ReadXMLLowByte(name, value, true);
}

int DOMReader::ReadXMLAttr(char const* name, signed char& value) {
    return ReadXMLLowByte(name, value, true);
}

int DOMReader::ReadXMLAttr(char const* name, unsigned char& value) {
    return ReadXMLLowByte(name, value, true);
}

int DOMReader::ReadXMLAttr(char const* name, bool& value) {
    Tavo::UniString text;
    int const status = ReadXMLAttr(name, text);
    if (status != Tavo::NoError) {
        return status;
    }
    return ParseBoolLiteral(text, value) ? Tavo::NoError : Tavo::GeneralError;
}

int DOMReader::ReadXMLAttr(char const* name, short& value) {
    return ReadXMLAttrNumberTemplate(name, value);
}

int DOMReader::ReadXMLAttr(char const* name, unsigned short& value) {
    return ReadXMLAttrNumberTemplate(name, value);
}

int DOMReader::ReadXMLAttr(char const* name, float& value) {
    return ReadXMLAttrNumberTemplate(name, value);
}

int DOMReader::ReadXMLAttr(char const* name, double& value) {
    return ReadXMLAttrNumberTemplate(name, value);
}

int DOMReader::ReadXMLAttr(char const* name, char* buffer, unsigned int size) {
    Tavo::UniString text;
    int const status = ReadXMLAttr(name, text);
    if (status == Tavo::NoError) {
        CopyExactly(text, buffer, size);
    }
    return status;
}

int DOMReader::ReadXMLAttr(char const* name, int& value) {
    return ReadXMLAttrNumberTemplate(name, value);
}

int DOMReader::ReadXMLAttr(char const* name, unsigned int& value) {
    return ReadXMLAttrNumberTemplate(name, value);
}

int DOMReader::ReadXMLAttr(char const* name, long long& value) {
    return ReadXMLAttrNumberTemplate(name, value);
}

int DOMReader::ReadXMLAttr(char const* name, unsigned long long& value) {
    return ReadXMLAttrNumberTemplate(name, value);
}

int DOMReader::ReadXMLAttr(char const* name, Tavo::Guid& value) {
    Tavo::UniString text;
    int const status = ReadXMLAttr(name, text);
    if (status != Tavo::NoError) {
        return status;
    }
    return value.ConvertFromString(text);
}

} // namespace TavoXML
