// Tavo::XMLIChannel: the abstract XML input channel. Application code reads a document as a stream of
// start and end tokens and reads named, typed values; it never sees how the document is kept.
//
// State model: a cursor stands on a token, the start or the end of an element; only elements are tokens
// (text, comments and CDATA are stepped over). A new channel stands on the start of the root. Beside the
// cursor the channel keeps a sticky error state (GetErrorStatus): 0 when sound, nonzero once an
// operation found no node under the cursor or found the state already set; from then on the operations
// that test it fail until ClearErrorStatus.
//
// Status: every operation that returns an int returns NoError (0), GeneralError (-7003) or, where a row
// says so, the plain status 2. Nothing throws. A failed read leaves its output unchanged. Messages are a
// separate list, each with the source line of the cursor at the moment it was added (0 when unknown);
// they are read by the guards, and adding one changes no status.
//
// The operations that this class implements itself end in ReadXMLCDATAString(Tavo::UniString&):
//  - ReadXMLCDATAHexToBin(buffer, size) decodes the hex pairs written by WriteXMLCDATABinToHex into
//    the caller's buffer; it fails with GeneralError if the text is not an even number of hex digits
//    or the bytes do not fit in `size`, leaving the buffer untouched.
//  - ReadXMLCDATAHexToBin(char** handle) resizes the caller's handle (TavoRoot/Handle.hpp) to the
//    decoded byte count and fills it; the caller allocates and frees the handle. Hex digits may be of
//    either case; white space is not skipped.
//  - ReadXMLCDATAString(buffer, size) copies the text in the default character code, cut to size - 1
//    bytes, zero-terminated. A size of 0 is refused with GeneralError before anything is read.
//
// Names are zero-terminated texts in the default character code, compared exactly.
#pragma once

#include "TavoRoot/ClassVersion.hpp"
#include "TavoRoot/Guid.hpp"
#include "TavoRoot/PlatformSign.hpp"
#include "TavoRoot/TavoRootExport.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLTypes.hpp"

namespace Vesk {
class Location;
}

namespace Tavo {

class TAVOROOT_API XMLIChannel {
public:
    XMLIChannel() noexcept = default;
    XMLIChannel(XMLIChannel const&) = delete;
    XMLIChannel& operator=(XMLIChannel const&) = delete;

    // The sticky error state, 0 when sound; ClearErrorStatus sets it to 0. The two come ahead of the
    // destructor in this class.
    virtual int GetErrorStatus() = 0;
    virtual void ClearErrorStatus() = 0;
    virtual ~XMLIChannel();

    virtual void SetXMLShemaVersion(ClassVersion const& version) = 0;
    virtual void GetXMLShemaVersion(ClassVersion& version) = 0;
    // The location of the document; false, with `location` untouched, in the error state.
    virtual bool GetLocation(Vesk::Location& location) = 0;

    // The token under the cursor (and with the Name forms the element's name). XMLNoToken, and the error
    // state set, without a node or in the error state.
    virtual XMLTokenType GetTokenType() = 0;
    // The same for the next token; the cursor stays. At the end of the document XMLNoToken, and the
    // message of a ReadToken past the end is added; the Name form then clears `name`.
    virtual XMLTokenType GetNextTokenType() = 0;
    virtual XMLTokenType GetTokenTypeName(UniString& name) = 0;
    virtual XMLTokenType GetNextTokenTypeName(UniString& name) = 0;
    // Moves to the start of the child `name` (from a start token) or the sibling `name` (from an end
    // token), searching the children or siblings in a ring, so that tags may be read in any order; a null
    // name takes the first candidate. Returns 2 without a node or in the error state; GeneralError when
    // there is no such tag, with the cursor where it was, no message, and the error state cleared.
    virtual int ReadStartElement(char const* name) = 0;
    // Climbs to the end token of the nearest ancestor-or-self called `name` (null: the parent), skipping
    // what is left of the elements between; on the end of that very node it moves on to the next end
    // token. GeneralError, with the cursor where it was and no message, when there is none.
    virtual int ReadEndElement(char const* name) = 0;
    // Moves one token (mask 0), or on to the first token whose type shares a bit with `mask`. The walk
    // goes from the start of an element to its first child or, without one, to its own end; from an end to
    // the next sibling's start or the parent's end. GeneralError and the error state set without a node
    // or in the error state; past the end of the document GeneralError with the cursor unchanged and the
    // message "End of XML reached, token with the specified name was not found".
    virtual int ReadToken(unsigned int mask) = 0;
    // Whether ReadStartElement(name) would succeed; the cursor and the messages stay as they are.
    virtual bool HasXMLTag(char const* name) = 0;

