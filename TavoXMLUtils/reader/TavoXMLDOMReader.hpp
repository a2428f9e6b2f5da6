// TavoXML::DOMReader: the XML input channel over a DOM document. It parses a file or a memory buffer
// (or stands on an element of a foreign document) and offers the tree as a stream of start and end
// tokens, with typed reads of element texts, attributes and CDATA sections.
//
// Reading errors never throw: they are status results, and most of them also leave a message with the
// source line of the cursor in the channel's list. Only construction from a file or from memory throws,
// a DOMReaderException with a composed report of the parse failure.
#pragma once

#include "TavoRoot/Array.hpp"
#include "TavoRoot/ClassVersion.hpp"
#include "TavoRoot/Guid.hpp"
#include "TavoRoot/Owner.hpp"
#include "TavoRoot/PlatformSign.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLIChannel.hpp"
#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "TavoXMLUtils/parsing/NodeLocations.hpp"

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace Vesk {
class Location;
}

namespace TavoXML {

class TAVOXMLUTILS_API DOMReader : public Tavo::XMLIChannel {
public:
    // One collected message: its text and the source line of the cursor when it was added.
    struct Message {
        Tavo::UniString text;
        int line = 0;
    };

    // Parse a file; the top-level tag is only remembered for CheckTopLevelTag and may differ from the
    // root's name. Throws DOMReaderException (code -36) with the composed report when parsing fails.
    DOMReader(Vesk::Location const& location, char const* topLevelTag);
    DOMReader(Vesk::Location const& location, Tavo::XMLNoTopLevelTagType);
    // Parse a memory buffer; the document's URI becomes "DOMReaderCreationFromMemory".
    DOMReader(unsigned char const* data, unsigned int size, char const* topLevelTag);
    DOMReader(unsigned char const* data, unsigned int size, Tavo::XMLNoTopLevelTagType);
    // Stand on an element of a document that somebody else owns; nothing is parsed or released. A null
    // element gives a reader that falls into its error state at its first use.
    DOMReader(xercesc::DOMElement* element, char const* topLevelTag);

    DOMReader(DOMReader const&) = delete;
    DOMReader& operator=(DOMReader const&) = delete;
    // Releases the parsed document, which ends every node a caller got from the reader.
    ~DOMReader() override;

    // Whether the node under the cursor has the name `tag` (default character code); true for a null
    // tag, false without a node.
    bool CheckTopLevelTag(char const* tag);

    // Error state: 0 when sound, 3 after an operation found no node or found the state already set.
    int GetErrorStatus() override;
    void ClearErrorStatus() override;

    // The misspelling "Shema" belongs to the channel interface.
    void SetXMLShemaVersion(Tavo::ClassVersion const& version) override;
    void GetXMLShemaVersion(Tavo::ClassVersion& version) override;
    // The URI of the document the cursor is in; false (location untouched) in the error state.
    bool GetLocation(Vesk::Location& location) override;

    // Token cursor.
    Tavo::XMLTokenType GetTokenType() override;
    Tavo::XMLTokenType GetNextTokenType() override;
    Tavo::XMLTokenType GetTokenTypeName(Tavo::UniString& name) override;
    Tavo::XMLTokenType GetNextTokenTypeName(Tavo::UniString& name) override;
    // Finds the named child (from a start token) or sibling (from an end token) in a ring, so the tags of
    // an element can be read in any order. A null name takes the first candidate.
    int ReadStartElement(char const* name) override;
    // Climbs to the named ancestor-or-self and stands on its end token.
    int ReadEndElement(char const* name) override;
    // Moves one token, or with a nonzero mask on until a token whose type shares a bit with the mask.
    int ReadToken(unsigned int mask) override;
    bool HasXMLTag(char const* name) override;

    // Values stored as the text of a named element; the cursor ends on that element's end token.
    int ReadXML(char const* name, char& value) override;
    int ReadXML(char const* name, signed char& value) override;
    int ReadXML(char const* name, unsigned char& value) override;
    int ReadXML(char const* name, bool& value) override;
    int ReadXML(char const* name, short& value) override;
    int ReadXML(char const* name, unsigned short& value) override;
    int ReadXML(char const* name, int& value) override;
    int ReadXML(char const* name, unsigned int& value) override;
    int ReadXML(char const* name, long& value) override;
    int ReadXML(char const* name, unsigned long& value) override;
    int ReadXML(char const* name, long long& value) override;
    int ReadXML(char const* name, unsigned long long& value) override;
    int ReadXML(char const* name, float& value) override;
    int ReadXML(char const* name, double& value) override;
    // Copies exactly `size` bytes of the zero-terminated 8-bit text (zero-filled behind the terminator);
    // fails for a text longer than `size` characters. A text of exactly `size` characters gets no
    // terminator.
    int ReadXML(char const* name, char* buffer, unsigned int size) override;
    int ReadXML(char const* name, Tavo::UniString& value) override;
    int ReadXML(char const* name, Tavo::Guid& value) override;

