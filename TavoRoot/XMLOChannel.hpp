// Tavo::XMLOChannel: the abstract XML output channel. Application code writes named, typed values
// through it and never sees how the document is kept.
//
// The operations that this class implements itself convert their value to text and end in the
// Tavo::UniString overload of their family, so an implementation overrides only those funnels:
//  - bool is written as "true" or "false";
//  - float and double as the shortest decimal text that reads back to the same value;
//  - char, signed char and unsigned char as small numbers (WriteXMLTextNode('A') writes "65");
//  - char const* texts with a length: length 0 means a zero-terminated text; they are in the default
//    character code;
//  - WriteXMLCDATABinToHex writes every byte as two upper-case hex digits ("00FF7A"). Its char** form
//    takes a handle (TavoRoot/Handle.hpp) and writes all GetHandleSize bytes of it. A null handle, or
//    null data with a nonzero length, is refused with GeneralError without reaching the funnel.
//
// Element and attribute names are zero-terminated texts in the default character code. Every
// operation that returns an int returns a status: NoError, GeneralError or another code.
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

    virtual void SetXMLShemaVersion(ClassVersion const& version) = 0;
    virtual void GetXMLShemaVersion(ClassVersion& version) = 0;
    // True when the channel has a location (a file it is bound to).
    virtual bool GetLocation(Vesk::Location& location) = 0;

    virtual int WriteStartDocument() = 0;
    virtual int WriteEndDocument() = 0;
    virtual int WriteStartElement(char const* name) = 0;
    virtual int WriteEndElement() = 0;

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

    virtual int WriteXMLCDATABinToHex(char const* data, unsigned int length);
    virtual int WriteXMLCDATABinToHex(char** handle);
    virtual int WriteXMLCDATAString(char const* text, unsigned int length);
    virtual int WriteXMLCDATAString(UniString const& text) = 0;

    virtual int WriteXMLVersionAttr(ClassVersion const& version) = 0;
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

    virtual int WriteComment(UniString const& text) = 0;

    virtual void AddMessage(UniString const& text) = 0;
    virtual int GetNumberOfMessage() = 0;
    // Leaves both out-arguments untouched for an index out of range.
    virtual void GetMessage(int index, UniString& text, int& line) = 0;

protected:
    // Stream format options and revision of the channel; every implementation sets them to 0 and 15.
    int channelOptions = 0;
    int channelRevision = 0;
};

} // namespace Tavo