    // ReadXML(name, value): the text of the element `name`, found as by ReadStartElement, converted to
    // the value's type; the cursor ends on that element's end token. GeneralError and the error state set
    // without a node or in the error state. A missing tag adds "Start element for <name> tag not found",
    // puts the cursor back and returns the search's status. A text that is no number adds "Value should be
    // number, but is not. In tag: <name>" and returns GeneralError, the cursor on the end token. bool
    // takes "false", "0", "no", "true", "1", "yes" in any case; anything else is GeneralError without
    // a message. The char* form fails without a message for a text longer than `size` characters.

    virtual int ReadXML(char const* name, char& value) = 0;
    virtual int ReadXML(char const* name, signed char& value) = 0;
    virtual int ReadXML(char const* name, unsigned char& value) = 0;
    virtual int ReadXML(char const* name, bool& value) = 0;
    virtual int ReadXML(char const* name, short& value) = 0;
    virtual int ReadXML(char const* name, unsigned short& value) = 0;
    virtual int ReadXML(char const* name, int& value) = 0;
    virtual int ReadXML(char const* name, unsigned int& value) = 0;
    virtual int ReadXML(char const* name, long& value) = 0;
    virtual int ReadXML(char const* name, unsigned long& value) = 0;
    virtual int ReadXML(char const* name, long long& value) = 0;
    virtual int ReadXML(char const* name, unsigned long long& value) = 0;
    virtual int ReadXML(char const* name, float& value) = 0;
    virtual int ReadXML(char const* name, double& value) = 0;
    virtual int ReadXML(char const* name, char* buffer, unsigned int size) = 0;
    virtual int ReadXML(char const* name, UniString& value) = 0;
    virtual int ReadXML(char const* name, Guid& value) = 0;

    // The first CDATA section among the children of the cursor's element; the cursor stays and no
    // message is added. GeneralError without a node, in the error state (left as it is), or without a
    // CDATA child.
    virtual int ReadXMLCDATAHexToBin(char* buffer, unsigned int size);
    virtual int ReadXMLCDATAHexToBin(char** handle);
    virtual int ReadXMLCDATAString(char* buffer, unsigned int size);
    virtual int ReadXMLCDATAString(UniString& text) = 0;

    // Attributes of the cursor's element; the cursor stays. Without a node or in the error state the
    // error state is set and the result is false or GeneralError. HasXMLAttr on a node that is no element
    // adds "Invalid Node Type: <name>". A missing attribute adds "Missing Attribute: <name>" and gives
    // GeneralError; a text that is no number adds "Attribute should be number, but is not.
    // AttributeName: <name>". ReadXMLVersionAttr reads "Mv" and "Sv" and changes `version` only when
    // both succeed; it leaves the error state as it is.
    virtual bool HasXMLAttr(char const* name) = 0;
    virtual int ReadXMLVersionAttr(ClassVersion& version) = 0;
    virtual int ReadXMLAttr(char const* name, char& value) = 0;
    virtual int ReadXMLAttr(char const* name, signed char& value) = 0;
    virtual int ReadXMLAttr(char const* name, unsigned char& value) = 0;
    virtual int ReadXMLAttr(char const* name, bool& value) = 0;
    virtual int ReadXMLAttr(char const* name, short& value) = 0;
    virtual int ReadXMLAttr(char const* name, unsigned short& value) = 0;
    virtual int ReadXMLAttr(char const* name, float& value) = 0;
    virtual int ReadXMLAttr(char const* name, double& value) = 0;
    virtual int ReadXMLAttr(char const* name, char* buffer, unsigned int size) = 0;
    virtual int ReadXMLAttr(char const* name, int& value) = 0;
    virtual int ReadXMLAttr(char const* name, unsigned int& value) = 0;
    virtual int ReadXMLAttr(char const* name, long long& value) = 0;
    virtual int ReadXMLAttr(char const* name, unsigned long long& value) = 0;
    virtual int ReadXMLAttr(char const* name, UniString& value) = 0;
    virtual int ReadXMLAttr(char const* name, Guid& value) = 0;

    // Stored and given back; nothing interprets it.
    virtual PlatformSign GetChannelPlatform() = 0;
    virtual void SetChannelPlatform(PlatformSign platform) = 0;
    // Source line of the node under the cursor, 0 when unknown.
    virtual unsigned int GetActLineNumber() = 0;

    // Appends a message with GetActLineNumber() as it stands; changes no status.
    virtual void AddMessage(UniString const& text) = 0;
    virtual int GetNumberOfMessage() = 0;
    // The message at `index`, in order of arrival. Leaves both out-arguments untouched for an index out
    // of range (a negative index included).
    virtual void GetMessage(int index, UniString& text, int& line) = 0;
};

} // namespace Tavo
