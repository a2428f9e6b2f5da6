// TavoXML::DOMBuilder: the XML output channel of the library. Every write adds nodes to an in-memory
// DOMDocument, whitespace text nodes for line feeds and tabs included; text comes into being only on
// Export, through the Xerces-C++ DOM serialiser, as UTF-8. A channel bound to a location writes its
// document to that file when it is destroyed.
//
// Each value family funnels into its Tavo::UniString overload, called virtually, and only those touch
// the document: WriteXML (a child element with a text; checks the name for blanks, normalises line ends
// if replaceCR, validates the characters), WriteXMLTextNode, WriteXMLCDATAString (as they stand) and
// WriteXMLAttr (an attribute on the current element, without any whitespace).
//
// States: "empty" (created without a top-level tag, before the first WriteStartElement), "inside an
// element", "root closed" (the current node is the document; WriteStartElement and WriteEndElement
// return GeneralError). Export works in every state and changes nothing. A document whose UTF-8 form
// reaches 4 GiB cannot be handed over in one call: every Export form refuses it with a
// DOMBuilderException (code GeneralError) before the sink is called; serialiser exceptions pass too.
#pragma once

#include "TavoRoot/Array.hpp"
#include "TavoRoot/ClassVersion.hpp"
#include "TavoRoot/Guid.hpp"
#include "TavoRoot/OChannel.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLOChannel.hpp"
#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/util/XercesDefs.hpp>

#include <functional>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace TavoXML {

class TAVOXMLUTILS_API DOMBuilder : public Tavo::XMLOChannel {
public:
    // Whether the channel releases the document it was attached to, and writes it to the document's URI
    // at destruction. Only the value 1 (OwnDocument) counts; every other value means DoNotOwnDocument.
    enum OwnershipType : int {
        DoNotOwnDocument = 0,
        OwnDocument = 1,
    };

    struct Message {
        Tavo::UniString text;
        int line;
    };

    // In-memory channels. With a tag the document has that root element from the start and the channel
    // stands on it; with a null tag or XMLNoTopLevelTag the first WriteStartElement makes the root.
    // Throw DOMBuilderException (code -36) if the document cannot be created; a DOMException for an
    // illegal tag name passes through.
    DOMBuilder(char const* topLevelTag, bool autoTabs);
    DOMBuilder(Tavo::XMLNoTopLevelTagType, bool autoTabs);
    // Channels that write their document to `location` at destruction; an empty location writes to a new
    // scratch file in the temporary folder.
    DOMBuilder(Vesk::Location const& location, char const* topLevelTag, bool autoTabs);
    DOMBuilder(Vesk::Location const& location, Tavo::XMLNoTopLevelTagType, bool autoTabs);
    // Attaches to a document built elsewhere, for writing below `actualElement` (null on a document
    // without root: the first WriteStartElement makes the root). Nothing is checked. With OwnDocument
    // the channel releases the document at destruction and first writes it to the document's URI (a
    // scratch file if it has none).
    DOMBuilder(xercesc::DOMDocument* document, xercesc::DOMElement* actualElement, OwnershipType ownership,
               int tabDepth);
    DOMBuilder(DOMBuilder const&) = delete;
    DOMBuilder& operator=(DOMBuilder const&) = delete;
    // Writes the file of a file-bound channel and releases an owned document. The file is replaced only
    // by a complete new one: a document that cannot be serialised, a folder that cannot be written or a
    // full disk leave the old file as it was, and no temporary file behind. Nothing is reported, and no
    // exception leaves the destructor.
    ~DOMBuilder() override;

    void SetXMLShemaVersion(Tavo::ClassVersion const& version) override;
    void GetXMLShemaVersion(Tavo::ClassVersion& version) override;
    bool GetLocation(Vesk::Location& out) override;

    int WriteStartDocument() override;
    int WriteEndDocument() override;
    int WriteStartElement(char const* name) override;
    int WriteEndElement() override;

    using Tavo::XMLOChannel::WriteXML;
    int WriteXML(char const* name, char value) override;
    int WriteXML(char const* name, signed char value) override;
    int WriteXML(char const* name, unsigned char value) override;
    int WriteXML(char const* name, short value) override;
    int WriteXML(char const* name, unsigned short value) override;
    int WriteXML(char const* name, int value) override;
    int WriteXML(char const* name, unsigned int value) override;
    int WriteXML(char const* name, long value) override;
    int WriteXML(char const* name, unsigned long value) override;
    int WriteXML(char const* name, long long value) override;
    int WriteXML(char const* name, unsigned long long value) override;
    int WriteXML(char const* name, Tavo::UniString const& value) override;
    int WriteXML(char const* name, Tavo::Guid const& value) override;

