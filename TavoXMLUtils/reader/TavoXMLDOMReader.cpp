// TavoXML::DOMReader: construction, the message list and the token cursor. The typed value readers
// are in TavoXMLDOMReaderValues.cpp.
#include "TavoXMLUtils/reader/TavoXMLDOMReader.hpp"
#include "TavoXMLUtils/support/internal/Failures.hpp"
#include "TavoXMLUtils/support/internal/Throw.hpp"

#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"
#include "TavoXMLUtils/support/internal/NameText.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/XMLString.hpp>

using namespace xercesc;

namespace TavoXML {

namespace {

// Name of a memory buffer given to the parser; it becomes the document's URI.
constexpr char gMemoryBufferName[] = "DOMReaderCreationFromMemory";
constexpr char gEndOfXML[] = "End of XML reached, token with the specified name was not found";
constexpr char gTokenNotFound[] = "Token with specified name was not found: ";

// The reports of a failed parse. The spacing differs between the two forms on purpose, and the last
// line carries no line end.
Tavo::UniString ComposeErrorMessage(Vesk::Location const& location, NodeLocationInfo const& info,
                                    Tavo::UniString const& errorText) {
    Tavo::UniString const path = location.ToDisplayText();
    return Tavo::UniString::PrintfFwd("ParseXMLDoc () failed.\n"
                                      "  - XML file path: %T\n"
                                      "  - Line number:   %u\n"
                                      "  - Xerces error:  %T",
                                      path.ToPrintf(), static_cast<unsigned int>(info.lineNumber),
                                      errorText.ToPrintf());
}

Tavo::UniString ComposeErrorMessage(unsigned char const* data, NodeLocationInfo const& info,
                                    Tavo::UniString const& errorText) {
    return Tavo::UniString::PrintfFwd("ParseXMLDoc () failed.\n"
                                      "  - XML file is in the memory. Start address: 0x%p\n"
                                      "  - Line number:  %u\n"
                                      "  - Xerces error: %T",
                                      static_cast<void const*>(data),
                                      static_cast<unsigned int>(info.lineNumber), errorText.ToPrintf());
}

// Composes the report, which is done whether or not the parse succeeded; a document already parsed is
// released if that fails (for want of memory), since no reader will own it.
template <class Compose>
DOMDocument* ComposeReport(DOMDocument* document, Tavo::UniString& report, Compose const& compose) {
    try {
        report = compose();
    } catch (...) {
        if (document != nullptr) {
            document->release();
        }
        throw;
    }
    return document;
}

// The two parses of the constructors: file and memory, with the fixed scheme Val_Auto and entity
// reference nodes kept.
DOMDocument* ParseForReader(Vesk::Location const& location, NodeLocations* locations,
                            Tavo::UniString& report) {
    NodeLocationInfo info;
    Tavo::UniString errorText;
    DOMDocument* document =
        ParseXMLDoc(location, AbstractDOMParser::Val_Auto, true, locations, &info, &errorText);
    return ComposeReport(document, report, [&] { return ComposeErrorMessage(location, info, errorText); });
}

DOMDocument* ParseForReader(unsigned char const* data, unsigned int size, NodeLocations* locations,
                            Tavo::UniString& report) {
    NodeLocationInfo info;
    Tavo::UniString errorText;
    DOMDocument* document = ParseXMLDoc(data, size, AbstractDOMParser::Val_Auto, true,
                                        Tavo::UniString(gMemoryBufferName), locations, &info, &errorText);
    return ComposeReport(document, report, [&] { return ComposeErrorMessage(data, info, errorText); });
}

// Names given to the reader are 8-bit text in the default character code, compared exactly.
bool HasName(DOMNode const* node, NameText const& name) noexcept {
    return XMLString::equals(node->getNodeName(), name.Get());
}

DOMNode* FirstElementFrom(DOMNode* node) noexcept {
    while (node != nullptr && node->getNodeType() != DOMNode::ELEMENT_NODE) {
        node = node->getNextSibling();
    }
    return node;
}

DOMNode* FirstElementChildOf(DOMNode* node) noexcept {
    return FirstElementFrom(node->getFirstChild());
}

DOMNode* NextElementSiblingOf(DOMNode* node) noexcept {
    return FirstElementFrom(node->getNextSibling());
}

} // namespace

// Puts the cursor back when the scope ends, on every path.
class DOMReader::CursorKeeper {
public:
    explicit CursorKeeper(DOMReader& reader) noexcept : reader(reader), saved(reader.SaveCursor()) {}
    CursorKeeper(CursorKeeper const&) = delete;
    CursorKeeper& operator=(CursorKeeper const&) = delete;
    ~CursorKeeper() { reader.RestoreCursor(saved); }

private:
    DOMReader& reader;
    Cursor saved;
};

// ---------------------------------------------------------------------------------------------------
// Construction

DOMReader::DOMReader(Vesk::Location const& location, char const* topLevelTag)
    : nodeLocations(new NodeLocations) {
    Tavo::UniString report;
    DOMDocument* parsed = ParseForReader(location, nodeLocations.Get(), report);
    ConstructInternal(parsed, topLevelTag, report);
}

DOMReader::DOMReader(Vesk::Location const& location, Tavo::XMLNoTopLevelTagType)
    : nodeLocations(new NodeLocations) {
    Tavo::UniString report;
    DOMDocument* parsed = ParseForReader(location, nodeLocations.Get(), report);
    ConstructInternal(parsed, nullptr, report);
}

DOMReader::DOMReader(unsigned char const* data, unsigned int size, char const* topLevelTag)
    : nodeLocations(new NodeLocations) {
    Tavo::UniString report;
    DOMDocument* parsed = ParseForReader(data, size, nodeLocations.Get(), report);
    ConstructInternal(parsed, topLevelTag, report);
}

DOMReader::DOMReader(unsigned char const* data, unsigned int size, Tavo::XMLNoTopLevelTagType)
    : nodeLocations(new NodeLocations) {
    Tavo::UniString report;
    DOMDocument* parsed = ParseForReader(data, size, nodeLocations.Get(), report);
    ConstructInternal(parsed, nullptr, report);
}

DOMReader::DOMReader(DOMElement* element, char const* topLevelTag) : actNode(element) {
    // The result is for callers who ask CheckTopLevelTag themselves; construction does not depend on it.
    CheckTopLevelTag(topLevelTag);
}

DOMReader::~DOMReader() {
    if (document != nullptr) {
        document->release();
    }
}

bool DOMReader::ConstructInternal(DOMDocument* parsedDocument, char const* topLevelTag,
                                  Tavo::UniString const& errorText) {
    platform = Tavo::PlatformSign(0);
    errorStatus = 0;
    tokenType = Tavo::XMLStartToken;
    messagesAsked = false;
    document = parsedDocument;
    if (document == nullptr) {
        detail::Throw<DOMReaderException>(errorText, detail::ConstructionErrorCode);
    }
    actNode = document->getDocumentElement();
    return CheckTopLevelTag(topLevelTag);
}

bool DOMReader::CheckTopLevelTag(char const* tag) {
    if (tag == nullptr) {
        return true;
    }
    if (actNode == nullptr) {
        return false;
    }
    return HasName(actNode, NameText(tag));
}

// ---------------------------------------------------------------------------------------------------
// State, location and messages

int DOMReader::GetErrorStatus() {
    return errorStatus;
}

void DOMReader::ClearErrorStatus() {
    errorStatus = 0;
}

void DOMReader::SetXMLShemaVersion(Tavo::ClassVersion const& newVersion) {
    version = newVersion;
}

void DOMReader::GetXMLShemaVersion(Tavo::ClassVersion& storedVersion) {
    storedVersion = version;
}

bool DOMReader::GetLocation(Vesk::Location& location) {
    if (IsUnusable()) {
        return false;
    }
    DOMNode* node = actNode;
    while (node != nullptr && node->getNodeType() != DOMNode::DOCUMENT_NODE) {
        node = node->getParentNode();
    }
    if (node == nullptr) {
        // A node outside any tree (possible only on a foreign element) has no document to name.
        return false;
    }
    location = Vesk::Location(Tavo::UniString(static_cast<DOMDocument*>(node)->getDocumentURI()));
    return true;
}

Tavo::PlatformSign DOMReader::GetChannelPlatform() {
    return platform;
}

void DOMReader::SetChannelPlatform(Tavo::PlatformSign newPlatform) {
    platform = newPlatform;
}

unsigned int DOMReader::GetActLineNumber() {
    if (actNode == nullptr || !nodeLocations) {
        return 0;
    }
    NodeLocationInfo const* info = nodeLocations->Find(actNode);
    return info != nullptr ? info->lineNumber : 0;
}

void DOMReader::AddMessage(Tavo::UniString const& text) {
    messages.Push(Message{text, static_cast<int>(GetActLineNumber())});
}

int DOMReader::GetNumberOfMessage() {
    messagesAsked = true;
    return static_cast<int>(messages.GetSize());
}

void DOMReader::GetMessage(int index, Tavo::UniString& text, int& line) {
    messagesAsked = true;
    if (static_cast<unsigned int>(index) < messages.GetSize()) {
        text = messages[static_cast<unsigned int>(index)].text;
        line = messages[static_cast<unsigned int>(index)].line;
    }
}

// ---------------------------------------------------------------------------------------------------
// Token cursor

DOMNode* DOMReader::GetActualNode() {
    return actNode;
}

// A reader built on a null element has no node: it has no child and no sibling either.
DOMNode* DOMReader::GetFirstElementChild() {
    return actNode == nullptr ? nullptr : FirstElementChildOf(actNode);
}

DOMNode* DOMReader::GetNextElementSibling() {
    return actNode == nullptr ? nullptr : NextElementSiblingOf(actNode);
}

Tavo::XMLTokenType DOMReader::GetTokenType() {
    if (FallsIntoErrorState()) {
        return Tavo::XMLNoToken;
    }
    return tokenType;
}

Tavo::XMLTokenType DOMReader::GetTokenTypeName(Tavo::UniString& name) {
    if (FallsIntoErrorState()) {
        return Tavo::XMLNoToken;
    }
    name = Tavo::UniString(actNode->getNodeName());
    return tokenType;
}

int DOMReader::ReadToken() {
    if (FallsIntoErrorState()) {
        return Tavo::GeneralError;
    }
    if (tokenType == Tavo::XMLStartToken) {
        // An element without element children gives its end token on the same node.
        if (DOMNode* child = GetFirstElementChild()) {
            actNode = child;
        } else {
            tokenType = Tavo::XMLEndToken;
        }
        return Tavo::NoError;
    }
    if (DOMNode* sibling = GetNextElementSibling()) {
        actNode = sibling;
        tokenType = Tavo::XMLStartToken;
        return Tavo::NoError;
    }
    // The parent of the root is the document node: its end token is the last position of the walk.
    if (DOMNode* parent = actNode->getParentNode()) {
        actNode = parent;
        tokenType = Tavo::XMLEndToken;
        return Tavo::NoError;
    }
    AddMessage(Tavo::UniString(gEndOfXML));
    return Tavo::GeneralError;
}

int DOMReader::ReadToken(unsigned int mask) {
    int status = ReadToken();
    if (mask == 0) {
        return status;
    }
    while (status == Tavo::NoError && (tokenType & mask) == 0) {
        status = ReadToken();
    }
    return status;
}

Tavo::XMLTokenType DOMReader::GetNextTokenType() {
    CursorKeeper keeper(*this);
    return ReadToken() == Tavo::NoError ? GetTokenType() : Tavo::XMLNoToken;
}

Tavo::XMLTokenType DOMReader::GetNextTokenTypeName(Tavo::UniString& name) {
    CursorKeeper keeper(*this);
    if (ReadToken() == Tavo::NoError) {
        return GetTokenTypeName(name);
    }
    name.Clear();
    return Tavo::XMLNoToken;
}

Tavo::XMLTokenType DOMReader::GetNextStartTokenName(Tavo::UniString& name) {
    CursorKeeper keeper(*this);
    if (ReadToken(Tavo::XMLStartToken) == Tavo::NoError) {
        return GetTokenTypeName(name);
    }
    name.Clear();
    return Tavo::XMLNoToken;
}

int DOMReader::ReadStartElement(char const* name) {
    if (IsUnusable()) {
        return detail::PlainFailureStatus; // ReadStartElement without a node
    }
    Cursor const start = SaveCursor();

    // From a start token the ring holds the element's children; from an end token the element's
    // siblings, those before it included, reached by coming around through the parent.
    DOMNode* first = nullptr;
    if (tokenType == Tavo::XMLStartToken) {
        first = GetFirstElementChild();
    } else {
        first = GetNextElementSibling();
        if (first == nullptr) {
            if (DOMNode* parent = actNode->getParentNode()) {
                first = FirstElementChildOf(parent);
            }
        }
    }

    if (first != nullptr) {
        if (name == nullptr) {
            actNode = first;
            tokenType = Tavo::XMLStartToken;
            return Tavo::NoError;
        }
        NameText const wanted(name);
        DOMNode* candidate = first;
        while (candidate != nullptr) {
            if (HasName(candidate, wanted)) {
                actNode = candidate;
                tokenType = Tavo::XMLStartToken;
                return Tavo::NoError;
            }
            candidate = NextElementSiblingOf(candidate);
            if (candidate == nullptr) {
                DOMNode* parent = first->getParentNode();
                candidate = parent != nullptr ? FirstElementChildOf(parent) : nullptr;
            }
            if (candidate == first) {
                break;
            }
        }
    }

    RestoreCursor(start);
    // A failed search leaves the channel sound, whatever the status was.
    ClearErrorStatus();
    return Tavo::GeneralError;
}

int DOMReader::ReadEndElement(char const* name) {
    Cursor const start = SaveCursor();
    // A null name never matches a node (it is taken as the empty name, which no node has).
    NameText const wanted(name);
    DOMNode* node = actNode;
    if (node != nullptr) {
        if (name != nullptr) {
            // Climb to the named ancestor-or-self, stopping at the topmost node.
            while (!HasName(node, wanted) && node->getParentNode() != nullptr) {
                node = node->getParentNode();
            }
        } else {
            node = node->getParentNode();
        }
    }
    if (node != nullptr && HasName(node, wanted)) {
        actNode = node;
        tokenType = Tavo::XMLEndToken;
        if (start.node == node && start.type == Tavo::XMLEndToken) {
            // Already on this end token: move on to the next one, so repeated calls never stick.
            return ReadToken(Tavo::XMLEndToken);
        }
        return Tavo::NoError;
    }
    RestoreCursor(start);
    return Tavo::GeneralError;
}

int DOMReader::ReadTokenWithName(Tavo::UniString const& name, Tavo::XMLTokenType type) {
    Cursor const start = SaveCursor();
    for (;;) {
        if (actNode != nullptr && tokenType == type &&
            XMLString::equals(actNode->getNodeName(), AsXMLCh(name))) {
            return Tavo::NoError;
        }
        int status = ReadToken();
        // Coming back to the start means the walk cannot go on; that is a failure whatever the status.
        bool const backAtStart = actNode == start.node && tokenType == start.type;
        if (status != Tavo::NoError || backAtStart) {
            AddMessage(gTokenNotFound + name);
            RestoreCursor(start);
            return status != Tavo::NoError ? status : Tavo::GeneralError;
        }
    }
}

bool DOMReader::HasXMLTag(char const* name) {
    CursorKeeper keeper(*this);
    int const status = ReadStartElement(name);
    if (status == Tavo::NoError) {
        ReadEndElement(name);
    }
    return status == Tavo::NoError;
}

} // namespace TavoXML
