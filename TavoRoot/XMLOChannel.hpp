// Tavo::XMLOChannel: the abstract XML output channel. Application code writes named, typed values
// through it and never sees how the document is kept.
//
// State model: the channel has a current element, the "cursor". WriteStartElement opens a child of it
// and moves the cursor into the child; WriteEndElement moves it back to the parent. Values written with
// WriteXML become child elements of the cursor and do not move it; attributes, text and CDATA go onto
// the cursor itself. A channel made without a top-level tag has no cursor until its first
// WriteStartElement, which makes the root; once the root is closed the cursor is the document and only
// WriteEndDocument and export remain.
//
// Status: every operation that returns an int returns NoError (0) on success, GeneralError (-7003) when
// it is refused, or the plain status 2 where a row below says so. A refused operation leaves the channel
// usable. Messages are a separate list (AddMessage, GetNumberOfMessage, GetMessage), read by the guards;
// adding one changes no status. Nothing here throws by design, but an implementation's document may:
// an element or attribute name that is not a legal XML name passes its DOMException to the caller.
//
// The operations that this class implements itself convert their value to text and end in the
// Tavo::UniString overload of their family, so an implementation overrides only those funnels:
//  - bool is written as "true" or "false";
//  - float and double as the shortest decimal text that reads back to the same value;
//  - char, signed char and unsigned char as small numbers (WriteXMLTextNode('A') writes "65");
//  - char const* texts with a length: length 0 means a zero-terminated text; they are in the default
//    character code; the one-argument char const* forms (not virtual) take a zero-terminated text;
//  - WriteXMLCDATABinToHex writes every byte as two upper-case hex digits ("00FF7A"). Its char** form
//    takes a handle (TavoRoot/Handle.hpp) and writes all GetHandleSize bytes of it. A null handle, or
//    null data with a nonzero length, is refused with GeneralError without reaching the funnel.
//
// Element and attribute names are zero-terminated texts in the default character code.
#pragma once

#include "TavoRoot/ClassVersion.hpp"
#include "TavoRoot/Guid.hpp"
#include "TavoRoot/TavoRootExport.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLTypes.hpp"

// Only named by reference here: the channels do not depend on the file library.
namespace Vesk {
class Location;
}

namespace Tavo {

class TAVOROOT_API XMLOChannel {
public:
    XMLOChannel() noexcept = default;
    XMLOChannel(XMLOChannel const&) = delete;
    XMLOChannel& operator=(XMLOChannel const&) = delete;
    virtual ~XMLOChannel();

    // The schema version is stored and given back; it is not written into the document by these.
    virtual void SetXMLShemaVersion(ClassVersion const& version) = 0;
    virtual void GetXMLShemaVersion(ClassVersion& version) = 0;
    // Gives the channel's location; true when there is one (a file it is bound to).
    virtual bool GetLocation(Vesk::Location& location) = 0;

    // Called first: NoError, nothing else happens.
    virtual int WriteStartDocument() = 0;
    // Called last: adds the closing layout (line feeds); writes no file. NoError. May be repeated.
    virtual int WriteEndDocument() = 0;
    // Opens the element `name` below the cursor and moves the cursor into it. GeneralError, with nothing
    // changed, once the root has been closed: a document has one root.
    virtual int WriteStartElement(char const* name) = 0;
    // Closes the cursor's element; the cursor moves to its parent. GeneralError, with nothing changed,
    // when there is no open element.
    virtual int WriteEndElement() = 0;

    // WriteXML(name, value): a child element `name` of the cursor holding the value as its text (empty
    // for an empty value); the cursor stays. Returns 2, with nothing changed, for a name with a blank.
    // A value with a character that XML cannot hold (U+0000 included) leaves the element empty, adds the
    // message "Content of <name> contains invalid characters" and returns GeneralError. CR LF and lone CR
    // become LF where the implementation's line-end option says so. GeneralError with no element open.
    virtual int WriteXML(char const* name, char value) = 0;
    virtual int WriteXML(char const* name, signed char value) = 0;
    virtual int WriteXML(char const* name, unsigned char value) = 0;
    virtual int WriteXML(char const* name, bool value);
    virtual int WriteXML(char const* name, short value) = 0;
    virtual int WriteXML(char const* name, unsigned short value) = 0;
    virtual int WriteXML(char const* name, int value) = 0;
    virtual int WriteXML(char const* name, unsigned int value) = 0;
    virtual int WriteXML(char const* name, long value) = 0;
    virtual int WriteXML(char const* name, unsigned long value) = 0;
    virtual int WriteXML(char const* name, long long value) = 0;
    virtual int WriteXML(char const* name, unsigned long long value) = 0;
    virtual int WriteXML(char const* name, float value);
    virtual int WriteXML(char const* name, double value);
    virtual int WriteXML(char const* name, char const* value, unsigned int length);
    virtual int WriteXML(char const* name, UniString const& value) = 0;
    virtual int WriteXML(char const* name, Guid const& value) = 0;

