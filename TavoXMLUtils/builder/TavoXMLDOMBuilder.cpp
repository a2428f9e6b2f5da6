// DOMBuilder: document lifecycle, cursor, layout whitespace, messages, export and the file written at
// destruction. The value writers are in TavoXMLDOMBuilderValues.cpp.
#include "TavoXMLUtils/builder/TavoXMLDOMBuilder.hpp"

#include "TavoXMLUtils/builder/internal/ExportLength.hpp"
#include "TavoXMLUtils/builder/internal/FileReplacement.hpp"
#include "TavoXMLUtils/support/internal/Failures.hpp"
#include "TavoXMLUtils/support/internal/Throw.hpp"

#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"
#include "TavoXMLUtils/support/internal/NameText.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"
#include "Vesk/FileSystem.hpp"
#include "Vesk/Folder.hpp"
#include "Vesk/Name.hpp"
#include "Vesk/VeskStatus.hpp"

#include <xercesc/dom/DOMComment.hpp>
#include <xercesc/dom/DOMConfiguration.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMImplementation.hpp>
#include <xercesc/dom/DOMLSOutput.hpp>
#include <xercesc/dom/DOMLSSerializer.hpp>
#include <xercesc/dom/DOMText.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace TavoXML {

namespace {

// Line feed and tabs up to this length are built on the stack.
constexpr unsigned int gStackIndentLength = 127;
constexpr XMLSize_t gInitialExportCapacity = 1023;

// Gives a Xerces-C++ object back through its release().
struct ReleaseXerces {
    template <class T>
    void operator()(T* object) const noexcept {
        object->release();
    }
};

} // namespace

DOMBuilder::DOMBuilder(char const* topLevelTag, bool autoTabs) {
    ConstructInternal(Vesk::Location(), false, topLevelTag, autoTabs);
}

DOMBuilder::DOMBuilder(Tavo::XMLNoTopLevelTagType, bool autoTabs) {
    ConstructInternal(Vesk::Location(), false, nullptr, autoTabs);
}

DOMBuilder::DOMBuilder(Vesk::Location const& location, char const* topLevelTag, bool autoTabs) {
    ConstructInternal(location, true, topLevelTag, autoTabs);
}

DOMBuilder::DOMBuilder(Vesk::Location const& location, Tavo::XMLNoTopLevelTagType, bool autoTabs) {
    ConstructInternal(location, true, nullptr, autoTabs);
}

DOMBuilder::DOMBuilder(xercesc::DOMDocument* document, xercesc::DOMElement* actualElement,
                       OwnershipType ownership, int tabDepth)
    : document(document), actualNode(actualElement), tabDepth(tabDepth), hasTopLevelTag(false) {
    ownsDocument = ownership == OwnDocument;
    writeOnDestruction = ownsDocument;
    if (ownsDocument) {
        if (XMLCh const* uri = document->getDocumentURI()) {
            location.Set(Tavo::UniString(uri));
        }
    }
    channelOptions = 0;
    channelRevision = 15;
}

void DOMBuilder::ConstructInternal(Vesk::Location const& target, bool writeAtDestruction,
                                   char const* topLevelTag, bool withAutoTabs) {
    hasTopLevelTag = topLevelTag != nullptr;
    location = target;

    std::optional<NameText> tag;
    if (hasTopLevelTag) {
        tag.emplace(topLevelTag);
    }
    document = xercesc::DOMImplementation::getImplementation()->createDocument(
        nullptr, hasTopLevelTag ? tag->Get() : nullptr, nullptr, xercesc::XMLPlatformUtils::fgMemoryManager);
    if (document == nullptr) {
        detail::Throw<DOMBuilderException>("Creating document failed.", detail::ConstructionErrorCode);
    }
    if (hasTopLevelTag && withAutoTabs) {
        // Puts the root on a line of its own behind the XML declaration. The destructor does not run for a
        // throwing constructor, so the document is given back here if this fails.
        try {
            document->insertBefore(document->createTextNode(u"\n"), document->getDocumentElement());
        } catch (...) {
            document->release();
            throw;
        }
    }
    actualNode = document->getDocumentElement();

    messageLine = 1;
    tabDepth = hasTopLevelTag ? 1 : 0;
    autoTabs = withAutoTabs;
    elementJustOpened = true;
    ownsDocument = true;
    replaceCR = true;
    writeOnDestruction = writeAtDestruction;
    channelOptions = 0;
    channelRevision = 15;
}

