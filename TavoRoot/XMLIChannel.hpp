// Tavo::XMLIChannel: the abstract XML input channel. Application code reads a document as a stream of
// start and end tokens and reads named, typed values; it never sees how the document is kept.
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

    // The error state comes ahead of the destructor in this class.
    virtual int GetErrorStatus() = 0;
    virtual void ClearErrorStatus() = 0;
    virtual ~XMLIChannel();

    virtual void SetXMLShemaVersion(ClassVersion const& version) = 0;
    virtual void GetXMLShemaVersion(ClassVersion& version) = 0;
    virtual bool GetLocation(Vesk::Location& location) = 0;

    virtual XMLTokenType GetTokenType() = 0;
    virtual XMLTokenType GetNextTokenType() = 0;
    virtual XMLTokenType GetTokenTypeName(UniString& name) = 0;
    virtual XMLTokenType GetNextTokenTypeName(UniString& name) = 0;
    virtual int ReadStartElement(char const* name) = 0;
    virtual int ReadEndElement(char const* name) = 0;
    virtual int ReadToken(unsigned int mask) = 0;
    virtual bool HasXMLTag(char const* name) = 0;

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

    virtual int ReadXMLCDATAHexToBin(char* buffer, unsigned int size);
    virtual int ReadXMLCDATAHexToBin(char** handle);
    virtual int ReadXMLCDATAString(char* buffer, unsigned int size);
    virtual int ReadXMLCDATAString(UniString& text) = 0;

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

    virtual PlatformSign GetChannelPlatform() = 0;
    virtual void SetChannelPlatform(PlatformSign platform) = 0;
    // Source line of the node under the cursor, 0 when unknown.
    virtual unsigned int GetActLineNumber() = 0;

    virtual void AddMessage(UniString const& text) = 0;
    virtual int GetNumberOfMessage() = 0;
    virtual void GetMessage(int index, UniString& text, int& line) = 0;
};

} // namespace Tavo