    using Tavo::XMLOChannel::WriteXMLTextNode;
    int WriteXMLTextNode(Tavo::UniString const& text) override;

    using Tavo::XMLOChannel::WriteXMLCDATAString;
    int WriteXMLCDATAString(Tavo::UniString const& text) override;

    int WriteXMLVersionAttr(Tavo::ClassVersion const& version) override;
    using Tavo::XMLOChannel::WriteXMLAttr;
    int WriteXMLAttr(char const* name, char value) override;
    int WriteXMLAttr(char const* name, signed char value) override;
    int WriteXMLAttr(char const* name, unsigned char value) override;
    int WriteXMLAttr(char const* name, short value) override;
    int WriteXMLAttr(char const* name, unsigned short value) override;
    int WriteXMLAttr(char const* name, int value) override;
    int WriteXMLAttr(char const* name, unsigned int value) override;
    int WriteXMLAttr(char const* name, long long value) override;
    int WriteXMLAttr(char const* name, unsigned long long value) override;
    int WriteXMLAttr(char const* name, Tavo::UniString const& value) override;
    int WriteXMLAttr(char const* name, Tavo::Guid const& value) override;

    int WriteComment(Tavo::UniString const& text) override;

    void AddMessage(Tavo::UniString const& text) override;
    int GetNumberOfMessage() override;
    void GetMessage(int index, Tavo::UniString& text, int& line) override;

    // Always 0: a refused write shows only in its status and, for invalid characters, in a message.
    virtual int GetErrorStatus();
    virtual void ClearErrorStatus();
    // Whitespace text nodes on or off, from the next write on.
    virtual void SetAutoTabsHint(bool autoTabs);
    // Whether WriteXML turns CR LF and lone CR into LF (on by default).
    virtual void SetReplaceCR(bool replaceCR);
    virtual bool GetReplaceCR();

    // The document as UTF-8, in one WriteBin call on `sink` (its status is ignored).
    virtual void Export(Tavo::OChannel& sink, bool withXMLDeclaration);
    // The document as text (decoded from the UTF-8 form; the declaration still names UTF-8).
    virtual Tavo::UniString Export(bool withXMLDeclaration);
    virtual xercesc::DOMDocument* GetDOMDocument();
    // The node that the next write appends to: an element, the document once the root is closed, or null
    // before the first element of a channel without top-level tag.
    virtual xercesc::DOMNode* GetActualNode();
    // Appends a text node of a line feed and `tabs` tab characters to the current node, if automatic tabs
    // are on. 0xFFFFFFFF gives a lone line feed.
    virtual void WriteNewLineAndTabs(unsigned int tabs);

    // The document as UTF-8, handed to `sink` in exactly one call (length without terminator).
    void Export(std::function<void(char const*, unsigned int)> sink, bool withXMLDeclaration);

    // A free "Scratch_....xml" location in the temporary folder; creates no file.
    Vesk::Location NewScratchFileLocation() const;

protected:
    // The one serialisation of the document that every Export form runs through.
    void ExportInternal(std::function<void(char const*, unsigned int)> sink, bool withXMLDeclaration);

private:
    void ConstructInternal(Vesk::Location const& location, bool writeOnDestruction, char const* topLevelTag,
                           bool autoTabs);
    // Appends a text node to the current node (or to `parent`).
    void AppendText(xercesc::DOMNode* parent, char16_t const* text);
    void WriteFileOnDestruction();

    Vesk::Location location;
    xercesc::DOMDocument* document = nullptr;
    xercesc::DOMNode* actualNode = nullptr;
    Tavo::ClassVersion xmlShemaVersion;
    Tavo::Array<Message> messages;
    int messageLine = 1;
    int tabDepth = 0;
    bool autoTabs = true;
    bool elementJustOpened = true;
    bool ownsDocument = true;
    bool writeOnDestruction = false;
    bool replaceCR = true;
    bool hasTopLevelTag = false;
    // Whether the last export's serialisation succeeded; the file written at destruction needs it.
    bool exportWritten = true;
};

} // namespace TavoXML