DOMBuilder::~DOMBuilder() {
    if (writeOnDestruction) {
        try {
            WriteFileOnDestruction();
        } catch (...) {
            // A destructor must not throw: the old file then stays as it was.
        }
    }
    if (ownsDocument && document != nullptr) {
        document->release();
    }
}

// The document is serialised first and goes to a temporary file beside the target, which replaces the
// target only once it is complete on storage: whatever fails, the old file stays as it was and the
// temporary file is removed. A channel without location writes to a scratch file that nobody is told of.
void DOMBuilder::WriteFileOnDestruction() {
    if (location.IsEmpty()) {
        location = NewScratchFileLocation();
    }
    detail::FileReplacement replacement(location);
    exportWritten = true;
    Export(replacement, true);
    if (exportWritten) {
        replacement.Commit();
    }
}

Vesk::Location DOMBuilder::NewScratchFileLocation() const {
    Vesk::Location folderLocation;
    Vesk::fileSystem.GetSpecialLocation(Vesk::SpecialLocationTemporary, &folderLocation);
    Vesk::Name name;
    Vesk::Folder(folderLocation, Vesk::FolderAccessDefault).GenerateUnusedName(&name, "Scratch_", "");
    name.AppendExtension("xml");
    folderLocation.AppendToLocal(name);
    return folderLocation;
}

void DOMBuilder::SetXMLShemaVersion(Tavo::ClassVersion const& version) {
    xmlShemaVersion = version;
}

void DOMBuilder::GetXMLShemaVersion(Tavo::ClassVersion& version) {
    version = xmlShemaVersion;
}

bool DOMBuilder::GetLocation(Vesk::Location& out) {
    out = location;
    return !location.IsEmpty();
}

int DOMBuilder::WriteStartDocument() {
    return Tavo::NoError;
}

int DOMBuilder::WriteEndDocument() {
    if (!autoTabs) {
        return Tavo::NoError;
    }
    AppendText(document, u"\n");
    if (!hasTopLevelTag || actualNode == nullptr || !actualNode->hasChildNodes()) {
        return Tavo::NoError;
    }
    // Once all elements are closed this is the root: its end tag goes on a line of its own.
    AppendText(actualNode, u"\n");
    return Tavo::NoError;
}

int DOMBuilder::WriteStartElement(char const* name) {
    xercesc::DOMNode* const parent = actualNode;
    if (parent != nullptr && parent->getNodeType() == xercesc::DOMNode::DOCUMENT_NODE) {
        return Tavo::GeneralError; // the root is closed: a document has one root
    }
    if (parent != nullptr) {
        WriteNewLineAndTabs(static_cast<unsigned int>(tabDepth));
    }
    ++tabDepth;
    elementJustOpened = true;
    xercesc::DOMElement* const element = document->createElement(NameText(name).Get());
    if (parent != nullptr) {
        parent->appendChild(element);
        actualNode = element;
    } else {
        // The root of a document without top-level tag, on a line of its own behind the declaration.
        document->appendChild(element);
        actualNode = element;
        if (autoTabs) {
            document->insertBefore(document->createTextNode(u"\n"), element);
        }
    }
    return Tavo::NoError;
}

int DOMBuilder::WriteEndElement() {
    // Before the first element of a channel without top-level tag there is nothing to close.
    if (actualNode == nullptr || actualNode->getNodeType() == xercesc::DOMNode::DOCUMENT_NODE) {
        return Tavo::GeneralError;
    }
    if (tabDepth > 0) {
        --tabDepth;
    }
    if (elementJustOpened) {
        elementJustOpened = false; // an empty element stays on one line
    } else {
        WriteNewLineAndTabs(static_cast<unsigned int>(tabDepth));
    }
    actualNode = actualNode->getParentNode();
    return Tavo::NoError;
}

int DOMBuilder::WriteComment(Tavo::UniString const& text) {
    if (actualNode == nullptr) {
        return Tavo::GeneralError;
    }
    WriteNewLineAndTabs(static_cast<unsigned int>(tabDepth));
    actualNode->appendChild(document->createComment(AsXMLCh(text)));
    return Tavo::NoError;
}