    // The first CDATA section among the children of the node under the cursor; the cursor stays.
    using Tavo::XMLIChannel::ReadXMLCDATAString;
    int ReadXMLCDATAString(Tavo::UniString& text) override;

    // Attributes of the element under the cursor; the cursor stays.
    bool HasXMLAttr(char const* name) override;
    // Reads "Mv" and "Sv".
    int ReadXMLVersionAttr(Tavo::ClassVersion& version) override;
    int ReadXMLAttr(char const* name, char& value) override;
    int ReadXMLAttr(char const* name, signed char& value) override;
    int ReadXMLAttr(char const* name, unsigned char& value) override;
    int ReadXMLAttr(char const* name, bool& value) override;
    int ReadXMLAttr(char const* name, short& value) override;
    int ReadXMLAttr(char const* name, unsigned short& value) override;
    int ReadXMLAttr(char const* name, float& value) override;
    int ReadXMLAttr(char const* name, double& value) override;
    // Copies exactly `size` bytes of the zero-terminated 8-bit text, with no length check: a longer
    // text is cut and left without terminator.
    int ReadXMLAttr(char const* name, char* buffer, unsigned int size) override;
    int ReadXMLAttr(char const* name, int& value) override;
    int ReadXMLAttr(char const* name, unsigned int& value) override;
    int ReadXMLAttr(char const* name, long long& value) override;
    int ReadXMLAttr(char const* name, unsigned long long& value) override;
    int ReadXMLAttr(char const* name, Tavo::UniString& value) override;
    int ReadXMLAttr(char const* name, Tavo::Guid& value) override;

    Tavo::PlatformSign GetChannelPlatform() override;
    void SetChannelPlatform(Tavo::PlatformSign platform) override;
    unsigned int GetActLineNumber() override;

    void AddMessage(Tavo::UniString const& text) override;
    int GetNumberOfMessage() override;
    void GetMessage(int index, Tavo::UniString& text, int& line) override;

    // The node under the cursor, and its first element child and next element sibling (the cursor stays);
    // null where there is none, also without a node under the cursor.
    virtual xercesc::DOMNode* GetActualNode();
    virtual xercesc::DOMNode* GetFirstElementChild();
    virtual xercesc::DOMNode* GetNextElementSibling();

    // Moves one token.
    int ReadToken();
    // The name and type of the next start token; the cursor stays.
    Tavo::XMLTokenType GetNextStartTokenName(Tavo::UniString& name);
    // Walks forward to the token of `type` on an element called `name`; the cursor stays where it was
    // when there is none, and a message is added.
    int ReadTokenWithName(Tavo::UniString const& name, Tavo::XMLTokenType type);

protected:
    // Common end of the parsing constructors: stores the document (throws DOMReaderException with
    // `errorText` when it is null) and puts the cursor on the root's start token.
    bool ConstructInternal(xercesc::DOMDocument* document, char const* topLevelTag,
                           Tavo::UniString const& errorText);

private:
    // The value of the sticky status when an operation found no node or found the status already set.
    static constexpr int kErrorState = 3;
    // A saved cursor, put back by its destructor also when an exception passes.
    class CursorKeeper;

    struct Cursor {
        xercesc::DOMNode* node;
        Tavo::XMLTokenType type;
    };
    // No node under the cursor, or the sticky status already set: the operations refuse to work.
    bool IsUnusable() const noexcept { return actNode == nullptr || errorStatus != 0; }
    // The same test, which also sets the sticky status when it is true.
    bool FallsIntoErrorState() noexcept {
        if (!IsUnusable()) {
            return false;
        }
        errorStatus = kErrorState;
        return true;
    }
    Cursor SaveCursor() const noexcept { return Cursor{actNode, tokenType}; }
    void RestoreCursor(Cursor const& cursor) noexcept {
        actNode = cursor.node;
        tokenType = cursor.type;
    }
    // Message of a value reader: `text` followed by the tag or attribute name.
    void AddNamedMessage(char const* text, char const* name);
    // The same, passed through the default 8-bit character code before it is stored.
    void AddNamedMessage8Bit(char const* text, char const* name);

    template <class T>
    int ReadXMLNumberTemplate(char const* name, T& value);
    template <class T>
    int ReadXMLAttrNumberTemplate(char const* name, T& value);
    // The low 8 bits of an int read from an element or an attribute: the one routine of the three char
    // types.
    template <class Byte>
    int ReadXMLLowByte(char const* name, Byte& value, bool fromAttribute);

    xercesc::DOMDocument* document = nullptr;
    xercesc::DOMNode* actNode = nullptr;
    Tavo::ClassVersion version;
    Tavo::Array<Message> messages;
    Tavo::PlatformSign platform = Tavo::PlatformSign(0);
    int errorStatus = 0;
    Tavo::XMLTokenType tokenType = Tavo::XMLStartToken;
    Tavo::Owner<NodeLocations> nodeLocations;
    bool messagesAsked = false;
};

} // namespace TavoXML