    // WriteXMLTextNode(value): a text node in the cursor's element, as it stands; the cursor stays.
    // NoError; GeneralError with nothing changed for a value holding U+0000 or with no element open.
    // Other characters are not checked here: a document holding one cannot be serialised later.
    virtual int WriteXMLTextNode(char value);
    virtual int WriteXMLTextNode(signed char value);
    virtual int WriteXMLTextNode(unsigned char value);
    virtual int WriteXMLTextNode(bool value);
    virtual int WriteXMLTextNode(short value);
    virtual int WriteXMLTextNode(unsigned short value);
    virtual int WriteXMLTextNode(int value);
    virtual int WriteXMLTextNode(unsigned int value);
    virtual int WriteXMLTextNode(long value);
    virtual int WriteXMLTextNode(unsigned long value);
    virtual int WriteXMLTextNode(long long value);
    virtual int WriteXMLTextNode(unsigned long long value);
    virtual int WriteXMLTextNode(float value);
    virtual int WriteXMLTextNode(double value);
    virtual int WriteXMLTextNode(char const* text, unsigned int length);
    virtual int WriteXMLTextNode(UniString const& text) = 0;

    // CDATA sections in the cursor's element, as for text nodes; "]]>" in the text is not treated.
    virtual int WriteXMLCDATABinToHex(char const* data, unsigned int length);
    virtual int WriteXMLCDATABinToHex(char** handle);
    virtual int WriteXMLCDATAString(char const* text, unsigned int length);
    virtual int WriteXMLCDATAString(UniString const& text) = 0;

    // The version as the attributes "Mv" and "Sv" of the cursor's element; "Sv" only if "Mv" succeeded.
    virtual int WriteXMLVersionAttr(ClassVersion const& version) = 0;
    // WriteXMLAttr(name, value): the attribute `name` of the cursor's element, as it stands; a second
    // write of a name overwrites the first, and the cursor and the layout are untouched. NoError;
    // GeneralError with nothing changed for a value holding U+0000 or with no element open.
    virtual int WriteXMLAttr(char const* name, char value) = 0;
    virtual int WriteXMLAttr(char const* name, signed char value) = 0;
    virtual int WriteXMLAttr(char const* name, unsigned char value) = 0;
    virtual int WriteXMLAttr(char const* name, bool value);
    virtual int WriteXMLAttr(char const* name, short value) = 0;
    virtual int WriteXMLAttr(char const* name, unsigned short value) = 0;
    virtual int WriteXMLAttr(char const* name, float value);
    virtual int WriteXMLAttr(char const* name, double value);
    virtual int WriteXMLAttr(char const* name, char const* value, unsigned int length);
    virtual int WriteXMLAttr(char const* name, int value) = 0;
    virtual int WriteXMLAttr(char const* name, unsigned int value) = 0;
    virtual int WriteXMLAttr(char const* name, long long value) = 0;
    virtual int WriteXMLAttr(char const* name, unsigned long long value) = 0;
    virtual int WriteXMLAttr(char const* name, UniString const& value) = 0;
    virtual int WriteXMLAttr(char const* name, Guid const& value) = 0;

    // A comment in the cursor's element. NoError; GeneralError with no element open.
    virtual int WriteComment(UniString const& text) = 0;

    // Appends a message with the channel's current line; changes no status.
    virtual void AddMessage(UniString const& text) = 0;
    virtual int GetNumberOfMessage() = 0;
    // The message at `index`, in order of arrival. Leaves both out-arguments untouched for an index out
    // of range (a negative index included).
    virtual void GetMessage(int index, UniString& text, int& line) = 0;

    // A text literal is a text, not a bool: without these, WriteXML("Title", "Hello") would choose the
    // bool overload and write "true". Not virtual, so the table of virtual operations is unchanged; each
    // takes a zero-terminated text in the default character code (null is the empty text) and ends in the
    // Tavo::UniString funnel of its family.
    int WriteXML(char const* name, char const* value);
    int WriteXMLTextNode(char const* text);
    int WriteXMLAttr(char const* name, char const* value);

protected:
    // Stream format options and revision of the channel; every implementation sets them to 0 and 15.
    int channelOptions = 0;
    int channelRevision = 0;
};

} // namespace Tavo