void DOMBuilder::WriteNewLineAndTabs(unsigned int tabs) {
    if (!autoTabs) {
        return;
    }
    // A line feed followed by `tabs` tabs; tabs + 1 wraps to 0 for 0xFFFFFFFF, which gives the lone line
    // feed.
    unsigned int const length = tabs + 1 == 0 ? 1 : tabs + 1;
    if (length <= gStackIndentLength) {
        char16_t text[gStackIndentLength + 1];
        text[0] = u'\n';
        std::fill(text + 1, text + length, u'\t');
        text[length] = 0;
        AppendText(actualNode, text);
        return;
    }
    Tavo::UniString text;
    text.SetLength(length, Tavo::UniChar('\t'));
    text[0] = '\n';
    AppendText(actualNode, AsXMLCh(text));
}

void DOMBuilder::AppendText(xercesc::DOMNode* parent, char16_t const* text) {
    parent->appendChild(document->createTextNode(text));
}

void DOMBuilder::AddMessage(Tavo::UniString const& text) {
    messages.Push(Message{text, messageLine});
}

int DOMBuilder::GetNumberOfMessage() {
    return static_cast<int>(messages.GetSize());
}

// A negative index is out of range too: it is compared as unsigned.
void DOMBuilder::GetMessage(int index, Tavo::UniString& text, int& line) {
    if (static_cast<unsigned int>(index) < messages.GetSize()) {
        text = messages[static_cast<unsigned int>(index)].text;
        line = messages[static_cast<unsigned int>(index)].line;
    }
}

int DOMBuilder::GetErrorStatus() {
    return 0;
}

void DOMBuilder::ClearErrorStatus() {}

void DOMBuilder::SetAutoTabsHint(bool on) {
    autoTabs = on;
}

void DOMBuilder::SetReplaceCR(bool on) {
    replaceCR = on;
}

bool DOMBuilder::GetReplaceCR() {
    return replaceCR;
}

xercesc::DOMDocument* DOMBuilder::GetDOMDocument() {
    return document;
}

xercesc::DOMNode* DOMBuilder::GetActualNode() {
    return actualNode;
}

void DOMBuilder::Export(Tavo::OChannel& sink, bool withXMLDeclaration) {
    ExportInternal([&sink](char const* data, unsigned int length) { sink.WriteBin(data, length, nullptr); },
                   withXMLDeclaration);
}

Tavo::UniString DOMBuilder::Export(bool withXMLDeclaration) {
    Tavo::UniString text;
    ExportInternal([&text](char const* data,
                           unsigned int length) { text = Tavo::UniString(data, length, TavoCharCodeUTF8); },
                   withXMLDeclaration);
    return text;
}

void DOMBuilder::Export(std::function<void(char const*, unsigned int)> sink, bool withXMLDeclaration) {
    ExportInternal(std::move(sink), withXMLDeclaration);
}

// Serialises the whole document into memory as UTF-8 and hands the buffer over in one call. Only the
// XML declaration is configured: every line break and tab in the text is a text node of the document.
// Reads the document and changes nothing, so it can run in any state and be repeated.
void DOMBuilder::ExportInternal(std::function<void(char const*, unsigned int)> sink,
                                bool withXMLDeclaration) {
    using namespace xercesc;
    DOMImplementation* const implementation = DOMImplementation::getImplementation();
    MemoryManager* const memoryManager = XMLPlatformUtils::fgMemoryManager;

    MemBufFormatTarget target(gInitialExportCapacity, memoryManager);
    std::unique_ptr<DOMLSOutput, ReleaseXerces> output(implementation->createLSOutput(memoryManager));
    output->setEncoding(XMLUni::fgUTF8EncodingString);
    output->setByteStream(&target);
    std::unique_ptr<DOMLSSerializer, ReleaseXerces> serializer(
        implementation->createLSSerializer(memoryManager));

    DOMConfiguration* const configuration = serializer->getDomConfig();
    if (configuration->canSetParameter(XMLUni::fgDOMXMLDeclaration, withXMLDeclaration)) {
        configuration->setParameter(XMLUni::fgDOMXMLDeclaration, withXMLDeclaration);
    }
    // A failed write still hands over what the buffer holds; only the file written at destruction
    // looks at the result.
    exportWritten = serializer->write(document, output.get());
    sink(reinterpret_cast<char const*>(target.getRawBuffer()), detail::ExportLength(target.getLen()));

    output.reset();
    serializer.reset();
}

} // namespace TavoXML
